// SPDX-License-Identifier: GPL-3.0-or-later
#include "informationbox.h"

#include <QMessageBox>

void ShowInformationBox(const QString &title, const QString &text)
{
    QMessageBox::information(nullptr, title, text, QMessageBox::Ok);
}
