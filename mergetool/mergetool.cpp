// SPDX-License-Identifier: GPL-3.0-or-later
#include "mergetool.h"

#include "datafile.h"
#include "filecombiner.h"
#include "tooloutput.h"

#include <QCommandLineParser>

namespace {

// "All rows ": the choice that the merge dialog starts with.
const int kAllRows = 2;

} // namespace

MergeTool::MergeTool()
    : CommandLineTool(QStringLiteral("zephlane-merge"), QStringLiteral("Data files to merge."))
{
}

void MergeTool::DescribeOptions(QCommandLineParser &parser) const
{
    parser.setApplicationDescription(QStringLiteral(
        "Merges Kelmarun data files into one tab-separated file, in the order given: the file that\n"
        "Zephlane's \"Merge...\" writes for these files selected in that order, with all rows."));
    parser.addOption({QStringLiteral("transpose"), QStringLiteral("Write one line per column instead of one per row.")});
}

bool MergeTool::ReadOptions(const QCommandLineParser &parser)
{
    transpose = parser.isSet(QStringLiteral("transpose"));
    return true;
}

int MergeTool::Work(const QStringList &paths)
{
    const std::unique_ptr<ToolOutput> output = OpenOutput(OutputName(), QIODevice::WriteOnly | QIODevice::Text);
    if (!output)
        return NotWritten;
    const std::unique_ptr<DataFile> record = CombineFiles(paths);
    if (!record)
        return NotWritten;
    return Write(*record, *output);
}

// Each file is read, added and let go before the next, so that only the
// combined record stays. A file not read whole, or not combined for want
// of memory, ends the run with nothing written, since a merged file
// without its rows would pass for data.
std::unique_ptr<DataFile> MergeTool::CombineFiles(const QStringList &paths) const
{
    FileCombiner combiner;
    const auto add = [&combiner](DataFile &file) {
        return combiner.Add(file) ? QString()
                                  : QStringLiteral("could not be combined with the files before it (not enough memory)");
    };
    if (!ReadEach(paths, add))
        return nullptr;
    return combiner.Take();
}

int MergeTool::Write(const DataFile &record, ToolOutput &output) const
{
    QString success;
    record.WriteMergedFile(output.Device(), kAllRows, false, transpose,
                           [&success](const QString &, const QString &text) { success = text; });
    if (!output.Flush() || !output.Commit()) {
        PrintLine(output.ErrorText());
        return NotWritten;
    }
    if (ShowsProgress() && output.IsRegularFile())
        PrintLine(success);
    return Written;
}
