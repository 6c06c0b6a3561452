#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>

// A zip archive of the given entries, name and content, in that order and
// compressed; a name ending in "/" with no content is a directory entry.
QByteArray ZipBytes(const QList<QPair<QByteArray, QByteArray>> &entries);
