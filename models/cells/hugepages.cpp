// SPDX-License-Identifier: GPL-3.0-or-later
#include "hugepages.h"

#include <QtGlobal>

#ifdef Q_OS_LINUX
#include <sys/mman.h>
#endif

namespace HugePages {

void *AllocateBytes(size_t bytes)
{
    // malloc(0) may give null; a spare byte keeps an empty block valid.
    if (bytes < kHugePageBytes)
        return std::malloc(bytes + 1);
    const size_t rounded = (bytes + kHugePageBytes - 1) & ~(kHugePageBytes - 1);
    void *block = std::aligned_alloc(kHugePageBytes, rounded);
#ifdef MADV_HUGEPAGE
    if (block)
        madvise(block, rounded, MADV_HUGEPAGE);
#endif
    return block;
}

} // namespace HugePages
