// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "messagereport.h"

#include <QStringList>

// Judges whether every path holds a data file. On the first that does not,
// reports the refusal of the whole list and returns false. Anything but a
// regular file is refused unopened.
bool ValidateDataFiles(const QStringList &paths, const MessageReport &report);

// Whether any of `paths` equals one of `openPaths`, compared as exact text;
// the first such path is reported and refuses the whole list.
bool AnyPathAlreadyOpen(const QStringList &paths, const QStringList &openPaths, const MessageReport &report);
