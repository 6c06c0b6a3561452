// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "celltext.h"
#include "readfailure.h"

#include <QString>

#include <memory>

// Reads a whole file for cutting into cells, keeping what a text stream on a
// file opened in text mode would make of it: a leading byte order mark
// honoured, otherwise the locale's decoding, and the start of a character
// left unfinished at the very end dropped. CRs stay in the bytes and are
// dropped when a cell is decoded. Only regular files are read; anything else
// reads as an empty one.
class FileText
{
public:
    // Null, with the reason in `failure`, when the file could not be read
    // whole: memory does not allow holding it, or it could not be opened or
    // read to its end.
    static std::shared_ptr<CellText> Read(const QString &path, ReadFailure *failure);
    // Makes every later read of `path` fail as given, as a failing disk or a
    // shortage of memory would; ReadFailure::None lets it read again. For
    // tests of what a failed read leads to.
    static void InjectFailure(const QString &path, ReadFailure failure);
};
