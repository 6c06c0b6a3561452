// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// The signed-in account as the service describes it. A non-empty email is
// the window's only sign of being signed in; the rest is kept unread.
struct CloudProfile
{
    QString name;
    QString email;
    QString expiryDate;
    bool isDelegate = false;
    bool passwordSet = true;
    QString parentName;
    QString parentEmail;
    int numberOfDelegates = 0;
    int delegatesCount = 0;
    quint64 limitPackage = 0;
    quint64 uploadedExperimentsSize = 0;
};
