// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <string>

// Why writing a file of the cache stopped before its end, if it did.
enum class WriteStop { None, TooLarge, DiskNearlyFull, WriteFailed };

// A file of the cloud cache as it is written, from a download or out of an
// archive: readable and writable by its owner alone whatever the umask,
// and kept to a largest size and to the disk's free-space reserve.
class CacheFile
{
public:
    // Opens `path` for writing and empties it. A file that cannot be opened
    // takes its bytes nowhere, in silence.
    CacheFile(const std::string &path, qint64 maxBytes, qint64 freeSpaceReserve);
    ~CacheFile();
    CacheFile(const CacheFile &) = delete;
    CacheFile &operator=(const CacheFile &) = delete;

    bool IsOpen() const { return descriptor >= 0; }
    // Appends the bytes, unless they would take the file past its largest
    // size or the disk below the reserve, or cannot be written; the stop
    // says which. Bytes for a file that is not open count towards its size.
    WriteStop Write(const char *data, qint64 length);
    // Closes the file and deletes it, if it was opened.
    void Remove();

private:
    bool LeavesReserve(qint64 length) const;
    void Close();

    const std::string path;
    int descriptor;
    const qint64 maxBytes;
    const qint64 freeSpaceReserve;
    qint64 size = 0;
};
