// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cachefile.h"
#include "cloudlimits.h"

// Unpacks the files of a zip archive flat into destination, which must end
// in a slash. Directory entries are passed over and no directory is made,
// so a file inside a subdirectory is not written; an entry whose name is
// absolute or climbs with ".." is never written. Files are made readable
// by their owner alone. Returns false when the archive cannot be opened,
// an entry cannot be read, or a limit stops the unpacking: once the
// archive has given more than the limits' ratio times its own size, a
// write fails, or the disk would fall below the reserve. `stop` then says
// which; the entry being written is deleted, the files before it stay and
// the rest are passed over.
bool UnzipArchive(const char *archivePath, const char *destination, const CloudLimits &limits, WriteStop *stop);
