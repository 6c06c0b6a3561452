// SPDX-License-Identifier: GPL-3.0-or-later
#include "commandlinetool.h"

#include "datafile.h"
#include "datafilevalidator.h"
#include "tooloutput.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>

#include <cstdio>

#include <unistd.h>

namespace {

void Print(FILE *stream, const QString &text)
{
    std::fputs(text.toLocal8Bit().constData(), stream);
    std::fflush(stream);
}

// The models' messages as the window would show them, one line each.
void PrintMessage(const QString &, const QString &text)
{
    Print(stderr, text + QLatin1Char('\n'));
}

void PrintUsage(const QCommandLineParser &parser, const QString &problem)
{
    Print(stderr, problem + QLatin1Char('\n'));
    Print(stderr, parser.helpText());
}

} // namespace

CommandLineTool::CommandLineTool(const QString &program, const QString &files)
    : program(program)
    , files(files)
{
}

CommandLineTool::~CommandLineTool() = default;

int CommandLineTool::Main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(program);
    QCoreApplication::setApplicationVersion(QStringLiteral(ZEPHLANE_VERSION));
    return Run(QCoreApplication::arguments());
}

int CommandLineTool::Run(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addVersionOption();
    DescribeOptions(parser);
    DescribeCommonOptions(parser);
    int status = Written;
    if (!ParseArguments(parser, arguments, &status))
        return status;
    const QStringList paths = parser.positionalArguments();
    if (!Accepts(paths))
        return Refused;
    return Work(paths);
}

void CommandLineTool::DescribeCommonOptions(QCommandLineParser &parser) const
{
    parser.addOption({{QStringLiteral("o"), QStringLiteral("output")},
                      QStringLiteral("Write to <file> instead of standard output."), QStringLiteral("file")});
    parser.addOption({QStringLiteral("quiet"), QStringLiteral("Print nothing but errors, also on a terminal.")});
    parser.addPositionalArgument(QStringLiteral("FILE"), files, QStringLiteral("FILE..."));
}

// False when the run ends here: help, version, or arguments that make no run.
bool CommandLineTool::ParseArguments(QCommandLineParser &parser, const QStringList &arguments, int *status)
{
    *status = Refused;
    if (!parser.parse(arguments)) {
        PrintUsage(parser, parser.errorText());
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
        PrintUsage(parser, program + QStringLiteral(": no file given"));
        return false;
    }
    outputName = parser.value(QStringLiteral("output"));
    showProgress = !parser.isSet(QStringLiteral("quiet")) && isatty(fileno(stderr));
    return ReadOptions(parser);
}

// The window's two checks, in its order. A file named twice is the tool's
// form of a file opened again, whichever way its path is written.
bool CommandLineTool::Accepts(const QStringList &paths) const
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

bool CommandLineTool::ReadEach(const QStringList &paths, const std::function<QString(DataFile &)> &take) const
{
    for (int i = 0; i < paths.size(); ++i) {
        DataFile file(paths[i]);
        const QString problem = file.Failure() != ReadFailure::None
                                    ? QStringLiteral("could not be read whole (%1)").arg(ReadFailureText(file.Failure()))
                                    : take(file);
        if (!problem.isEmpty()) {
            if (showProgress && i > 0)
                Print(stderr, QStringLiteral("\n"));
            PrintLine(paths[i] + QStringLiteral(": ") + problem);
            return false;
        }
        if (showProgress)
            ShowProgress(i + 1, paths.size());
    }
    return true;
}

std::unique_ptr<ToolOutput> CommandLineTool::OpenOutput(const QString &name, QIODevice::OpenMode mode) const
{
    auto output = std::make_unique<ToolOutput>(program, name, mode);
    if (output->IsOpen())
        return output;
    PrintLine(output->ErrorText());
    return nullptr;
}

void CommandLineTool::Complain(const QString &text) const
{
    PrintLine(program + QStringLiteral(": ") + text);
}

void CommandLineTool::PrintLine(const QString &line)
{
    Print(stderr, line + QLatin1Char('\n'));
}

// Files done out of all, rewritten in place on the terminal.
void CommandLineTool::ShowProgress(int done, int total) const
{
    Print(stderr, QStringLiteral("\rReading files: %1/%2").arg(done).arg(total));
    if (done == total)
        Print(stderr, QStringLiteral("\n"));
}
