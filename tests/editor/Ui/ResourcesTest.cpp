#include <cstdint>
#include <functional>
#include <string>

#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "QuorvaneEditor/AbstractResourceManager.h"
#include "ResourcesUi.h"
#include "support/Allocations.h"

namespace QuorvaneEngine {
namespace {

using Containers::StringView;
using Test::Allocations;
using Test::SomeTextures;
using Test::UiResources;

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

TEST_F(UiResources, TheSignStandsInTheLineOfTheField) {
    open(withValue(R"("t2")"));
    float sign = 0.0f;
    pick = [&] {
        sign = ImGui::CalcTextSize(Sign).x + ImGui::GetStyle().ItemSpacing.x;
        return ui.selectResource("value", type, byName);
    };
    for(const bool isLabelled: {true, false}) {
        if(!isLabelled) ui.flags = Ui::Flag::NoLabel;
        frames();
        EXPECT_TRUE(shows(Sign));
        EXPECT_FLOAT_EQ(item.Min.y, regionStart.y);
        EXPECT_NEAR(item.Max.x, regionStart.x + regionWidth, 1.0f);
    }
    EXPECT_FLOAT_EQ(item.Min.x, regionStart.x + sign) << "without a label, the field follows the sign";
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
