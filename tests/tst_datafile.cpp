// Reading data files: both header generations, titles, rows, odd bytes,
// and the validator that refuses what is not a data file.

#include "datafile.h"
#include "datafilebuilder.h"
#include "tablecontents.h"
#include "testfiles.h"
#include "datafilevalidator.h"
#include "modalcatcher.h"
#include "testenvironment.h"

#include <QApplication>
#include <QFile>
#include <QRandomGenerator>
#include <QTextStream>
#include <QtTest>

#include <memory>

namespace {

QStringList RowCells(MainModel &model, int row)
{
    QStringList cells;
    for (int c = 1; c < model.columnCount(); ++c)
        cells << model.data(model.index(row, c)).toString();
    return cells;
}

// The straightforward reading of a data file, line by line through a text
// stream, that the fast reader must agree with.
struct ReferenceFile
{
    QString experimentName;
    QString date;
    QStringList titles;
    QList<QStringList> rows;
};

ReferenceFile ReadReference(const QString &path, bool legacy)
{
    QFile file(path);
    file.open(QIODevice::ReadOnly | QIODevice::Text);
    QTextStream stream(&file);
    ReferenceFile reference;
    if (legacy) {
        stream.readLine();
        reference.experimentName = stream.readLine();
        reference.date = stream.readLine();
        stream.readLine();
    } else {
        while (!stream.atEnd()) {
            const QString line = stream.readLine();
            if (line.startsWith(QLatin1String(".Experiment Name\t")))
                reference.experimentName = line.section(QLatin1Char('\t'), 1);
            else if (line.startsWith(QLatin1String(".Date\t")))
                reference.date = line.section(QLatin1Char('\t'), 1);
            else if (!line.startsWith(QLatin1Char('.')))
                break;
        }
    }
    const QStringList upper = stream.readLine().split(QLatin1Char('\t'));
    const QStringList lower = stream.readLine().split(QLatin1Char('\t'));
    for (int i = 0; i < lower.size(); ++i)
        reference.titles << (i < upper.size() && !upper[i].isEmpty() ? upper[i] + "\n" + lower[i] : lower[i]);
    while (!stream.atEnd()) {
        const QStringList fields = stream.readLine().split(QLatin1Char('\t'));
        QStringList row;
        for (int i = 0; i < lower.size(); ++i)
            row << fields.value(i);
        reference.rows << row;
    }
    return reference;
}

// Marks repeated titles the plain way: walk the titles and append a "#" to
// the last place of every text found twice, until no two are equal.
QStringList MarkRepeatsByWalking(QStringList titles)
{
    while (QSet<QString>(titles.begin(), titles.end()).size() < titles.size()) {
        for (int i = 0; i < titles.size(); ++i) {
            const int last = titles.lastIndexOf(titles[i]);
            if (titles.indexOf(titles[i]) != last)
                titles[last] += '#';
        }
    }
    return titles;
}

} // namespace

class TestDataFile : public QObject
{
    Q_OBJECT

private slots:
    void readsBothHeaders();
    void firstLineDecidesGeneration_data();
    void firstLineDecidesGeneration();
    void readsTitlesAndRows_data();
    void readsTitlesAndRows();
    void marksRepeatedTitlesAsRepeatedWalksWould();
    void opensFileWithTitlesButNoRows();
    void opensFileWithoutCodeOrTimeColumn();
    void agreesWithLineByLineReading_data();
    void agreesWithLineByLineReading();
    void survivesArbitraryBytes();

    void validatorJudgesFiles_data();
    void validatorJudgesFiles();
    void validatorMessageNamesOneOrMany();

private:
    TestFiles files;
};

void TestDataFile::readsBothHeaders()
{
    const auto dotted = files.Open(DataFileBuilder()
                                       .Experiment("Stroop")
                                       .Field(".Kelmarun Version", "7.2")
                                       .Field(".Date", "2026-11-23\tevening")
                                       .HeaderLine(".")
                                       .ProductTitles()
                                       .Trial("B1", "T1", "C", "500"));
    // A later line with the same key wins, and its value keeps its TAB.
    QCOMPARE(QStringList({dotted->ExperimentName(), dotted->Date(), dotted->HeaderFields().value(".Kelmarun Version")}),
             QStringList({"Stroop", "2026-11-23\tevening", "7.2"}));
    QVERIFY(!dotted->LegacyFormat());
    const auto legacy = files.Open(DataFileBuilder()
                                       .Legacy()
                                       .LegacyLines("anything at all", "")
                                       .Experiment("Old Stroop")
                                       .Date("11/22/2026")
                                       .ProductTitles()
                                       .Trial("B1", "T1", "E", "612.5"));
    QCOMPARE(QStringList({legacy->ExperimentName(), legacy->Date()}), QStringList({"Old Stroop", "11/22/2026"}));
    QVERIFY(legacy->LegacyFormat() && legacy->HeaderFields().isEmpty());
    QCOMPARE(RowCells(legacy->GetMainModel(), 0), RowCells(dotted->GetMainModel(), 0).mid(0, 10) +
                                                      QStringList({"E", "612.5"}) + RowCells(dotted->GetMainModel(), 0).mid(12));
}

void TestDataFile::firstLineDecidesGeneration_data()
{
    QTest::addColumn<QByteArray>("firstLine");
    QTest::addColumn<bool>("legacy");
    QTest::newRow("field line") << QByteArray(".Experiment Name\tX") << false;
    QTest::newRow("key without tab") << QByteArray(".Date") << true;
    QTest::newRow("dot line") << QByteArray(".") << true;
    QTest::newRow("tab but no dot") << QByteArray("Experiment\tX") << true;
    QTest::newRow("dot and tab only") << QByteArray(".\t") << false;
}

void TestDataFile::firstLineDecidesGeneration()
{
    QFETCH(QByteArray, firstLine);
    QFETCH(bool, legacy);
    const QString path = files.Write(firstLine + "\nName\nDate\n\nError\tReaction\nCode\tTime\nC\t1\n");
    QCOMPARE(DataFile(path).LegacyFormat(), legacy);
}

void TestDataFile::readsTitlesAndRows_data()
{
    QTest::addColumn<QByteArray>("table");
    QTest::addColumn<QStringList>("titles");
    QTest::addColumn<QStringList>("rows");
    // Title row 2 decides the columns; an empty upper cell gives a one-line
    // title; surplus cells of a row are dropped and missing ones are empty.
    QTest::newRow("two-line and one-line titles")
        << QByteArray("Error\t\tReaction\tsurplus\nCode\tKey\tTime\nC\ta\t300\tmore\nE\n\nNR\t\t\n")
        << QStringList{"Flag", "Error\nCode", "Key", "Reaction\nTime"}
        << QStringList{"C|a|300", "E||", "||", "NR||"};
    QTest::newRow("short upper row") << QByteArray("Error\nCode\tKey\tTime\n")
                                     << QStringList{"Flag", "Error\nCode", "Key", "Time"} << QStringList{};
    // Each repeat of a title gets as many "#" as set it apart from every
    // title before it, the model's own "Flag" included.
    QTest::newRow("three equal titles") << QByteArray("\nA\tA\tA\n1\t2\t3")
                                        << QStringList{"Flag", "A", "A#", "A##"} << QStringList{"1|2|3"};
    QTest::newRow("four empty titles") << QByteArray("\n\t\t\t\n")
                                       << QStringList{"Flag", "", "#", "##", "###"} << QStringList{};
    QTest::newRow("suffix meets a title") << QByteArray("\nA#\tA\tA\tA#\n")
                                          << QStringList{"Flag", "A#", "A", "A##", "A###"} << QStringList{};
    QTest::newRow("a file column titled Flag") << QByteArray("\nFlag\tFlag#\n")
                                               << QStringList{"Flag", "Flag#", "Flag##"} << QStringList{};
    // A text-mode stream drops every CR, also one inside a line.
    QTest::newRow("CR LF and a stray CR") << QByteArray("Error\r\nCode\r\nx\ry\r\n")
                                          << QStringList{"Flag", "Error\nCode"} << QStringList{"xy"};
}

// Behind a dotted header whose terminator is not empty, which is dropped
// whatever it holds.
void TestDataFile::readsTitlesAndRows()
{
    QFETCH(QByteArray, table);
    const auto file = std::make_unique<DataFile>(files.Write(".Experiment Name\tX\nnot empty\n" + table));
    MainModel &model = file->GetMainModel();
    QTEST(TableContents::Titles(model), "titles");
    QStringList rows;
    for (int row = 0; row < model.rowCount(); ++row)
        rows << RowCells(model, row).join('|');
    QTEST(rows, "rows");
    QVERIFY(model.rowCount() == 0 || model.data(model.index(0, 0)).toString().isEmpty());
}

void TestDataFile::marksRepeatedTitlesAsRepeatedWalksWould()
{
    QRandomGenerator random(3);
    const QStringList pieces = {"", "#", "##", "A", "A#", "Flag", "Flag#"};
    for (int round = 0; round < 300; ++round) {
        QStringList titles;
        for (int i = random.bounded(1, 10); i > 0; --i)
            titles << pieces[random.bounded(pieces.size())];
        const QString path = files.Write((".Experiment Name\tX\n\n\n" + titles.join('\t') + "\n").toUtf8());
        QCOMPARE(TableContents::Titles(DataFile(path).GetMainModel()), MarkRepeatsByWalking(QStringList{"Flag"} + titles));
    }
}

void TestDataFile::opensFileWithTitlesButNoRows()
{
    const auto file = files.Open(DataFileBuilder().ProductTitles());
    QCOMPARE(file->GetMainModel().rowCount(), 0);
    QCOMPARE(file->GetMainModel().columnCount(), 17);
    QCOMPARE(file->Overall().TotalCount(), 0);
    SectionModel &sections = file->GetSectionModel();
    QCOMPARE(sections.rowCount(), 0);
    QCOMPARE(sections.TrialVariableNames(), QStringList({"Congruency"}));
    QCOMPARE(sections.CodeNames(), QStringList({"Key", "Pressed Or\nReleased", "Stimulus\nSide"}));
}

void TestDataFile::opensFileWithoutCodeOrTimeColumn()
{
    const auto noCode = files.Open(DataFileBuilder()
                                 .Titles({"Block", "Reaction"}, {"Name", "Time"})
                                 .Row({"B1", "300"})
                                 .Row({"B2", "400"}));
    // Rows without a code are filed under their block but counted nowhere.
    QCOMPARE(noCode->Overall().TotalCount(), 0);
    QCOMPARE(noCode->GetSectionModel().rowCount(), 2);
    QCOMPARE(noCode->GetMainModel().ErrorCodeColumn(), -1);

    const auto noTime = files.Open(DataFileBuilder()
                                 .Titles({"Block", "Error"}, {"Name", "Code"})
                                 .Row({"B1", "C"})
                                 .Row({"B1", "E"}));
    QCOMPARE(noTime->Overall().TotalCount(), 2);
    QCOMPARE(noTime->Overall().sums, QVector<double>({0, 0, 0, 0}));
    // With no "Reaction\nTime" every column stands right of it, "Flag" too.
    QVERIFY(noTime->GetSectionModel().CodeNames().contains("Flag"));
}

void TestDataFile::agreesWithLineByLineReading_data()
{
    QTest::addColumn<bool>("legacy");
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 40; ++seed) {
        QTest::newRow(qPrintable(QString("dotted %1").arg(seed))) << false << seed;
        QTest::newRow(qPrintable(QString("legacy %1").arg(seed))) << true << seed;
    }
}

// Random rows built from the bytes that could trip a fast reader: TABs,
// CRs, NULs, broken and complete UTF-8, byte order marks and empty lines.
void TestDataFile::agreesWithLineByLineReading()
{
    QFETCH(bool, legacy);
    QFETCH(quint32, seed);
    QRandomGenerator random(seed);
    const QList<QByteArray> pieces = {"a", "Zz", "\t", "\t", "\n", "\r", "\r\n", ".", "\0", "\xff",
                                      "\xe2\x82", "\xe2\x82\xac", "\xef\xbb\xbf", " ", "12.5", "C", "SC"};
    DataFileBuilder builder;
    if (legacy)
        builder.Legacy();
    builder.Experiment(QString::fromUtf8("Caf\xc3\xa9")).ProductTitles();
    QByteArray body;
    const int count = random.bounded(400);
    for (int i = 0; i < count; ++i)
        body += pieces[random.bounded(pieces.size())];
    const QByteArray bytes = builder.Bytes() + body;
    const QString path = files.Write(bytes);

    const ReferenceFile reference = ReadReference(path, legacy);
    DataFile file(path);
    MainModel &model = file.GetMainModel();
    QCOMPARE(file.ExperimentName(), reference.experimentName);
    QCOMPARE(TableContents::Titles(model).mid(1), reference.titles);
    QCOMPARE(model.rowCount(), reference.rows.size());
    for (int row = 0; row < model.rowCount(); ++row)
        QCOMPARE(RowCells(model, row), reference.rows[row]);
}

void TestDataFile::survivesArbitraryBytes()
{
    QRandomGenerator random(7);
    for (int round = 0; round < 30; ++round) {
        QByteArray bytes(random.bounded(1, 3000), Qt::Uninitialized);
        for (char &byte : bytes)
            byte = char(random.bounded(256));
        if (round % 3 == 0)
            bytes.prepend(".Experiment Name\tX\n\n");
        DataFile file(files.Write(bytes));
        MainModel &model = file.GetMainModel();
        for (int row = 0; row < model.rowCount(); ++row)
            for (int column = 0; column < model.columnCount(); ++column)
                for (const int role : {int(Qt::DisplayRole), int(Qt::BackgroundRole), int(Qt::ForegroundRole)})
                    model.data(model.index(row, column), role);
        QVERIFY(model.columnCount() >= 2);
    }
    const QString wide = QString("Error\tReaction\t").repeated(3000);
    DataFile wideFile(files.Write(("x\nName\nDate\n\n" + wide + "\n" + wide + "\nC\t1\n").toUtf8()));
    // The titles end in a TAB, so there is one empty title more.
    QCOMPARE(wideFile.GetMainModel().columnCount(), 6002);
    DataFile huge(files.Write(QByteArray(20'000'000, 'x')));
    QCOMPARE(huge.GetMainModel().rowCount(), 0);
}

void TestDataFile::validatorJudgesFiles_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("valid");
    const QByteArray titles = "Participant\tError\tReaction\nName\tCode\tTime\n";
    const QByteArray dotted = ".Experiment Name\tX\n.Date\tY\n.\n\n";
    QTest::newRow("dotted") << dotted + titles << true;
    QTest::newRow("empty") << QByteArray() << false;
    QTest::newRow("field lines only") << QByteArray(".Experiment Name\tX\n.Date\tY\n") << false;
    QTest::newRow("titles without known words") << dotted + "A\tB\nC\tD\n" << false;
    QTest::newRow("lower title without known words") << dotted + "Error\nName\n" << false;
    QTest::newRow("words are case-sensitive") << dotted + "error\ncode\n" << false;
    auto legacy = [&](const QByteArray &line3, const QByteArray &line4) {
        return "first\nName\n" + line3 + "\n" + line4 + "\n" + titles;
    };
    QTest::newRow("legacy") << legacy("11/22/2026", "") << true;
    QTest::newRow("legacy time with colon") << legacy("12:30", "") << false;
    QTest::newRow("legacy colon and slash") << legacy("12/30 12:30", "") << true;
    QTest::newRow("legacy colon and hyphen") << legacy("12-30 12:30", "") << true;
    QTest::newRow("legacy colon and full stop") << legacy("12.30 12:30", "") << true;
    QTest::newRow("legacy plain word") << legacy("Monday", "") << true;
    QTest::newRow("legacy one-word line 4") << legacy("Monday", "Subject") << false;
    QTest::newRow("legacy two-word line 4") << legacy("Monday", "Subject 4") << true;
    QTest::newRow("legacy empty line 2") << QByteArray("first\n\nDate\n\n" + titles) << false;
    QTest::newRow("dotted with filled terminator passes as legacy")
        << QByteArray(".Experiment Name\tX\n.Date\tY\n. \n\n" + titles) << true;
    QTest::newRow("dotted terminator read as legacy line 4")
        << QByteArray(".Experiment Name\tX\n.Date\tY\n.\nTerminator\n" + titles) << false;
    QTest::newRow("binary") << QByteArray("\x00\x01\x02\xff\xfe\n\x00", 7) << false;
}

void TestDataFile::validatorJudgesFiles()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, valid);
    ModalCatcher catcher;
    QCOMPARE(ValidateDataFiles({files.Write(bytes)}), valid);
    QCOMPARE(catcher.Messages().size(), valid ? 0 : 1);
}

void TestDataFile::validatorMessageNamesOneOrMany()
{
    const QString good = DataFileBuilder().ProductTitles().Write(files.Path("good.txt"));
    const QString missing = files.Path("missing.txt");
    ModalCatcher catcher;
    QVERIFY(!ValidateDataFiles({missing}));
    QVERIFY(!ValidateDataFiles({good, missing, good}));
    QVERIFY(ValidateDataFiles({good, good}));
    QCOMPARE(catcher.Messages(),
             QStringList({"Zephlane|This file cannot be read. Please select a Kelmarun data file.",
                          "Zephlane|One of these files cannot be read. Please select Kelmarun data files."}));
}

ZEPHLANE_TEST_MAIN(TestDataFile)
#include "tst_datafile.moc"
