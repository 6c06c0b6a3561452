// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// The two kinds of line a dotted file's header block is made of. Both
// tests are those of the whole-line patterns "(\..*\t).*" and "^\.$" in
// ECMAScript syntax on the line's UTF-8 text.
namespace HeaderLine {

bool IsFieldLine(const QString &line);
bool IsDotLine(const QString &line);

} // namespace HeaderLine
