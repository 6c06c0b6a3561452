// SPDX-License-Identifier: GPL-3.0-or-later
#include "participantnames.h"

#include <QFileInfo>
#include <QSet>

// A number is skipped when a file is itself called like that, so that
// "a.txt", "a.txt (2)" and "a.txt" become "a.txt", "a.txt (2)", "a.txt (3)".
QStringList ParticipantNames::ForPaths(const QStringList &paths)
{
    QStringList names;
    QSet<QString> taken;
    for (const QString &path : paths) {
        const QString base = QFileInfo(path).fileName();
        QString name = base;
        for (int n = 2; taken.contains(name); ++n)
            name = QStringLiteral("%1 (%2)").arg(base).arg(n);
        taken.insert(name);
        names.append(name);
    }
    return names;
}
