// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMetaType>
#include <QString>

// Why a data file was not read whole. A file read only in part is never to
// be shown or written as if it were the whole file.
enum class ReadFailure { None, OutOfMemory, ReadError };
Q_DECLARE_METATYPE(ReadFailure)

// The reason as a message gives it: "not enough memory" or "read error".
QString ReadFailureText(ReadFailure failure);
