// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// A number of the settings as the user typed it: the text is what the
// command line and the exclusion record repeat ("200", "2.50"), the value
// what the computation uses. An empty text means the number was not given.
struct TypedNumber
{
    QString text;
    double value = 0;

    bool Given() const { return !text.isEmpty(); }
    // False when `text` is not a finite number written with a full stop,
    // whatever the locale.
    static bool Read(const QString &text, TypedNumber *number);

    bool operator==(const TypedNumber &other) const { return text == other.text; }
};
