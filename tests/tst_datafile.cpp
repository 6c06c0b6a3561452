// SPDX-License-Identifier: GPL-3.0-or-later
// Reading data files: both header generations, titles, rows, odd bytes,
// and the validator that refuses what is not a data file.

#include "datafilevalidator.h"
#include "informationbox.h"
#include "modalcatcher.h"
#include "tablecontents.h"
#include "testenvironment.h"
#include "testfiles.h"

#include <QApplication>
#include <QRandomGenerator>
#include <QTextStream>
#include <QtTest>

namespace {

// The straightforward reading of a data file, line by line through a text
// stream, that the fast reader must agree with: the experiment name, the
// titles after "Flag", then each row's cells.
QStringList ReadReference(const QString &path, bool legacy)
{
    QFile file(path);
    file.open(QIODevice::ReadOnly | QIODevice::Text);
    QTextStream stream(&file);
    QString name;
    for (int i = 0; legacy ? i < 4 : !stream.atEnd(); ++i) {
        const QString line = stream.readLine();
        if (legacy ? i == 1 : line.startsWith(QLatin1String(".Experiment Name\t")))
            name = legacy ? line : line.section(QLatin1Char('\t'), 1);
        if (!legacy && !line.startsWith(QLatin1Char('.')))
            break;
    }
    const QStringList upper = stream.readLine().split(QLatin1Char('\t'));
    const QStringList lower = stream.readLine().split(QLatin1Char('\t'));
    QStringList titles;
    for (int i = 0; i < lower.size(); ++i)
        titles << (upper.value(i).isEmpty() ? lower[i] : upper[i] + "\n" + lower[i]);
    QStringList read{name, titles.join('|')};
    while (!stream.atEnd()) {
        const QStringList fields = stream.readLine().split(QLatin1Char('\t')) + QVector<QString>(lower.size()).toList();
        read << (QStringList{QString()} + fields.mid(0, lower.size())).join('|');
    }
    return read;
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

    TestFiles files;

private slots:
    void readsTheHeader_data()
    {
        QTest::addColumn<QByteArray>("header");
        QTest::addColumn<QString>("read");
        // A later line with the same key wins, and its value keeps its TAB.
        QTest::newRow("dotted") << QByteArray(".Experiment Name\tStroop\n.Date\tx\n.Version\t7\n.Date\t2026\tevening\n.\n")
                                << "dotted|Stroop|2026\tevening|7|C|300";
        // The first line decides: a dot, then a TAB somewhere.
        QTest::newRow("legacy") << QByteArray("Kelmarun\nOld Stroop\n11/22/2026\n") << "legacy|Old Stroop|11/22/2026||C|300";
        QTest::newRow("key without tab") << QByteArray(".Date\nName\nDate\n") << "legacy|Name|Date||C|300";
        QTest::newRow("dot line") << QByteArray(".\nName\nDate\n") << "legacy|Name|Date||C|300";
        QTest::newRow("tab but no dot") << QByteArray("Experiment\tX\nName\nDate\n") << "legacy|Name|Date||C|300";
        QTest::newRow("dot and tab only") << QByteArray(".\t\n") << "dotted||||C|300";
    }

    // The line that ends the header goes, whatever it holds.
    void readsTheHeader()
    {
        QFETCH(QByteArray, header);
        DataFile file(files.Write(header + "dropped\nError\tReaction\nCode\tTime\nC\t300\n"));
        QTEST(QStringList({file.LegacyFormat() ? "legacy" : "dotted", file.ExperimentName(), file.Date(),
                           file.HeaderFields().value(".Version")}).join('|')
                  + TableContents::Cells(file.GetMainModel()).value(0),
              "read");
    }

    // Each repeat of a title gets as many "#" as set it apart from every
    // title before it, the model's own "Flag" included.
    void marksRepeatedTitlesAsRepeatedWalksWould()
    {
        QRandomGenerator random(3);
        const QStringList pieces = {"", "#", "##", "A", "A#", "Flag", "Flag#"};
        for (int round = 0; round < 200; ++round) {
            QStringList titles;
            for (int i = random.bounded(1, 10); i > 0; --i)
                titles << pieces[random.bounded(pieces.size())];
            DataFile file(files.Write((".Experiment Name\tX\n\n\n" + titles.join('\t') + "\n").toUtf8()));
            QCOMPARE(TableContents::Titles(file.GetMainModel()), MarkRepeatsByWalking(QStringList{"Flag"} + titles));
        }
    }

    // Random rows built from the bytes that could trip a fast reader: TABs,
    // CRs, NULs, broken and complete UTF-8, byte order marks and empty lines;
    // and tables that show the rules: title row 2 decides the columns, an
    // empty or missing upper cell gives a one-line title, surplus cells of a
    // row are dropped and missing ones are empty, every CR is dropped.
    void agreesWithLineByLineReading_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("legacy");
        const QList<QByteArray> pieces = {"a", "Zz", "\t", "\t", "\n", "\r", "\r\n", ".", QByteArray(1, '\0'), "\xff",
                                          "\xe2\x82", "\xe2\x82\xac", "\xef\xbb\xbf", " ", "12.5", "C", "SC"};
        for (quint32 seed = 1; seed <= 2000; ++seed) {
            QRandomGenerator random(seed);
            DataFileBuilder builder;
            if (seed % 2 == 0)
                builder.Legacy();
            QByteArray bytes = builder.Experiment(QString::fromUtf8("Caf\xc3\xa9")).KelmarunTitles().Bytes();
            for (int i = random.bounded(400); i > 0; --i)
                bytes += pieces[random.bounded(pieces.size())];
            QTest::addRow("%s %u", seed % 2 ? "dotted" : "legacy", seed) << bytes << (seed % 2 == 0);
        }
        const QByteArray header = ".Experiment Name\tX\n\n";
        QTest::newRow("cells") << header + "Error\t\tReaction\tsurplus\nCode\tKey\tTime\nC\ta\t300\tmore\nE\n\nNR\t\t\n" << false;
        QTest::newRow("short upper row") << header + "Error\nCode\tKey\tTime\n" << false;
        QTest::newRow("CR LF and a stray CR") << header + "Error\r\nCode\r\nx\ry\r\n" << false;
        static const char nulTitles[] = "A\0\xff\t\xe2\x82\tA\0\xff\nB\t\0\t\nx\t\0y\n";
        QTest::newRow("NUL and broken UTF-8 in titles")
            << header + QByteArray(nulTitles, sizeof nulTitles - 1) << false;
        // Enough fields, or a long enough line, for a row's cell ends to be
        // kept wider than 16 bits.
        QByteArray wide;
        for (int column = 0; column < 40'000; ++column)
            wide += "Code " + QByteArray::number(column) + '\t';
        QTest::newRow("40,000 columns") << header + "\n" + wide + "\n" + QByteArray("1\t").repeated(5'000) + "\n" + wide << false;
        const QByteArray cells = QByteArray(2'000'000, 'x') + '\t';
        QTest::newRow("20 MB line") << header + "Error\nCode\tTime\n" + cells.repeated(10) + "\nC\n" << false;
    }

    void agreesWithLineByLineReading()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, legacy);
        const QString path = files.Write(bytes);
        DataFile file(path);
        QCOMPARE(QStringList({file.ExperimentName(), TableContents::Titles(file.GetMainModel()).mid(1).join('|')})
                     + TableContents::Cells(file.GetMainModel()),
                 ReadReference(path, legacy));
    }

    // The marks of repeated titles live as long as the last record that
    // holds one of them, a combined record included, and no longer.
    void titleMarksGoWithTheirRecords()
    {
        auto file = std::make_unique<DataFile>(files.Write(QByteArray(".Experiment Name\tX\n\nA\tA\tB\nA\tA\tB\n")));
        QCOMPARE(TableContents::Titles(file->GetMainModel()).join('|'), "Flag|A\nA|A\nA#|B\nB");
        QCOMPARE(file->GetTitleMarks().size(), size_t(1));
        const std::weak_ptr<const TitleMarkStore> marks = file->GetTitleMarks().front();
        auto combined = std::make_unique<DataFile>();
        combined->CopyFrom(*file);
        combined->Combine(DataFile(files.Write(QByteArray(".Experiment Name\tX\n\nC\nD\n"))));
        file.reset();
        QCOMPARE(TableContents::Titles(combined->GetMainModel()).join('|'), "Flag|A\nA|A\nA#|B\nB|C\nD");
        combined.reset();
        QVERIFY(marks.expired());
    }

    // Random bytes open and every cell of them reads. 100,000 equal titles
    // carry 0 to 99,999 marks and empty lines no cells, so neither costs
    // more than its bytes; a line of 20 MB is read without recursion.
    void survivesArbitraryBytes()
    {
        QRandomGenerator random(7);
        for (int round = 0; round < 30; ++round) {
            QByteArray bytes(round % 3 ? "" : ".Experiment Name\tX\n\n");
            for (int i = random.bounded(1, 3000); i > 0; --i)
                bytes += char(random.bounded(256));
            DataFile file(files.Write(bytes));
            TableContents::Cells(file.GetMainModel());
            QVERIFY(file.GetMainModel().columnCount() >= 2);
        }
        const QByteArray titles = QByteArray("\t").repeated(99'999) + "\n";
        DataFile wide(files.Write("x\nN\nD\n\n" + titles + titles + QByteArray("\n").repeated(20'000)));
        QCOMPARE(wide.GetMainModel().columnCount(), 100'001);
        QCOMPARE(wide.GetMainModel().rowCount(), 20'000);
        QCOMPARE(TableContents::Titles(wide.GetMainModel()).last(), QString(99'999, '#'));
        QCOMPARE(DataFile(files.Write(QByteArray(20'000'000, 'x'))).GetMainModel().rowCount(), 0);
    }

    void validatorJudgesFiles_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("valid");
        const QByteArray titles = "Participant\tError\tReaction\nName\tCode\tTime\n";
        const QByteArray dotted = ".Experiment Name\tX\n.Date\tY\n.\n\n";
        auto legacy = [&](const QByteArray &line3, const QByteArray &line4) {
            return "first\nName\n" + line3 + "\n" + line4 + "\n" + titles;
        };
        QTest::newRow("dotted") << dotted + titles << true;
        QTest::newRow("empty") << QByteArray() << false;
        QTest::newRow("field lines only") << QByteArray(".Experiment Name\tX\n.Date\tY\n") << false;
        QTest::newRow("titles without known words") << dotted + "A\tB\nC\tD\n" << false;
        QTest::newRow("lower title without known words") << dotted + "Error\nName\n" << false;
        QTest::newRow("words are case-sensitive") << dotted + "error\ncode\n" << false;
        // The validator reads in pieces of 8192 characters; a word may span two.
        QTest::newRow("word split between pieces") << dotted + QByteArray(8192 - dotted.size() - 3, 'x') + "Error\nCode\n" << true;
        QTest::newRow("legacy") << legacy("11/22/2026", "") << true;
        QTest::newRow("legacy time with colon") << legacy("12:30", "") << false;
        QTest::newRow("legacy colon and slash") << legacy("12/30 12:30", "") << true;
        QTest::newRow("legacy colon and hyphen") << legacy("12-30 12:30", "") << true;
        QTest::newRow("legacy colon and full stop") << legacy("12.30 12:30", "") << true;
        QTest::newRow("legacy one-word line 4") << legacy("Monday", "Subject") << false;
        QTest::newRow("legacy two-word line 4") << legacy("Monday", "Subject 4") << true;
        QTest::newRow("legacy empty line 2") << QByteArray("first\n\nDate\n\n" + titles) << false;
        QTest::newRow("filled dotted terminator passes as legacy") << ".Experiment Name\tX\n.Date\tY\n. \n\n" + titles << true;
        QTest::newRow("dotted terminator read as legacy line 4") << ".Experiment Name\tX\n.Date\tY\n.\nEnd\n" + titles << false;
    }

    void validatorJudgesFiles()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, valid);
        ModalCatcher catcher;
        QCOMPARE(ValidateDataFiles({files.Write(bytes)}, ShowInformationBox), valid);
        QCOMPARE(catcher.Messages().size(), valid ? 0 : 1);
    }
};

ZEPHLANE_TEST_MAIN(TestDataFile)
#include "tst_datafile.moc"
