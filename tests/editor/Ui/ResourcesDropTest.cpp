#include <string>

#include <gtest/gtest.h>
#include <imgui.h>

#include "ResourcesUi.h"
#include "support/Abort.h"

namespace QuorvaneEngine {
namespace {

using Test::Picker;
using Test::SomeTextures;
using Test::toText;
using Test::UiResources;

class UiResourceDrop: public UiResources {
protected:
    bool drop() {
        return run([](ImGuiTestContext& user) {
            user.ItemDragAndDrop("//Window/source", Field);
            user.Yield(2);
        });
    }
};

TEST_F(UiResourceDrop, ATextureSetsTheValueOfATexturePicker) {
    open(SomeTextures);
    const std::string before = toText(project);
    EXPECT_TRUE(drop());
    EXPECT_EQ(value(), R"("t1")");
    EXPECT_EQ(pushes, 1);
    ASSERT_EQ(recorded(), 1);
    const std::string after = toText(project);
    changes.undoLast();
    EXPECT_EQ(toText(project), before);
    changes.redoLastUndo();
    EXPECT_EQ(toText(project), after);
}

TEST_F(UiResourceDrop, AMaterialIsNotTaken) {
    open(SomeTextures);
    draggedType = "materials";
    EXPECT_TRUE(drop());
    EXPECT_EQ(value(), "null");
    EXPECT_EQ(recorded(), 0);
}

TEST_F(UiResourceDrop, TheNameIsSetWhereTheValueIsOne) {
    open(SomeTextures);
    byName = true;
    EXPECT_TRUE(drop());
    EXPECT_EQ(value(), R"("Rock")");
}

TEST_F(UiResourceDrop, TwoDropsAreTwoChanges) {
    open(SomeTextures);
    EXPECT_TRUE(drop());
    draggedId = "t5";
    EXPECT_TRUE(drop());
    EXPECT_EQ(recorded(), 2);
    changes.undoLast();
    EXPECT_EQ(value(), R"("t1")");
}

TEST_F(UiResourceDrop, AnUnknownIdIsSetAndHasASign) {
    open(SomeTextures);
    draggedId = "something else";
    EXPECT_TRUE(drop());
    EXPECT_EQ(value(), R"("something else")");
    EXPECT_TRUE(shows(Sign));
}

TEST_F(UiResourceDrop, WhatHasNoNameDoesNotSetAValueThatIsOne) {
    byName = true;
    for(const char* const id: {"nobody", "a", "b", "c", ""}) {
        open(R"({"value":"Rock","textures":{"a":{},"b":7,"c":{"name":""},"":{}}})");
        draggedId = id;
        EXPECT_TRUE(drop());
        EXPECT_EQ(value(), R"("Rock")") << id;
        EXPECT_EQ(recorded(), 0);
    }
}

TEST_F(UiResourceDrop, AnEmptyPayloadIsAnEmptyId) {
    open(SomeTextures);
    draggedId = "";
    EXPECT_TRUE(drop());
    EXPECT_EQ(value(), R"("")");
    EXPECT_TRUE(shows(Sign));
}

TEST_F(UiResourceDrop, AnIdOfAnyBytesIsSetAsItIs) {
    open(SomeTextures);
    draggedId = std::string{"a/b~##%s\0x", 10};
    EXPECT_TRUE(drop());
    EXPECT_EQ(value(), R"("a/b~##%s\u0000x")");
}

TEST_F(UiResourceDrop, TheFilterHoldsNothingBack) {
    open(SomeTextures);
    filter = [](ValueAccess&) { return false; };
    EXPECT_TRUE(drop());
    EXPECT_EQ(value(), R"("t1")");
}

TEST_F(UiResourceDrop, AMissingValueIsCreated) {
    open(R"({"textures":{"t1":{"name":"Rock"}}})");
    EXPECT_TRUE(drop());
    EXPECT_EQ(value(), R"("t1")");
    changes.undoLast();
    EXPECT_EQ(value(), "missing");
}

/** With a GUI of its own, whose user acts on a thread that a copy of the process would not have. */
void dropOnUnknownType() {
    Picker picker;
    picker.open(SomeTextures);
    picker.type = "sounds";
    picker.run([](ImGuiTestContext& user) { user.ItemDragAndDrop("//Window/source", Picker::Field); });
}

TEST(UiResourceType, OneThatCannotBeDraggedIsABrokenPreconditionOfADrop) {
    QUORVANE_EXPECT_ABORT(dropOnUnknownType(), "Ui::acceptDragDropResources(): resource type sounds unsupported.");
}

}
}
