#pragma once

#include "celltext.h"

#include <QString>

#include <memory>

// Reads a whole file for cutting into cells, keeping what a text stream on a
// file opened in text mode would make of it: a leading byte order mark
// honoured, otherwise the locale's decoding, and the start of a character
// left unfinished at the very end dropped. CRs stay in the bytes and are
// dropped when a cell is decoded. Only regular files are read; anything else,
// and a file that cannot be opened, reads as an empty one.
class FileText
{
public:
    // Null when memory does not allow holding the file.
    static std::shared_ptr<CellText> Read(const QString &path);
};
