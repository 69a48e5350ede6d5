#include "video/software/kernels/RowWorkers.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace Quorvex::Platform::Video::Software {

TEST(RowWorkers, EachUnitIsDoneOnceByAWorkerOfTheNumber) {
    RowWorkers workers;
    EXPECT_GE(workers.LargestCount(), 1u);
    EXPECT_LE(workers.LargestCount(), 8u);
    for (std::uint32_t round = 0; round < 300; ++round) {
        const std::uint32_t units = round % 37, wanted = 1 + round % 9;
        std::vector<std::atomic<int>> done(units);
        std::atomic<std::uint32_t> largest = 0;
        workers.Run(units, wanted, [&](std::uint32_t worker, std::uint32_t unit) {
            ++done[unit];
            std::uint32_t seen = largest;
            while (worker > seen && !largest.compare_exchange_weak(seen, worker)) {
            }
        });
        EXPECT_TRUE(std::all_of(done.begin(), done.end(), [](const auto& count) { return count == 1; })) << round;
        EXPECT_LT(largest, std::max(1u, std::min(wanted, workers.LargestCount()))) << round;
    }
}

TEST(RowWorkers, EverythingIsDoneWhenRunReturns) {
    RowWorkers workers;
    std::vector<std::uint32_t> values(1000);
    for (std::uint32_t round = 1; round < 50; ++round) {
        workers.Run(1000, 8, [&](std::uint32_t, std::uint32_t unit) { values[unit] = unit * round; });
        for (std::uint32_t unit = 0; unit < 1000; ++unit)
            ASSERT_EQ(values[unit], unit * round);
    }
}

TEST(RowWorkers, ASystemWithoutThreadsStillGetsTheWorkDone) {
    auto& calls = Quorvex::Platform::GetThreadCalls();
    const auto former = calls;
    calls.start = [](void (*)(void*), void*) { return Quorvex::Platform::ThreadHandle::None; };
    {
        RowWorkers workers;
        std::uint32_t count = 0;
        workers.Run(100, 8, [&](std::uint32_t worker, std::uint32_t) { count += worker + 1; });
        EXPECT_EQ(count, 100u);
    }
    calls = former;
}

TEST(RowWorkers, EndsWithoutEverHavingWorked) {
    const RowWorkers workers;
}

} // namespace Quorvex::Platform::Video::Software
