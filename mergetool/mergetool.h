// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "commandlinetool.h"

#include <memory>

class DataFile;
class ToolOutput;

// zephlane-merge: the merged output file from the command line. It judges
// the files as the window does, combines them in the order given as the
// window combines a selection, and writes what the window's "Merge..."
// writes with "All rows ", to a file or to standard output. Made and run
// by main().
class MergeTool : public CommandLineTool
{
public:
    MergeTool();

private:
    void DescribeOptions(QCommandLineParser &parser) const override;
    bool ReadOptions(const QCommandLineParser &parser) override;
    int Work(const QStringList &paths) override;
    // Null when a file could not be read whole or memory did not allow
    // combining it; the reason is printed.
    std::unique_ptr<DataFile> CombineFiles(const QStringList &paths) const;
    int Write(const DataFile &record, ToolOutput &output) const;

    bool transpose = false;
};
