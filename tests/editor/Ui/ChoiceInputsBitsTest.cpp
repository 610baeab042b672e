#include <cctype>
#include <string>

#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "BoundUi.h"
#include "support/Abort.h"
#include "support/ShownText.h"

namespace QuorvaneEngine {
namespace {

using namespace Containers::Literals;
using Test::ShownText;

constexpr char Wrong[] = R"({"null":null,"number":2.5,"text":"true","object":{},"list":[true,1],"first":false})";

constexpr Containers::StringView Names[]{"a"_s, "b"_s, "c"_s, "d"_s, "e"_s, "f"_s, "g"_s, "h"_s};

class UiBitInputs: public Test::BoundUi {
protected:
    UiBitInputs() { loadProject(R"({"bits":5,"negative":-1,"unsigned":4294967295,"first":false})"); }

    /** Where a box was drawn last, which no frame needs to look at. */
    static ImVec2 place(ImGuiTestContext& user, const std::string& item) {
        return user.ItemInfo(item.c_str()).RectFull.Min;
    }
};

TEST_F(UiBitInputs, ABoxTogglesItsBit) {
    int toggles = 0;
    EXPECT_TRUE(run(
        [&] {
            toggles += ui.checkboxBit("bits", 0, "zero");
            toggles += ui.checkboxBit("bits", 1, "one");
        },
        [this](ImGuiTestContext& user) {
            IM_CHECK(user.ItemIsChecked("//Window/bits/$$0/zero"));
            IM_CHECK(!user.ItemIsChecked("//Window/bits/$$1/one"));
            user.ItemClick("//Window/bits/$$1/one");
            IM_CHECK_STR_EQ(value("/bits").c_str(), "7");
            user.ItemClick("//Window/bits/$$0/zero");
        }));
    EXPECT_EQ(value("/bits"), "6");
    EXPECT_EQ(toggles, 2);
    EXPECT_EQ(recorded(), 2);
    expectUndoAndRedo();
}

TEST_F(UiBitInputs, BitsAreCountedModulo32AndLabelledAsTheyAre) {
    EXPECT_TRUE(run([this] { ui.checkboxBit("bits", 33, ""); },
        [](ImGuiTestContext& user) {
            IM_CHECK(!user.ItemIsChecked("//Window/bits/$$33/33"));
            user.ItemClick("//Window/bits/$$33/33");
        }));
    EXPECT_EQ(value("/bits"), "7");
}

TEST_F(UiBitInputs, AnIntegerOf64BitsKeepsThoseThatAreNotToggled) {
    loadProject(R"({"large":1099511627777,"largest":18446744073709551615,"far":-1099511627776,"first":false})");
    EXPECT_TRUE(run(
        [this] {
            ui.checkboxBit("large", 1, "");
            ui.checkboxBit("largest", 31, "");
            ui.checkboxBits("far", 4, {});
        },
        [](ImGuiTestContext& user) {
            IM_CHECK(!user.ItemIsChecked("//Window/large/$$1/1"));
            IM_CHECK(user.ItemIsChecked("//Window/largest/$$31/31"));
            for(const char* box: {"0", "1", "2", "3"})
                IM_CHECK(!user.ItemIsChecked((std::string{"//Window/far/"} + box).c_str()));
            user.ItemClick("//Window/large/$$1/1");
            user.ItemClick("//Window/largest/$$31/31");
            user.ItemClick("//Window/far/2");
        }));
    EXPECT_EQ(value("/large"), "1099511627779");
    EXPECT_EQ(value("/largest"), "18446744071562067967");
    EXPECT_EQ(value("/far"), "-1099511627772");
    EXPECT_EQ(recorded(), 3);
    expectUndoAndRedo();
}

TEST_F(UiBitInputs, TheHighestBitIsTheSign) {
    EXPECT_TRUE(run(
        [this] {
            ui.checkboxBit("bits", 31, "");
            ui.checkboxBit("negative", 31, "");
            ui.checkboxBit("unsigned", 0, "");
        },
        [](ImGuiTestContext& user) {
            user.ItemClick("//Window/bits/$$31/31");
            user.ItemClick("//Window/negative/$$31/31");
            user.ItemClick("//Window/unsigned/$$0/0");
        }));
    EXPECT_EQ(value("/bits"), "-2147483643");
    EXPECT_EQ(value("/negative"), "2147483647");
    EXPECT_EQ(value("/unsigned"), "-2");
    expectUndoAndRedo();
}

TEST_F(UiBitInputs, TheLabelTakesAThirdOfTheLine) {
    frames([this] {
        const float start = ImGui::GetCursorScreenPos().x;
        const float width = ImGui::GetContentRegionAvail().x;
        ui.checkboxBit("bits", 0, "zero");
        EXPECT_FLOAT_EQ(ImGui::GetItemRectMin().x, ImGui::GetWindowPos().x + 0.33f * width);
        ui.pushFlags(Ui::Flag::NoLabel);
        ui.checkboxBit("bits", 1, "one");
        ui.popFlags();
        EXPECT_FLOAT_EQ(ImGui::GetItemRectMin().x, start);
    });
}

TEST_F(UiBitInputs, BoxesStandInRowsOfFour) {
    EXPECT_TRUE(run([this] { ui.checkboxBits("bits", 6, {}); },
        [](ImGuiTestContext& user) {
            const ImGuiWindow& window = *user.GetWindowByRef("//Window");
            const float width = window.ContentRegionRect.GetWidth();
            // The group begins where the window's contents do.
            const float start = window.ContentRegionRect.Min.x + 0.33f * width;
            const float step = 0.25f * (width - 0.33f * width);
            const float top = place(user, "//Window/bits/0").y;
            for(int bit = 0; bit != 6; ++bit) {
                const ImVec2 box = place(user, "//Window/bits/" + std::to_string(bit));
                IM_CHECK_LT(ImAbs(box.x - start - float(bit % 4) * step), 1.0f);
                if(bit < 4) IM_CHECK_EQ(box.y, top);
                else IM_CHECK_GT(box.y, top);
                if(bit > 4) IM_CHECK_EQ(box.y, place(user, "//Window/bits/4").y);
            }
            IM_CHECK(!user.ItemExists("//Window/bits/6"));
            for(int bit = 0; bit != 6; ++bit)
                IM_CHECK_EQ(user.ItemIsChecked(("//Window/bits/" + std::to_string(bit)).c_str()), bit == 0 || bit == 2);
        }));
}

TEST_F(UiBitInputs, BoxesAreLevelWithTheirLabel) {
    for(const float scale: {1.0f, 2.0f}) {
        ImGui::GetStyle().FontScaleMain = scale;
        ImVec2 one, several;
        EXPECT_TRUE(run(
            [&] {
                one = ImGui::GetCursorScreenPos();
                ui.checkboxBit("bits", 1, "one");
                several = ImGui::GetCursorScreenPos();
                ui.checkboxBits("negative", 6, {});
            },
            [&](ImGuiTestContext& user) {
                const auto middle = [&user](const char* item) { return user.ItemInfo(item).RectFull.GetCenter().y; };
                const float half = 0.5f * ImGui::GetFrameHeight();
                IM_CHECK_LE(ImAbs(middle("//Window/bits/$$1/one") - one.y - half), 1.0f);
                for(const char* box: {"//Window/negative/0", "//Window/negative/3"})
                    IM_CHECK_LE(ImAbs(middle(box) - several.y - half), 1.0f);
                // The next row is as far from the first one as rows are that have no label.
                const float step = Ui::checkboxHeight() + ImGui::GetStyle().ItemSpacing.y;
                IM_CHECK_GE(middle("//Window/negative/4") - middle("//Window/negative/0"), step - 0.5f);
            }));
    }
}

TEST_F(UiBitInputs, WithoutALabelTheFirstBoxBeginsTheLine) {
    ui.flags = Ui::Flag::NoLabel;
    std::string shown;
    EXPECT_TRUE(run(
        [&] {
            const ShownText text;
            ui.checkboxBits("bits", 6, {});
            shown = text.text();
        },
        [&](ImGuiTestContext& user) {
            user.Yield(2);
            IM_CHECK(shown.find("bits") == std::string::npos);
            const ImRect contents = user.GetWindowByRef("//Window")->ContentRegionRect;
            IM_CHECK_EQ(place(user, "//Window/bits/0").x, contents.Min.x);
            // The others stay in their columns.
            for(const char* const box: {"4", "5"}) {
                const float column = box[0] == '4' ? 0.0f : 0.25f * 0.67f;
                IM_CHECK_LT(ImAbs(place(user, std::string{"//Window/bits/"} + box).x - contents.Min.x -
                                (0.33f + column) * contents.GetWidth()),
                    1.0f);
            }
        }));
}

TEST_F(UiBitInputs, ThereIsNoMenu) {
    EXPECT_TRUE(run(
        [this] {
            ui.checkboxBit("bits", 1, "");
            ui.checkboxBits("negative", 2, {});
        },
        [](ImGuiTestContext& user) {
            for(const char* const item: {"//Window/bits/$$1/1", "//Window/negative/0"}) {
                ImGui::SetClipboardText("old");
                user.ItemClick(item, ImGuiMouseButton_Right);
                user.Yield(2);
                IM_CHECK_EQ(ImGui::GetCurrentContext()->OpenPopupStack.Size, 0);
                user.KeyPress(ImGuiMod_Super | ImGuiKey_C);
                IM_CHECK_STR_EQ(ImGui::GetClipboardText(), "old");
            }
        }));
}

TEST_F(UiBitInputs, ALongNameIsNotCovered) {
    constexpr Containers::StringView names[]{"a name that is longer than its column"_s, "b"_s, "c"_s, "d"_s,
        "another one that is longer"_s, "f"_s, "g"_s, "h"_s};
    EXPECT_TRUE(run([&] { ui.checkboxBits("bits", 8, names); },
        [](ImGuiTestContext& user) {
            const auto box = [&user](const char* name) {
                return user.ItemInfo((std::string{"//Window/bits/"} + name).c_str()).RectFull;
            };
            IM_CHECK_GE(box("b").Min.x, box("a name that is longer than its column").Max.x);
            IM_CHECK_EQ(box("b").Min.y, box("a name that is longer than its column").Min.y);
            IM_CHECK_GE(box("f").Min.x, box("another one that is longer").Max.x);
        }));
}

TEST_F(UiBitInputs, NamedBoxesToggleTheirBits) {
    int toggles = 0;
    EXPECT_TRUE(run([&] { toggles += ui.checkboxBits("bits", 8, Names); },
        [this](ImGuiTestContext& user) {
            IM_CHECK(user.ItemIsChecked("//Window/bits/a"));
            IM_CHECK(!user.ItemIsChecked("//Window/bits/b"));
            user.ItemClick("//Window/bits/h");
            IM_CHECK_STR_EQ(value("/bits").c_str(), "133");
            user.ItemClick("//Window/bits/a");
        }));
    EXPECT_EQ(value("/bits"), "132");
    EXPECT_EQ(toggles, 2);
    EXPECT_EQ(recorded(), 2);
    expectUndoAndRedo();
}

TEST_F(UiBitInputs, EightNamesServeFewerBits) {
    EXPECT_TRUE(run([this] { ui.checkboxBits("bits", 2, Names); },
        [](ImGuiTestContext& user) {
            IM_CHECK(user.ItemExists("//Window/bits/b"));
            IM_CHECK(!user.ItemExists("//Window/bits/c"));
        }));
}

TEST_F(UiBitInputs, MoreBitsThanNamesHaveNumbers) {
    EXPECT_TRUE(run([this] { ui.checkboxBits("bits", 10, Names); },
        [](ImGuiTestContext& user) { user.ItemClick("//Window/bits/9"); }));
    EXPECT_EQ(value("/bits"), "517");
}

/** No user gets there with one mouse: the library is told that the keyboard presses the other box in the frame of the click. */
TEST_F(UiBitInputs, TwoBoxesThatToggleInOneFrameAreOneChange) {
    EXPECT_TRUE(run(
        [&] {
            ImGuiContext& context = *ImGui::GetCurrentContext();
            if(context.IO.MouseReleased[0]) {
                const ImGuiID other = ImHashStr("3", 0, ImGui::GetID("bits"));
                context.NavActivateId = context.NavActivateDownId = context.NavActivatePressedId = other;
            }
            ui.checkboxBits("bits", 6, {});
        },
        [&](ImGuiTestContext& user) { user.ItemClick("//Window/bits/0"); }));
    EXPECT_EQ(value("/bits"), "12");
    EXPECT_EQ(recorded(), 1);
    expectUndoAndRedo();
}

TEST_F(UiBitInputs, CtrlShowsThePathOverEachBox) {
    std::string shown;
    EXPECT_TRUE(run(
        [&] {
            const ShownText text;
            ui.checkboxBits("bits", 6, {});
            shown = text.text();
        },
        [&](ImGuiTestContext& user) {
            for(const char* item: {"//Window/bits/0", "//Window/bits/5"}) {
                user.MouseMove(item);
                user.KeyDown(ImGuiMod_Ctrl);
                user.Yield(3);
                const std::size_t path = shown.find("/bits");
                IM_CHECK(path != std::string::npos);
                IM_CHECK(path + 5 == shown.size() || std::isspace(shown[path + 5]));
                user.KeyUp(ImGuiMod_Ctrl);
                user.Yield(3);
                IM_CHECK(shown.find("/bits") == std::string::npos);
            }
        }));
}

TEST_F(UiBitInputs, WhatIsNoIntegerHasNoBits) {
    for(const char* name: {"null", "number", "text", "object", "list", "missing", "true"}) {
        loadProject(R"({"true":true,)" + std::string{Wrong}.substr(1));
        const std::string item = std::string{"//Window/"} + name + "/1";
        EXPECT_TRUE(run([&] { ui.checkboxBits(name, 2, {}); },
            [&](ImGuiTestContext& user) {
                IM_CHECK(!user.ItemIsChecked(item.c_str()));
                user.ItemClick(item.c_str());
            }));
        EXPECT_EQ(value((std::string{"/"} + name).c_str()), "2");
        expectUndoAndRedo();
    }
}

TEST_F(UiBitInputs, AnIdleFrameAllocatesNothing) {
    const auto widgets = [this] {
        ui.checkboxBit("bits", 3, "");
        ui.checkboxBits("bits", 8, Names);
        ui.checkboxBits("negative", 32, {});
    };
    EXPECT_EQ(idleAllocations(widgets), 0u);
}

using UiBitInputsDeathTest = UiBitInputs;

TEST_F(UiBitInputsDeathTest, AnotherNumberOfNamesAborts) {
    for(const std::size_t size: {1u, 6u, 7u})
        QUORVANE_EXPECT_ABORT(frames([&] { ui.checkboxBits("bits", 6, Containers::arrayView(Names).prefix(size)); }, 1),
            "Ui::checkboxBits(): expected names to have 6 elements");
}

}
}
