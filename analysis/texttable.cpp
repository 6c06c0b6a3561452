// SPDX-License-Identifier: GPL-3.0-or-later
#include "texttable.h"

namespace {

QString Field(const QString &text, QChar separator)
{
    const bool quoted = text.contains(separator) || text.contains(QLatin1Char('"'))
                        || text.contains(QLatin1Char('\n')) || text.contains(QLatin1Char('\r'));
    if (!quoted)
        return text;
    return QLatin1Char('"') + QString(text).replace(QLatin1Char('"'), QStringLiteral("\"\"")) + QLatin1Char('"');
}

void AppendLine(QString &text, const QStringList &fields, QChar separator)
{
    for (int i = 0; i < fields.size(); ++i) {
        if (i > 0)
            text += separator;
        text += Field(fields[i], separator);
    }
    text += QLatin1Char('\n');
}

} // namespace

QByteArray TextTable::Csv() const
{
    return Joined(QLatin1Char(',')).toUtf8();
}

QString TextTable::TabSeparated() const
{
    return Joined(QLatin1Char('\t'));
}

QString TextTable::Joined(QChar separator) const
{
    QString text;
    AppendLine(text, header, separator);
    for (const QStringList &row : rows)
        AppendLine(text, row, separator);
    return text;
}
