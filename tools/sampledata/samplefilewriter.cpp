// SPDX-License-Identifier: GPL-3.0-or-later
#include "samplefilewriter.h"

#include "linebuffer.h"
#include "samplerandom.h"

#include <QDate>
#include <QDir>
#include <QFile>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

enum Code { Correct, Incorrect, NoResponse, SelfCorrect, Unknown };

const QByteArray kCodes[] = {"C", "E", "NR", "SC"};
// Codes a hand-edited or damaged file may hold, which count nowhere.
const QByteArray kUnknownCodes[] = {"X", "c", "?"};
const QByteArray kPressed = "Pressed";
const QByteArray kReleased = "Released";

// Roughly what a participant who tries does: mostly right, some errors,
// a few misses and self-corrections, and now and then a stray code.
Code DrawCode(SampleRandom &random)
{
    const int draw = random.Below(1000);
    if (draw < 4)
        return Unknown;
    if (draw < 44)
        return NoResponse;
    if (draw < 124)
        return Incorrect;
    if (draw < 164)
        return SelfCorrect;
    return Correct;
}

// Reaction times in hundredths of a millisecond, ex-Gaussian like real
// ones: errors come a little faster, self-corrections much later.
qint64 DrawHundredths(SampleRandom &random, Code code, int extraMilliseconds)
{
    double ms = 430.0 + extraMilliseconds + 65.0 * random.Normal() + 120.0 * random.Exponential();
    if (code == Incorrect)
        ms -= 35.0;
    else if (code == SelfCorrect)
        ms += 190.0;
    return std::llround(std::max(ms, 180.0) * 100.0);
}

QByteArray OtherKey(const QVector<QByteArray> &keys, const QByteArray &expected, SampleRandom &random)
{
    QByteArray key = keys[random.Below(keys.size())];
    return key == expected ? keys[(keys.indexOf(key) + 1) % keys.size()] : key;
}

QString ParticipantName(int participant)
{
    return QStringLiteral("sub-%1").arg(participant, 2, 10, QLatin1Char('0'));
}

quint64 ParticipantSeed(const SampleFileOptions &options)
{
    return options.seed * 0x100000001B3ULL + quint64(options.participant);
}

} // namespace

SampleFileWriter::SampleFileWriter(const SampleFileOptions &options)
    : options(options)
    , design(SampleDesign::Named(options.design))
    , participantName(ParticipantName(options.participant).toUtf8())
{
    int trialVariables = std::max(0, options.trialVariables);
    int codeColumns = std::max(0, options.codeColumns);
    if (options.columns > 0) {
        trialVariables = std::min(trialVariables, std::max(0, options.columns - kFixedFields));
        codeColumns = std::max(0, options.columns - kFixedFields - trialVariables);
    }
    columns = design.Columns(trialVariables, codeColumns);
}

bool SampleFileWriter::IsValid() const
{
    return design.IsValid() && options.rows >= 0 && options.blocks >= 0
           && (options.columns <= 0 || options.columns >= kFixedFields);
}

bool SampleFileWriter::Write(QIODevice *device) const
{
    if (!IsValid())
        return false;
    SampleRandom random(ParticipantSeed(options));
    LineBuffer out(device);
    WriteHeader(out);
    WriteTitles(out);
    int trialNumber = 0;
    for (const Block &block : PlanBlocks())
        WriteBlock(out, block, &trialNumber, random);
    return out.Flush();
}

bool SampleFileWriter::Write(const QString &path) const
{
    if (!IsValid())
        return false;
    QFile file(path);
    // The line buffer already gathers large pieces.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered))
        return false;
    return Write(&file) && file.flush();
}

QStringList SampleFileWriter::WriteParticipants(const QString &directory, int count, const SampleFileOptions &options)
{
    if (!QDir().mkpath(directory))
        return {};
    QStringList paths;
    for (int participant = 1; participant <= count; ++participant) {
        SampleFileOptions one = options;
        one.participant = participant;
        const QString name = QStringLiteral("%1_%2.txt").arg(one.design, ParticipantName(participant));
        const QString path = QDir(directory).filePath(name);
        if (!SampleFileWriter(one).Write(path))
            return {};
        paths.append(path);
    }
    return paths;
}

// A short practice block, then test blocks that share the rest evenly.
QVector<SampleFileWriter::Block> SampleFileWriter::PlanBlocks() const
{
    const int practice = options.rows >= 100 ? std::min(24, options.rows / 20) : 0;
    const int tests = options.blocks > 0 ? options.blocks : std::clamp(options.rows / 100, 1, 8);
    QVector<Block> blocks;
    if (practice > 0)
        blocks.append(Block{"1", "Practice", practice});
    const int rest = options.rows - practice;
    for (int i = 0; i < tests; ++i) {
        const int rows = rest / tests + (i < rest % tests ? 1 : 0);
        blocks.append(Block{QByteArray::number(blocks.size() + 1), "Test " + QByteArray::number(i + 1), rows});
    }
    return blocks;
}

// Participants came on consecutive days, each at some time of the morning.
QString SampleFileWriter::DateText() const
{
    SampleRandom random(ParticipantSeed(options) ^ 0xD1B54A32D192ED03ULL);
    const QDate day = QDate(2026, 3, 2).addDays(options.participant - 1);
    const int minute = 9 * 60 + random.Below(3 * 60);
    return QStringLiteral("%1 %2:%3:%4")
        .arg(day.toString(QStringLiteral("yyyy-MM-dd")))
        .arg(minute / 60, 2, 10, QLatin1Char('0'))
        .arg(minute % 60, 2, 10, QLatin1Char('0'))
        .arg(random.Below(60), 2, 10, QLatin1Char('0'));
}

void SampleFileWriter::WriteHeader(LineBuffer &out) const
{
    const QByteArray name = design.ExperimentName().toUtf8();
    const QByteArray date = DateText().toUtf8();
    const QByteArray session = "1";
    if (options.legacy) {
        for (const QByteArray &line : {QByteArray("Kelmarun Data File"), name, date,
                                       "Participant " + participantName + " Session " + session}) {
            out.Append(line);
            out.EndLine();
        }
        return;
    }
    const QByteArray computer = "LAB-PC-0" + QByteArray::number(options.participant % 4 + 1);
    const QList<QByteArray> lines{".Kelmarun Version\t3.4.2",
                                  ".Experiment Name\t" + name,
                                  ".Experiment Version\t7",
                                  ".Date\t" + date,
                                  ".Participant\t" + participantName,
                                  ".Session\t" + session,
                                  ".Computer\t" + computer,
                                  ".",
                                  ".Display\t1920 x 1080\t60 Hz",
                                  ".Operating System\tWindows 10",
                                  ".",
                                  ""};
    for (const QByteArray &line : lines) {
        out.Append(line);
        out.EndLine();
    }
}

void SampleFileWriter::WriteTitles(LineBuffer &out) const
{
    QByteArrayList upper{"Participant", "Session", "Block",    "Block",  "Trial", "Trial", "Trial",
                         "Stimulus",    "Expected", "Actual", "Error", "Reaction", "",  "Pressed Or"};
    QByteArrayList lower{"Name", "Number",   "Number",   "Name", "Name", "Number", "Repetition",
                         "Name", "Response", "Response", "Code", "Time", "Key",    "Released"};
    for (const SampleColumn &column : columns) {
        upper.append(column.upper);
        lower.append(column.lower);
    }
    out.Append(upper.join('\t'));
    out.EndLine();
    out.Append(lower.join('\t'));
    out.EndLine();
}

// Each pass through the block shows every trial once, in a fresh order.
void SampleFileWriter::WriteBlock(LineBuffer &out, const Block &block, int *trialNumber, SampleRandom &random) const
{
    const QVector<SampleTrial> &trials = design.Trials();
    QVector<int> order(trials.size());
    std::iota(order.begin(), order.end(), 0);
    for (int row = 0; row < block.rows; ++row) {
        const int place = row % trials.size();
        if (place == 0) {
            for (int i = order.size() - 1; i > 0; --i)
                std::swap(order[i], order[random.Below(i + 1)]);
        }
        WriteRow(out, block, trials[order[place]], ++*trialNumber, row / trials.size() + 1, random);
    }
}

void SampleFileWriter::WriteRow(LineBuffer &out, const Block &block, const SampleTrial &trial, int trialNumber,
                                int repetition, SampleRandom &random) const
{
    const Code code = DrawCode(random);
    const bool answered = code != NoResponse;
    const QByteArray key = code == Incorrect ? OtherKey(design.Keys(), trial.expectedKey, random) : trial.expectedKey;

    out.Append(participantName);
    out.Append('\t');
    out.Append('1');
    out.Append('\t');
    out.Append(block.number);
    out.Append('\t');
    out.Append(block.name);
    out.Append('\t');
    out.Append(trial.name);
    out.Append('\t');
    out.AppendNumber(trialNumber);
    out.Append('\t');
    out.AppendNumber(repetition);
    out.Append('\t');
    out.Append(trial.stimulus);
    out.Append('\t');
    out.Append(trial.expectedKey);
    out.Append('\t');
    if (answered)
        out.Append(key);
    out.Append('\t');
    out.Append(code == Unknown ? kUnknownCodes[random.Below(3)] : kCodes[code]);
    out.Append('\t');
    if (answered)
        out.AppendHundredths(DrawHundredths(random, code, trial.extraMilliseconds));
    out.Append('\t');
    if (answered)
        out.Append(key);
    out.Append('\t');
    if (answered)
        out.Append(random.Below(40) == 0 ? kReleased : kPressed);
    for (const SampleColumn &column : columns) {
        out.Append('\t');
        out.Append(column.trialValue >= 0 ? trial.values.value(column.trialValue)
                                          : column.choices[random.Below(column.choices.size())]);
    }
    out.EndLine();
}
