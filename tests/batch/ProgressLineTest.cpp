#include "batch/ProgressLine.h"

#include <thread>

#include <gtest/gtest.h>

#include "KeptOutput.h"
#include "localization/Progress.h"

namespace QuorvaneEngine {
namespace {

using namespace std::chrono_literals;

Terminal terminal() {
    Terminal terminal;
    terminal.isTerminal = true;
    return terminal;
}

/* The line is shown by a thread of its own, so a test looks until it is there; a test that waits in vain is ended by its time limit. */
void waitFor(KeptOutput& kept, const std::string& text) {
    while(kept.error().find(text) == std::string::npos) std::this_thread::yield();
}

TEST(ProgressLine, WorkThatTakesItsTimeIsShownAndWipedAway) {
    KeptOutput kept{{}, terminal()};
    Progress progress;
    {
        const ProgressLine line{kept.output, "reading", progress, 0ms};
        waitFor(kept, "\rreading ...");
        progress.total = 200;
        progress.done = 90;
        waitFor(kept, "\rreading: 45 %");
        progress.done = 199;
        waitFor(kept, "\rreading: 99 %");
        progress.done = 200;
        waitFor(kept, "\rreading ...  ");
    }
    EXPECT_EQ(kept.error(), "\rreading ...\rreading: 45 %\rreading: 99 %\rreading ...  \r           \r");
    EXPECT_EQ(kept.out(), "");
}

TEST(ProgressLine, AShorterLineLeavesNothingOfALongerOne) {
    KeptOutput kept{{}, terminal()};
    Progress progress;
    progress.total = 100;
    progress.done = 45;
    const ProgressLine line{kept.output, "x", progress, 0ms};
    waitFor(kept, "\rx: 45 %");
    progress.done = 5;
    waitFor(kept, "\rx: 5 % ");
}

TEST(ProgressLine, WorkThatIsSoonDoneShowsNothing) {
    KeptOutput kept{{}, terminal()};
    Progress progress;
    { const ProgressLine line{kept.output, "reading", progress, 1h}; }
    EXPECT_EQ(kept.error(), "");
}

TEST(ProgressLine, WithoutATerminalThereIsNone) {
    KeptOutput kept{terminal(), {}};
    Progress progress;
    { const ProgressLine line{kept.output, "reading", progress, 0ms}; }
    EXPECT_EQ(kept.error() + kept.out(), "");
}

}
}
