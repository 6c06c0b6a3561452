// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <qwt_symbol.h>

#include <QColor>

// The colours and marker shapes of the conditions in every plot, by the
// condition's position in SummaryResult::conditions, so that a condition
// looks the same in each picture. Okabe and Ito's palette, which readers
// with any common colour-vision deficiency tell apart; the shapes tell the
// lines apart in grey print as well.
namespace PlotPalette {

// Black for -1, a line that belongs to no single condition.
QColor Color(int condition);
QwtSymbol::Style Symbol(int condition);
// What removed times are drawn in, the same in every panel.
QColor Removed();

} // namespace PlotPalette
