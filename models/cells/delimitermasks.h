// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

// Where the TABs and the LFs stand in a block of 32 bytes: bit i of a mask
// for byte i. A scan for the cells of a file takes its bytes a block at a
// time; on processors with SSE2 a block is compared in four instructions
// rather than byte by byte.
struct DelimiterMasks
{
    static const int kBlockBytes = 32;

    quint32 tabs = 0;
    quint32 feeds = 0;

    // The masks of the 32 bytes at `block`.
    static DelimiterMasks Of(const char *block);
    // The same, byte by byte: the plain reading the fast one is held against.
    static DelimiterMasks OfPlain(const char *block);
};

inline DelimiterMasks DelimiterMasks::OfPlain(const char *block)
{
    DelimiterMasks masks;
    for (int i = 0; i < kBlockBytes; ++i) {
        if (block[i] == '\t')
            masks.tabs |= quint32(1) << i;
        else if (block[i] == '\n')
            masks.feeds |= quint32(1) << i;
    }
    return masks;
}

#if defined(__SSE2__)
inline DelimiterMasks DelimiterMasks::Of(const char *block)
{
    const __m128i low = _mm_loadu_si128(reinterpret_cast<const __m128i *>(block));
    const __m128i high = _mm_loadu_si128(reinterpret_cast<const __m128i *>(block + 16));
    const __m128i tab = _mm_set1_epi8('\t');
    const __m128i feed = _mm_set1_epi8('\n');
    const auto bits = [](__m128i equal) { return quint32(quint16(_mm_movemask_epi8(equal))); };
    DelimiterMasks masks;
    masks.tabs = bits(_mm_cmpeq_epi8(low, tab)) | bits(_mm_cmpeq_epi8(high, tab)) << 16;
    masks.feeds = bits(_mm_cmpeq_epi8(low, feed)) | bits(_mm_cmpeq_epi8(high, feed)) << 16;
    return masks;
}
#else
inline DelimiterMasks DelimiterMasks::Of(const char *block)
{
    return OfPlain(block);
}
#endif
