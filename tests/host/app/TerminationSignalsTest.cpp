#include "app/TerminationSignals.h"

#include <csignal>

#include <gtest/gtest.h>

namespace QuorvaneEngine {
namespace {

class TerminationSignalsTest: public testing::TestWithParam<int> {};

INSTANTIATE_TEST_SUITE_P(Each, TerminationSignalsTest, testing::Values(SIGTERM, SIGHUP, SIGINT));

TEST_P(TerminationSignalsTest, TheFirstOneIsAQuestion) {
    const TerminationSignals signals;
    EXPECT_FALSE(signals.isAsked());
    std::raise(GetParam());
    EXPECT_TRUE(signals.isAsked());
}

TEST_P(TerminationSignalsTest, SoonAfterwardsItIsTheSameQuestion) {
    const TerminationSignals signals{3600.0};
    for(const int signal: {GetParam(), GetParam(), SIGTERM, SIGHUP}) std::raise(signal);
    EXPECT_TRUE(signals.isAsked());
}

TEST_P(TerminationSignalsTest, ALaterOneEndsTheProcess) {
    EXPECT_EXIT(
        {
            const TerminationSignals signals{0.0};
            std::raise(GetParam());
            std::raise(GetParam());
        },
        testing::KilledBySignal(GetParam()), "");
}

TEST_P(TerminationSignalsTest, NobodyTakesThemAfterwards) {
    { const TerminationSignals signals; }
    EXPECT_EXIT(std::raise(GetParam()), testing::KilledBySignal(GetParam()), "");
    const TerminationSignals signals;
    EXPECT_FALSE(signals.isAsked());
}

TEST_P(TerminationSignalsTest, WhatIsIgnoredStaysIgnored) {
    std::signal(GetParam(), SIG_IGN);
    {
        const TerminationSignals signals;
        std::raise(GetParam());
        EXPECT_FALSE(signals.isAsked());
    }
    std::raise(GetParam());
}

}
}
