// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "sampledesign.h"

#include <QString>
#include <QStringList>

class LineBuffer;
class QIODevice;
class SampleRandom;

// What one sample file holds.
struct SampleFileOptions
{
    QString design = QStringLiteral("stroop");
    int rows = 300;
    bool legacy = false;
    quint64 seed = 1;
    int participant = 1;
    int trialVariables = 1;
    int codeColumns = 1;
    // When positive, the number of fields of a line: code columns fill it
    // up after the trial variables, which take what room there is.
    int columns = 0;
    // Test blocks after the practice block; 0 chooses from the row count.
    int blocks = 0;
};

// Writes data files that look like Kelmarun's: a dotted or legacy
// header, the two title rows, and one line per trial with codes, reaction
// times, blocks and trials of a design. The same options always give the
// same bytes.
class SampleFileWriter
{
public:
    explicit SampleFileWriter(const SampleFileOptions &options);

    // False for an unknown design or counts that make no file.
    bool IsValid() const;
    bool Write(QIODevice *device) const;
    bool Write(const QString &path) const;

    // Writes `count` participants' files of one experiment into `directory`
    // and returns their paths, or an empty list if one could not be written.
    static QStringList WriteParticipants(const QString &directory, int count, const SampleFileOptions &options);

private:
    // Fields of a line before the trial variables and code columns: twelve
    // fixed ones, "Key" and "Pressed Or\nReleased".
    static const int kFixedFields = 14;

    struct Block
    {
        QByteArray number;
        QByteArray name;
        int rows;
    };

    QVector<Block> PlanBlocks() const;
    QString DateText() const;
    void WriteHeader(LineBuffer &out) const;
    void WriteTitles(LineBuffer &out) const;
    void WriteBlock(LineBuffer &out, const Block &block, int *trialNumber, SampleRandom &random) const;
    void WriteRow(LineBuffer &out, const Block &block, const SampleTrial &trial, int trialNumber, int repetition,
                  SampleRandom &random) const;

    SampleFileOptions options;
    SampleDesign design;
    QVector<SampleColumn> columns;
    QByteArray participantName;
};
