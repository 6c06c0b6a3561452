// The sample data generator: what it writes must open in the program as a
// product file does, and the same seed must give the same file.

#include "datafile.h"
#include "datafilevalidator.h"
#include "modalcatcher.h"
#include "samplefilewriter.h"
#include "testenvironment.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

namespace {

QString Title(MainModel &model, int column)
{
    return model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
}

QByteArray Bytes(const QString &path)
{
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

} // namespace

class TestSampleData : public QObject
{
    Q_OBJECT

private slots:
    void generatedFilesOpenAsProductFiles_data();
    void generatedFilesOpenAsProductFiles();
    void sameSeedGivesSameFileAndAnotherSeedAnother();
    void participantsShareOneExperiment();
    void unknownDesignWritesNothing();
    void examplesOpenTogether();

private:
    QTemporaryDir dir;
};

void TestSampleData::generatedFilesOpenAsProductFiles_data()
{
    QTest::addColumn<QString>("design");
    QTest::addColumn<bool>("legacy");
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("trialVariables");
    QTest::addColumn<int>("codeColumns");
    QTest::addColumn<int>("columns");
    QTest::addColumn<QString>("experiment");
    QTest::addColumn<int>("blocks");
    QTest::addColumn<int>("trials");

    // 300 rows: a practice block of 15 and three test blocks.
    QTest::newRow("dotted") << "stroop" << false << 300 << 1 << 1 << 0 << "Stroop Colour Naming" << 4 << 16;
    QTest::newRow("legacy") << "stroop" << true << 300 << 1 << 1 << 0 << "Stroop Colour Naming" << 4 << 16;
    QTest::newRow("other design, more columns")
        << "lexical" << false << 1000 << 2 << 2 << 0 << "Lexical Decision" << 9 << 24;
    // Below 100 rows there is no practice block.
    QTest::newRow("short, one block") << "lexical" << true << 40 << 1 << 1 << 0 << "Lexical Decision" << 1 << 24;
    QTest::newRow("wide") << "stroop" << false << 500 << 3 << 0 << 120 << "Stroop Colour Naming" << 6 << 16;
}

void TestSampleData::generatedFilesOpenAsProductFiles()
{
    QFETCH(QString, design);
    QFETCH(bool, legacy);
    QFETCH(int, rows);
    QFETCH(int, trialVariables);
    QFETCH(int, codeColumns);
    QFETCH(int, columns);
    QFETCH(QString, experiment);
    QFETCH(int, blocks);
    QFETCH(int, trials);

    SampleFileOptions options;
    options.design = design;
    options.legacy = legacy;
    options.rows = rows;
    options.trialVariables = trialVariables;
    options.codeColumns = codeColumns;
    options.columns = columns;
    const SampleFileWriter writer(options);
    const QString path = dir.filePath(QString::fromLatin1(QTest::currentDataTag()) + ".txt");
    QVERIFY(writer.Write(path));

    ModalCatcher catcher;
    QVERIFY(ValidateDataFiles({path}));
    QCOMPARE(catcher.Messages(), QStringList());

    DataFile file(path);
    QCOMPARE(file.LegacyFormat(), legacy);
    QCOMPARE(file.ExperimentName(), experiment);
    QVERIFY(file.Date().startsWith(QLatin1String("2026-03-02 ")));
    MainModel &model = file.GetMainModel();
    QCOMPARE(model.rowCount(), rows);
    const int fields = columns > 0 ? columns : 14 + trialVariables + codeColumns;
    QCOMPARE(writer.FieldCount(), fields);
    QCOMPARE(model.columnCount(), fields + 1);
    QCOMPARE(Title(model, 4), QStringLiteral("Block\nName"));
    QCOMPARE(Title(model, 5), QStringLiteral("Trial\nName"));
    QCOMPARE(Title(model, 11), QStringLiteral("Error\nCode"));
    QCOMPARE(Title(model, 12), QStringLiteral("Reaction\nTime"));
    QCOMPARE(Title(model, 13), QStringLiteral("Key"));
    QCOMPARE(Title(model, 14), QStringLiteral("Pressed Or\nReleased"));
    for (int c = 1; c < model.columnCount(); ++c)
        QVERIFY2(!Title(model, c).endsWith(QLatin1Char('#')), qPrintable(Title(model, c)));

    // Overall folds "SC" into "C"; unknown codes count nowhere, but only a
    // few rows in a hundred carry one.
    const SectionStats &overall = file.Overall();
    QVERIFY(overall.TotalCount() <= rows);
    QVERIFY(overall.TotalCount() >= rows * 95 / 100);
    QVERIFY(overall.counts[0] > overall.counts[1]);
    QCOMPARE(overall.counts[3], 0.0);
    QVERIFY(overall.averages[0] > 200.0 && overall.averages[0] < 1500.0);
    if (rows >= 1000) {
        QVERIFY(overall.counts[1] > 0);
        QVERIFY(overall.counts[2] > 0);
    }

    SectionModel &sections = file.GetSectionModel();
    // "Key" and "Pressed Or\nReleased" stand right of the reaction time too.
    QCOMPARE(sections.TrialVariableNames().size(), trialVariables);
    QCOMPARE(sections.CodeNames().size(), fields - 14 - trialVariables + 2);
    sections.ChangeSectionType(0);
    QCOMPARE(sections.rowCount(), blocks);
    sections.ChangeSectionType(1);
    QCOMPARE(sections.rowCount(), trials);
}

void TestSampleData::sameSeedGivesSameFileAndAnotherSeedAnother()
{
    SampleFileOptions options;
    options.rows = 2000;
    options.seed = 42;
    QVERIFY(SampleFileWriter(options).Write(dir.filePath("a.txt")));
    QVERIFY(SampleFileWriter(options).Write(dir.filePath("b.txt")));
    options.seed = 43;
    QVERIFY(SampleFileWriter(options).Write(dir.filePath("c.txt")));

    const QByteArray first = Bytes(dir.filePath("a.txt"));
    QVERIFY(first.size() > 100000);
    QCOMPARE(Bytes(dir.filePath("b.txt")), first);
    QVERIFY(Bytes(dir.filePath("c.txt")) != first);
}

void TestSampleData::participantsShareOneExperiment()
{
    SampleFileOptions options;
    options.design = QStringLiteral("lexical");
    options.rows = 150;
    const QStringList paths = SampleFileWriter::WriteParticipants(dir.filePath("study"), 3, options);
    QCOMPARE(paths.size(), 3);

    ModalCatcher catcher;
    QVERIFY(ValidateDataFiles(paths));
    QStringList dates;
    QStringList participants;
    for (const QString &path : paths) {
        DataFile file(path);
        QCOMPARE(file.ExperimentName(), QStringLiteral("Lexical Decision"));
        QCOMPARE(file.GetMainModel().rowCount(), 150);
        dates << file.Date();
        participants << file.HeaderFields().value(QStringLiteral(".Participant"));
    }
    QCOMPARE(participants, QStringList({"sub-01", "sub-02", "sub-03"}));
    dates.removeDuplicates();
    QCOMPARE(dates.size(), 3);
}

void TestSampleData::unknownDesignWritesNothing()
{
    SampleFileOptions options;
    options.design = QStringLiteral("flanker");
    const SampleFileWriter writer(options);
    QVERIFY(!writer.IsValid());
    QVERIFY(!writer.Write(dir.filePath("flanker.txt")));
    QVERIFY(!QFile::exists(dir.filePath("flanker.txt")));
}

// The committed examples are what a new user opens first.
void TestSampleData::examplesOpenTogether()
{
    const QDir examples(QStringLiteral(TEST_DATA_DIR "/../../examples"));
    QStringList paths;
    for (const QString &name : examples.entryList({QStringLiteral("*.txt")}, QDir::Files, QDir::Name))
        paths << examples.filePath(name);
    QCOMPARE(paths.size(), 5);

    ModalCatcher catcher;
    QVERIFY(ValidateDataFiles(paths));
    int legacy = 0;
    for (const QString &path : paths) {
        DataFile file(path);
        QVERIFY(file.GetMainModel().rowCount() >= 240);
        QCOMPARE(Title(file.GetMainModel(), 12), QStringLiteral("Reaction\nTime"));
        QVERIFY(file.Overall().TotalCount() > 0);
        legacy += file.LegacyFormat() ? 1 : 0;
    }
    QCOMPARE(legacy, 1);
}

ZEPHLANE_TEST_MAIN(TestSampleData)
#include "tst_sampledata.moc"
