#pragma once

#include <QString>
#include <QStringList>

#include <memory>

class DataFile;
class QCommandLineParser;
class QFileDevice;

// zephlane-merge: the merged output file from the command line. It judges
// the files as the window does, combines them in the order given as the
// window combines a selection, and writes what the window's "Merge..."
// writes with "All rows ", to a file or to standard output. Made and run
// by main().
class MergeTool
{
public:
    // Exit statuses.
    enum Status { Written = 0, NotWritten = 1, Refused = 2 };

    // Takes the program's arguments, the program name first.
    int Run(const QStringList &arguments);

private:
    bool ParseArguments(QCommandLineParser &parser, const QStringList &arguments, int *status);
    bool Accepts(const QStringList &paths) const;
    std::unique_ptr<QFileDevice> OpenOutput() const;
    // Null when a file could not be read whole or memory did not allow
    // combining it; the reason is printed.
    std::unique_ptr<DataFile> CombineFiles(const QStringList &paths) const;
    int Write(const DataFile &record, QFileDevice &output);
    QString OutputError(const QFileDevice &output) const;

    QString outputName;
    bool transpose = false;
    bool showProgress = false;
};
