#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "QuorvaneEditor/AbstractResourceManager.h"
#include "editor/Ui/Picker.h"
#include "support/Abort.h"
#include "support/Allocations.h"
#include "support/CapturedOutput.h"

namespace QuorvaneEngine {
namespace {

using Containers::StringView;
using Test::Allocations;
using Test::CapturedOutput;
using Test::Picker;
using Test::SomeTextures;
using Test::toText;

const std::string Sign = "\xef\x81\xb1";
const char* const PickButton = "//Window/value/\xef\x87\xbb";

std::string withValue(const std::string& value) {
    std::string json = SomeTextures;
    return json.replace(json.find("null"), 4, value);
}

class UiResources: public testing::Test, protected Picker {};

// What is shown

TEST_F(UiResources, AnIdIsShownAsTheNameOfTheResource) {
    open(withValue(R"("t1")"));
    frames();
    EXPECT_TRUE(shows("Rock"));
    EXPECT_FALSE(shows("- none -"));
    EXPECT_FALSE(shows(Sign));
    EXPECT_TRUE(shows("value")) << "the label";
}

TEST_F(UiResources, ANameIsShownWhereTheValueIsOne) {
    byName = true;
    open(withValue(R"("tall grass")"));
    frames();
    EXPECT_TRUE(shows("tall grass"));
    EXPECT_FALSE(shows(Sign));
}

TEST_F(UiResources, NullAndMissingValuesAreNoResource) {
    for(const char* const json: {SomeTextures, R"({"textures":{"t1":{"name":"Rock"}}})", "{}"}) {
        for(const bool named: {false, true}) {
            byName = named;
            open(json);
            frames();
            EXPECT_TRUE(shows("- none -")) << json;
            EXPECT_FALSE(shows(Sign)) << json;
        }
    }
}

TEST_F(UiResources, AValueThatRefersToNoResourceHasASign) {
    for(const char* const value: {R"("t2")", R"("")", R"("Grass")", "5", "true", "[]", R"({"name":"Rock"})"}) {
        open(withValue(value));
        frames();
        EXPECT_TRUE(shows(Sign)) << value;
        EXPECT_TRUE(shows("- none -")) << value;
        EXPECT_LT(shown.find(Sign), shown.find("value")) << "before the label";
    }
    byName = true;
    for(const char* const value: {R"("t1")", R"("")", "5"}) {
        open(withValue(value));
        frames();
        EXPECT_TRUE(shows(Sign)) << value;
    }
}

TEST_F(UiResources, AResourceWithAnEmptyIdIsUnknown) {
    for(const bool named: {false, true}) {
        byName = named;
        open(std::string{R"({"value":)"} + (named ? R"("Rock")" : R"("")") + R"(,"textures":{"":{"name":"Rock"}}})");
        frames();
        EXPECT_TRUE(shows(Sign));
    }
}

TEST_F(UiResources, TheSignIsYellowAndSaysWhatItMeans) {
    open(withValue(R"("t2")"));
    EXPECT_TRUE(run([this](ImGuiTestContext& user) {
        IM_CHECK(!shows("Unknown resource!"));
        user.MouseMoveToPos({regionStart.x + 3.0f, regionStart.y + 0.5f * ImGui::GetFrameHeight()});
        user.Yield(2);
        IM_CHECK(shows("Unknown resource!"));
        user.MouseMoveToPos({regionStart.x + 200.0f, regionStart.y + 0.5f * ImGui::GetFrameHeight()});
        user.Yield(2);
        IM_CHECK(!shows("Unknown resource!"));
    }));
    bool isYellow = false;
    for(const ImDrawVert& vertex: ImGui::FindWindowByName("Window")->DrawList->VtxBuffer)
        isYellow |= vertex.col == IM_COL32(255, 204, 0, 255);
    EXPECT_TRUE(isYellow);
}

TEST_F(UiResources, TheFieldTellsTheId) {
    for(const bool named: {false, true}) {
        byName = named;
        open(withValue(named ? R"("Rock")" : R"("t1")"));
        EXPECT_TRUE(run([this](ImGuiTestContext& user) {
            IM_CHECK(!shows("id: "));
            user.MouseMove(Field);
            user.Yield(2);
            IM_CHECK(shows("id: t1"));
            user.MouseMoveToVoid();
        }));
    }
}

TEST_F(UiResources, TheFieldTellsAnUnknownIdAsItStandsAndNoneForNoResource) {
    open(withValue(R"("100%s##x")"));
    const auto hover = [this](const char* const id) {
        return run([&](ImGuiTestContext& user) {
            user.MouseMove(Field);
            user.Yield(2);
            IM_CHECK_EQ(shows("id: "), id != nullptr);
            if(id) IM_CHECK(shows(id));
            user.MouseMoveToVoid();
        });
    };
    EXPECT_TRUE(hover("id: 100%s##x"));
    open(SomeTextures);
    EXPECT_TRUE(hover(nullptr));
    open(withValue(R"("nobody")"));
    byName = true;
    EXPECT_TRUE(hover(nullptr));
}

TEST_F(UiResources, NamesAreShownAsTheyStand) {
    open(R"({"value":"a","textures":{"a":{"name":"Rock##2 100%s"}}})");
    frames();
    EXPECT_TRUE(shows("Rock##2 100%s"));
}

TEST_F(UiResources, AResourceWithoutANameIsShownByItsId) {
    for(const char* const entry: {"{}", R"({"name":""})", R"({"name":5})", "7", "null", "[1]", R"("x")"}) {
        open(std::string{R"({"value":"the id","textures":{"the id":)"} + entry + "}}");
        frames();
        EXPECT_TRUE(shows("the id")) << entry;
        EXPECT_FALSE(shows(Sign)) << entry;
    }
}

TEST_F(UiResources, ACollectionThatIsNoObjectHasNoResources) {
    for(const char* const collection: {"[]", R"([{"name":"t1"}])", "5", R"("t1")", "null"}) {
        for(const bool named: {false, true}) {
            byName = named;
            open(std::string{R"({"value":"t1","textures":)"} + collection + "}");
            frames();
            EXPECT_TRUE(shows(Sign)) << collection;
        }
    }
}

TEST_F(UiResources, IdsMayHoldAnyByte) {
    for(const char* const id: {"a/b~c", "##", "%s%n", "a\\u0000b", "\\n"}) {
        open(std::string{R"({"value":")"} + id + R"(","textures":{")" + id + R"(":{"name":"Rock"}}})");
        EXPECT_TRUE(run([this](ImGuiTestContext& user) {
            user.MouseMove(Field);
            user.Yield(2);
            IM_CHECK(shows("Rock"));
            IM_CHECK(!shows(Sign));
        }));
    }
}

// Where it is

TEST_F(UiResources, TheFieldFillsTheLineBehindTheLabel) {
    open(SomeTextures);
    for(const float scale: {1.0f, 2.0f}) {
        ImGui::GetStyle().FontScaleMain = scale;
        frames();
        EXPECT_FLOAT_EQ(item.Min.x, position.x + 0.33f * regionWidth) << "a third of the width from the window's edge";
        EXPECT_NEAR(item.Max.x, regionStart.x + regionWidth, 1.0f);
    }
}

TEST_F(UiResources, TheSignDoesNotMoveTheField) {
    open(withValue(R"("t2")"));
    frames();
    EXPECT_FLOAT_EQ(item.Min.x, position.x + 0.33f * regionWidth);
}

TEST_F(UiResources, WithoutALabelTheFieldFillsTheLine) {
    open(SomeTextures);
    ui.flags = Ui::Flag::NoLabel;
    frames();
    EXPECT_FALSE(shows("value"));
    EXPECT_FLOAT_EQ(item.Min.x, regionStart.x);
    EXPECT_FLOAT_EQ(item.Max.x, regionStart.x + regionWidth);
}

TEST_F(UiResources, CtrlShowsThePathOfTheValue) {
    open(R"({"value":"o","objects":{"o":{"name":"Door"}}})");
    type = "objects";
    data.pickObject = [](StringView, bool) {};
    EXPECT_TRUE(run([this](ImGuiTestContext& user) {
        user.KeyDown(ImGuiMod_Ctrl);
        for(const char* const part: {Field, PickButton}) {
            user.MouseMove(part);
            user.Yield(2);
            IM_CHECK(shows("/value"));
        }
        user.KeyUp(ImGuiMod_Ctrl);
    }));
}

TEST_F(UiResources, ACollapsedWindowCostsNothingAndAsksNothing) {
    open(SomeTextures);
    EXPECT_TRUE(run([](ImGuiTestContext& user) {
        user.WindowCollapse("//Window", true);
        user.MouseMove("//Window/#COLLAPSE");
        user.MouseClick();
        user.Yield(2);
        IM_CHECK(!popup() || popup()->Hidden);
    }));
    EXPECT_EQ(pushes, 0);
}

TEST_F(UiResources, AnIdleFrameAllocatesNothing) {
    open(withValue(R"("t1")"));
    const auto plain = [this] {
        const WindowGuard window{ImGui::Begin("Window")};
        ui.selectResource("value", type, byName);
    };
    for(const bool named: {false, true}) {
        byName = named;
        gui.frames(plain, 5);
        std::uint64_t count = 1;
        gui.frames([&] {
            const Allocations allocations;
            plain();
            count = allocations.count();
        });
        EXPECT_EQ(count, 0u);
    }
}

// Objects

class UiObjectResources: public UiResources {
protected:
    void SetUp() override {
        open(R"({"value":"o1","objects":{"o1":{"name":"Door"}}})");
        type = "objects";
    }

    std::vector<std::string> picked;
};

TEST_F(UiObjectResources, AButtonFollowsTheField) {
    data.pickObject = [](StringView, bool) {};
    for(const float scale: {1.0f, 2.0f}) {
        ImGui::GetStyle().FontScaleMain = scale;
        EXPECT_TRUE(run([&](ImGuiTestContext& user) {
            const ImRect field = user.ItemInfo(Field).RectFull;
            const ImRect button = user.ItemInfo(PickButton).RectFull;
            IM_CHECK_LE(ImAbs(button.Min.x - field.Max.x - ImGui::GetStyle().ItemSpacing.x), 1.0f);
            IM_CHECK_LE(ImAbs(button.Max.x + scale - regionStart.x - regionWidth), 1.0f);
            IM_CHECK_GE(button.Min.y, field.Min.y - 1.0f);
            IM_CHECK_LE(button.Max.y, field.Max.y + 1.0f);
        }));
    }
}

TEST_F(UiObjectResources, TheHostIsAskedForAnObjectWithThePathOfTheValue) {
    data.pickObject = [this](StringView path, bool named) {
        picked.push_back(std::string{path.data(), path.size()} + (named ? " by name" : " by ID"));
    };
    for(const bool named: {false, true}) {
        byName = named;
        EXPECT_TRUE(run([](ImGuiTestContext& user) { user.ItemClick(PickButton); }));
    }
    EXPECT_EQ(picked, (std::vector<std::string>{"/value by ID", "/value by name"}));
    EXPECT_EQ(recorded(), 0);
}

TEST_F(UiObjectResources, WhatTheHostSetsAtOnceIsAChangeOfThisFrame) {
    data.pickObject = [this](StringView path, bool) { changes.pushChange(path, StringView{"o2"}, false); };
    EXPECT_TRUE(run([](ImGuiTestContext& user) { user.ItemClick(PickButton); }));
    EXPECT_EQ(pushes, 1);
    EXPECT_EQ(value(), R"("o2")");
}

TEST_F(UiObjectResources, WithoutAHostToPickThemTheButtonIsDisabled) {
    for(EditorData* const known: {&data, static_cast<EditorData*>(nullptr)}) {
        ui.editorData = known;
        EXPECT_TRUE(run([](ImGuiTestContext& user) {
            IM_CHECK(user.ItemInfo(PickButton).ItemFlags & ImGuiItemFlags_Disabled);
            user.MouseMove(Field);
            user.MouseMoveToPos(user.ItemInfo(PickButton).RectFull.GetCenter());
            user.MouseClick();
            user.Yield(2);
        }));
    }
    EXPECT_EQ(pushes, 0);
}

TEST_F(UiObjectResources, OthersHaveNoButton) {
    open(SomeTextures);
    type = "textures";
    EXPECT_TRUE(run([](ImGuiTestContext& user) { IM_CHECK(!user.ItemExists(PickButton)); }));
}

// Dropping

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

// Copy and paste

TEST_F(UiResources, TheValueIsCopiedAndPastedByTheFieldsMenu) {
    open(withValue(R"("t1")"));
    EXPECT_TRUE(run([this](ImGuiTestContext& user) {
        user.ItemClick(Field, ImGuiMouseButton_Right);
        user.ItemClick("//$FOCUSED/\xef\x83\x85 Copy");
        IM_CHECK_STR_EQ(ImGui::GetClipboardText(), R"("t1")");
        changes.pushChange("/value", StringView{"t5"}, false);
        user.ItemClick(Field, ImGuiMouseButton_Right);
        user.ItemClick("//$FOCUSED/\xef\x83\xaa Paste");
    }));
    EXPECT_EQ(value(), R"("t1")");
    EXPECT_EQ(pushes, 1);
}

// The other forms

TEST_F(UiResources, AManagerStandsForItsCollection) {
    open(R"({"value":"Rock","textures":{"t1":{"name":"Rock"}},"objects":{"Rock":{"name":"Door"}}})");
    const ResourceManager textures{"textures"};
    const ObjectResourceManager objects;
    const struct {
        const char* shown;
        std::function<bool()> pick;
    } forms[]{
        {"- none -", [&] { return ui.selectResource("value", textures, false); }},
        {"Rock", [&] { return ui.selectResource("value", textures, true); }},
        {"Rock", [&] { return ui.selectResourceName("value", textures); }},
        {"Rock", [&] { return ui.selectResourceName("value", "textures"); }},
        {"Door", [&] { return ui.selectObjectResource("value", objects, false); }},
        {"- none -", [&] { return ui.selectObjectResource("value", objects, true); }},
    };
    for(const auto& form: forms) {
        pick = form.pick;
        frames();
        EXPECT_TRUE(shows(form.shown)) << form.shown << " in " << shown;
        EXPECT_EQ(shows("- none -"), std::string{form.shown} == "- none -");
    }
}

bool isRock(ValueAccess& entry) { return entry["name"].asString() == StringView{"Rock"}; }

TEST_F(UiResources, EachFormTakesAFilterOrNone) {
    open(SomeTextures);
    const ResourceManager textures{"textures"};
    bool (*const none)(ValueAccess&) = nullptr;
    const struct {
        bool isFiltered;
        std::function<bool()> pick;
    } forms[]{
        {true, [&] { return ui.selectResource("value", "textures", false, isRock); }},
        {true, [&] { return ui.selectResource("value", textures, false, isRock); }},
        {true, [&] { return ui.selectResourceName("value", textures, isRock); }},
        {true, [&] { return ui.selectResourceName("value", "textures", isRock); }},
        {false, [&] { return ui.selectResource("value", "textures", false, nullptr); }},
        {false, [&] { return ui.selectResource("value", textures, false, none); }},
        {false, [&] { return ui.selectResourceName("value", textures, nullptr); }},
        {false, [&] { return ui.selectResourceName("value", "textures"); }},
    };
    for(const auto& form: forms) {
        pick = form.pick;
        EXPECT_TRUE(run([&](ImGuiTestContext& user) {
            openList(user);
            IM_CHECK(shows("Rock"));
            IM_CHECK_EQ(shows("Grass"), !form.isFiltered);
            user.KeyPress(ImGuiKey_Escape);
        }));
    }
}

}
}
