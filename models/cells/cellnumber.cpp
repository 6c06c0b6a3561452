// SPDX-License-Identifier: GPL-3.0-or-later
#include "cellnumber.h"

#include <QtGlobal>

#include <charconv>
#include <cmath>
#include <limits>

namespace CellNumber {

namespace {

// Counts the digits from `pos`, moving `pos` past them.
int SkipDigits(std::string_view bytes, size_t *pos)
{
    const size_t start = *pos;
    while (*pos < bytes.size() && bytes[*pos] >= '0' && bytes[*pos] <= '9')
        ++*pos;
    return int(*pos - start);
}

} // namespace

bool ParsePlainDecimal(std::string_view bytes, double *value)
{
    size_t pos = 0;
    if (pos < bytes.size() && bytes[pos] == '-')
        ++pos;
    const int whole = SkipDigits(bytes, &pos);
    // Past 300 digits a value could overflow, which only the slow path reports.
    if (whole == 0 || whole > 300)
        return false;
    if (pos < bytes.size() && bytes[pos] == '.') {
        ++pos;
        SkipDigits(bytes, &pos);
    }
    if (pos != bytes.size())
        return false;
    std::from_chars(bytes.data(), bytes.data() + bytes.size(), *value);
    return true;
}

bool ParsePlainInteger(std::string_view bytes, int *value)
{
    size_t pos = 0;
    if (pos < bytes.size() && bytes[pos] == '-')
        ++pos;
    const int digits = SkipDigits(bytes, &pos);
    // Nine digits always fit into 32 bits; longer ones take the slow path.
    if (digits == 0 || digits > 9 || pos != bytes.size())
        return false;
    std::from_chars(bytes.data(), bytes.data() + bytes.size(), *value);
    return true;
}

// One walk over the bytes: the whole part is read as it is checked, at
// most 16 of its digits, as a 16th already refuses the cell.
bool ParsePlainTruncated(std::string_view bytes, int *value)
{
    const char *at = bytes.data();
    const char *const end = at + bytes.size();
    const bool negative = at < end && *at == '-';
    at += negative ? 1 : 0;
    const char *const wholeStart = at;
    const char *const wholeLimit = wholeStart + qMin<qint64>(end - wholeStart, 16);
    qint64 number = 0;
    for (; at < wholeLimit && uchar(*at - '0') < 10; ++at)
        number = number * 10 + (*at - '0');
    const qint64 whole = at - wholeStart;
    qint64 fraction = 0;
    if (at < end && *at == '.') {
        const char *const fractionStart = ++at;
        while (at < end && uchar(*at - '0') < 10)
            ++at;
        fraction = at - fractionStart;
    }
    if (whole == 0 || whole + fraction > 15 || at != end)
        return false;
    number = negative ? -number : number;
    *value = int(qBound<qint64>(std::numeric_limits<int>::min(), number, std::numeric_limits<int>::max()));
    return true;
}

int TruncateToInt(double value)
{
    if (std::isnan(value))
        return 0;
    if (value >= double(std::numeric_limits<int>::max()))
        return std::numeric_limits<int>::max();
    if (value <= double(std::numeric_limits<int>::min()))
        return std::numeric_limits<int>::min();
    return int(value);
}

} // namespace CellNumber
