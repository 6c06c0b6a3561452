// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>
#include <QVector>

// A column of text kept as small whole numbers: each row holds the position
// of its text in `texts`, which lists every distinct text once, in the order
// of first appearance. Grouping rows then compares numbers, not strings.
struct CodedColumn
{
    QStringList texts;
    QVector<int> ids;

    const QString &TextAt(int row) const { return texts[ids[row]]; }
};
