// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtEndian>
#include <QtGlobal>

#include <array>
#include <cstring>
#include <string_view>
#include <vector>

// The distinct cells met in one column, each with the number its reader
// gave it, found by the cells' bytes. The cells of a section column are
// looked up once per row, so this is built for speed on few and short
// values: the first few cells of up to eight bytes are kept in a short list
// and compared as one number each; the others are hashed into a table of
// their own.
//
// The eight bytes from the start of every cell looked up or kept must be
// readable, however short the cell is: the bytes of a file are followed by
// padding for that.
class CellKeys
{
public:
    // The number kept for `bytes`, or -1.
    Q_ALWAYS_INLINE int Find(std::string_view bytes) const;
    // Keeps `number` for `bytes`, which must not be kept yet; the bytes
    // must stay where they are for as long as these keys are used.
    void Insert(std::string_view bytes, int number);

private:
    static const int kListed = 8;

    struct ShortKey
    {
        quint64 head = 0;
        quint32 size = 0;
        qint32 number = -1;
    };

    struct Key
    {
        // The first eight bytes, and NULs after a shorter cell.
        quint64 head = 0;
        const char *data = nullptr;
        quint32 size = 0;
        qint32 number = -1;
    };

    static quint64 Head(std::string_view bytes);
    static bool Equal(const Key &key, std::string_view bytes, quint64 head);
    static quint64 Hash(std::string_view bytes, quint64 head);
    Q_NEVER_INLINE int FindHashed(std::string_view bytes, quint64 head) const;
    void Rehash(size_t capacity);
    void Place(const Key &key);

    std::array<ShortKey, kListed> listed;
    int listedCount = 0;
    // Open addressing over a power of two of places, at most half full.
    std::vector<Key> table;
    size_t tableCount = 0;
    mutable Key lastFound;
};

inline quint64 CellKeys::Head(std::string_view bytes)
{
    if (bytes.empty())
        return 0;
    quint64 word;
    std::memcpy(&word, bytes.data(), sizeof word);
    word = qFromLittleEndian(word);
    return bytes.size() >= sizeof word ? word : word & ((quint64(1) << (8 * bytes.size())) - 1);
}

// Past the head, the last eight bytes are compared as a number too, and
// only what lies between them byte by byte.
inline bool CellKeys::Equal(const Key &key, std::string_view bytes, quint64 head)
{
    if (key.head != head || key.size != bytes.size())
        return false;
    const size_t size = bytes.size();
    if (size <= sizeof head)
        return true;
    quint64 keyTail;
    quint64 tail;
    std::memcpy(&keyTail, key.data + size - sizeof tail, sizeof tail);
    std::memcpy(&tail, bytes.data() + size - sizeof tail, sizeof tail);
    return keyTail == tail
           && (size <= 2 * sizeof tail
               || std::memcmp(key.data + sizeof head, bytes.data() + sizeof head, size - 2 * sizeof tail) == 0);
}

// The head and the last eight bytes, which for a short cell are the same.
inline quint64 CellKeys::Hash(std::string_view bytes, quint64 head)
{
    quint64 tail = head;
    if (bytes.size() > sizeof tail) {
        std::memcpy(&tail, bytes.data() + bytes.size() - sizeof tail, sizeof tail);
        tail = qFromLittleEndian(tail);
    }
    const quint64 mixed = (head ^ (tail << 29 | tail >> 35) ^ quint64(bytes.size())) * 0x9E3779B97F4A7C15ULL;
    return mixed ^ (mixed >> 32);
}

inline int CellKeys::Find(std::string_view bytes) const
{
    const quint64 head = Head(bytes);
    if (bytes.size() <= sizeof head) {
        for (int i = 0; i < listedCount; ++i) {
            if (listed[size_t(i)].head == head && listed[size_t(i)].size == bytes.size())
                return listed[size_t(i)].number;
        }
    }
    return tableCount == 0 ? -1 : FindHashed(bytes, head);
}
