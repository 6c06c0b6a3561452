// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "commandlinetool.h"
#include "summarysettings.h"

#include <QVector>

struct ParticipantTrials;
struct SummaryResult;
class ToolOutput;

// zephlane-summary: the participant summary from the command line. It
// judges the files as the window does, takes every row of each file, one
// participant per file in the order given, and writes the CSV that the
// window's "Export CSV..." writes for the same files and settings with no
// row hidden, and on request the exclusion record. Made and run by main().
class SummaryTool : public CommandLineTool
{
public:
    SummaryTool();

private:
    void DescribeOptions(QCommandLineParser &parser) const override;
    bool ReadOptions(const QCommandLineParser &parser) override;
    int Work(const QStringList &paths) override;

    bool ReadColumns(const QCommandLineParser &parser);
    bool ReadNames(const QCommandLineParser &parser);
    bool ReadNumbers(const QCommandLineParser &parser);
    bool Usable();
    bool KnowsColumns(const QVector<ParticipantTrials> &participants) const;
    int Write(const SummaryResult &result, ToolOutput &output, ToolOutput *exclusions) const;

    SummarySettings settings;
    QString exclusionsName;
};
