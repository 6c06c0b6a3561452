// SPDX-License-Identifier: GPL-3.0-or-later
#include "summarysettings.h"

#include <QRegularExpression>
#include <QSettings>

#include <algorithm>

namespace {

const QString kProgram = QStringLiteral("zephlane-summary");

template <typename Enum>
QString NameOf(const QStringList &names, Enum value)
{
    return names[int(value)];
}

// The named value, or `fallback` for a name not in the list.
template <typename Enum>
Enum FromName(const QStringList &names, const QString &name, Enum fallback)
{
    const int index = names.indexOf(name);
    return index < 0 ? fallback : Enum(index);
}

TypedNumber ReadNumber(const QSettings &store, const QString &key)
{
    TypedNumber number;
    TypedNumber::Read(store.value(key).toString(), &number);
    return number;
}

void AppendOption(QStringList &arguments, const QString &option, const QString &value)
{
    arguments << option << SummarySettings::ShellQuoted(value);
}

} // namespace

const QStringList &SummarySettings::ProcedureNames()
{
    static const QStringList names{QStringLiteral("none"), QStringLiteral("absolute"), QStringLiteral("sd"),
                                   QStringLiteral("nonrecursive"), QStringLiteral("modified-recursive")};
    return names;
}

const QStringList &SummarySettings::ScopeNames()
{
    static const QStringList names{QStringLiteral("cell"), QStringLiteral("participant"),
                                   QStringLiteral("condition"), QStringLiteral("all")};
    return names;
}

const QStringList &SummarySettings::LayoutNames()
{
    static const QStringList names{QStringLiteral("long"), QStringLiteral("wide")};
    return names;
}

SummarySettings::Problem SummarySettings::Check() const
{
    if (procedure == Procedure::None && (min.Given() || max.Given()))
        return Problem::BoundWithoutProcedure;
    if (procedure == Procedure::Absolute && !min.Given() && !max.Given())
        return Problem::AbsoluteWithoutBound;
    if (min.Given() && max.Given() && min.value > max.value)
        return Problem::BoundsCrossed;
    if (procedure != Procedure::Sd && (sd.Given() || scope))
        return Problem::SdWithoutSdProcedure;
    if (sd.Given() && sd.value <= 0)
        return Problem::SdNotPositive;
    if (minAccuracy.Given() && (minAccuracy.value < 0 || minAccuracy.value > 1))
        return Problem::AccuracyOutOfRange;
    return Problem::None;
}

QString SummarySettings::ProcedureText() const
{
    QStringList fields{NameOf(ProcedureNames(), procedure)};
    const auto add = [&fields](const QString &key, const QString &value) {
        if (!value.isEmpty())
            fields << key + QLatin1Char('=') + value;
    };
    add(QStringLiteral("min"), min.text);
    add(QStringLiteral("max"), max.text);
    add(QStringLiteral("sd"), sd.text);
    add(QStringLiteral("scope"), scope ? NameOf(ScopeNames(), *scope) : QString());
    add(QStringLiteral("min-accuracy"), minAccuracy.text);
    return fields.join(QStringLiteral("; "));
}

// Options in the order of the manual page; those at their default are left
// out. "--" keeps a path that starts with a dash from reading as an option.
QString SummarySettings::CommandLine(const QStringList &paths) const
{
    QStringList arguments{kProgram};
    for (const QString &column : conditionColumns)
        AppendOption(arguments, QStringLiteral("--by"), column);
    if (procedure != Procedure::None)
        AppendOption(arguments, QStringLiteral("--procedure"), NameOf(ProcedureNames(), procedure));
    const auto addNumber = [&arguments](const QString &option, const TypedNumber &number) {
        if (number.Given())
            AppendOption(arguments, option, number.text);
    };
    addNumber(QStringLiteral("--min"), min);
    addNumber(QStringLiteral("--max"), max);
    addNumber(QStringLiteral("--sd"), sd);
    if (scope)
        AppendOption(arguments, QStringLiteral("--sd-scope"), NameOf(ScopeNames(), *scope));
    addNumber(QStringLiteral("--min-accuracy"), minAccuracy);
    if (layout != Layout::Long)
        AppendOption(arguments, QStringLiteral("--layout"), NameOf(LayoutNames(), layout));
    if (std::any_of(paths.begin(), paths.end(), [](const QString &path) { return path.startsWith(QLatin1Char('-')); }))
        arguments << QStringLiteral("--");
    for (const QString &path : paths)
        arguments << ShellQuoted(path);
    return arguments.join(QLatin1Char(' '));
}

// Single quotes keep every character as it is but the single quote itself,
// which closes the quotes, stands escaped and opens them again.
QString SummarySettings::ShellQuoted(const QString &argument)
{
    static const QRegularExpression plain(QStringLiteral("^[A-Za-z0-9_@%+=:,./-]+$"));
    if (plain.match(argument).hasMatch())
        return argument;
    return QLatin1Char('\'') + QString(argument).replace(QLatin1Char('\''), QStringLiteral("'\\''"))
           + QLatin1Char('\'');
}

void SummarySettings::Save(QSettings &store) const
{
    store.setValue(QStringLiteral("conditionColumns"), conditionColumns);
    store.setValue(QStringLiteral("procedure"), NameOf(ProcedureNames(), procedure));
    store.setValue(QStringLiteral("min"), min.text);
    store.setValue(QStringLiteral("max"), max.text);
    store.setValue(QStringLiteral("sd"), sd.text);
    store.setValue(QStringLiteral("scope"), scope ? NameOf(ScopeNames(), *scope) : QString());
    store.setValue(QStringLiteral("minAccuracy"), minAccuracy.text);
    store.setValue(QStringLiteral("layout"), NameOf(LayoutNames(), layout));
}

SummarySettings SummarySettings::Load(const QSettings &store)
{
    SummarySettings settings;
    settings.conditionColumns = store.value(QStringLiteral("conditionColumns")).toStringList();
    settings.procedure = FromName(ProcedureNames(), store.value(QStringLiteral("procedure")).toString(),
                                  Procedure::None);
    settings.min = ReadNumber(store, QStringLiteral("min"));
    settings.max = ReadNumber(store, QStringLiteral("max"));
    settings.sd = ReadNumber(store, QStringLiteral("sd"));
    const int scope = ScopeNames().indexOf(store.value(QStringLiteral("scope")).toString());
    if (scope >= 0)
        settings.scope = SdScope(scope);
    settings.minAccuracy = ReadNumber(store, QStringLiteral("minAccuracy"));
    settings.layout = FromName(LayoutNames(), store.value(QStringLiteral("layout")).toString(), Layout::Long);
    return settings;
}

bool SummarySettings::operator==(const SummarySettings &other) const
{
    return conditionColumns == other.conditionColumns && procedure == other.procedure && min == other.min
           && max == other.max && sd == other.sd && scope == other.scope && minAccuracy == other.minAccuracy
           && layout == other.layout;
}
