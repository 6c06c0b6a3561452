// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// One experiment of the account, known everywhere by its code: the last
// segment of its download addresses and the name of its cache directory.
struct CloudExperiment
{
    QString name;
    // Kept as the service sends it; the panel parses it when it shows it.
    QString expiryDate;
    int code = 0;
    bool isTerminated = false;
    // Counted from the experiment's rt_info; the panel decides by it
    // whether there is data to view.
    int participants = 0;
    qint64 size = 0;
};
