// SPDX-License-Identifier: GPL-3.0-or-later
#include "unziparchive.h"

#include <QByteArray>
#include <QList>

#include <cstdio>
#include <memory>
#include <string>

#include <sys/stat.h>
#include <unzip.h>

namespace {

// A longer name is cut to what the buffer holds, less its closing NUL.
const int kNameBufferSize = 256;
const int kChunkSize = 8192;

struct ArchiveCloser
{
    void operator()(void *archive) const { unzClose(archive); }
};
using Archive = std::unique_ptr<void, ArchiveCloser>;

bool IsDirectory(const unz_file_info64 &info, const QByteArray &name)
{
    return info.uncompressed_size == 0 && name.endsWith('/');
}

// Appended to the destination, such a name would reach outside it.
bool LeavesDestination(const QByteArray &name)
{
    return name.startsWith('/') || name.split('/').contains("..");
}

qint64 FileSize(const char *path)
{
    struct stat status;
    return stat(path, &status) == 0 ? qint64(status.st_size) : 0;
}

// What the entries still to come may give together, and the free space
// they must leave on the disk.
struct Budget
{
    qint64 left;
    qint64 reserve;
};

// A file that cannot be made, for want of its directory for example, is
// passed over in silence; the entry is still read to its end, and what it
// gives counts all the same. False when the entry cannot be read.
bool CopyEntry(unzFile archive, const std::string &target, Budget &budget, WriteStop *stop)
{
    CacheFile out(target, budget.left, budget.reserve);
    char chunk[kChunkSize];
    int read = 0;
    while ((read = unzReadCurrentFile(archive, chunk, kChunkSize)) > 0) {
        *stop = out.Write(chunk, read);
        if (*stop != WriteStop::None) {
            out.Remove();
            return true;
        }
        budget.left -= read;
    }
    return read == 0;
}

} // namespace

// The loop ends when moving past an entry fails, which is the normal end of
// the archive, also when the last entry is a directory.
bool UnzipArchive(const char *archivePath, const char *destination, const CloudLimits &limits, WriteStop *stop)
{
    *stop = WriteStop::None;
    const Archive archive(unzOpen64(archivePath));
    if (!archive) {
        std::printf("Could not open %s for unzipping\n", "test.zip");
        return false;
    }
    Budget budget{FileSize(archivePath) * limits.unpackRatio, limits.freeSpaceReserve};
    for (;;) {
        unz_file_info64 info;
        char buffer[kNameBufferSize] = {};
        if (unzGetCurrentFileInfo64(archive.get(), &info, buffer, kNameBufferSize - 1, nullptr, 0, nullptr, 0)
            != UNZ_OK)
            return false;
        const QByteArray name(buffer);
        if (!IsDirectory(info, name) && !LeavesDestination(name)) {
            if (unzOpenCurrentFile(archive.get()) != UNZ_OK)
                return false;
            const bool complete = CopyEntry(archive.get(), std::string(destination) + buffer, budget, stop);
            unzCloseCurrentFile(archive.get());
            if (!complete || *stop != WriteStop::None)
                return false;
        }
        if (unzGoToNextFile(archive.get()) != UNZ_OK)
            return true;
    }
}
