// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

// How far a transfer or an unpacking may go before it is given up, so that
// a broken or hostile service can neither hold the window for ever nor
// fill the disk. The client keeps these for all its work; tests shorten
// them so that small data reaches them.
struct CloudLimits
{
    // A JSON reply or a participants file larger than this is a failed call.
    qint64 replyBytes = qint64(16) << 20;
    // A JSON call or a participants file ends within this many seconds.
    long callSeconds = 60;
    // A result archive larger than this stops its download.
    qint64 downloadBytes = qint64(4) << 30;
    // A download slower than this many bytes a second for slowSeconds stops.
    long slowBytesPerSecond = 1024;
    long slowSeconds = 30;
    // Neither a download nor unpacking leaves less free space on the disk.
    qint64 freeSpaceReserve = qint64(1) << 30;
    // Unpacking stops once an archive has given this many times its size.
    int unpackRatio = 200;
};
