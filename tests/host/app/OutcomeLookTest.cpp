#include "app/OutcomeLook.h"

#include <set>
#include <string>

#include <Corrade/Containers/ArrayView.h>
#include <gtest/gtest.h>

namespace QuorvaneEngine {
namespace {

TEST(OutcomeLook, EveryOutcomeHasOneThatCountsIt) {
    ASSERT_EQ(outcomeLooks().size(), std::size_t(TermOutcome::Notice) + 1);
    std::set<std::string> headings;
    for(std::size_t i = 0; i != outcomeLooks().size(); ++i) {
        const OutcomeLook& look = outcomeLook(TermOutcome(i));
        SCOPED_TRACE(look.heading);
        EXPECT_EQ(look.outcome, TermOutcome(i));
        EXPECT_TRUE(headings.insert(look.heading).second);
        LocalizationReport report;
        report.add(0, TermOutcome(i), "term");
        EXPECT_EQ(report.counts(0).*look.count, 1u);
    }
}

}
}
