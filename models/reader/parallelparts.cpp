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
