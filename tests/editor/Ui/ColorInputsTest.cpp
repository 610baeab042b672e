#include <string>

#include <gtest/gtest.h>
#include <imgui.h>

#include "BoundUi.h"
#include "support/Abort.h"

namespace QuorvaneEngine {
namespace {

using Test::toText;

class UiColorInputs: public Test::BoundUi {
protected:
    UiColorInputs() {
        loadProject(R"({"rgb":[0,1,1],"rgba":[0,1,1,0],"wrong":["a",null,[],{}],"text":"red","first":false})");
    }
};

TEST_F(UiColorInputs, AComponentIsEditedAndAllAreWrittenAsDoubles) {
    int changed = 0;
    EXPECT_TRUE(run([&] { changed += ui.colorEdit3("rgb"); },
        [](ImGuiTestContext& user) { user.ItemInputValue("//Window/rgb/##val/##X", 255); }));
    EXPECT_EQ(value("/rgb"), "[1.0,1.0,1.0]");
    EXPECT_EQ(changed, 1);
    EXPECT_EQ(recorded(), 1);
    expectUndoAndRedo();
}

TEST_F(UiColorInputs, AlphaIsEdited) {
    EXPECT_TRUE(run([this] { ui.colorEdit4("rgba"); },
        [](ImGuiTestContext& user) { user.ItemInputValue("//Window/rgba/##val/##W", 255); }));
    EXPECT_EQ(value("/rgba"), "[0.0,1.0,1.0,1.0]");
    EXPECT_EQ(recorded(), 1);
    expectUndoAndRedo();
}

TEST_F(UiColorInputs, OneDragIsOneChange) {
    EXPECT_TRUE(run([this] { ui.colorEdit3("rgb"); },
        [](ImGuiTestContext& user) {
            drag(user, "//Window/rgb/##val/##X", {10.0f, 10.0f, 10.0f});
        }));
    EXPECT_EQ(recorded(), 1);
    const rapidjson::Value& color = *project.getValue("/rgb", false);
    ASSERT_EQ(color.Size(), 3u);
    EXPECT_FLOAT_EQ(color[0].GetFloat(), 30.0f / 255.0f);
    EXPECT_EQ(color[1].GetFloat(), 1.0f);
    expectUndoAndRedo();
}

TEST_F(UiColorInputs, ThreeComponentsOfAnArrayOfFourLeaveThree) {
    EXPECT_TRUE(run([this] { ui.colorEdit3("rgba"); },
        [](ImGuiTestContext& user) { user.ItemInputValue("//Window/rgba/##val/##Z", 0); }));
    EXPECT_EQ(value("/rgba"), "[0.0,1.0,0.0]");
    expectUndoAndRedo();
}

TEST_F(UiColorInputs, ThePickerHasABarForAlpha) {
    EXPECT_TRUE(run([this] { ui.colorEdit4("rgba"); },
        [](ImGuiTestContext& user) {
            user.ItemClick("//Window/rgba/##val/##ColorButton");
            user.Yield();
            IM_CHECK(user.ItemExists("//$FOCUSED/##picker/alpha"));
        }));
}

TEST_F(UiColorInputs, WhatIsTypedAsNoColourIsOneThatJsonHas) {
    // The picker's own menu makes the fields of all colours take fractions.
    ImGui::GetIO().ConfigColorEditFlags = ImGuiColorEditFlags_Float | ImGuiColorEditFlags_DisplayRGB |
        ImGuiColorEditFlags_InputRGB | ImGuiColorEditFlags_PickerHueBar;
    const struct {
        const char* typed;
        const char* stored;
    } cases[]{
        {"nan", "[0.0,1.0,1.0]"},
        {"1e99", "[1000000.0,1.0,1.0]"},
        {"-1e99", "[-1000000.0,1.0,1.0]"},
        {"2.5", "[2.5,1.0,1.0]"},
    };
    for(const auto& each: cases) {
        loadProject(R"({"rgb":[0.5,1,1],"first":false})");
        EXPECT_TRUE(run([this] { ui.colorEdit3("rgb"); },
            [&](ImGuiTestContext& user) {
                user.ItemInput("//Window/rgb/##val/##X");
                user.KeyCharsReplaceEnter(each.typed);
                user.Yield(2);
            }));
        EXPECT_EQ(value("/rgb"), each.stored) << each.typed;
        EXPECT_EQ(recorded(), 1);
        expectUndoAndRedo();
    }
}

TEST_F(UiColorInputs, ComponentsOfAnySizeAreDrawn) {
    loadProject(R"({"rgb":[1e300,-1e300,1e9],"rgba":[-1e9,1e38,0.5,-1e38],"first":false})");
    EXPECT_TRUE(run(
        [this] {
            ui.colorEdit3("rgb");
            ui.colorEdit4("rgba");
        },
        [this](ImGuiTestContext& user) {
            user.Yield(2);
            IM_CHECK_STR_EQ(toText(project).c_str(), loaded.c_str());
            user.ItemInputValue("//Window/rgba/##val/##Z", 255);
        }));
    // The same limit holds for all that is written.
    EXPECT_EQ(value("/rgba"), "[-1000000.0,1000000.0,1.0,-1000000.0]");
    expectUndoAndRedo();
}

TEST_F(UiColorInputs, TheRightButtonOpensTheValuesMenuAndNotTheLibrarys) {
    EXPECT_TRUE(run([this] { ui.colorEdit3("rgb"); },
        [](ImGuiTestContext& user) {
            for(const char* part: {"##X", "##Z", "##ColorButton"}) {
                user.ItemClick((std::string{"//Window/rgb/##val/"} + part).c_str(), ImGuiMouseButton_Right);
                user.Yield(2);
                IM_CHECK_EQ(ImGui::GetCurrentContext()->OpenPopupStack.Size, 1);
                IM_CHECK(user.ItemExists("//$FOCUSED/\xef\x83\x85 Copy"));
                user.PopupCloseAll();
            }
        }));
}

TEST_F(UiColorInputs, TheLabelTakesAThirdOfTheLine) {
    frames([this] {
        const float start = ImGui::GetCursorScreenPos().x;
        const float width = ImGui::GetContentRegionAvail().x;
        ui.colorEdit3("rgb");
        EXPECT_FLOAT_EQ(ImGui::GetItemRectMin().x, ImGui::GetWindowPos().x + 0.33f * width);
        EXPECT_NEAR(ImGui::GetItemRectMax().x, start + width, 1.0f);
        ui.pushFlags(Ui::Flag::NoLabel);
        ui.colorEdit4("rgba");
        ui.popFlags();
        EXPECT_FLOAT_EQ(ImGui::GetItemRectMin().x, start);
    });
}

TEST_F(UiColorInputs, TheMenuCopiesAndPastes) {
    EXPECT_TRUE(run([this] { ui.colorEdit3("rgb"); },
        [](ImGuiTestContext& user) {
            user.ItemClick("//Window/rgb/##val/##X", ImGuiMouseButton_Right);
            user.ItemClick("//$FOCUSED/\xef\x83\x85 Copy");
            user.Yield();
            IM_CHECK_STR_EQ(ImGui::GetClipboardText(), "[0,1,1]");
            ImGui::SetClipboardText("[1,0,0]");
            user.ItemClick("//Window/rgb/##val/##X", ImGuiMouseButton_Right);
            user.ItemClick("//$FOCUSED/\xef\x83\xaa Paste");
        }));
    EXPECT_EQ(value("/rgb"), "[1,0,0]");
    EXPECT_EQ(recorded(), 1);
    expectUndoAndRedo();
}

TEST_F(UiColorInputs, WhatIsNoColourCountsAsBlack) {
    frames([this] {
        for(const char* name: {"text", "missing", "wrong"}) EXPECT_FALSE(ui.colorEdit3(name));
        EXPECT_FALSE(ui.colorEdit4("wrong"));
    });
    EXPECT_EQ(toText(project), loaded);
    EXPECT_TRUE(run([this] { ui.colorEdit3("text"); },
        [](ImGuiTestContext& user) { user.ItemInputValue("//Window/text/##val/##X", 255); }));
    EXPECT_EQ(value("/text"), "[1.0,0.0,0.0]");
    expectUndoAndRedo();
}

TEST_F(UiColorInputs, AnIdleFrameAllocatesNothing) {
    const auto widgets = [this] {
        ui.colorEdit3("rgb");
        ui.colorEdit4("rgba");
    };
    EXPECT_EQ(idleAllocations(widgets), 0u);
}

using UiColorInputsDeathTest = UiColorInputs;

TEST_F(UiColorInputsDeathTest, FourComponentsOfASmallerArrayAbort) {
    for(const char* name: {"rgb", "text", "missing"})
        QUORVANE_EXPECT_ABORT(frames([&] { ui.colorEdit4(name); }, 1),
            std::string{"Ui::colorEdit4(): Json array for "} + name + " too small");
}

}
}
