#include "jobs/JobWakeUp.h"

#include <atomic>

#include <gtest/gtest.h>

#include "QuorvaneEditor/JobSystem.h"

namespace QuorvaneEngine {
namespace {

std::atomic<int> calls{0};

class JobWakeUpTest: public testing::Test {
protected:
    JobWakeUpTest() {
        calls = 0;
        setJobWakeUp([] { ++calls; });
    }
    ~JobWakeUpTest() override { setJobWakeUp(nullptr); }
};

TEST_F(JobWakeUpTest, AJobOfTheGuiThreadWakesItWhenItsTurnHasCome) {
    std::atomic<bool> isFree{false};
    JobSystem jobs{1};
    const int first = jobs.dispatch([&] { isFree.wait(false); }, {}, {});
    const int dependencies[]{first};
    jobs.dispatch([] {}, dependencies, JobFlag::MainThread);
    EXPECT_EQ(calls, 0);
    isFree = true;
    isFree.notify_all();
    jobs.wait(first);
    EXPECT_EQ(calls, 1);
    jobs.waitForAll();
    EXPECT_EQ(calls, 1);
}

TEST_F(JobWakeUpTest, AJobOfAWorkerWakesNobody) {
    JobSystem jobs{1};
    jobs.wait(jobs.dispatch([] {}, {}, {}));
    EXPECT_EQ(calls, 0);
}

TEST_F(JobWakeUpTest, WhereNobodySleepsNobodyIsWoken) {
    setJobWakeUp(nullptr);
    JobSystem jobs{0};
    jobs.wait(jobs.dispatch([] {}, {}, {}));
    EXPECT_EQ(calls, 0);
}

}
}
