// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// What a caller may lend to a REST call to follow it: the transfer writes
// the percentage done and stops at its next report once cancel is set.
struct ProgressState
{
    bool cancel = false;
    int percent = 0;
};
