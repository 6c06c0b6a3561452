// SPDX-License-Identifier: GPL-3.0-or-later
#include "datafile.h"

#include "cellnumber.h"
#include "datafileparser.h"
#include "filetext.h"
#include "headerline.h"
#include "linecursor.h"

#include <new>

namespace {

struct ShareColumn
{
    int column;
    int sectionType;
    QString columnName;
};

// Where hiding reads a row's sections: at the places where Kelmarun puts
// them, block at model column 4, trial at 5, and from 13 on the columns right
// of "Reaction\nTime", whatever their titles say.
QVector<ShareColumn> ShareColumns(const MainModel &model)
{
    QVector<ShareColumn> columns;
    const int count = model.columnCount();
    for (int column = 4; column < count; column = column == 5 ? 13 : column + 1) {
        if (column < 13) {
            columns.append(ShareColumn{column, column - 4, QString()});
            continue;
        }
        const QString title = model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
        columns.append(ShareColumn{column, title.contains(QLatin1String("Trial Variable")) ? 2 : 3, title});
    }
    return columns;
}

} // namespace

#include <QFileDevice>
#include <QTextStream>

DataFile::DataFile(const QString &path)
    : path(path)
{
    WireModels();
    Parse();
}

DataFile::DataFile()
{
    WireModels();
}

void DataFile::WireModels()
{
    mainProxy.setSourceModel(&mainModel);
    sectionProxy.setSourceModel(&sectionModel);
}

// Every allocation that can fail on a large file reports it, whichever
// thread made it; a file not read whole leaves the record empty.
void DataFile::Parse()
{
    try {
        failure = ReadFile();
    } catch (const std::bad_alloc &) {
        failure = ReadFailure::OutOfMemory;
    }
    if (failure == ReadFailure::None)
        return;
    experimentName.clear();
    date.clear();
    headerFields.clear();
    overall = SectionStats();
    QStringList noTitles;
    QVector<DataColumn> noColumns;
    mainModel.LoadData(noTitles, noColumns);
}

ReadFailure DataFile::ReadFile()
{
    ReadFailure readFailure = ReadFailure::None;
    const std::shared_ptr<CellText> text = FileText::Read(path, &readFailure);
    if (!text)
        return readFailure;
    LineCursor lines(*text);
    legacyFormat = !HeaderLine::IsFieldLine(LineCursor(*text).NextLineText());
    if (legacyFormat) {
        lines.NextLine();
        experimentName = lines.NextLineText();
        date = lines.NextLineText();
        lines.NextLine();
    } else {
        DataFileParser::ReadFieldLines(lines, &headerFields);
        experimentName = headerFields[QStringLiteral(".Experiment Name")];
        date = headerFields[QStringLiteral(".Date")];
    }

    // A table too large to hold fails here: titles longer than a string can
    // take, or more rows than a model can count.
    DataFileParser parser(text);
    if (!parser.ReadTable(lines))
        return ReadFailure::OutOfMemory;
    SectionStores stores = parser.TakeStatistics(&overall);
    QStringList titles;
    QVector<DataColumn> columns;
    std::shared_ptr<const TitleMarkStore> marks;
    parser.HandOver(&titles, &columns, &marks);
    if (marks)
        titleMarks.push_back(std::move(marks));
    mainModel.LoadData(titles, columns);
    sectionModel.SetSections(stores.blocks, stores.trials, stores.trialVariables, stores.codeColumns);
    return ReadFailure::None;
}

void DataFile::CopyFrom(const DataFile &other)
{
    experimentName = other.experimentName;
    date = other.date;
    overall = other.overall;
    titleMarks = other.titleMarks;
    mainModel.CopyRows(other.mainModel);
    sectionModel.CopySections(other.sectionModel);
}

// The dates run together on purpose: each one is followed by a blank and
// nothing stands before it, which is how the merged file shows them.
void DataFile::Combine(const DataFile &other)
{
    if (!experimentName.isEmpty())
        experimentName += QLatin1String(" & ");
    experimentName += other.experimentName;
    date += other.date + QLatin1Char(' ');
    titleMarks.insert(titleMarks.end(), other.titleMarks.cbegin(), other.titleMarks.cend());
    mainModel.AppendRows(other.mainModel);
    overall.Add(other.overall);
    overall.Finish();
    sectionModel.MergeSections(other.sectionModel);
}

// No codec is set: the file takes the locale's encoding, like every text
// the program writes. The report comes while the stream still holds the
// text, whether or not it will reach the disk: the window's box is up
// before anything is written, and writing errors are deliberately not
// looked at here.
void DataFile::WriteMergedFile(QFileDevice &file, int rowsToMerge, bool includeHiddenRows, bool transpose,
                               const MessageReport &report) const
{
    QTextStream stream(&file);
    if (!transpose)
        stream << "\n{ " << experimentName << " }\n{ " << date << " }\n\n";
    mainModel.WriteMergedRows(stream, rowsToMerge, includeHiddenRows, transpose);
    report(QStringLiteral("Talvox Zephlane"),
           QStringLiteral("Data successfully written to ") + file.fileName() + QLatin1Char('.'));
}

void DataFile::HideRows(const QVector<int> &rows)
{
    mainProxy.HideRows(rows);
}

void DataFile::HideSelectedRows(const QVector<int> &selected)
{
    QVector<int> rows;
    QVector<bool> seen(mainModel.rowCount(), false);
    for (const int row : selected) {
        if (row >= 0 && row < seen.size() && !seen[row]) {
            seen[row] = true;
            rows.append(row);
        }
    }
    const QVector<HiddenSectionStats> shares = HiddenShares(rows);
    HideRows(rows);
    sectionModel.HideStats(shares);
    for (const HiddenSectionStats &share : shares) {
        if (share.sectionType == 0)
            overall.Subtract(share);
    }
    overall.Finish();
}

void DataFile::ShowAllRows()
{
    if (mainModel.HiddenRowCount() == 0)
        return;
    mainModel.RestoreRows();
    for (const HiddenSectionStats *share : sectionModel.HiddenStats()) {
        if (share->sectionType == 0)
            overall.Add(*share);
    }
    overall.Finish();
    sectionModel.RestoreHiddenStats();
}

// The share of each section in the given rows. These records keep "SC" in
// its own slot, although the load folded it into "C" for the blocks and the
// whole file. Titles of a model differ, so each column's records are told
// apart by section name alone.
QVector<HiddenSectionStats> DataFile::HiddenShares(const QVector<int> &rows) const
{
    const QVector<ShareColumn> columns = ShareColumns(mainModel);
    QVector<HiddenSectionStats> shares;
    QVector<QHash<QString, int>> positions(columns.size());
    for (const int row : rows) {
        const int slot = CodeIndex(Cell(row, mainModel.ErrorCodeColumn()));
        const int rt = CellNumber::TruncateToInt(CellValue(row, mainModel.ReactionTimeColumn()));
        for (int i = 0; i < columns.size(); ++i) {
            QString name = Cell(row, columns[i].column);
            if (name.isEmpty())
                name = QStringLiteral("<No Name>");
            auto found = positions[i].find(name);
            if (found == positions[i].end()) {
                found = positions[i].insert(name, shares.size());
                shares.append(HiddenSectionStats(name, columns[i].sectionType, columns[i].columnName));
            }
            shares[*found].AddToSlot(slot, rt);
        }
    }
    return shares;
}

// A missing column reads as an empty cell and a time of 0.
QString DataFile::Cell(int row, int column) const
{
    return column < 0 ? QString() : mainModel.CellText(mainModel.index(row, column));
}

double DataFile::CellValue(int row, int column) const
{
    double value = 0;
    if (column >= 0)
        mainModel.ReadNumber(mainModel.index(row, column), &value);
    return value;
}
