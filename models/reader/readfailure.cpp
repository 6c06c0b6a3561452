// SPDX-License-Identifier: GPL-3.0-or-later
#include "readfailure.h"

QString ReadFailureText(ReadFailure failure)
{
    switch (failure) {
    case ReadFailure::OutOfMemory:
        return QStringLiteral("not enough memory");
    case ReadFailure::ReadError:
        return QStringLiteral("read error");
    case ReadFailure::None:
        break;
    }
    return QString();
}
