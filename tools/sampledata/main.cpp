// SPDX-License-Identifier: GPL-3.0-or-later
// Writes sample data files: one file, or one experiment's files for several
// participants, as Kelmarun writes them.

#include "samplefilewriter.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTextStream>

namespace {

struct Request
{
    SampleFileOptions options;
    int participants = 0;
    QString out;
};

void AddOptions(QCommandLineParser &parser)
{
    parser.setApplicationDescription(QStringLiteral("Writes Kelmarun-style sample data files."));
    parser.addHelpOption();
    parser.addOptions({
        {QStringLiteral("out"), QStringLiteral("File to write, or the directory for --participants."),
         QStringLiteral("path")},
        {QStringLiteral("rows"), QStringLiteral("Trials in each file (default 300)."), QStringLiteral("n")},
        {QStringLiteral("participants"), QStringLiteral("Write k files of one experiment into --out."),
         QStringLiteral("k")},
        {QStringLiteral("participant"), QStringLiteral("Participant number of a single file (default 1)."),
         QStringLiteral("p")},
        {QStringLiteral("design"), QStringLiteral("Experiment: %1 (default stroop).")
                                       .arg(SampleDesign::Names().join(QStringLiteral(", "))),
         QStringLiteral("name")},
        {QStringLiteral("legacy"), QStringLiteral("Write the older four-line header.")},
        {QStringLiteral("seed"), QStringLiteral("Seed; the same seed gives the same files (default 1)."),
         QStringLiteral("s")},
        {QStringLiteral("trial-variables"), QStringLiteral("Trial variable columns (default 1)."),
         QStringLiteral("t")},
        {QStringLiteral("code-columns"), QStringLiteral("Code columns (default 1)."), QStringLiteral("c")},
        {QStringLiteral("columns"),
         QStringLiteral("Fields of a line, at least 14; code columns fill up after the trial variables."),
         QStringLiteral("n")},
        {QStringLiteral("blocks"), QStringLiteral("Test blocks after the practice block (default from --rows)."),
         QStringLiteral("b")},
    });
}

// Reads a whole number option into `target`; false if it is given but bad.
template <typename Number>
bool ReadNumber(const QCommandLineParser &parser, const QString &name, Number *target, QString *error)
{
    if (!parser.isSet(name))
        return true;
    bool ok = false;
    const qlonglong value = parser.value(name).toLongLong(&ok);
    if (!ok || value < 0) {
        *error = QStringLiteral("--%1 takes a whole number, not \"%2\".").arg(name, parser.value(name));
        return false;
    }
    *target = Number(value);
    return true;
}

bool ReadRequest(const QCommandLineParser &parser, Request *request, QString *error)
{
    SampleFileOptions &options = request->options;
    if (parser.isSet(QStringLiteral("design")))
        options.design = parser.value(QStringLiteral("design"));
    options.legacy = parser.isSet(QStringLiteral("legacy"));
    request->out = parser.value(QStringLiteral("out"));
    if (request->out.isEmpty()) {
        *error = QStringLiteral("--out is required.");
        return false;
    }
    return ReadNumber(parser, QStringLiteral("rows"), &options.rows, error)
           && ReadNumber(parser, QStringLiteral("participants"), &request->participants, error)
           && ReadNumber(parser, QStringLiteral("participant"), &options.participant, error)
           && ReadNumber(parser, QStringLiteral("seed"), &options.seed, error)
           && ReadNumber(parser, QStringLiteral("trial-variables"), &options.trialVariables, error)
           && ReadNumber(parser, QStringLiteral("code-columns"), &options.codeColumns, error)
           && ReadNumber(parser, QStringLiteral("columns"), &options.columns, error)
           && ReadNumber(parser, QStringLiteral("blocks"), &options.blocks, error);
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCommandLineParser parser;
    AddOptions(parser);
    parser.process(app);

    QTextStream err(stderr);
    Request request;
    QString error;
    if (!ReadRequest(parser, &request, &error)) {
        err << error << "\n";
        return 2;
    }
    if (!SampleFileWriter(request.options).IsValid()) {
        err << "Unknown design or impossible column count.\n";
        return 2;
    }
    if (request.participants > 0) {
        const QStringList paths =
            SampleFileWriter::WriteParticipants(request.out, request.participants, request.options);
        if (paths.isEmpty()) {
            err << "Could not write into " << request.out << "\n";
            return 1;
        }
        return 0;
    }
    if (!SampleFileWriter(request.options).Write(request.out)) {
        err << "Could not write " << request.out << "\n";
        return 1;
    }
    return 0;
}
