#include <cstdint>
#include <vector>

#include <gtest/gtest.h>
#include <imgui.h>

#include "BasicUi.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "support/Allocations.h"
#include "support/Json.h"

namespace QuorvaneEngine {
namespace {

using Test::Allocations;
using Test::load;
using Test::UiBasic;

TEST_F(UiBasic, ACheckboxTogglesItsValue) {
    bool value = false;
    int toggles = 0;
    EXPECT_TRUE(gui.run(
        "toggle", [&] { draw([&] { toggles += Ui::checkbox("Box", &value); }); },
        [&](ImGuiTestContext& user) {
            user.ItemClick("//Window/Box");
            IM_CHECK(value);
            user.ItemClick("//Window/Box");
            IM_CHECK(!value);
        }));
    EXPECT_EQ(toggles, 2);
}

/** The colour of the box itself, which is what a check box draws first. */
ImU32 boxColor(bool* value) {
    const int first = ImGui::GetWindowDrawList()->VtxBuffer.Size;
    Ui::checkbox("Box", value);
    return ImGui::GetWindowDrawList()->VtxBuffer[first].col;
}

ImU32 packed(const ImVec4& color) { return ImGui::ColorConvertFloat4ToU32(color); }

const ImVec4 Checked{0.125f, 0.23f, 0.35f, 1.0f};
const ImVec4 CheckedHovered{0.25f, 0.46f, 0.70f, 1.0f};
const ImVec4 Unchecked{0.29f, 0.29f, 0.29f, 0.44f};

TEST_F(UiBasic, ACheckboxHasTheEditorsColours) {
    for(bool value: {false, true}) inWindow([&] { EXPECT_EQ(boxColor(&value), packed(value ? Checked : Unchecked)); });
}

TEST_F(UiBasic, ACheckboxHasAWhiteMark) {
    bool value = true;
    inWindow([&] {
        ImGui::PushStyleColor(ImGuiCol_CheckMark, {1.0f, 0.0f, 0.0f, 1.0f});
        const int first = ImGui::GetWindowDrawList()->VtxBuffer.Size;
        Ui::checkbox("##Box", &value);
        bool isWhite = false;
        for(int i = first; i != ImGui::GetWindowDrawList()->VtxBuffer.Size; ++i)
            isWhite |= ImGui::GetWindowDrawList()->VtxBuffer[i].col == IM_COL32_WHITE;
        EXPECT_TRUE(isWhite);
        ImGui::PopStyleColor();
    });
}

TEST_F(UiBasic, ACheckedCheckboxIsBrightWhileItIsHeld) {
    bool value = true;
    ImU32 color = 0;
    EXPECT_TRUE(gui.run(
        "hold", [&] { draw([&] { color = boxColor(&value); }); },
        [&](ImGuiTestContext& user) {
            user.MouseMove("//Window/Box");
            user.MouseDown();
            user.Yield(2);
            IM_CHECK(value);
            IM_CHECK_EQ(color, packed(CheckedHovered));
            user.MouseUp();
        }));
}

TEST_F(UiBasic, ACheckboxIsRoundedByFourPixels) {
    bool value = false;
    for(const float scale: {1.0f, 2.0f}) {
        ImGui::GetStyle().FontScaleMain = scale;
        inWindow([&] {
            const ImDrawList& list = *ImGui::GetWindowDrawList();
            const int box = list.VtxBuffer.Size;
            Ui::checkbox("##Box", &value);
            const int same = list.VtxBuffer.Size;
            ImGui::GetWindowDrawList()->AddRectFilled(
                ImGui::GetItemRectMin(), ImGui::GetItemRectMax(), IM_COL32_WHITE, 4.0f * scale);
            ASSERT_EQ(same - box, list.VtxBuffer.Size - same);
            for(int i = box; i != same; ++i) {
                EXPECT_EQ(list.VtxBuffer[i].pos.x, list.VtxBuffer[i + same - box].pos.x);
                EXPECT_EQ(list.VtxBuffer[i].pos.y, list.VtxBuffer[i + same - box].pos.y);
            }
        });
    }
}

TEST_F(UiBasic, ACheckboxHasAPaddingOfOnePixel) {
    bool value = false;
    inWindow([&] {
        Ui::checkbox("##Box", &value);
        EXPECT_FLOAT_EQ(ImGui::GetItemRectSize().y, ImGui::GetFontSize() + 2.0f);
        Ui::radioButton("Radio", true);
        EXPECT_FLOAT_EQ(ImGui::GetItemRectSize().y, ImGui::GetFontSize() + 2.0f);
    });
}

TEST_F(UiBasic, ACheckboxIsDrawnAsItWasBeforeTheClick) {
    bool value = true;
    std::vector<ImU32> colors;
    std::vector<bool> values;
    EXPECT_TRUE(gui.run(
        "uncheck",
        [&] {
            draw([&] {
                colors.push_back(boxColor(&value));
                values.push_back(value);
            });
        },
        [](ImGuiTestContext& user) {
            user.ItemClick("//Window/Box");
            user.MouseMoveToVoid();
            user.Yield(2);
        }));
    std::size_t frame = 0;
    while(frame != values.size() && values[frame]) ++frame;
    ASSERT_LT(frame, values.size());
    // In the frame of the click the box is hovered, in the checked colours; later it is unchecked.
    EXPECT_EQ(colors[frame], packed(CheckedHovered));
    EXPECT_EQ(colors.back(), packed(Unchecked));
}

TEST_F(UiBasic, TheStyleIsAsBeforeBehindEachWidget) {
    Containers::Array<char> buffer{Corrade::ValueInit, 8};
    inWindow(
        [&] {
            const ImGuiContext& context = *ImGui::GetCurrentContext();
            const auto depths = [&] {
                return std::vector<int>{
                    context.ColorStack.Size, context.StyleVarStack.Size, context.CurrentWindow->IDStack.Size};
            };
            const std::vector<int> before = depths();
            for(bool value: {false, true}) {
                Ui::checkbox("Box", &value);
                Ui::radioButton("Radio", value);
            }
            Ui::iconButton("X", "icon");
            Ui::buttonGrouped("Label", "group", {});
            Ui::searchBar("search", buffer, 200.0f, {}, 0.0f, false);
            EXPECT_EQ(depths(), before);
        },
        1);
}

TEST_F(UiBasic, ARadioButtonTellsWhenItIsClicked) {
    int clicks = 0;
    EXPECT_TRUE(gui.run(
        "click", [&] { draw([&] { clicks += Ui::radioButton("Radio", clicks > 0); }); },
        [](ImGuiTestContext& user) { user.ItemClick("//Window/Radio"); }));
    EXPECT_EQ(clicks, 1);
}

TEST_F(UiBasic, AnIdleFrameOfAllWidgetsAllocatesNothing) {
    ProjectFile project;
    load(project, R"({"a":{"text":"some text"}})");
    Ui ui{&project};
    bool value = false;
    const auto widgets = [&] {
        draw([&] {
            Ui::label("Label");
            Ui::alignedText("text");
            ui.text("a/text");
            Ui::iconButton("X", "icon");
            Ui::buttonGrouped("Label", "group", {});
            Ui::checkbox("Box", &value);
            Ui::radioButton("Radio", true);
        });
    };
    gui.frames(widgets, 5);
    std::uint64_t count = 1;
    gui.frames([&] {
        const Allocations allocations;
        widgets();
        count = allocations.count();
    });
    EXPECT_EQ(count, 0u);
}

}
}
