// SPDX-License-Identifier: GPL-3.0-or-later
#include "cellkeys.h"

void CellKeys::Insert(std::string_view bytes, int number)
{
    const Key key{Head(bytes), bytes.data(), quint32(bytes.size()), number};
    if (bytes.size() <= sizeof key.head && listedCount < kListed) {
        listed[size_t(listedCount++)] = ShortKey{key.head, key.size, number};
        return;
    }
    if ((tableCount + 1) * 2 > table.size())
        Rehash(qMax<size_t>(16, table.size() * 2));
    Place(key);
    ++tableCount;
}

// Rows of one block or trial come in runs, so the key found here last is
// tried first.
int CellKeys::FindHashed(std::string_view bytes, quint64 head) const
{
    if (Equal(lastFound, bytes, head))
        return lastFound.number;
    const size_t mask = table.size() - 1;
    for (size_t place = size_t(Hash(bytes, head)) & mask;; place = (place + 1) & mask) {
        const Key &key = table[place];
        if (key.number < 0)
            return -1;
        if (Equal(key, bytes, head)) {
            lastFound = key;
            return key.number;
        }
    }
}

void CellKeys::Rehash(size_t capacity)
{
    std::vector<Key> old(capacity);
    old.swap(table);
    for (const Key &key : old) {
        if (key.number >= 0)
            Place(key);
    }
}

void CellKeys::Place(const Key &key)
{
    const size_t mask = table.size() - 1;
    size_t place = size_t(Hash(std::string_view(key.data, key.size), key.head)) & mask;
    while (table[place].number >= 0)
        place = (place + 1) & mask;
    table[place] = key;
}
