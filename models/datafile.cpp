#include "datafile.h"

#include "cellnumber.h"
#include "datafileparser.h"
#include "filetext.h"
#include "headerline.h"
#include "linecursor.h"

#include <QFile>
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
    mainProxy.setDynamicSortFilter(false);
    sectionProxy.setSourceModel(&sectionModel);
}

void DataFile::Parse()
{
    const std::shared_ptr<CellText> text = FileText::Read(path);
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

    DataFileParser parser(text);
    parser.ReadTable(lines);
    SectionStores stores = parser.CollectStatistics(&overall);
    parser.HandOver(&mainModel);
    sectionModel.SetSections(stores.blocks, stores.trials, stores.trialVariables, stores.codeColumns);
}

void DataFile::CopyFrom(const DataFile &other)
{
    experimentName = other.experimentName;
    date = other.date;
    overall = other.overall;
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
    mainModel.AppendRows(other.mainModel);
    overall.Add(other.overall);
    overall.Finish();
    sectionModel.MergeSections(other.sectionModel);
}

// No codec is set: the file takes the locale's encoding, like every text
// the program writes.
void DataFile::WriteMergedFile(QFile &file, int rowsToMerge, bool includeHiddenRows,
                               bool transpose) const
{
    QTextStream stream(&file);
    if (!transpose)
        stream << "\n{ " << experimentName << " }\n{ " << date << " }\n\n";
    mainModel.WriteMergedRows(stream, rowsToMerge, includeHiddenRows, transpose, file.fileName());
}

void DataFile::HideRows(const QVector<int> &rows)
{
    mainProxy.BeginRowRemovals();
    mainModel.HideRows(rows);
    mainProxy.EndRowRemovals();
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

// The sections of the given rows, read at the places where the product puts
// them: block at model column 4, trial at 5, and from 13 on the columns right
// of "Reaction\nTime". These records keep "SC" in its own slot, although the
// load folded it into "C" for the blocks and the whole file.
QVector<HiddenSectionStats> DataFile::HiddenShares(const QVector<int> &rows) const
{
    QVector<HiddenSectionStats> shares;
    QHash<QString, int> positions;
    const int columns = mainModel.columnCount();
    QVector<int> sectionColumns{4, 5};
    for (int column = 13; column < columns; ++column)
        sectionColumns.append(column);
    for (const int row : rows) {
        double time = 0;
        if (mainModel.ReactionTimeColumn() >= 0)
            mainModel.CellNumber(mainModel.index(row, mainModel.ReactionTimeColumn()), &time);
        const int rt = CellNumber::TruncateToInt(time);
        const QString code = mainModel.ErrorCodeColumn() < 0
                                 ? QString()
                                 : mainModel.CellText(mainModel.index(row, mainModel.ErrorCodeColumn()));
        for (const int column : sectionColumns) {
            if (column >= columns)
                continue;
            const QString title = mainModel.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
            const int type = column == 4 ? 0 : column == 5 ? 1 : title.contains(QLatin1String("Trial Variable")) ? 2 : 3;
            const QString columnName = type < 2 ? QString() : title;
            QString name = mainModel.CellText(mainModel.index(row, column));
            if (name.isEmpty())
                name = QStringLiteral("<No Name>");
            const QString key = QString::number(type) + QChar(0) + columnName + QChar(0) + name;
            auto found = positions.find(key);
            if (found == positions.end()) {
                found = positions.insert(key, shares.size());
                shares.append(HiddenSectionStats(name, type, columnName));
            }
            shares[*found].AddRow(code, rt);
        }
    }
    return shares;
}
