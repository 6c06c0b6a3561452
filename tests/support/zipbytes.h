// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>

// A zip archive of the given entries, name and content, in that order and
// compressed; a name ending in "/" with no content is a directory entry.
QByteArray ZipBytes(const QList<QPair<QByteArray, QByteArray>> &entries);

// A zip archive of `count` entries named "f0000.txt", "f0001.txt" and on
// that all share one compressed copy of `content`: it unpacks to `count`
// times the content from little more than its directory.
QByteArray OverlappingZipBytes(const QByteArray &content, int count);
