#include "imaging/ParallelWork.h"

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

void RunInParallel(qsizetype count, const std::function<void(qsizetype)> &work)
{
    std::atomic<qsizetype> next = 0;
    const auto drain = [&] {
        for (qsizetype index = next++; index < count; index = next++)
            work(index);
    };
    const auto cores = static_cast<qsizetype>(std::max(1U, std::thread::hardware_concurrency()));
    const qsizetype helpers = std::min(cores, count) - 1;
    std::vector<std::jthread> threads;
    for (qsizetype i = 0; i < helpers; ++i)
        threads.emplace_back(drain);
    drain();
}
