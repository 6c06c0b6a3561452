// SPDX-License-Identifier: GPL-3.0-or-later
#include "sampledesign.h"


namespace {

const QByteArray kTrialVariable = "(Trial Variable)";

SampleColumn TrialVariable(const QByteArray &name, int trialValue)
{
    return SampleColumn{name, kTrialVariable, trialValue, {}};
}

SampleColumn CodeColumn(const QByteArray &upper, const QByteArray &lower, const QVector<QByteArray> &choices)
{
    return SampleColumn{upper, lower, -1, choices};
}

} // namespace

SampleDesign SampleDesign::Named(const QString &name)
{
    if (name == QLatin1String("stroop"))
        return Stroop();
    if (name == QLatin1String("lexical"))
        return Lexical();
    return SampleDesign();
}

QStringList SampleDesign::Names()
{
    return {QStringLiteral("stroop"), QStringLiteral("lexical")};
}

QVector<SampleColumn> SampleDesign::Columns(int trialVariables, int codeColumns) const
{
    QVector<SampleColumn> columns;
    for (int i = 0; i < trialVariables; ++i) {
        if (i < ownVariables.size()) {
            columns.append(ownVariables[i]);
        } else {
            const QByteArray number = QByteArray::number(i + 1);
            columns.append(SampleColumn{"Variable " + number, kTrialVariable, -1,
                                        {"level 1", "level 2", "level 3"}});
        }
    }
    for (int i = 0; i < codeColumns; ++i) {
        if (i < ownCodeColumns.size())
            columns.append(ownCodeColumns[i]);
        else
            columns.append(CodeColumn("Extra", "Code " + QByteArray::number(i + 1), {"a", "b", "c", "d"}));
    }
    return columns;
}

// Colour words shown in an ink colour; the ink is named by one of four keys.
SampleDesign SampleDesign::Stroop()
{
    SampleDesign design;
    design.experimentName = QStringLiteral("Stroop Colour Naming");
    const QVector<QByteArray> words{"RED", "GREEN", "BLUE", "YELLOW"};
    const QVector<QByteArray> inks{"red", "green", "blue", "yellow"};
    design.keys = {"d", "f", "j", "k"};
    for (const QByteArray &word : words) {
        for (int ink = 0; ink < inks.size(); ++ink) {
            const bool congruent = word.toLower() == inks[ink];
            const QByteArray name = word + "_" + inks[ink];
            design.trials.append(SampleTrial{name, name + ".png", design.keys[ink], congruent ? 0 : 70,
                                             {congruent ? "congruent" : "incongruent", inks[ink], word}});
        }
    }
    design.ownVariables = {TrialVariable("Congruency", 0), TrialVariable("Ink Colour", 1),
                           TrialVariable("Word", 2)};
    design.ownCodeColumns = {CodeColumn("Stimulus", "Side", {"left", "right"}),
                             CodeColumn("Font", "Size", {"24", "32", "48"})};
    return design;
}

// Letter strings judged word or nonword with two keys.
SampleDesign SampleDesign::Lexical()
{
    SampleDesign design;
    design.experimentName = QStringLiteral("Lexical Decision");
    design.keys = {"m", "z"};
    const QVector<QByteArray> frequent{"house", "water", "table", "mother", "garden", "window"};
    const QVector<QByteArray> rare{"lantern", "thistle", "gravel", "furnace", "quiver", "walrus"};
    const QVector<QByteArray> nonwords{"blorp", "trenth", "mafle", "gondry", "plisk", "wunter",
                                       "sorbal", "crimble", "flendor", "yastor", "drosk", "prundle"};
    for (const QByteArray &word : frequent)
        design.trials.append(SampleTrial{word, "lex_" + word, "m", 0, {"word", "high"}});
    for (const QByteArray &word : rare)
        design.trials.append(SampleTrial{word, "lex_" + word, "m", 45, {"word", "low"}});
    for (const QByteArray &word : nonwords)
        design.trials.append(SampleTrial{word, "lex_" + word, "z", 90, {"nonword", "none"}});
    design.ownVariables = {TrialVariable("Lexicality", 0), TrialVariable("Frequency", 1)};
    design.ownCodeColumns = {CodeColumn("Fixation", "Duration", {"500", "750", "1000"}),
                             CodeColumn("Letter", "Case", {"lower", "upper"})};
    return design;
}
