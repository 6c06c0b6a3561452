// The sample data generator and the committed examples: what they hold
// must open in the program as a product file does.

#include "datafile.h"
#include "datafilevalidator.h"
#include "modalcatcher.h"
#include "samplefilewriter.h"
#include "testenvironment.h"

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

namespace {

QByteArray Bytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The titles the statistics look for, at the model columns where the
// product writes them.
QStringList KeyTitles(DataFile &file)
{
    QStringList titles;
    for (const int column : {4, 5, 12})
        titles << file.GetMainModel().headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    return titles;
}

const QStringList productTitles{"Block\nName", "Trial\nName", "Reaction\nTime"};

} // namespace

class TestSampleData : public QObject
{
    Q_OBJECT

private slots:
    void generatedFilesOpen_data();
    void generatedFilesOpen();
    void sameSeedGivesSameBytes();
    void examplesOpen();

private:
    QTemporaryDir dir;
    ModalCatcher catcher;
};

void TestSampleData::generatedFilesOpen_data()
{
    QTest::addColumn<bool>("legacy");
    QTest::newRow("dotted") << false;
    QTest::newRow("legacy") << true;
}

void TestSampleData::generatedFilesOpen()
{
    QFETCH(bool, legacy);
    SampleFileOptions options;
    options.legacy = legacy;
    const QString path = dir.filePath(QString::fromLatin1(QTest::currentDataTag()) + ".txt");
    QVERIFY(SampleFileWriter(options).Write(path));
    catcher.Clear();
    QVERIFY(ValidateDataFiles({path}));
    QVERIFY(catcher.Messages().isEmpty());

    DataFile file(path);
    QCOMPARE(file.LegacyFormat(), legacy);
    QCOMPARE(file.ExperimentName(), QString("Stroop Colour Naming"));
    QCOMPARE(file.GetMainModel().rowCount(), options.rows);
    QCOMPARE(KeyTitles(file), productTitles);
    QVERIFY(file.Overall().counts[0] > 0 && file.Overall().averages[0] > 0);
}

void TestSampleData::sameSeedGivesSameBytes()
{
    SampleFileOptions options;
    for (const char *name : {"a.txt", "b.txt"})
        QVERIFY(SampleFileWriter(options).Write(dir.filePath(name)));
    options.seed = 2;
    QVERIFY(SampleFileWriter(options).Write(dir.filePath("c.txt")));
    QCOMPARE(Bytes(dir.filePath("b.txt")), Bytes(dir.filePath("a.txt")));
    QVERIFY(Bytes(dir.filePath("c.txt")) != Bytes(dir.filePath("a.txt")));
}

// The committed examples are what a new user opens first.
void TestSampleData::examplesOpen()
{
    const QDir examples(QStringLiteral(TEST_DATA_DIR "/../../examples"));
    QStringList paths;
    for (const QString &name : examples.entryList({"*.txt"}, QDir::Files))
        paths << examples.filePath(name);
    QCOMPARE(paths.size(), 5);
    catcher.Clear();
    QVERIFY(ValidateDataFiles(paths));
    QVERIFY(catcher.Messages().isEmpty());
    for (const QString &path : paths) {
        DataFile file(path);
        QCOMPARE(KeyTitles(file), productTitles);
        QVERIFY(file.Overall().TotalCount() > 0);
    }
}

ZEPHLANE_TEST_MAIN(TestSampleData)
#include "tst_sampledata.moc"
