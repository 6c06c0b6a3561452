// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <functional>

// Where the model layer sends a message meant for the user, as a title and
// a text: the window shows it in an information box, the command-line tool
// prints the text. The models never decide how a message reaches anyone.
using MessageReport = std::function<void(const QString &title, const QString &text)>;
