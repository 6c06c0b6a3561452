// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// Numbers of the participant summary as a researcher publishes them: fixed
// point with a set number of decimals, rounded half away from zero on the
// exact value of the double, a full stop whatever the locale. A value that is
// not finite gives an empty text, the field of a measure without a value.
namespace FixedPoint {

QString Text(double value, int decimals);

} // namespace FixedPoint
