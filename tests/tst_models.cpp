// SPDX-License-Identifier: GPL-3.0-or-later
// The raw table's row colours, the sort indicator, the sorting proxies and
// the flag column's painting, as a view sees them.

#include "flagdelegate.h"
#include "tablecontents.h"
#include "testenvironment.h"
#include "testfiles.h"

#include <QtTest>
#include <QPainter>
#include <QTableView>
#include <QRandomGenerator>
#include <QStandardItemModel>

#include <numeric>

class TestModels : public QObject
{
    Q_OBJECT

    TestFiles files;

private slots:
    void colorsRowsByCode_data()
    {
        QTest::addColumn<QString>("columns");
        QTest::addColumn<QString>("code");
        QTest::addColumn<QVector<QColor>>("colors");
        QTest::addColumn<QString>("options");
        QTest::addColumn<QString>("painted");
        const QString usual = "Block/Name,Error/Code,Reaction/Time";
        const QVector<QColor> set{Qt::green, Qt::red, Qt::gray, Qt::black, Qt::blue};
        const QVector<QColor> noC{QColor(), Qt::red, Qt::gray, Qt::black, Qt::blue};
        // Each column's background and text as the colour's place in `colors`,
        // "w" for white and "-" for none.
        QTest::newRow("code and time columns") << usual << "C" << set << "" << "-- 0- 0-";
        QTest::newRow("entire row") << usual << "NR" << set << "entire" << "2- 2- 2-";
        QTest::newRow("black gives white text") << usual << "SC" << set << "" << "-- 3w 3w";
        QTest::newRow("near black keeps dark text")
            << usual << "SC" << QVector<QColor>{Qt::green, Qt::red, Qt::gray, QColor(1, 0, 0)} << "" << "-- 3- 3-";
        QTest::newRow("unknown code") << usual << "X" << set << "entire" << "-- -- --";
        QTest::newRow("no colour chosen") << usual << "C" << noC << "entire" << "-- -- --";
        QTest::newRow("no time column") << "Block/Name,Error/Code,Latency" << "C" << set << "entire" << "-- -- --";
        QTest::newRow("no code column") << "Block/Name,Mistake,Reaction/Time" << "C" << set << "entire" << "-- -- --";
        QTest::newRow("code colour over flagged colour") << usual << "C" << set << "flag" << "-- 0- 0-";
        QTest::newRow("flagged colour fills in") << usual << "C" << noC << "flag" << "-- 4- 4-";
        // The text colour looks at the code's colour only.
        QTest::newRow("override") << usual << "SC" << set << "flag override" << "-- 4w 4w";
        QTest::newRow("override without flagged colour")
            << usual << "C" << QVector<QColor>{Qt::green} << "flag override" << "-- -- --";
        // The first row shows file row 2 once file row 1 ("E") is hidden, but
        // is painted by file row 1: colours go by the visible row number.
        QTest::newRow("painted by the visible number") << usual << "C" << set << "hide" << "-- 1- 1-";
    }

    void colorsRowsByCode()
    {
        QFETCH(QString, columns);
        QFETCH(QString, code);
        QFETCH(QVector<QColor>, colors);
        QFETCH(QString, options);
        const auto file = files.Open(DataFileBuilder().Columns(columns).Rows({"B,E,1", "B," + code + ",2"}));
        MainModel &model = file->GetMainModel();
        model.SetRowColors(colors);
        model.ChangeColorOption(options.contains("entire"), options.contains("override"));
        model.SetRowFlag(1, options.contains("flag"));
        if (options.contains("hide"))
            model.HideRows({0});
        QStringList painted;
        for (int column = 1; column <= 3; ++column) {
            painted << QString();
            for (const int role : {Qt::BackgroundRole, Qt::ForegroundRole}) {
                const QColor color = model.data(model.index(model.rowCount() - 1, column), role).value<QColor>();
                painted.last() += color == Qt::white ? 'w' : color.isValid() ? QChar('0' + colors.indexOf(color)) : '-';
            }
        }
        QTEST(painted.join(' '), "painted");
    }

    // The raw table works out its order through a faster path than other
    // models, from whatever order a sort before left; both must give the
    // same order, also where numbers and text mix and where text is not
    // plain ASCII (a CR inside a cell is dropped, a mark at its start kept),
    // with text compared as Qt does by default, by locale and without case.
    // Rows are numbered by their place on screen, whatever the order.
    void rawTableSortsLikeAnyOtherTable()
    {
        const QStringList pieces = {"1", "10", "2.5", "", "abc", "ABC", " 3", "1e2", "inf", "-0", "x1", "09", "9", "-",
                                    "a\rb", "ab", "aa", "\u00e9", "Z", "\ufeffx", "x"};
        QRandomGenerator random(11);
        DataFileBuilder builder;
        builder.Columns("Error/Code,Reaction/Time");
        for (int row = 0; row < 300; ++row)
            builder.Row({pieces[random.bounded(pieces.size())], pieces[random.bounded(pieces.size())]});
        const auto file = files.Open(builder);
        file->HideRows({3, 40, 41, 299});
        QStandardItemModel plain;
        const QStringList codes = TableContents::Column(file->GetMainModel(), 1);
        const QStringList times = TableContents::Column(file->GetMainModel(), 2);
        for (int row = 0; row < codes.size(); ++row)
            plain.appendRow({new QStandardItem(codes[row]), new QStandardItem(times[row])});
        MainProxy &raw = file->GetMainProxy();
        ProxyModel generic;
        generic.setSourceModel(&plain);
        generic.setDynamicSortFilter(false);
        const QList<QPair<int, Qt::SortOrder>> sorts = {{2, Qt::AscendingOrder}, {1, Qt::DescendingOrder},
                                                        {2, Qt::DescendingOrder}, {1, Qt::AscendingOrder},
                                                        {2, Qt::AscendingOrder}};
        // Then the same with text compared by locale, and without case.
        for (const int round : {0, 1, 2}) {
            raw.setSortLocaleAware(round == 1);
            generic.setSortLocaleAware(round == 1);
            raw.setSortCaseSensitivity(round == 2 ? Qt::CaseInsensitive : Qt::CaseSensitive);
            generic.setSortCaseSensitivity(round == 2 ? Qt::CaseInsensitive : Qt::CaseSensitive);
            for (const auto &[column, order] : sorts) {
                raw.sort(column, order);
                generic.sort(column - 1, order);
                QVERIFY2(TableContents::Cells(raw) == TableContents::Cells(generic).replaceInStrings(QRegularExpression("^"), "|"), qPrintable(QString("round %1 column %2 order %3").arg(round).arg(column).arg(order)));
            }
        }
        QCOMPARE(raw.headerData(295, Qt::Vertical, Qt::DisplayRole), QVariant(296));
        raw.sort(-1);
        QCOMPARE(TableContents::Column(raw, 2), times);
    }

    // The raw table's proxy keeps no mapping of rows while they are in the
    // table's order; through sorts, hiding row by row, restoring and
    // flagging it shows the rows, the selection and the current cell where
    // a general proxy on the same table does.
    void rawProxyFollowsTheTableAsAGeneralProxyDoes()
    {
        const QStringList pieces = {"1", "10", "2.5", "", "abc", "ABC", "-0", "x1", "09", "9", "a\rb"};
        QRandomGenerator random(17);
        DataFileBuilder builder;
        builder.Columns("Error/Code,Reaction/Time");
        for (int row = 0; row < 40; ++row)
            builder.Row({pieces[random.bounded(pieces.size())], pieces[random.bounded(pieces.size())]});
        const auto file = files.Open(builder);
        MainModel &model = file->GetMainModel();
        ProxyModel generic;
        generic.setDynamicSortFilter(false);
        generic.setSourceModel(&model);
        QAbstractItemModel *proxies[] = {&file->GetMainProxy(), &generic};
        QTableView views[2];
        for (int i = 0; i < 2; ++i) {
            views[i].setModel(proxies[i]);
            views[i].selectionModel()->select(QItemSelection(proxies[i]->index(3, 0), proxies[i]->index(6, 2)),
                                              QItemSelectionModel::Select);
            views[i].setCurrentIndex(proxies[i]->index(5, 1));
        }
        const QList<std::function<void()>> steps = {
            [&] { model.HideRows({2, 9}); },
            [&] { for (QAbstractItemModel *proxy : proxies) proxy->sort(2, Qt::AscendingOrder); },
            [&] { model.HideRows({0, 5, 6, 30}); },
            [&] { model.ChangeFlag(model.index(4, 0)); },
            [&] { model.RestoreRows(); },
            [&] { for (QAbstractItemModel *proxy : proxies) proxy->sort(1, Qt::DescendingOrder); },
            [&] { model.HideRows({1, 2, 3}); },
            [&] {
                QVector<int> every(model.rowCount());
                std::iota(every.begin(), every.end(), 0);
                model.HideRows(every);
            },
            [&] { model.RestoreRows(); },
            [&] { for (QAbstractItemModel *proxy : proxies) proxy->sort(-1, Qt::DescendingOrder); },
            [&] { model.HideRows({3, 7}); },
            [&] { model.RestoreRows(); },
            [&] { for (QAbstractItemModel *proxy : proxies) proxy->sort(-1, Qt::AscendingOrder); },
            [&] { model.HideRows({0, 39}); },
            [&] { model.RestoreRows(); },
        };
        for (int step = 0; step < steps.size(); ++step) {
            steps[step]();
            QStringList states;
            for (QTableView &view : views) {
                QString state = TableContents::Cells(*view.model()).join('/') + " |";
                for (const QModelIndex &cell : view.selectionModel()->selectedIndexes())
                    state += QString(" %1,%2").arg(cell.row()).arg(cell.column());
                states << state + QString(" | %1,%2").arg(view.currentIndex().row()).arg(view.currentIndex().column());
            }
            QVERIFY2(states[0] == states[1], qPrintable(QString("step %1\n%2\n%3").arg(step).arg(states[0], states[1])));
        }
    }

    // The row colour reaches every column but this one, and no text is
    // drawn; a flagged row shows the icon at 70% of the cell, centred.
    void flagColumnPaintsOnlySelectionAndIcon()
    {
        const auto file = files.Open(DataFileBuilder().Columns("Error/Code,Reaction/Time").Rows({"C,1"}));
        MainModel &model = file->GetMainModel();
        model.SetRowColors({Qt::green, Qt::red, Qt::gray, Qt::black});
        model.ChangeColorOption(true, false);
        QStringList painted;
        for (const int state : {0, 1, 2, 3}) {
            model.SetRowFlag(0, state & 1);
            QImage image(40, 30, QImage::Format_ARGB32);
            image.fill(Qt::white);
            QPainter painter(&image);
            QStyleOptionViewItem option;
            option.rect = image.rect();
            option.state = state & 2 ? QStyle::State_Selected : QStyle::State_None;
            FlagDelegate().paint(&painter, option, model.index(0, 0));
            painter.end();
            const QColor fill = state & 2 ? QColor("#C7DDFC") : QColor(Qt::white);
            QRect icon;
            for (int y = 0; y < image.height(); ++y)
                for (int x = 0; x < image.width(); ++x)
                    icon |= image.pixelColor(x, y) == fill ? QRect() : QRect(x, y, 1, 1);
            painted << (icon.isNull() ? "-" : QString("%1 %2").arg(icon.width() > 10 && icon.width() <= 21 && icon.height() <= 21)
                                                   .arg(qAbs(icon.center().x() - 20) <= 3 && qAbs(icon.center().y() - 15) <= 3));
        }
        QCOMPARE(painted.join(", "), "-, 1 1, -, 1 1");
    }
};

ZEPHLANE_TEST_MAIN(TestModels)
#include "tst_models.moc"
