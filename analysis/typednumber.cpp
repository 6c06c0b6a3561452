// SPDX-License-Identifier: GPL-3.0-or-later
#include "typednumber.h"

#include <QLocale>

#include <cmath>

bool TypedNumber::Read(const QString &text, TypedNumber *number)
{
    QLocale c = QLocale::c();
    c.setNumberOptions(QLocale::RejectGroupSeparator);
    bool ok = false;
    const double value = c.toDouble(text, &ok);
    if (!ok || !std::isfinite(value))
        return false;
    *number = TypedNumber{text, value};
    return true;
}
