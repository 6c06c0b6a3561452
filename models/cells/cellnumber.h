// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>

// Fast paths for the number parses of cell text. A plain ASCII number is
// read straight from its bytes, with the value QString::toDouble or
// QString::toInt(base 10) would give for the decoded cell; anything else is
// left to those.
namespace CellNumber {

bool ParsePlainDecimal(std::string_view bytes, double *value);
bool ParsePlainInteger(std::string_view bytes, int *value);
// TruncateToInt of what ParsePlainDecimal reads, straight from the digits
// before the point: with at most 15 digits in all, the nearest double lies
// closer to the number than the number lies to the next whole one, so the
// truncation cannot differ. False beyond that, and for anything
// ParsePlainDecimal refuses.
bool ParsePlainTruncated(std::string_view bytes, int *value);
// Truncation toward zero into 32 bits; values beyond the range saturate and
// NaN gives 0.
int TruncateToInt(double value);

} // namespace CellNumber
