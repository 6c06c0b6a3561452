// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <future>
#include <system_error>
#include <vector>

// Work split into parts that run at once, one on each core, while the
// calling thread waits: reading a file's bytes and indexing its rows.
class ParallelParts
{
public:
    // How many parts a piece of work is split into: at least two, so that
    // joining parts is at work on any machine, at most eight.
    static int Count();
    // Sets the count; 0, the start, chooses by the machine's cores.
    static void SetCount(int count);
    // How many parts work of `size` is split into when each part should
    // have at least `leastPerPart` of it: Count() at most, one at least. A
    // count set by SetCount holds whatever the size.
    static int CountFor(qint64 size, qint64 leastPerPart);

    // Runs work(0) to work(count - 1) at once, part 0 on the calling thread,
    // and returns when all are done. A part's failure reaches the caller,
    // after the other parts have finished.
    template <typename Work>
    static void Run(int count, const Work &work);
};

template <typename Work>
void ParallelParts::Run(int count, const Work &work)
{
    std::vector<std::future<void>> others;
    for (int part = 1; part < count; ++part) {
        try {
            others.push_back(std::async(std::launch::async, work, part));
        } catch (const std::system_error &) {
            // No thread to be had: the part runs on this one.
            others.push_back(std::async(std::launch::deferred, work, part));
        }
    }
    work(0);
    for (std::future<void> &other : others)
        other.get();
}
