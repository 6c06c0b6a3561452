// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

// A file device that writes all it is handed or fails. A file that reaches
// a full disk or the size limit takes part of a write first; the plain
// device reports that as a short write, which QTextStream takes as done and
// drops the rest without a word. Here the rest is tried at once, so the
// failure shows as the device's error.
template <typename FileDevice>
class WholeWrites : public FileDevice
{
public:
    using FileDevice::FileDevice;

protected:
    qint64 writeData(const char *data, qint64 length) override
    {
        qint64 done = 0;
        while (done < length) {
            const qint64 written = FileDevice::writeData(data + done, length - done);
            if (written <= 0)
                return -1;
            done += written;
        }
        return length;
    }
};
