#include "app/ChangeSteps.h"

#include <string>

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "ChangeManager.h"
#include "document/EditorSession.h"
#include "localization/LastRun.h"
#include "support/Allocations.h"

namespace QuorvaneEngine {
namespace {

class ChangeStepsTest: public testing::Test {
protected:
    void push(const char* path, bool merge = false) {
        session.changes().pushChange(path, rapidjson::Value{++value}, merge);
    }

    Int pushGroup(int count) {
        const Int group = session.changes().openGroup();
        for(int i = 0; i != count; ++i) push(("/objects/" + std::to_string(++value) + "x/name").c_str());
        session.changes().commit();
        return group;
    }

    void run(LocalizationRun::Kind kind, Int group) {
        LocalizationRun run{kind, {}, {}, {}};
        run.group = group;
        setLastRun(session.editor(), std::move(run));
        steps.update(session.editor());
    }

    void update() { steps.update(session.editor()); }

    std::string name(std::size_t step) { return steps.name(step).data(); }

    int value = 0;
    EditorSession session;
    ChangeSteps steps;
};

TEST_F(ChangeStepsTest, AnEmptyLogHasNoSteps) {
    update();
    EXPECT_EQ(steps.size(), 0u);
    EXPECT_EQ(steps.present(), 0u);
    EXPECT_TRUE(steps.undoName().isEmpty());
    EXPECT_TRUE(steps.redoName().isEmpty());
    EXPECT_EQ(steps.lastChange(0), -1);
}

TEST_F(ChangeStepsTest, AGroupIsOneStepAndUndoneStepsStay) {
    push("/a");
    pushGroup(3);
    pushGroup(2);
    push("/b");
    push("/c");
    session.undo();
    update();
    ASSERT_EQ(steps.size(), 5u);
    EXPECT_EQ(steps.present(), 4u);
    const Int last[]{-1, 0, 3, 5, 6, 7};
    for(std::size_t i = 0; i != 6; ++i) EXPECT_EQ(steps.lastChange(i), last[i]) << i;
    EXPECT_EQ(name(1), "3 changes in objects");
    EXPECT_EQ(steps.undoName(), "creation of b");
    EXPECT_EQ(steps.redoName(), "creation of c");
    session.undo();
    session.undo();
    update();
    EXPECT_EQ(steps.present(), 2u);
    EXPECT_EQ(steps.lastChange(steps.present()), session.changes().lastChangeIndex());
}

TEST_F(ChangeStepsTest, AMergedEditAddsNoStep) {
    push("/a");
    push("/b", true);
    update();
    push("/b", true);
    update();
    EXPECT_EQ(steps.size(), 2u);
    push("/c");
    session.undo();
    push("/d");
    update();
    EXPECT_EQ(steps.size(), 3u);
    EXPECT_EQ(name(2), "creation of d");
}

TEST_F(ChangeStepsTest, RunsOfTheToolsHaveTheirNamesAlsoWhenOthersFollow) {
    run(LocalizationRun::Kind::Gathering, pushGroup(2));
    push("/a");
    update();
    const Int import = pushGroup(2);
    update();
    EXPECT_EQ(name(2), "2 changes in objects");
    run(LocalizationRun::Kind::Import, import);
    EXPECT_EQ(name(2), "import of terms");
    run(LocalizationRun::Kind::Export, -1);
    run(LocalizationRun::Kind::Check, import);
    EXPECT_EQ(name(0), "gathering of terms");
    EXPECT_EQ(name(1), "creation of a");
    EXPECT_EQ(name(2), "import of terms");
}

TEST_F(ChangeStepsTest, AnotherDocumentBeginsWithoutSteps) {
    push("/a");
    update();
    session.replaceDocument(rapidjson::Document{rapidjson::kObjectType});
    update();
    EXPECT_EQ(steps.size(), 0u);
    EXPECT_TRUE(steps.undoName().isEmpty());
}

TEST_F(ChangeStepsTest, NothingIsMadeAnewWhileNothingChanges) {
    pushGroup(3);
    push("/a");
    session.undo();
    update();
    steps.undoName();
    steps.redoName();
    const QuorvaneEngine::Test::Allocations counter;
    update();
    steps.undoName();
    steps.redoName();
    EXPECT_EQ(counter.count(), 0u);
}

/* An edit that merges trades places with the last one. */
TEST_F(ChangeStepsTest, NamesFollowStepsThatTradePlaces) {
    for(const char* const path: {"/first", "/a", "/b", "/c"}) push(path);
    update();
    EXPECT_EQ(name(1), "creation of a");
    EXPECT_EQ(name(3), "creation of c");
    push("/a", true);
    update();
    EXPECT_EQ(steps.size(), 4u);
    EXPECT_EQ(name(1), "creation of c");
    EXPECT_EQ(name(3), "creation of a");
}

TEST_F(ChangeStepsTest, AGroupThatIsStillBeingCollectedGrowsAndIsNamedAnew) {
    push("/first");
    const Int group = session.changes().openGroup();
    push("/objects/a/name");
    update();
    const std::string before = name(1);
    push("/objects/b/name");
    update();
    EXPECT_EQ(steps.size(), 2u);
    EXPECT_NE(name(1), before);
    EXPECT_EQ(name(1), "2 changes in objects");
    session.changes().commit();
    EXPECT_EQ(session.changes().changes().back().group, group);
}

/* Whatever happens between two looks, what is known is what is there. */
TEST_F(ChangeStepsTest, WhatIsContinuedIsWhatIsReadAnew) {
    unsigned random = 1;
    const auto next = [&random](unsigned count) {
        random = random * 1664525 + 1013904223;
        return (random >> 16) % count;
    };
    const char* const paths[]{"/a", "/b", "/c", "/d"};
    for(int round = 0; round != 2000; ++round) {
        for(unsigned i = 0, count = next(5); i != count; ++i) {
            const unsigned what = next(16);
            if(what < 4) push(paths[next(4)]);
            else if(what < 8) push(paths[next(4)], true);
            else if(what < 10) pushGroup(int(next(3)) + 1);
            else if(what < 13) session.undo();
            else if(what < 15) session.redo();
            else if(!next(8)) session.replaceDocument(rapidjson::Document{rapidjson::kObjectType});
        }
        update();
        ChangeSteps anew;
        anew.update(session.editor());
        ASSERT_EQ(steps.size(), anew.size()) << round;
        ASSERT_EQ(steps.present(), anew.present()) << round;
        for(std::size_t i = 0; i != steps.size(); ++i) {
            ASSERT_EQ(steps.lastChange(i + 1), anew.lastChange(i + 1)) << round;
            ASSERT_EQ(steps.name(i), anew.name(i)) << round;
        }
    }
}

TEST_F(ChangeStepsTest, AChangeBehindManyForgetsNoNameAndAllocatesNothing) {
    push("/first");
    pushGroup(20000);
    push("/a");
    update();
    steps.name(1);
    const char* const kept = steps.name(1).data();
    push("/a", true);
    const QuorvaneEngine::Test::Allocations counter;
    update();
    EXPECT_EQ(counter.count(), 0u);
    EXPECT_EQ(steps.name(1).data(), kept);
}

}
}
