// The sample data generator and the committed examples: what they hold
// must open in the program as a product file does.

#include "datafile.h"
#include "datafilevalidator.h"
#include "modalcatcher.h"
#include "samplefilewriter.h"
#include "testenvironment.h"
#include "testfiles.h"

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

class TestSampleData : public QObject
{
    Q_OBJECT

private slots:
    void filesOpen_data();
    void filesOpen();
    void sameSeedGivesSameBytes();

private:
    QTemporaryDir dir;
    ModalCatcher catcher;
};

void TestSampleData::filesOpen_data()
{
    QTest::addColumn<QStringList>("paths");
    QTest::addColumn<int>("legacyFiles");
    for (const bool legacy : {false, true}) {
        SampleFileOptions options;
        options.legacy = legacy;
        const QString path = dir.filePath(legacy ? "legacy.txt" : "dotted.txt");
        SampleFileWriter(options).Write(path);
        QTest::newRow(legacy ? "generated legacy" : "generated dotted") << QStringList{path} << int(legacy);
    }
    // The committed examples are what a new user opens first.
    const QDir examples(EXAMPLES_DIR);
    QStringList paths;
    for (const QString &name : examples.entryList({"*.txt"}, QDir::Files))
        paths << examples.filePath(name);
    QTest::newRow("committed examples") << paths << 1;
}

void TestSampleData::filesOpen()
{
    QFETCH(QStringList, paths);
    QFETCH(int, legacyFiles);
    catcher.Clear();
    QVERIFY(ValidateDataFiles(paths));
    QVERIFY(catcher.Messages().isEmpty());
    int legacy = 0;
    for (const QString &path : paths) {
        DataFile file(path);
        // The titles the statistics look for, where the product writes them.
        QStringList titles;
        for (const int column : {4, 5, 12})
            titles << file.GetMainModel().headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
        QCOMPARE(titles, QStringList({"Block\nName", "Trial\nName", "Reaction\nTime"}));
        QVERIFY(file.Overall().counts[0] > 0 && file.Overall().averages[0] > 0);
        legacy += file.LegacyFormat();
    }
    QCOMPARE(legacy, legacyFiles);
}

void TestSampleData::sameSeedGivesSameBytes()
{
    SampleFileOptions options;
    for (const char *name : {"a.txt", "b.txt"})
        QVERIFY(SampleFileWriter(options).Write(dir.filePath(name)));
    options.seed = 2;
    QVERIFY(SampleFileWriter(options).Write(dir.filePath("c.txt")));
    QCOMPARE(ReadAll(dir.filePath("b.txt")), ReadAll(dir.filePath("a.txt")));
    QVERIFY(ReadAll(dir.filePath("c.txt")) != ReadAll(dir.filePath("a.txt")));
}

ZEPHLANE_TEST_MAIN(TestSampleData)
#include "tst_sampledata.moc"
