// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIODevice>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

class DataFile;
class QCommandLineParser;
class ToolOutput;

// What the command-line tools share: the options each has (help, version,
// -o, --quiet and the files), the window's checks of the files with its
// messages, the reading of one file after another, and what they print. A
// tool derives from it, adds its own options and does its own work.
class CommandLineTool
{
public:
    // Exit statuses.
    enum Status { Written = 0, NotWritten = 1, Refused = 2 };

    virtual ~CommandLineTool();

    // The whole program for main(): the application object, without a GUI
    // so that the tool runs where there is no display at all, then Run.
    int Main(int argc, char *argv[]);
    // Takes the program's arguments, the program name first.
    int Run(const QStringList &arguments);

protected:
    // `program` names the tool in its messages; `files` describes the
    // files it takes, for the help.
    CommandLineTool(const QString &program, const QString &files);

    // The tool's description and its own options.
    virtual void DescribeOptions(QCommandLineParser &parser) const = 0;
    // Takes the tool's own options; false when they make no run, with the
    // problem printed.
    virtual bool ReadOptions(const QCommandLineParser &parser) = 0;
    // The run, once the files are accepted; returns the exit status.
    virtual int Work(const QStringList &paths) = 0;

    // Reads the files in order, each handed to `take` and let go before the
    // next is read; `take` returns why it could not take a file, or nothing.
    // False when a file could not be read whole or taken, which is named
    // with the reason: its rows would be missing from the output.
    bool ReadEach(const QStringList &paths, const std::function<QString(DataFile &)> &take) const;
    // The output opened before any file is read, so that a target that
    // cannot be written ends the run at once; null then, the reason printed.
    std::unique_ptr<ToolOutput> OpenOutput(const QString &name, QIODevice::OpenMode mode) const;
    // Prints "<program>: <text>" on standard error.
    void Complain(const QString &text) const;
    static void PrintLine(const QString &line);

    // The -o file; empty for standard output.
    const QString &OutputName() const { return outputName; }
    // Progress goes to standard error when it is a terminal, unless --quiet.
    bool ShowsProgress() const { return showProgress; }

private:
    void DescribeCommonOptions(QCommandLineParser &parser) const;
    bool ParseArguments(QCommandLineParser &parser, const QStringList &arguments, int *status);
    bool Accepts(const QStringList &paths) const;
    void ShowProgress(int done, int total) const;

    QString program;
    QString files;
    QString outputName;
    bool showProgress = false;
};
