// SPDX-License-Identifier: GPL-3.0-or-later
// The sample data generator and the committed examples: what they hold
// must open in the program as a file of Kelmarun's does.

#include "datafilevalidator.h"
#include "informationbox.h"
#include "modalcatcher.h"
#include "samplefilewriter.h"
#include "tablecontents.h"
#include "testenvironment.h"
#include "testfiles.h"

#include <QApplication>
#include <QDir>
#include <QtTest>

class TestSampleData : public QObject
{
    Q_OBJECT

    TestFiles files;

private slots:
    // The titles the statistics look for stand where Kelmarun writes
    // them, and there are correct responses with their times. The committed
    // examples, what a new user opens first, hold one legacy file.
    void filesOpen()
    {
        QStringList paths;
        for (const bool legacy : {false, true}) {
            SampleFileOptions options;
            options.legacy = legacy;
            QVERIFY(SampleFileWriter(options).Write(files.Path(legacy ? "legacy.txt" : "dotted.txt")));
            paths << files.Path(legacy ? "legacy.txt" : "dotted.txt");
        }
        const QDir examples(EXAMPLES_DIR);
        for (const QString &name : examples.entryList({"*.txt"}, QDir::Files))
            paths << examples.filePath(name);
        ModalCatcher catcher;
        QVERIFY(ValidateDataFiles(paths, ShowInformationBox) && catcher.Messages().isEmpty());
        QString legacy;
        for (const QString &path : paths) {
            DataFile file(path);
            const QStringList titles = TableContents::Titles(file.GetMainModel());
            QCOMPARE(titles.value(4) + '|' + titles.value(5) + '|' + titles.value(12), "Block\nName|Trial\nName|Reaction\nTime");
            QVERIFY(file.Overall().counts[0] > 0 && file.Overall().averages[0] > 0);
            legacy += file.LegacyFormat() ? '1' : '0';
        }
        QCOMPARE(legacy.left(2) + ' ' + QString::number(legacy.count('1')), "01 2");
    }

    void sameSeedGivesSameBytes()
    {
        SampleFileOptions options;
        QStringList bytes;
        for (const quint64 seed : {1, 1, 2}) {
            options.seed = seed;
            SampleFileWriter(options).Write(files.Path("sample.txt"));
            bytes << ReadAll(files.Path("sample.txt")).toHex();
        }
        QVERIFY(bytes[0] == bytes[1] && bytes[0] != bytes[2]);
    }
};

ZEPHLANE_TEST_MAIN(TestSampleData)
#include "tst_sampledata.moc"
