// SPDX-License-Identifier: GPL-3.0-or-later
#include "cachefile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace {

const mode_t kOwnerOnly = S_IRUSR | S_IWUSR;

// A file that is there already keeps its mode through open(); a regular
// one is made owner-only all the same. Devices are left as they are.
void MakeOwnerOnly(int descriptor)
{
    struct stat status;
    if (fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode))
        fchmod(descriptor, kOwnerOnly);
}

// A write cut short by a signal goes on where it stopped.
bool WriteWhole(int descriptor, const char *data, qint64 length)
{
    while (length > 0) {
        const ssize_t written = ::write(descriptor, data, size_t(length));
        if (written < 0)
            return false;
        data += written;
        length -= written;
    }
    return true;
}

} // namespace

CacheFile::CacheFile(const std::string &path, qint64 maxBytes, qint64 freeSpaceReserve)
    : path(path)
    , descriptor(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, kOwnerOnly))
    , maxBytes(maxBytes)
    , freeSpaceReserve(freeSpaceReserve)
{
    if (IsOpen())
        MakeOwnerOnly(descriptor);
}

CacheFile::~CacheFile()
{
    Close();
}

WriteStop CacheFile::Write(const char *data, qint64 length)
{
    if (length > maxBytes - size)
        return WriteStop::TooLarge;
    size += length;
    if (!IsOpen())
        return WriteStop::None;
    if (!LeavesReserve(length))
        return WriteStop::DiskNearlyFull;
    return WriteWhole(descriptor, data, length) ? WriteStop::None : WriteStop::WriteFailed;
}

void CacheFile::Remove()
{
    if (!IsOpen())
        return;
    Close();
    ::unlink(path.c_str());
}

// A disk whose free space cannot be read is taken to have room.
bool CacheFile::LeavesReserve(qint64 length) const
{
    struct statvfs disk;
    if (fstatvfs(descriptor, &disk) != 0)
        return true;
    const qint64 available = qint64(disk.f_bavail) * qint64(disk.f_frsize);
    return available - length >= freeSpaceReserve;
}

void CacheFile::Close()
{
    if (IsOpen())
        ::close(descriptor);
    descriptor = -1;
}
