#include "datafile.h"

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
