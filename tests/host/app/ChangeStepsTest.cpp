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

}
}
