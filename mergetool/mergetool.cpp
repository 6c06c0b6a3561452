#include "mergetool.h"

#include "datafile.h"
#include "datafilevalidator.h"
#include "filecombiner.h"
#include "wholewrites.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cstdio>

#include <unistd.h>

namespace {

// "All rows ": the choice that the merge dialog starts with.
const int kAllRows = 2;

void Print(FILE *stream, const QString &text)
{
    std::fputs(text.toLocal8Bit().constData(), stream);
    std::fflush(stream);
}

void PrintLine(const QString &line)
{
    Print(stderr, line + QLatin1Char('\n'));
}

// The models' messages as the window would show them, one line each.
void PrintMessage(const QString &, const QString &text)
{
    PrintLine(text);
}

void PrintUsage(const QCommandLineParser &parser, const QString &problem)
{
    PrintLine(problem);
    Print(stderr, parser.helpText());
}

void DescribeOptions(QCommandLineParser &parser)
{
    parser.setApplicationDescription(QStringLiteral(
        "Merges Kelmarun data files into one tab-separated file, in the order given: the file that\n"
        "Zephlane's \"Merge...\" writes for these files selected in that order, with all rows."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOption({QStringLiteral("transpose"), QStringLiteral("Write one line per column instead of one per row.")});
    parser.addOption({{QStringLiteral("o"), QStringLiteral("output")},
                      QStringLiteral("Write to <file> instead of standard output."), QStringLiteral("file")});
    parser.addOption({QStringLiteral("quiet"), QStringLiteral("Print nothing but errors, also on a terminal.")});
    parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("Data files to merge."),
                                 QStringLiteral("FILE..."));
}

// Files done out of all, rewritten in place on the terminal.
void ShowProgress(int done, int total)
{
    Print(stderr, QStringLiteral("\rReading files: %1/%2").arg(done).arg(total));
    if (done == total)
        Print(stderr, QStringLiteral("\n"));
}

} // namespace

int MergeTool::Run(const QStringList &arguments)
{
    QCommandLineParser parser;
    DescribeOptions(parser);
    int status = Written;
    if (!ParseArguments(parser, arguments, &status))
        return status;
    const QStringList paths = parser.positionalArguments();
    if (!Accepts(paths))
        return Refused;

    // Opened before any file is read, so that a target that cannot be
    // written ends the run at once.
    const std::unique_ptr<QFileDevice> output = OpenOutput();
    if (!output->isOpen()) {
        PrintLine(OutputError(*output));
        return NotWritten;
    }
    const std::unique_ptr<DataFile> record = CombineFiles(paths);
    if (!record)
        return NotWritten;
    return Write(*record, *output);
}

// False when the run ends here: help, version, or arguments that make no run.
bool MergeTool::ParseArguments(QCommandLineParser &parser, const QStringList &arguments, int *status)
{
    if (!parser.parse(arguments)) {
        PrintUsage(parser, parser.errorText());
        *status = Refused;
        return false;
    }
    if (parser.isSet(QStringLiteral("help")) || parser.isSet(QStringLiteral("version"))) {
        Print(stdout, parser.isSet(QStringLiteral("help"))
                          ? parser.helpText()
                          : QCoreApplication::applicationName() + QLatin1Char(' ')
                                + QCoreApplication::applicationVersion() + QLatin1Char('\n'));
        *status = Written;
        return false;
    }
    if (parser.positionalArguments().isEmpty()) {
        PrintUsage(parser, QStringLiteral("zephlane-merge: no file given"));
        *status = Refused;
        return false;
    }
    outputName = parser.value(QStringLiteral("output"));
    transpose = parser.isSet(QStringLiteral("transpose"));
    showProgress = !parser.isSet(QStringLiteral("quiet")) && isatty(fileno(stderr));
    return true;
}

// The window's two checks, in its order. A file named twice is the tool's
// form of a file opened again, whichever way its path is written.
bool MergeTool::Accepts(const QStringList &paths) const
{
    if (!ValidateDataFiles(paths, PrintMessage))
        return false;
    QStringList earlier;
    for (const QString &path : paths) {
        const QString absolute = QFileInfo(path).absoluteFilePath();
        if (AnyPathAlreadyOpen({absolute}, earlier, PrintMessage))
            return false;
        earlier.append(absolute);
    }
    return true;
}

// A file goes to a temporary name beside the target and takes the target's
// name only once complete. A target that exists but is no regular file (a
// device, a pipe) is written straight into, since renaming onto it would
// replace it.
std::unique_ptr<QFileDevice> MergeTool::OpenOutput() const
{
    const QIODevice::OpenMode mode = QIODevice::WriteOnly | QIODevice::Text;
    const QFileInfo target(outputName);
    if (outputName.isEmpty() || (target.exists() && !target.isFile())) {
        auto output = std::make_unique<WholeWrites<QFile>>(outputName);
        if (outputName.isEmpty())
            output->open(fileno(stdout), mode);
        else
            output->open(mode);
        return output;
    }
    auto output = std::make_unique<WholeWrites<QSaveFile>>(outputName);
    output->open(mode);
    return output;
}

// Each file is read, added and let go before the next, so that only the
// combined record stays. A file not read whole, or not combined for want
// of memory, ends the run with nothing written, since a merged file
// without its rows would pass for data.
std::unique_ptr<DataFile> MergeTool::CombineFiles(const QStringList &paths) const
{
    FileCombiner combiner;
    for (int i = 0; i < paths.size(); ++i) {
        const DataFile file(paths[i]);
        QString problem;
        if (file.Failure() != ReadFailure::None)
            problem = QStringLiteral("could not be read whole (%1)").arg(ReadFailureText(file.Failure()));
        else if (!combiner.Add(file))
            problem = QStringLiteral("could not be combined with the files before it (not enough memory)");
        if (!problem.isEmpty()) {
            if (showProgress && i > 0)
                Print(stderr, QStringLiteral("\n"));
            PrintLine(paths[i] + QStringLiteral(": ") + problem);
            return nullptr;
        }
        if (showProgress)
            ShowProgress(i + 1, paths.size());
    }
    return combiner.Take();
}

// A run that fails or is interrupted leaves any earlier file of the
// target's name as it was.
int MergeTool::Write(const DataFile &record, QFileDevice &output)
{
    QString success;
    record.WriteMergedFile(output, kAllRows, false, transpose,
                           [&success](const QString &, const QString &text) { success = text; });
    auto *file = qobject_cast<QSaveFile *>(&output);
    // Flushed first: a save file's commit misses an error of the flush
    // that closing does.
    const bool written = output.flush() && output.error() == QFileDevice::NoError && (!file || file->commit());
    if (!written) {
        PrintLine(OutputError(output));
        return NotWritten;
    }
    if (showProgress && file)
        PrintLine(success);
    return Written;
}

QString MergeTool::OutputError(const QFileDevice &output) const
{
    const QString name = outputName.isEmpty() ? QStringLiteral("standard output") : outputName;
    return QStringLiteral("zephlane-merge: cannot write %1: %2").arg(name, output.errorString());
}
