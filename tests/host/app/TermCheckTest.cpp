#include "app/TermCheck.h"

#include <string>
#include <thread>

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "QuorvaneEditor/AllLanguages.h"
#include "QuorvaneEditor/JobSystem.h"
#include "document/EditorSession.h"
#include "localization/LanguageLookup.h"
#include "localization/LastRun.h"
#include "localization/Progress.h"
#include "support/Json.h"

namespace QuorvaneEngine {
namespace {

using QuorvaneEngine::Test::toText;

constexpr const char* Project = R"({
    "languages": {"en": {"isDefault": true}, "de": {}, "no code": {}},
    "localization": {
        "strings": {"door": "Door {{number}}"},
        "terms": {"door": {"sourceText": "/localization/strings/door", "translatable": true}},
        "translations": {"de": {"door": {"text": "Tuer "}}}
    }
})";

/** A project in which three things are wrong. */
class TermCheckTest: public testing::TestWithParam<UnsignedInt> {
protected:
    TermCheckTest() { session.replaceDocument(QuorvaneEngine::Test::parsed(Project)); }

    void follow() {
        while(check.isRunning()) {
            jobs.runMainThreadJobs();
            check.update();
            std::this_thread::yield();
        }
    }

    JobSystem jobs{GetParam()};
    EditorSession session{&jobs};
    TermCheck check{session.editor(), jobs};
};

/* With a worker, and without any, where all jobs belong to the GUI thread. */
INSTANTIATE_TEST_SUITE_P(
    Threads, TermCheckTest, testing::Values(0u, 2u), [](const auto& info) { return std::to_string(info.param); });

TEST_P(TermCheckTest, BeginsWithNothing) {
    EXPECT_FALSE(check.isRunning());
    EXPECT_FALSE(check.readsProject());
    check.update();
    check.cancel();
    check.discard();
    EXPECT_FALSE(lastRun(session.editor()));
}

TEST_P(TermCheckTest, ReportsWhatIsFoundAndChangesNothing) {
    const std::string before = toText(session.project());
    check.start(FallbackLanguage);
    EXPECT_TRUE(check.isRunning());
    follow();
    const LocalizationRun* const run = lastRun(session.editor());
    ASSERT_TRUE(run);
    EXPECT_EQ(run->kind, LocalizationRun::Kind::Check);
    EXPECT_EQ(run->group, -1);
    ASSERT_EQ(run->report.languages().size(), 2u);
    EXPECT_EQ(run->report.counts(UnsignedInt(findLanguage("de"))).notices, 3u);
    EXPECT_EQ(toText(session.project()), before);
}

TEST_P(TermCheckTest, LeavesNoTraceWhereItIsCancelled) {
    check.start(FallbackLanguage);
    check.cancel();
    EXPECT_TRUE(check.progress().isCancelled);
    follow();
    EXPECT_FALSE(lastRun(session.editor()));
    check.start(FallbackLanguage);
    check.discard();
    EXPECT_FALSE(check.isRunning());
    EXPECT_FALSE(lastRun(session.editor()));
}

}
}
