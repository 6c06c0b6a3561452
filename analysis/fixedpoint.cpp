// SPDX-License-Identifier: GPL-3.0-or-later
#include "fixedpoint.h"

#include <QRegularExpression>

#include <cmath>

namespace FixedPoint {

// Qt's fixed form, in the C locale whatever the user's, rounds the exact
// value of the double half away from zero: 0.125 gives 0.13, and 1.005,
// stored just below 1.005, gives 1.00. A value that rounds to zero loses its
// sign: "-0.00" would read as a value that was there and negative.
QString Text(double value, int decimals)
{
    if (!std::isfinite(value))
        return QString();
    QString text = QString::number(value, 'f', decimals);
    if (text.startsWith(QLatin1Char('-')) && !text.contains(QRegularExpression(QStringLiteral("[1-9]"))))
        text.remove(0, 1);
    return text;
}

} // namespace FixedPoint
