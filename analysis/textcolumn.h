// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

// A column of short texts in one block of UTF-8, for cells that are read
// only now and then, such as a reaction time as written in the file: a
// row costs its bytes and one end position instead of a string of its own.
class TextColumn
{
public:
    void Reserve(int rows, int bytes);
    void Append(const char *utf8, int size);
    int size() const { return ends.size(); }
    QString at(int row) const;

private:
    QByteArray bytes;
    QVector<int> ends;
};
