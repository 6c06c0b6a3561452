// SPDX-License-Identifier: GPL-3.0-or-later
// A result archive as the cloud brings it, unpacked as the cloud panel does
// into a data directory of its own. Whatever the archive holds, nothing may
// be written outside that directory, and what is written there is a plain
// file. Names are handled as bytes: an archive may hold names that are no
// text in any encoding.

#include "fuzzenvironment.h"
#include "unziparchive.h"

#include <QFile>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

namespace fs = std::filesystem;

void Fail(const std::string &what, const fs::path &path)
{
    std::fprintf(stderr, "%s: %s\n", what.c_str(), path.c_str());
    std::abort();
}

// The place holds the archive and the data directory, nothing else, and
// the data directory only plain files.
void CheckWrittenInside(const fs::path &place, const fs::path &data)
{
    for (const fs::directory_entry &entry : fs::directory_iterator(place)) {
        if (entry.path() != data && entry.path().filename() != "archive.zip")
            Fail("written outside the data directory", entry.path());
    }
    for (const fs::directory_entry &entry : fs::directory_iterator(data)) {
        if (!entry.is_regular_file() || entry.is_symlink())
            Fail("not a plain file", entry.path());
    }
}

void Unpack(const QByteArray &bytes)
{
    FuzzEnvironment &environment = FuzzEnvironment::Instance();
    const fs::path place = QFile::encodeName(environment.Path(QStringLiteral("unpacking"))).toStdString();
    const fs::path data = place / "data";
    fs::create_directories(data);
    const std::string archive = (place / "archive.zip").string();
    std::FILE *file = std::fopen(archive.c_str(), "wb");
    if (!file || std::fwrite(bytes.constData(), 1, size_t(bytes.size()), file) != size_t(bytes.size()))
        Fail("cannot write", archive);
    std::fclose(file);
    // The files are written to memory, whose free space says nothing of a
    // disk's: no reserve is kept, so that every input reaches the writing.
    CloudLimits limits;
    limits.freeSpaceReserve = 0;
    WriteStop stop = WriteStop::None;
    FuzzEnvironment::WithinTimeLimit(bytes.size(), [&] {
        UnzipArchive(archive.c_str(), (data.string() + '/').c_str(), limits, &stop);
    });
    CheckWrittenInside(place, data);
    fs::remove_all(place);
}

} // namespace

ZEPHLANE_FUZZ_TARGET(Unpack)
