// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

// One field of a request body, in the order the caller lists it. Every value
// goes out as a JSON string: the flag is carried along and never looked at.
struct RequestParam
{
    QByteArray key;
    QByteArray value;
    bool flag = false;
};
