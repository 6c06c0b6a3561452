// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>

// Memory for the large buffers of a file's table. Blocks of 2 MiB or more
// are aligned to and, where the system offers them, backed by huge pages:
// filling them then takes one page fault per 2 MiB rather than per 4 KiB.
namespace HugePages {

const size_t kHugePageBytes = size_t(1) << 21;

struct Free
{
    void operator()(void *block) const { std::free(block); }
};

template <typename T>
using Block = std::unique_ptr<T[], Free>;

// Room for `count` elements of T, uninitialised; null when memory does not
// allow it.
template <typename T>
Block<T> Allocate(size_t count);

void *AllocateBytes(size_t bytes);

template <typename T>
Block<T> Allocate(size_t count)
{
    return Block<T>(static_cast<T *>(AllocateBytes(count * sizeof(T))));
}

} // namespace HugePages
