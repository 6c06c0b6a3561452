// SPDX-License-Identifier: GPL-3.0-or-later
#include "plotpalette.h"

#include <array>

namespace PlotPalette {

// Okabe-Ito without its black, which stays for lines of two conditions;
// yellow comes last as it is the faintest on white.
QColor Color(int condition)
{
    static const std::array<QColor, 7> colors{QColor(0xE6, 0x9F, 0x00), QColor(0x56, 0xB4, 0xE9),
                                              QColor(0x00, 0x9E, 0x73), QColor(0x00, 0x72, 0xB2),
                                              QColor(0xD5, 0x5E, 0x00), QColor(0xCC, 0x79, 0xA7),
                                              QColor(0xF0, 0xE4, 0x42)};
    if (condition < 0)
        return Qt::black;
    return colors[size_t(condition) % colors.size()];
}

QwtSymbol::Style Symbol(int condition)
{
    static const std::array<QwtSymbol::Style, 7> shapes{QwtSymbol::Ellipse, QwtSymbol::Rect,
                                                        QwtSymbol::Diamond, QwtSymbol::Triangle,
                                                        QwtSymbol::DTriangle, QwtSymbol::Star2,
                                                        QwtSymbol::Hexagon};
    if (condition < 0)
        return QwtSymbol::Ellipse;
    return shapes[size_t(condition) % shapes.size()];
}

QColor Removed()
{
    return QColor(0xAA, 0xAA, 0xAA);
}

} // namespace PlotPalette
