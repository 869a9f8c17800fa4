#pragma once

#include <QtGlobal>

#include <algorithm>
#include <thread>
#include <vector>

namespace InShares {

// Below this many items a share is not worth a thread of its own.
constexpr qsizetype itemsPerThread = 200;

// Runs `work(begin, end)` for each share of the indices below `count`, the range cut into one
// share per processor so the file system's latency overlaps. Plain threads, not the thread pool:
// this runs on a pool thread itself, and waiting there for pool work can wait forever when the
// pool is full.
template <typename Work>
void runInRanges(qsizetype count, const Work &work)
{
    const qsizetype shares =
        std::clamp<qsizetype>(count / itemsPerThread, 1, std::max(1U, std::thread::hardware_concurrency()));
    const qsizetype shareSize = (count + shares - 1) / shares;
    std::vector<std::jthread> helpers;
    for (qsizetype begin = shareSize; begin < count; begin += shareSize)
        helpers.emplace_back(work, begin, std::min(begin + shareSize, count));
    work(0, std::min(shareSize, count));
}

// Runs `work(i)` for every index below `count`, in shares as above.
template <typename Work>
void run(qsizetype count, const Work &work)
{
    runInRanges(count, [&](qsizetype begin, qsizetype end) {
        for (qsizetype i = begin; i < end; ++i)
            work(i);
    });
}

} // namespace InShares
