#include "Parallel.h"

#include <mutex>
#include <set>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "Progress.h"

namespace QuorvaneEngine {

TEST(Parallel, EveryNumberIsDoneOnce) {
    for(const std::size_t count: {0u, 1u, 2u, 1000u}) {
        std::vector<std::atomic<int>> done(count);
        EXPECT_TRUE(forEachInParallel(count, [&](const std::size_t i) { ++done[i]; }));
        for(const std::atomic<int>& times: done) EXPECT_EQ(times, 1);
    }
}

TEST(Parallel, MoreThanOneThreadWorksWhereTheMachineHasMoreCores) {
    if(std::thread::hardware_concurrency() < 2) GTEST_SKIP() << "this machine has one core";
    // Both wait for each other: one thread alone would never get on.
    std::atomic<int> arrived{0};
    forEachInParallel(2, [&](std::size_t) {
        ++arrived;
        while(arrived < 2) std::this_thread::yield();
    });
    EXPECT_EQ(arrived, 2);
}

TEST(Parallel, ProgressCountsWhatIsDone) {
    Progress progress;
    progress.done = 7;
    EXPECT_TRUE(forEachInParallel(
        20, [](std::size_t) {}, &progress));
    EXPECT_EQ(progress.done, 20u);
    EXPECT_EQ(progress.total, 20u);
}

TEST(Parallel, CancelledWorkStopsAtTheNextStep) {
    Progress progress;
    std::atomic<int> done{0};
    EXPECT_FALSE(forEachInParallel(
        1000,
        [&](std::size_t) {
            ++done;
            progress.isCancelled = true;
        },
        &progress));
    EXPECT_GE(done, 1);
    EXPECT_LE(done, int(std::thread::hardware_concurrency()));

    // What was cancelled after the last step is done all the same.
    Progress late;
    EXPECT_TRUE(forEachInParallel(
        1, [&](std::size_t) { late.isCancelled = true; }, &late));
}

}
