#include "QuorvaneEditor/JobSystem.h"

#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace QuorvaneEngine {
namespace {

/* Every case runs with workers and without any, where all jobs belong to the GUI thread. */
class JobSystemTest: public testing::TestWithParam<UnsignedInt> {};

INSTANTIATE_TEST_SUITE_P(
    Threads, JobSystemTest, testing::Values(0u, 1u, 4u), [](const auto& info) { return std::to_string(info.param); });

TEST_P(JobSystemTest, TellsHowManyWorkersThereAre) { EXPECT_EQ(JobSystem{GetParam()}.threadCount(), GetParam()); }

TEST_P(JobSystemTest, IdsAreCountedFromZero) {
    JobSystem jobs{GetParam()};
    EXPECT_EQ(jobs.dispatch([] {}, {}, {}), 0);
    EXPECT_EQ(jobs.dispatch([] {}, {}, JobFlag::MainThread), 1);
    EXPECT_EQ(jobs.dispatch([] {}, {}, {}), 2);
    jobs.waitForAll();
}

TEST_P(JobSystemTest, AJobIsCalledOnceWithTheSystemAndItsId) {
    JobSystem jobs{GetParam()};
    std::atomic<JobSystem*> system{};
    std::atomic<int> id{-1};
    std::atomic<int> calls{};
    jobs.dispatch([] {}, {}, {});
    const int job = jobs.dispatchFunc(
        [&](JobSystem& from, int ownId) {
            system = &from;
            id = ownId;
            ++calls;
            return JobResult::Done;
        },
        {}, {});
    jobs.wait(job);
    jobs.waitForAll();
    EXPECT_EQ(system, &jobs);
    EXPECT_EQ(id, job);
    EXPECT_EQ(calls, 1);
}

TEST_P(JobSystemTest, AMainThreadJobWaitsForTheCallAndRunsOnItsThread) {
    JobSystem jobs{GetParam()};
    std::thread::id thread;
    const int job = jobs.dispatch([&] { thread = std::this_thread::get_id(); }, {}, JobFlag::MainThread);
    EXPECT_FALSE(jobs.isDone(job));
    EXPECT_EQ(thread, std::thread::id{});
    jobs.runMainThreadJobs();
    EXPECT_TRUE(jobs.isDone(job));
    EXPECT_EQ(thread, std::this_thread::get_id());
}

TEST_P(JobSystemTest, MainThreadJobsRunInTheOrderOfDispatch) {
    JobSystem jobs{GetParam()};
    std::string order;
    for(char letter: {'a', 'b', 'c', 'd'})
        jobs.dispatch([&order, letter] { order += letter; }, {}, JobFlag::MainThread);
    jobs.runMainThreadJobs();
    EXPECT_EQ(order, "abcd");
}

TEST_P(JobSystemTest, AJobThatAMainThreadJobDispatchesWaitsForTheNextCall) {
    JobSystem jobs{GetParam()};
    int calls = 0;
    jobs.dispatchFunc(
        [&](JobSystem& system, int) {
            system.dispatch([&] { ++calls; }, {}, JobFlag::MainThread);
            return JobResult::Done;
        },
        {}, JobFlag::MainThread);
    jobs.runMainThreadJobs();
    EXPECT_EQ(calls, 0);
    jobs.runMainThreadJobs();
    EXPECT_EQ(calls, 1);
}

TEST_P(JobSystemTest, AJobRunsAfterAllThatItDependsOn) {
    JobSystem jobs{GetParam()};
    std::atomic<int> ended{};
    std::atomic<int> seen{-1};
    std::vector<int> dependencies;
    for(int i = 0; i != 20; ++i)
        dependencies.push_back(jobs.dispatch([&] { ++ended; }, {}, i % 2 ? JobFlags{JobFlag::MainThread} : JobFlags{}));
    const int last = jobs.dispatch([&] { seen = ended.load(); }, {dependencies.data(), dependencies.size()}, {});
    jobs.wait(last);
    EXPECT_EQ(seen, 20);
}

TEST_P(JobSystemTest, AChainRunsInItsOrder) {
    JobSystem jobs{GetParam()};
    std::string order;
    int previous = -1;
    for(char letter = 'a'; letter <= 'z'; ++letter)
        previous = jobs.dispatch([&order, letter] { order += letter; }, Containers::arrayView(&previous, 1), {});
    jobs.wait(previous);
    EXPECT_EQ(order, "abcdefghijklmnopqrstuvwxyz");
}

TEST_P(JobSystemTest, AnIdThatWasNeverGivenOutHasEnded) {
    JobSystem jobs{GetParam()};
    EXPECT_TRUE(jobs.isDone(0));
    EXPECT_TRUE(jobs.isDone(-1));
    EXPECT_TRUE(jobs.isDone(1000));
    jobs.wait(1000);
    // 0 is the id that the job itself gets.
    const int unknown[]{0, 7, -1};
    bool called = false;
    jobs.wait(jobs.dispatch([&] { called = true; }, unknown, {}));
    EXPECT_TRUE(called);
}

TEST_P(JobSystemTest, ADependencyThatIsNamedTwiceCountsOnce) {
    JobSystem jobs{GetParam()};
    const int first = jobs.dispatch([] {}, {}, JobFlag::MainThread);
    const int twice[]{first, first};
    const int second = jobs.dispatch([] {}, twice, JobFlag::MainThread);
    jobs.runMainThreadJobs();
    EXPECT_TRUE(jobs.isDone(second));
}

TEST_P(JobSystemTest, WhatDependsOnAFailedJobRunsAllTheSame) {
    JobSystem jobs{GetParam()};
    const int failed = jobs.dispatchFunc([](JobSystem&, int) { return JobResult::Failed; }, {}, {});
    bool called = false;
    jobs.wait(jobs.dispatch([&] { called = true; }, Containers::arrayView(&failed, 1), {}));
    EXPECT_TRUE(jobs.isDone(failed));
    EXPECT_TRUE(called);
}

TEST_P(JobSystemTest, WaitingRunsMainThreadJobsThatTheJobDependsOn) {
    JobSystem jobs{GetParam()};
    bool called = false;
    const int first = jobs.dispatch([&] { called = true; }, {}, JobFlag::MainThread);
    const int second = jobs.dispatch([] {}, Containers::arrayView(&first, 1), {});
    jobs.wait(second);
    EXPECT_TRUE(called);
}

TEST_P(JobSystemTest, AMainThreadJobMayWaitForAnEarlierJob) {
    JobSystem jobs{GetParam()};
    bool called = false;
    const int first = jobs.dispatch([&] { called = true; }, {}, {});
    bool seen = false;
    jobs.dispatchFunc(
        [&](JobSystem& system, int) {
            system.wait(first);
            seen = called;
            return JobResult::Done;
        },
        {}, JobFlag::MainThread);
    jobs.runMainThreadJobs();
    EXPECT_TRUE(seen);
}

TEST_P(JobSystemTest, WaitingForAllRunsWhatJobsDispatchToo) {
    JobSystem jobs{GetParam()};
    int calls = 0;
    jobs.dispatchFunc(
        [&](JobSystem& system, int) {
            system.dispatch([&] { ++calls; }, {}, JobFlag::MainThread);
            return JobResult::Done;
        },
        {}, JobFlag::MainThread);
    jobs.waitForAll();
    EXPECT_EQ(calls, 1);
}

TEST_P(JobSystemTest, DestructionDropsWhatHasNotBegunAndFreesWhatItHolds) {
    const auto held = std::make_shared<int>(7);
    bool called = false;
    {
        JobSystem jobs{GetParam()};
        const int first = jobs.dispatch([&called, held] { called = true; }, {}, JobFlag::MainThread);
        jobs.dispatch([&called, held] { called = true; }, Containers::arrayView(&first, 1), {});
        EXPECT_EQ(held.use_count(), 3);
    }
    EXPECT_FALSE(called);
    EXPECT_EQ(held.use_count(), 1);
}

TEST_P(JobSystemTest, WhatAJobHoldsIsFreedBeforeItCountsAsEnded) {
    JobSystem jobs{GetParam()};
    for(int i = 0; i != 100; ++i) {
        auto held = std::make_shared<int>(7);
        const std::weak_ptr<int> watched = held;
        jobs.wait(jobs.dispatch([held = std::move(held)] {}, {}, {}));
        ASSERT_TRUE(watched.expired());
    }
}

TEST_P(JobSystemTest, ManyJobsAllRun) {
    JobSystem jobs{GetParam()};
    std::atomic<int> calls{};
    int previous[]{-1, -1};
    for(int i = 0; i != 5000; ++i) {
        const int job = jobs.dispatch([&] { ++calls; }, previous, i % 7 ? JobFlags{} : JobFlags{JobFlag::MainThread});
        previous[i % 2] = job;
    }
    jobs.waitForAll();
    EXPECT_EQ(calls, 5000);
}

TEST(JobSystemWorkers, DestructionWaitsForTheJobThatRuns) {
    std::atomic<bool> begun{};
    std::atomic<bool> release{};
    std::atomic<bool> ended{};
    std::thread releaser;
    {
        JobSystem jobs{1};
        jobs.dispatch(
            [&] {
                begun = true;
                while(!release) std::this_thread::yield();
                ended = true;
            },
            {}, {});
        while(!begun) std::this_thread::yield();
        releaser = std::thread{[&] { release = true; }};
    }
    EXPECT_TRUE(ended);
    releaser.join();
}

TEST(JobSystemWorkers, AJobWithoutFlagsLeavesTheGuiThreadAlone) {
    JobSystem jobs{2};
    std::thread::id thread;
    jobs.wait(jobs.dispatch([&] { thread = std::this_thread::get_id(); }, {}, {}));
    EXPECT_NE(thread, std::this_thread::get_id());
    EXPECT_NE(thread, std::thread::id{});
}

TEST_P(JobSystemTest, AJobThatWaitsForItselfAborts) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(
        {
            JobSystem jobs{GetParam()};
            jobs.dispatchFunc(
                [](JobSystem& system, int id) {
                    system.wait(id);
                    return JobResult::Done;
                },
                {}, JobFlag::MainThread);
            jobs.runMainThreadJobs();
        },
        "JobSystem::wait\\(\\): job 0 cannot end before the job that waits for it");
}

}
}
