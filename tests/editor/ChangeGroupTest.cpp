#include "ChangeGroup.h"

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "ChangeManager.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "support/Abort.h"
#include "support/Json.h"

namespace QuorvaneEngine {
namespace {

using Test::load;
using Test::toText;

TEST(ChangeGroup, IsOneStepOfUndoAndRedo) {
    ProjectFile project;
    load(project, R"({"a":1,"b":2})");
    ChangeManager changes{project};
    {
        const ChangeGroup group{changes};
        EXPECT_TRUE(changes.isGroupOpen());
        changes.pushChange("/a", rapidjson::Value{10}, false);
        changes.pushChange("/b", rapidjson::Value{20}, false);
    }
    EXPECT_FALSE(changes.isGroupOpen());
    EXPECT_EQ(toText(project), R"({"a":10,"b":20})");
    changes.undoLast();
    EXPECT_EQ(toText(project), R"({"a":1,"b":2})");
    EXPECT_FALSE(changes.canUndo());
    changes.redoLastUndo();
    EXPECT_EQ(toText(project), R"({"a":10,"b":20})");
    EXPECT_FALSE(changes.canRedo());
}

TEST(ChangeGroup, TellsHandlersWhenItEnds) {
    ProjectFile project;
    load(project, R"({"a":1})");
    ChangeManager changes{project};
    int calls = 0;
    changes.addChangeHandler(
        "a", [&calls](const Change&, Containers::ArrayView<Containers::StringView>, void*) { ++calls; }, nullptr);
    {
        const ChangeGroup group{changes};
        changes.pushChange("/a", rapidjson::Value{10}, false);
        changes.pushChange("/a", rapidjson::Value{11}, false);
        EXPECT_EQ(calls, 0);
    }
    EXPECT_EQ(calls, 2);
}

TEST(ChangeGroup, WithoutChangesIsNoStep) {
    ProjectFile project;
    load(project, R"({"a":1})");
    ChangeManager changes{project};
    { const ChangeGroup group{changes}; }
    EXPECT_FALSE(changes.canUndo());
}

TEST(ChangeGroupDeathTest, TwoAtATimeAbort) {
    ProjectFile project;
    ChangeManager changes{project};
    const ChangeGroup group{changes};
    QUORVANE_EXPECT_ABORT(ChangeGroup{changes}, "ChangeManager::openGroup(): a group is open. Forgot commit()?");
}

}
}
