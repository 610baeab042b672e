#include <string>

#include <gtest/gtest.h>
#include <imgui_internal.h>

#include "EditorView.h"
#include "InspectorDesk.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "QuorvaneEditor/ValueAccess.h"
#include "support/Allocations.h"
#include "support/CpuTime.h"
#include "support/GuiTest.h"
#include "support/Json.h"

namespace QuorvaneEngine::Test {
namespace {

/** The example view as somebody has built it with the installed editor, used by mouse and keys. */
class InspectorView: public testing::Test {
protected:
    bool play(const GuiTest::Script& script) {
        return gui.run(
            "inspector", [this] { desk.draw(); },
            [&script](ImGuiTestContext& user) {
                user.Yield(3);
                user.SetRef("Inspector");
                script(user);
            });
    }

    static bool isDrawn(ImGuiTestContext& user, const ImGuiID id) { return id && user.ItemExists(id); }

    /** Objects that have nothing but a name. */
    static std::string manyObjects(const int count) {
        std::string json = R"({"languages": {"en": {"isDefault": true}}, "objects": {)";
        for(int i = 0; i != count; ++i)
            json += (i ? ", \"o" : "\"o") + std::to_string(i) + R"(": {"name": "Object )" + std::to_string(i) + "\"}";
        return json + "}}";
    }

    GuiTest gui{{1600.0f, 1400.0f}};
    InspectorDesk desk;
};

TEST_F(InspectorView, IsDockedAndShowsTheFirstObject) {
    EXPECT_TRUE(play([](ImGuiTestContext& user) {
        IM_CHECK(ImGui::FindWindowByName("Inspector")->DockIsActive);
        IM_CHECK(isDrawn(user, treeRow("/objects/title_screen")));
        IM_CHECK(isDrawn(user, widget("/objects/title_screen/title")));
    }));
}

TEST_F(InspectorView, ARowOfTheTreeShowsItsValues) {
    EXPECT_TRUE(play([](ImGuiTestContext& user) {
        user.ItemClick(treeRow("/objects/marta"));
        user.Yield(2);
        IM_CHECK(isDrawn(user, widget("/objects/marta/walkSpeed")));
        IM_CHECK(!isDrawn(user, widget("/objects/title_screen/title")));
    }));
}

TEST_F(InspectorView, ACollectionIsUnfoldedAndFoldedByItsArrow) {
    EXPECT_TRUE(play([](ImGuiTestContext& user) {
        IM_CHECK(!isDrawn(user, treeRow("/languages/de")));
        user.ItemDoubleClick(treeRow("/languages"));
        user.Yield(2);
        IM_CHECK(isDrawn(user, treeRow("/languages/de")));
        user.ItemDoubleClick(treeRow("/languages"));
        user.Yield(2);
        IM_CHECK(!isDrawn(user, treeRow("/languages/de")));
    }));
}

TEST_F(InspectorView, TheSearchFindsValuesByKeyAndByName) {
    EXPECT_TRUE(play([](ImGuiTestContext& user) {
        user.ItemInput("**/##inspectorsearch");
        user.KeyCharsReplace("EDDA");
        user.Yield(2);
        IM_CHECK(isDrawn(user, treeRow("/objects/keeper")));
        IM_CHECK(!isDrawn(user, treeRow("/objects/marta")));
        user.KeyCharsReplace("keeper_rig");
        user.Yield(2);
        IM_CHECK(isDrawn(user, treeRow("/skins/keeper_rig")));
        user.ItemClick(treeRow("/skins/keeper_rig"));
        user.Yield(2);
        IM_CHECK(isDrawn(user, widget("/skins/keeper_rig/root")));
    }));
}

TEST_F(InspectorView, ANestedValueIsUnfoldedAmongTheOthersAndEdited) {
    EXPECT_TRUE(play([](ImGuiTestContext& user) {
        user.ItemClick(treeRow("/objects/keeper"));
        user.Yield(2);
        IM_CHECK(!isDrawn(user, widget("/objects/keeper/answers/noText")));
        user.ScrollToBottom(region("##rows")->ID);
        user.Yield(2);
        const ImGuiID section = ImHashStr("##/objects/keeper/answers", 0, region("##rows")->ID);
        user.ItemClick(section);
        user.Yield(2);
        user.ScrollToBottom(region("##rows")->ID);
        user.Yield(2);
        IM_CHECK(isDrawn(user, widget("/objects/keeper/answers/noText")));
        user.ItemClick(section);
        user.Yield(2);
        IM_CHECK(!isDrawn(user, widget("/objects/keeper/answers/noText")));
    }));
}

TEST_F(InspectorView, InANarrowWindowTheTreeStandsAboveTheValues) {
    const auto draw = [this] { desk.draw(); };
    gui.frames(draw, 4);
    EXPECT_LT(region("##tree")->Pos.x, region("##rows")->Pos.x);
    ImGui::GetIO().DisplaySize = {500.0f, 1400.0f};
    gui.frames(draw, 6);
    EXPECT_FLOAT_EQ(region("##tree")->Pos.x, region("##rows")->Pos.x);
    EXPECT_LT(region("##tree")->Pos.y, region("##rows")->Pos.y);
}

TEST_F(InspectorView, AValueThatGoesLeavesTheSelectionToWhatItWasIn) {
    const std::string before = desk.document();
    desk.session.changes().pushChange("/objects/newcomer", parsed(R"({"name": "Newcomer", "age": 3})"), false);
    EXPECT_TRUE(play([&](ImGuiTestContext& user) {
        user.ItemInput("**/##inspectorsearch");
        user.KeyCharsReplaceEnter("newcomer");
        user.Yield(2);
        user.ItemClick(treeRow("/objects/newcomer"));
        user.Yield(2);
        IM_CHECK(isDrawn(user, widget("/objects/newcomer/age")));
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Z);
        user.Yield(2);
        IM_CHECK(desk.document() == before);
        IM_CHECK(!isDrawn(user, widget("/objects/newcomer/age")));
    }));
}

TEST_F(InspectorView, AProjectOfWrongTypesIsShownAsItIs) {
    desk.load(
        R"({"languages": {"en": {"isDefault": true}}, "objects": {"a": {"mesh": 7, "color": "red", "layers": [], "kind": 1.5,
        "big": 123456789012345678, "": {"x": 1}, "b/c~d": {"e": [[1], 2, {}]}, "texture": null, "exits": [1, "x"],
        "walkSpeed": [1, "2"], "weight": {}, "text": "zero\u0000byte"}}})");
    const std::string before = desk.document();
    EXPECT_TRUE(play([&](ImGuiTestContext& user) {
        user.ItemClick(treeRow("/objects/a"));
        user.Yield(2);
        IM_CHECK(isDrawn(user, widget("/objects/a/kind")));
        IM_CHECK(isDrawn(user, widget("/objects/a/mesh")));
        IM_CHECK(!isDrawn(user, widget("/objects/a/big")));
        user.ItemDoubleClick(treeRow("/objects/a"));
        user.Yield(2);
        user.ItemClick(treeRow("/objects/a/b~1c~0d"));
        user.Yield(2);
        IM_CHECK(desk.document() == before);
    }));
}

TEST_F(InspectorView, AnObjectThatNoScopeCanBeNamedAfterIsNotSelected) {
    desk.load(
        R"({"languages": {"en": {"isDefault": true}}, "objects": {"": {"name": "Nobody"}, "a\u0000b": {}, "c": {"x": 1}}})");
    EXPECT_TRUE(play([](ImGuiTestContext& user) { user.Yield(2); }));
    desk.frame.views().restart();
    EXPECT_TRUE(play([](ImGuiTestContext& user) {
        IM_CHECK(isDrawn(user, treeRow("/objects/c")));
        IM_CHECK(isDrawn(user, widget("/objects/c/x")));
    }));
}

TEST_F(InspectorView, WhatAFrameReadsDoesNotGrowWithTheProject) {
    const auto draw = [this] { desk.draw(); };
    std::uint64_t reads[2];
    for(const int large: {0, 1}) {
        desk.load(manyObjects(large ? 20000 : 200));
        gui.frames(draw, 6);
        const std::uint64_t before = desk.session.project().lookupCount();
        gui.frames(draw, 10);
        reads[large] = desk.session.project().lookupCount() - before;
    }
    EXPECT_LE(reads[1], reads[0]);
    EXPECT_GT(reads[0], 0u);
}

TEST_F(InspectorView, AnIdleFrameAllocatesNothing) {
    const auto draw = [this] { desk.draw(); };
    desk.load(manyObjects(1000));
    gui.frames(draw, 20);
    const Allocations allocations;
    gui.frames(draw, 10);
    EXPECT_EQ(allocations.count(), 0u);
}

TEST_F(InspectorView, IsBackInItsPlaceAfterAReloadWithinASecond) {
    EXPECT_TRUE(play([](ImGuiTestContext& user) {
        const ImGuiID dock = ImGui::FindWindowByName("Inspector")->DockId;
        const double start = cpuTime();
        user.SetRef("##MainMenuBar");
        user.MenuClick("View/Reload modules");
        user.Yield(2);
        const double took = cpuTime() - start;
        IM_CHECK_LT(took, 1.0);
        testing::Test::RecordProperty("milliseconds", int(took * 1000.0));
        IM_CHECK(ImGui::FindWindowByName("Inspector")->DockId == dock);
        IM_CHECK(isDrawn(user, widget("/objects/title_screen/title")));
    }));
    for(const MessageLog::Message& message: desk.log.messages())
        EXPECT_LT(message.severity, MessageLog::Severity::Warning) << message.text.data();
}

}
}
