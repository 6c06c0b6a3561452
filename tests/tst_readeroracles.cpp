// SPDX-License-Identifier: GPL-3.0-or-later
// The fast reader held against plain readings: the same file read in one
// stretch and in several gives the same cells and statistics; the
// statistics equal one plain walk over the cells with the record
// operations the reader does not call; the number parses read from bytes
// give what Qt's own parses give for the decoded text; the scan's masks of
// delimiters and the statistics' keys of cells give what a walk byte by
// byte and a plain map give.

#include "cellkeys.h"
#include "chunkstatistics.h"
#include "cellnumber.h"
#include "datafileparser.h"
#include "delimitermasks.h"
#include "parallelparts.h"
#include "samplefilewriter.h"
#include "tablecontents.h"
#include "testenvironment.h"
#include "testfiles.h"

#include <QRandomGenerator>
#include <QtTest>

#include <map>
#include <string>

namespace {

QString Record(const SectionStats &record)
{
    QStringList numbers;
    for (const SectionStats::Slots *values : {&record.counts, &record.sums, &record.percents, &record.averages}) {
        for (const double value : *values)
            numbers << QString::number(value, 'g', 17);
    }
    return record.name + ": " + numbers.join(' ');
}

QString Records(const QVector<SectionStats> &records)
{
    QStringList texts;
    for (const SectionStats &record : records)
        texts << Record(record);
    return texts.join(", ");
}

QString Stores(const SectionStats &overall, const QVector<SectionStats> &blocks, const QVector<SectionStats> &trials,
               const QMap<QString, QVector<SectionStats>> &trialVariables,
               const QMap<QString, QVector<SectionStats>> &codeColumns)
{
    QStringList texts{Record(overall), "blocks " + Records(blocks), "trials " + Records(trials)};
    for (const auto *map : {&trialVariables, &codeColumns}) {
        for (auto entry = map->cbegin(); entry != map->cend(); ++entry)
            texts << entry.key() + " " + Records(entry.value());
    }
    return texts.join("; ");
}

// Every statistic of a record exactly, with its names.
QString Statistics(DataFile &file)
{
    SectionModel &sections = file.GetSectionModel();
    QMap<QString, QVector<SectionStats>> maps[2];
    for (const int type : {2, 3}) {
        const QStringList names = type == 2 ? sections.TrialVariableNames() : sections.CodeNames();
        for (int i = 0; i < names.size(); ++i)
            maps[type - 2].insert(QString::number(i) + names[i], *sections.Records(type, i));
    }
    return Stores(file.Overall(), *sections.Records(0, 0), *sections.Records(1, 0), maps[0], maps[1]);
}

// The statistics of the table in one walk, column by column and row by
// row, through the plain record operations.
QString PlainStatistics(const MainModel &model)
{
    const QStringList titles = TableContents::Titles(model);
    const int errorCode = titles.indexOf("Error\nCode");
    const int reactionTime = titles.indexOf("Reaction\nTime");
    auto cell = [&](int row, int column) { return column < 0 ? QString() : model.index(row, column).data().toString(); };
    SectionStats overall;
    QVector<SectionStats> blocks;
    QVector<SectionStats> trials;
    QMap<QString, QVector<SectionStats>> byTitle[2];
    for (int column = reactionTime + 1; column < titles.size(); ++column)
        byTitle[titles[column].contains("(Trial Variable)") ? 0 : 1].insert(titles[column], {});
    for (int column = 0; column < titles.size(); ++column) {
        const int kind = ColumnSectionKind(titles[column], column > reactionTime);
        for (int row = 0; kind >= 0 && row < model.rowCount(); ++row) {
            const QString name = cell(row, column).isEmpty() ? "<No Name>" : cell(row, column);
            QString code = cell(row, errorCode);
            const int rt = CellNumber::TruncateToInt(cell(row, reactionTime).toDouble());
            if (kind == 0) {
                overall.AccumulateOverall(code, rt);
                AccumulateSection(blocks, name, code, rt);
            } else {
                AccumulateSection(kind == 1 ? trials : byTitle[kind - 2][titles[column]], name, code, rt);
            }
        }
    }
    overall.Finish();
    for (QVector<SectionStats> *records : {&blocks, &trials})
        FinishAll(*records);
    QMap<QString, QVector<SectionStats>> maps[2];
    for (int type = 0; type < 2; ++type) {
        int i = 0;
        for (auto entry = byTitle[type].begin(); entry != byTitle[type].end(); ++entry, ++i) {
            FinishAll(*entry);
            QString name = entry.key();
            maps[type].insert(QString::number(i) + (type == 0 ? name.remove("\n(Trial Variable)") : name), *entry);
        }
    }
    return Stores(overall, blocks, trials, maps[0], maps[1]);
}

QString Table(const MainModel &model)
{
    QStringList empty;
    for (int column = 0; column < model.columnCount(); ++column)
        empty << QString::number(model.IsColumnEmpty(column));
    return (TableContents::Titles(model) + TableContents::Cells(model) + empty).join('\n');
}

} // namespace

class TestReaderOracles : public QObject
{
    Q_OBJECT

    TestFiles files;

    QStringList Paths()
    {
        QStringList paths;
        QRandomGenerator random(5);
        const QList<QByteArray> pieces = {"B1", "B2", "T1", "T2", "C", "E", "NR", "SC", "X", "\t", "\t", "\t", "\n",
                                          "\r", "300", "512.9", "-7.5", "1e3", "", "x", "\xc3\xa9", "\xff"};
        for (int file = 0; file < 40; ++file) {
            QByteArray bytes = DataFileBuilder().Columns("Block/Name,Trial/Name,Error/Code,Reaction/Time,"
                                                         "Hand/(Trial Variable),Side,Left/(Trial Variable)")
                                   .Bytes();
            for (int i = random.bounded(3000); i > 0; --i)
                bytes += pieces[random.bounded(pieces.size())];
            paths << files.Write(bytes);
        }
        for (const int columns : {16, 200}) {
            SampleFileOptions options;
            options.rows = 3000;
            options.columns = columns;
            options.seed = quint64(columns);
            paths << files.Path(QString("sample%1.txt").arg(columns));
            SampleFileWriter(options).Write(paths.last());
        }
        return paths;
    }

private slots:
    void cleanup()
    {
        ParallelParts::SetCount(0);
        ChunkStatistics::SetOrderFreeLimit(0);
    }

    // Stretches end at line starts wherever the bytes fall, so each count
    // cuts the files differently.
    void readsTheSameInAnyNumberOfStretches()
    {
        for (const QString &path : Paths()) {
            ParallelParts::SetCount(1);
            DataFile single(path);
            const QString table = Table(single.GetMainModel());
            const QString statistics = Statistics(single);
            for (const int stretches : {2, 3, 8}) {
                ParallelParts::SetCount(stretches);
                DataFile several(path);
                QVERIFY2(Table(several.GetMainModel()) == table, qPrintable(QString("%1 stretches").arg(stretches)));
                QCOMPARE(Statistics(several), statistics);
            }
        }
    }

    // Also when the reader counts the rows again in one pass in their
    // order, as it does where the sums of times grow past exact doubles.
    void statisticsEqualOnePlainWalk()
    {
        for (const quint64 orderFreeLimit : {quint64(0), quint64(1)}) {
            ChunkStatistics::SetOrderFreeLimit(orderFreeLimit);
            for (const QString &path : Paths()) {
                DataFile file(path);
                QCOMPARE(Statistics(file), PlainStatistics(file.GetMainModel()));
            }
        }
    }

    void numberPartsReadAsQtReadsThem()
    {
        QRandomGenerator random(9);
        const QStringList pieces = {"0", "1", "9", "5", "-", ".", "+", "e", " ", "2147483647", "2147483648", "999999999999999",
                                    "00000000000", "x"};
        for (int round = 0; round < 20000; ++round) {
            QString text;
            for (int i = random.bounded(1, 6); i > 0; --i)
                text += pieces[random.bounded(pieces.size())];
            const QByteArray bytes = text.toLatin1();
            const std::string_view view(bytes.constData(), size_t(bytes.size()));
            bool ok = false;
            const double number = text.toDouble(&ok);
            double fast = 0;
            if (CellNumber::ParsePlainDecimal(view, &fast))
                QVERIFY2(ok && fast == number, qPrintable(text));
            int truncated = 0;
            if (CellNumber::ParsePlainTruncated(view, &truncated))
                QVERIFY2(truncated == CellNumber::TruncateToInt(ok ? number : 0.0), qPrintable(text));
            const int whole = text.toInt(&ok, 10);
            int fastWhole = 0;
            if (CellNumber::ParsePlainInteger(view, &fastWhole))
                QVERIFY2(ok && fastWhole == whole, qPrintable(text));
        }
    }

    // Blocks of every byte value, TABs and LFs thick among them.
    void delimiterMasksEqualAWalkByteByByte()
    {
        QRandomGenerator random(11);
        char block[DelimiterMasks::kBlockBytes];
        for (int round = 0; round < 20000; ++round) {
            for (char &byte : block)
                byte = char(random.bounded(4) == 0 ? "\t\n"[random.bounded(2)] : random.bounded(256));
            const DelimiterMasks fast = DelimiterMasks::Of(block);
            const DelimiterMasks plain = DelimiterMasks::OfPlain(block);
            QCOMPARE(fast.tabs, plain.tabs);
            QCOMPARE(fast.feeds, plain.feeds);
        }
    }

    // Cells of up to 30 bytes, mostly of one letter, else of another or a
    // NUL, so that many share their first or last eight bytes, or differ
    // only in length; the columns hold few values or many. The bytes are
    // followed by padding, as a file's are.
    void cellKeysFindWhatAPlainMapFinds()
    {
        QRandomGenerator random(13);
        const char letters[] = {'a', 'a', 'a', 'a', 'a', 'a', 'b', '\0'};
        for (int column = 0; column < 200; ++column) {
            const int values = column % 2 ? 3 : 300;
            std::vector<std::string> cells;
            for (int i = 0; i < values; ++i) {
                std::string cell(size_t(random.bounded(31)), 'a');
                for (char &byte : cell)
                    byte = letters[random.bounded(8)];
                cells.push_back(cell + std::string(8, 'x'));
            }
            CellKeys keys;
            std::map<std::string, int> plain;
            for (int lookup = 0; lookup < 2000; ++lookup) {
                const std::string &cell = cells[size_t(random.bounded(values))];
                const std::string_view bytes(cell.data(), cell.size() - 8);
                const auto found = plain.find(std::string(bytes));
                QCOMPARE(keys.Find(bytes), found == plain.end() ? -1 : found->second);
                if (found == plain.end()) {
                    plain.emplace(std::string(bytes), lookup);
                    keys.Insert(bytes, lookup);
                }
            }
        }
    }
};

ZEPHLANE_TEST_MAIN(TestReaderOracles)
#include "tst_readeroracles.moc"
