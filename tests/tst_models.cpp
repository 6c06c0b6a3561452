// The table models, the sorting proxies and the flag column's painting, as
// a view sees them.

#include "datafile.h"
#include "datafilebuilder.h"
#include "tablecontents.h"
#include "testfiles.h"
#include "flagdelegate.h"
#include "testenvironment.h"

#include <QApplication>
#include <QPainter>
#include <QRandomGenerator>
#include <QStandardItemModel>
#include <QtTest>

#include <memory>

namespace {

const QColor kSelection(QStringLiteral("#C7DDFC"));

QVector<QColor> Colors(const QColor &c, const QColor &e, const QColor &nr, const QColor &sc,
                       const QColor &flagged = QColor())
{
    return {c, e, nr, sc, flagged};
}

} // namespace

class TestModels : public QObject
{
    Q_OBJECT

private slots:
    void colorsRowsByCode_data();
    void colorsRowsByCode();
    void paintsNoColorWithoutCodeOrTimeColumn();
    void answersHeadersCellsAndEmptiness();
    void cyclesSortStateAndIcon();
    void rawTableSortsLikeAnyOtherTable();
    void flagColumnPaintsOnlySelectionAndIcon();

private:
    TestFiles files;
};

void TestModels::colorsRowsByCode_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QVector<QColor>>("colors");
    QTest::addColumn<bool>("entireRow");
    QTest::addColumn<int>("column");
    QTest::addColumn<QColor>("background");
    QTest::addColumn<QColor>("foreground");
    const QVector<QColor> set = Colors(Qt::green, Qt::red, Qt::gray, Qt::black, Qt::blue);
    // Model columns: 11 "Error\nCode", 12 "Reaction\nTime", 4 "Block\nName".
    QTest::newRow("correct on code column") << "C" << set << false << 11 << QColor(Qt::green) << QColor();
    QTest::newRow("incorrect on time column") << "E" << set << false << 12 << QColor(Qt::red) << QColor();
    QTest::newRow("other column stays plain") << "E" << set << false << 4 << QColor() << QColor();
    QTest::newRow("entire row") << "NR" << set << true << 4 << QColor(Qt::gray) << QColor();
    QTest::newRow("black gives white text") << "SC" << set << false << 11 << QColor(Qt::black) << QColor(Qt::white);
    QTest::newRow("near black keeps dark text")
        << "SC" << Colors(Qt::green, Qt::red, Qt::gray, QColor(1, 0, 0)) << false << 11 << QColor(1, 0, 0) << QColor();
    QTest::newRow("unknown code never coloured") << "X" << set << true << 11 << QColor() << QColor();
    QTest::newRow("no colour chosen") << "C" << Colors(QColor(), Qt::red, Qt::gray, Qt::black) << true << 11
                                      << QColor() << QColor();
}

void TestModels::colorsRowsByCode()
{
    QFETCH(QString, code);
    QFETCH(QVector<QColor>, colors);
    QFETCH(bool, entireRow);
    QFETCH(int, column);
    QFETCH(QColor, background);
    QFETCH(QColor, foreground);
    const auto file = files.Open(DataFileBuilder().ProductTitles().Trial("B1", "T1", code, "400"));
    MainModel &model = file->GetMainModel();
    model.SetRowColors(colors);
    model.SetColorEntireRow(entireRow);
    QCOMPARE(model.data(model.index(0, column), Qt::BackgroundRole).value<QColor>(), background);
    QCOMPARE(model.data(model.index(0, column), Qt::ForegroundRole).value<QColor>(), foreground);
}

void TestModels::paintsNoColorWithoutCodeOrTimeColumn()
{
    for (const QStringList &upper : {QStringList{"Error", "Reaction"}, QStringList{"Error", "Latency"}}) {
        const auto file = files.Open(DataFileBuilder().Titles(upper, {"Code", "Time"}).Row({"C", "300"}));
        MainModel &model = file->GetMainModel();
        model.SetRowColors(Colors(Qt::green, Qt::red, Qt::gray, Qt::black));
        model.SetColorEntireRow(true);
        const bool complete = upper.last() == "Reaction";
        QCOMPARE(model.data(model.index(0, 1), Qt::BackgroundRole).isValid(), complete);
    }
}

void TestModels::answersHeadersCellsAndEmptiness()
{
    const auto file = files.Open(DataFileBuilder()
                                     .Titles({"Error", "Reaction", "", "Note"}, {"Code", "Time", "Key", "Text"})
                                     .Row({"C", "1", "", ""})
                                     .Row({"E", "2", "", "late"}));
    MainModel &model = file->GetMainModel();
    QCOMPARE(TableContents::Titles(model), QStringList({"Flag", "Error\nCode", "Reaction\nTime", "Key", "Note\nText"}));
    QCOMPARE(model.headerData(1, Qt::Vertical, Qt::DisplayRole), QVariant(2));
    QVERIFY(!model.data(model.index(0, 1), Qt::ToolTipRole).isValid());
    const QAbstractItemModel &base = model;
    QCOMPARE(base.flags(model.index(0, 1)) & (Qt::ItemIsSelectable | Qt::ItemIsEditable), Qt::ItemIsSelectable);
    // The flag column always counts as empty; the others by all their rows.
    QString empty;
    for (int column = 0; column < model.columnCount(); ++column)
        empty += model.IsColumnEmpty(column) ? '1' : '0';
    QCOMPARE(empty, QString("10010"));
}

void TestModels::cyclesSortStateAndIcon()
{
    const auto file = files.Open(DataFileBuilder().ProductTitles().Trial("B1", "T1", "C", "1"));
    MainModel &model = file->GetMainModel();
    auto icon = [&](int column) {
        return model.headerData(column, Qt::Horizontal, Qt::DecorationRole).value<QIcon>();
    };
    QCOMPARE(model.SortColumn(), -1);
    QVERIFY(icon(3).isNull());
    QCOMPARE(model.CycleSortState(3), 1);
    const QImage ascending = icon(3).pixmap(16).toImage();
    QVERIFY(!ascending.isNull());
    QCOMPARE(model.CycleSortState(3), 2);
    QVERIFY(icon(3).pixmap(16).toImage() != ascending);
    QCOMPARE(model.CycleSortState(3), 0);
    QVERIFY(icon(3).isNull());
    QCOMPARE(model.CycleSortState(3), 1);
    // Another column always starts at ascending and takes the icon along.
    QCOMPARE(model.CycleSortState(3), 2);
    QCOMPARE(model.CycleSortState(5), 1);
    QVERIFY(icon(3).isNull());
    QVERIFY(!icon(5).isNull());
    QVERIFY(!model.headerData(5, Qt::Vertical, Qt::DecorationRole).isValid());
    QVERIFY(!model.headerData(5, Qt::Horizontal, Qt::ToolTipRole).isValid());
    QCOMPARE(model.CycleSortState(3), 1);
    // Hiding a sorted column resets the state but keeps the column.
    model.SetSortState(0);
    QCOMPARE(model.SortColumn(), 3);
    QVERIFY(icon(3).isNull());
}

// The raw table answers the sort's reads through a faster path than other
// models; both must give the same order.
void TestModels::rawTableSortsLikeAnyOtherTable()
{
    const QStringList pieces = {"1", "10", "2.5", "", "abc", "ABC", " 3", "1e2", "inf", "-0", "x1", "09", "9"};
    QRandomGenerator random(11);
    DataFileBuilder builder;
    builder.Titles({"Error", "Reaction"}, {"Code", "Time"});
    QStandardItemModel plain;
    for (int row = 0; row < 300; ++row) {
        const QString cell = pieces[random.bounded(pieces.size())];
        builder.Row({"C", cell});
        plain.appendRow(new QStandardItem(cell));
    }
    const auto file = files.Open(builder);
    ProxyModel generic;
    generic.setSourceModel(&plain);
    for (const Qt::SortOrder order : {Qt::AscendingOrder, Qt::DescendingOrder}) {
        file->GetMainProxy().sort(2, order);
        generic.sort(0, order);
        QCOMPARE(TableContents::Column(file->GetMainProxy(), 2), TableContents::Column(generic, 0));
    }
    // Rows are numbered by their place on screen, whatever the order.
    QCOMPARE(file->GetMainProxy().headerData(0, Qt::Vertical, Qt::DisplayRole), QVariant(1));
    QCOMPARE(file->GetMainProxy().headerData(299, Qt::Vertical, Qt::DisplayRole), QVariant(300));
    file->GetMainProxy().sort(-1);
    QCOMPARE(TableContents::Column(file->GetMainProxy(), 2), TableContents::Column(plain, 0));
}

// Paints column 0 of a one-row table into an image and reports the colour
// at the cell's centre and at its corner.
void TestModels::flagColumnPaintsOnlySelectionAndIcon()
{
    const auto file = files.Open(DataFileBuilder().ProductTitles().Trial("B1", "T1", "C", "1"));
    MainModel &model = file->GetMainModel();
    model.SetRowColors(Colors(Qt::green, Qt::red, Qt::gray, Qt::black));
    model.SetColorEntireRow(true);
    FlagDelegate delegate;
    auto paint = [&](bool selected) {
        QImage image(40, 30, QImage::Format_ARGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        QStyleOptionViewItem option;
        option.rect = QRect(0, 0, 40, 30);
        option.state = QStyle::State_Enabled | (selected ? QStyle::State_Selected : QStyle::State_None);
        delegate.paint(&painter, option, model.index(0, 0));
        return image;
    };
    // The row colour reaches every column but this one, and no text is drawn.
    const QImage plain = paint(false);
    for (int y = 0; y < plain.height(); ++y)
        for (int x = 0; x < plain.width(); ++x)
            QCOMPARE(plain.pixelColor(x, y), QColor(Qt::white));
    const QImage selected = paint(true);
    QCOMPARE(selected.pixelColor(0, 0), kSelection);
    QCOMPARE(selected.pixelColor(20, 15), kSelection);

    // A flagged row shows the icon, centred at 70% of the cell, over the fill.
    model.SetRowFlag(0, true);
    const QImage flagged = paint(true);
    QCOMPARE(flagged.pixelColor(0, 0), kSelection);
    QCOMPARE(flagged.pixelColor(39, 29), kSelection);
    int iconPixels = 0;
    QRect iconArea;
    for (int y = 0; y < flagged.height(); ++y)
        for (int x = 0; x < flagged.width(); ++x)
            if (flagged.pixelColor(x, y) != kSelection) {
                ++iconPixels;
                iconArea |= QRect(x, y, 1, 1);
            }
    QVERIFY(iconPixels > 20);
    QVERIFY(iconArea.width() <= 21 && iconArea.height() <= 21);
    QVERIFY(qAbs(iconArea.center().x() - 20) <= 3 && qAbs(iconArea.center().y() - 15) <= 3);
    const QImage flaggedPlain = paint(false);
    QCOMPARE(flaggedPlain.pixelColor(0, 0), QColor(Qt::white));
    QVERIFY(flaggedPlain.pixelColor(iconArea.center()) != QColor(Qt::white));
}

ZEPHLANE_TEST_MAIN(TestModels)
#include "tst_models.moc"
