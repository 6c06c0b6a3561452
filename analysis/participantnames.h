// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

// Names the participants of files summarised together: each by its file
// name without the directory, and a name that an earlier file already has
// as "name (2)", "name (3)" and so on, in the order of the files.
class ParticipantNames
{
public:
    static QStringList ForPaths(const QStringList &paths);
};
