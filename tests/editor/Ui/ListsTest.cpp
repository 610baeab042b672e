#include <string>

#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "ImGuiGuards.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "Ui/Ui.h"
#include "support/Allocations.h"
#include "support/GuiTest.h"
#include "support/Json.h"
#include "support/ShownText.h"

namespace QuorvaneEngine {
namespace {

using Test::Allocations;
using Test::GuiTest;
using Test::load;
using Test::ShownText;
using Test::toText;

constexpr float SomeWidth = 400.0f;

class UiStringList: public testing::Test {
protected:
    void draw() {
        ImGui::SetNextWindowSize({SomeWidth, 300.0f});
        const WindowGuard window{ImGui::Begin("Window")};
        width = ImGui::GetContentRegionAvail().x;
        lineHeight = ImGui::GetTextLineHeight();
        if(indent > 0.0f) ImGui::Indent(indent);
        const ShownText text;
        changes += ui.stringList("list", selected);
        list = ImGui::GetItemRectSize();
        shown = text.text();
    }

    void show(const std::string& json, int frames = 3) {
        load(project, json);
        gui.frames([this] { draw(); }, frames);
    }

    bool run(const GuiTest::Script& script) {
        return gui.run(
            "list", [this] { draw(); }, script);
    }

    /** The child that holds the rows. */
    static ImGuiWindow& child() {
        for(ImGuiWindow* const window: ImGui::GetCurrentContext()->Windows)
            if((window->Flags & ImGuiWindowFlags_ChildWindow) && window->WasActive) return *window;
        ADD_FAILURE() << "no child";
        return *ImGui::GetCurrentContext()->Windows[0];
    }

    /** Clicks the middle of a row. */
    static void clickRow(ImGuiTestContext& user, float row) {
        const float pitch = ImGui::GetTextLineHeightWithSpacing();
        const ImVec2 corner = child().InnerRect.Min;
        user.MouseMoveToPos({corner.x + 20.0f, corner.y + (row + 0.4f) * pitch});
        user.MouseClick();
        user.Yield(2);
    }

    GuiTest gui;
    ProjectFile project;
    Ui ui{&project};
    int selected = -1;
    int changes = 0;
    float width = 0.0f;
    float indent = 0.0f;
    float lineHeight = 0.0f;
    ImVec2 list;
    std::string shown;
};

TEST_F(UiStringList, ShowsTheStringsInOrder) {
    show(R"({"list":["one","two","three"]})");
    EXPECT_LT(shown.find("one"), shown.find("two"));
    EXPECT_LT(shown.find("two"), shown.find("three"));
    EXPECT_NE(shown.find("three"), std::string::npos);
}

TEST_F(UiStringList, IsAsWideAsTheContentAndAHundredPixelsHigh) {
    for(const float scale: {1.0f, 2.0f}) {
        ImGui::GetStyle().FontScaleMain = scale;
        show(R"({"list":["one"]})");
        EXPECT_FLOAT_EQ(list.x, width);
        EXPECT_FLOAT_EQ(list.y, 100.0f * scale);
        EXPECT_EQ(child().WindowBorderSize, 0.0f);
    }
}

TEST_F(UiStringList, AClickSelectsARowAndChangesNothingElse) {
    const std::string json = R"({"list":["one","two","three"]})";
    load(project, json);
    const Int revision = project.revision();
    EXPECT_TRUE(run([this](ImGuiTestContext& user) {
        clickRow(user, 1);
        IM_CHECK_EQ(selected, 1);
        IM_CHECK_EQ(changes, 1);
        clickRow(user, 2);
        IM_CHECK_EQ(selected, 2);
        // The selected one can be chosen again.
        clickRow(user, 2);
        IM_CHECK_EQ(selected, 2);
        IM_CHECK_EQ(changes, 3);
    }));
    EXPECT_EQ(toText(project), json);
    EXPECT_EQ(project.revision(), revision);
}

TEST_F(UiStringList, ARowIsFoundByItsText) {
    load(project, R"({"list":["one","two"]})");
    EXPECT_TRUE(run([this](ImGuiTestContext& user) {
        user.ItemClick("//Window/**/two");
        IM_CHECK_EQ(selected, 1);
    }));
}

TEST_F(UiStringList, EqualAndEmptyAndHiddenTextsAreRowsOfTheirOwn) {
    load(project, R"({"list":["x","x","","","##a","##b","a###c","b###c"]})");
    ImGui::GetStyle().ItemSpacing.y = 0.0f;
    EXPECT_TRUE(run([this](ImGuiTestContext& user) {
        for(int row = 0; row != 7; ++row) {
            clickRow(user, float(row));
            IM_CHECK_EQ(selected, row);
        }
    }));
    EXPECT_EQ(changes, 7);
}

TEST_F(UiStringList, TextsAreShownAsTheyStand) {
    show(R"({"list":["shown##too","100%s","first\nsecond","a\u0000b"]})");
    EXPECT_NE(shown.find("shown##too"), std::string::npos);
    EXPECT_NE(shown.find("100%s"), std::string::npos);
    EXPECT_NE(shown.find("first"), std::string::npos);
    EXPECT_EQ(shown.find("second"), std::string::npos);
}

TEST_F(UiStringList, AVeryLongTextCostsNoMoreThanWhatIsLookedAt) {
    show(R"({"list":[")" + std::string(1000000, 'x') + R"("]})");
    EXPECT_LT(shown.size(), 10000u);
    EXPECT_GT(shown.size(), 1000u);
}

TEST_F(UiStringList, AnIndentedListIsAsWideAsTheContents) {
    indent = 50.0f;
    show(R"({"list":["one"]})");
    EXPECT_FLOAT_EQ(list.x, width);
}

TEST_F(UiStringList, CtrlShowsThePathOverTheList) {
    load(project, R"({"list":["one"]})");
    EXPECT_TRUE(run([this](ImGuiTestContext& user) {
        user.Yield();
        // Over a row, and below all of them.
        for(const float y: {5.0f, 90.0f}) {
            const ImVec2 corner = child().InnerRect.Min;
            user.MouseMoveToPos({corner.x + 20.0f, corner.y + y});
            user.KeyDown(ImGuiMod_Ctrl);
            user.Yield(2);
            IM_CHECK(shown.find("/list") != std::string::npos);
            user.KeyUp(ImGuiMod_Ctrl);
            user.Yield(2);
            IM_CHECK(shown.find("/list") == std::string::npos);
        }
    }));
}

TEST_F(UiStringList, WhatIsNoArrayHasNoRows) {
    for(const char* const json:
        {R"({})", R"({"list":null})", R"({"list":"one"})", R"({"list":{"a":"b"}})", R"({"list":5})"}) {
        show(json);
        EXPECT_EQ(child().ContentSize.y, 0.0f) << json;
    }
}

TEST_F(UiStringList, AnElementThatIsNoStringIsAnEmptyRow) {
    load(project, R"({"list":[1,null,{"a":"b"},["c"],"five"]})");
    EXPECT_TRUE(run([this](ImGuiTestContext& user) {
        clickRow(user, 2);
        IM_CHECK_EQ(selected, 2);
        clickRow(user, 4);
        IM_CHECK_EQ(selected, 4);
    }));
    EXPECT_NE(shown.find("five"), std::string::npos);
}

TEST_F(UiStringList, ASelectionOutsideTheArraySelectsNothing) {
    for(const int outside: {-7, 2, 1000000}) {
        selected = outside;
        show(R"({"list":["one","two"]})");
        EXPECT_EQ(selected, outside);
    }
    EXPECT_EQ(changes, 0);
}

TEST_F(UiStringList, TheSelectedRowIsHighlighted) {
    const auto highlights = [this](const int row) {
        selected = row;
        show(R"({"list":["one","two"]})");
        return child().DrawList->VtxBuffer.Size;
    };
    EXPECT_GT(highlights(1), highlights(5));
}

std::string numbered(int count) {
    std::string json = R"({"list":[)";
    for(int i = 0; i != count; ++i) json += (i ? ",\"" : "\"") + std::to_string(i) + "\"";
    return json + "]}";
}

TEST_F(UiStringList, TheScrollRangeFitsAtEverySpacingAndScale) {
    constexpr int Count = 1000;
    load(project, numbered(Count));
    for(const float spacing: {0.0f, 2.0f, 4.0f, 7.5f}) {
        for(const float scale: {1.0f, 1.25f, 1.5f, 2.0f}) {
            ImGui::GetStyle().ItemSpacing.y = spacing;
            ImGui::GetStyle().FontScaleMain = scale;
            gui.frames([this] { draw(); }, 4);
            const float pitch = ImTrunc(lineHeight + spacing);
            for(const float share: {0.0f, 0.5f, 1.0f}) {
                child().Scroll.y = share * child().ScrollMax.y;
                gui.frames([this] { draw(); }, 3);
                EXPECT_NEAR(child().ContentSize.y, float(Count) * pitch - ImTrunc(spacing), 0.5f)
                    << spacing << " " << scale << " " << share;
            }
            EXPECT_NE(shown.find("999"), std::string::npos) << "at the end";
        }
    }
}

TEST_F(UiStringList, TheLastRowOfALongListIsClicked) {
    load(project, numbered(5000));
    EXPECT_TRUE(run([this](ImGuiTestContext& user) {
        user.Yield(3);
        child().Scroll.y = child().ScrollMax.y;
        user.Yield(3);
        const ImRect rect = child().InnerRect;
        user.MouseMoveToPos({rect.Min.x + 20.0f, rect.Max.y - 4.0f});
        user.MouseClick();
        user.Yield(2);
        IM_CHECK_EQ(selected, 4999);
    }));
}

TEST_F(UiStringList, AnIdleFrameDrawsVisibleRowsAndAllocatesNothing) {
    load(project, numbered(100000));
    const auto plain = [this] {
        ImGui::SetNextWindowSize({SomeWidth, 300.0f});
        const WindowGuard window{ImGui::Begin("Window")};
        ui.stringList("list", selected);
    };
    gui.frames(plain, 5);
    std::uint64_t count = 1;
    gui.frames([&] {
        const Allocations allocations;
        plain();
        count = allocations.count();
    });
    EXPECT_EQ(count, 0u);
    EXPECT_LT(child().DrawList->VtxBuffer.Size, 2000);
}

}
}
