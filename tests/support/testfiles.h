// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "datafile.h"
#include "datafilebuilder.h"

#include <QTemporaryDir>

#include <memory>

// The bytes of a file, or none if it cannot be read.
QByteArray ReadAll(const QString &path);

// Writes test data files into a temporary directory of its own, each under
// a new name, and opens them as the program does.
class TestFiles
{
public:
    QString Write(const DataFileBuilder &builder);
    QString Write(const QByteArray &bytes);
    std::unique_ptr<DataFile> Open(const DataFileBuilder &builder);
    QString Path(const QString &name) const { return dir.filePath(name); }
    // Writes the file's merged output as the window does (a text-mode file,
    // truncated, closed afterwards) and returns the bytes on disk.
    QByteArray Merge(const DataFile &file, int rowsToMerge, bool includeHiddenRows, bool transpose);

private:
    QString NextPath();

    QTemporaryDir dir;
    int written = 0;
};
