// SPDX-License-Identifier: GPL-3.0-or-later
#include "parallelparts.h"

#include <QtGlobal>

#include <atomic>
#include <thread>

namespace {

std::atomic<int> chosenCount{0};

} // namespace

int ParallelParts::Count()
{
    if (chosenCount > 0)
        return chosenCount;
    return qBound(2, int(std::thread::hardware_concurrency()), 8);
}

void ParallelParts::SetCount(int count)
{
    chosenCount = qMax(0, count);
}

int ParallelParts::CountFor(qint64 size, qint64 leastPerPart)
{
    if (chosenCount > 0 || leastPerPart <= 0)
        return Count();
    return int(qBound(qint64(1), size / leastPerPart, qint64(Count())));
}
