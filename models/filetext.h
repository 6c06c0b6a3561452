#pragma once

#include "celltext.h"

#include <QString>

#include <memory>

// Reads a whole file as a text stream on a file opened in text mode sees it:
// every CR byte removed, a leading byte order mark honoured, and otherwise
// the locale's decoding. An unreadable file reads as an empty one.
class FileText
{
public:
    static std::shared_ptr<CellText> Read(const QString &path);
};
