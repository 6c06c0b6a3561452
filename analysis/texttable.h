// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>
#include <QVector>

// A table as text, a header line and rows of fields, with the two forms it
// leaves the program in: CSV for files and tab-separated text for the
// clipboard. `numeric` marks the columns that hold numbers, which sort as
// numbers rather than as text.
struct TextTable
{
    QStringList header;
    QVector<QStringList> rows;
    QVector<bool> numeric;

    // Comma-separated, a field quoted (its quotes doubled) when it holds a
    // comma, a quote or a line break; UTF-8 with LF line ends.
    QByteArray Csv() const;
    // The same with tabs, quoting a field that holds a tab, a quote or a
    // line break, for pasting into a spreadsheet.
    QString TabSeparated() const;

private:
    QString Joined(QChar separator) const;
};
