// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// How the window shows what the models report: an information box with
// no parent, the given title and text, and a single OK button.
void ShowInformationBox(const QString &title, const QString &text);
