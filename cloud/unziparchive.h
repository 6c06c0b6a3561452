#pragma once

// Unpacks the files of a zip archive flat into destination, which must end
// in a slash. Directory entries are passed over and no directory is made,
// so a file inside a subdirectory is not written; an entry whose name is
// absolute or climbs with ".." is never written. Returns false when the
// archive cannot be opened or an entry cannot be read.
bool UnzipArchive(const char *archivePath, const char *destination);
