#include <cstdint>

#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "ResourcePopupUi.h"
#include "support/Allocations.h"

namespace QuorvaneEngine {
namespace {

using Containers::StringView;
using Test::Allocations;
using Test::SomeTextures;
using Test::toText;
using Test::UiResourcePopup;

// Opening and closing

TEST_F(UiResourcePopup, EscapeClosesAndChangesNothing) {
    open(SomeTextures);
    EXPECT_TRUE(run([](ImGuiTestContext& user) {
        openList(user);
        user.KeyChars("rock");
        user.KeyPress(ImGuiKey_Escape);
        user.Yield(2);
        IM_CHECK(!popup());
    }));
    EXPECT_EQ(recorded(), 0);
}

TEST_F(UiResourcePopup, AnotherClickOnTheFieldClosesIt) {
    open(SomeTextures);
    EXPECT_TRUE(run([](ImGuiTestContext& user) {
        openList(user);
        user.MouseMoveToPos(user.ItemInfo(Field).RectFull.GetCenter());
        user.MouseClick();
        user.Yield(3);
        IM_CHECK(!popup());
    }));
}

TEST_F(UiResourcePopup, ItIsTheOnlyPopup) {
    open(SomeTextures);
    EXPECT_TRUE(run([](ImGuiTestContext& user) {
        openList(user);
        IM_CHECK_EQ(ImGui::GetCurrentContext()->OpenPopupStack.Size, 1);
    }));
}

TEST_F(UiResourcePopup, TheKeyboardOpensItToo) {
    ImGui::GetIO().ConfigFlags |= ImGuiConfigFlags_NavEnableKeyboard;
    open(SomeTextures);
    EXPECT_TRUE(run([this](ImGuiTestContext& user) {
        user.NavMoveTo(Field);
        user.NavActivate();
        user.Yield(3);
        IM_CHECK(popup() != nullptr);
        IM_CHECK_EQ(ImGui::GetCurrentContext()->OpenPopupStack.Size, 1);
        user.KeyChars("rock");
        user.Yield(2);
        IM_CHECK(listed() == (Ids{"t1"}));
        choose(user, "t1");
        IM_CHECK(!popup());
        // Nothing of the old search is left.
        user.NavMoveTo(Field);
        user.NavActivate();
        user.Yield(3);
        IM_CHECK_EQ(ui.resourceSearch[0], '\0');
        IM_CHECK(listed() == (Ids{"t9", "t1", "t5"}));
        user.KeyChars("ta");
        user.Yield(2);
        IM_CHECK(listed() == (Ids{"t5"}));
        user.KeyPress(ImGuiKey_Escape);
    }));
}

TEST_F(UiResourcePopup, TwoPickersHaveListsOfTheirOwn) {
    open(R"({"value":null,"other":null,"textures":{"t1":{"name":"Rock"}},"meshes":{"m1":{"name":"Chair"}}})");
    pick = [this] {
        const bool first = ui.selectResource("value", "textures", false);
        const bool second = ui.selectResource("other", "meshes", false);
        return first || second;
    };
    EXPECT_TRUE(run([this](ImGuiTestContext& user) {
        openList(user);
        IM_CHECK(listed() == (Ids{"t1"}));
        user.KeyPress(ImGuiKey_Escape);
        user.ItemClick("//Window/other/##val");
        user.Yield(3);
        IM_CHECK(listed() == (Ids{"m1"}));
        choose(user, "m1");
    }));
    EXPECT_EQ(toText(project.document()["other"]), R"("m1")");
    EXPECT_EQ(value(), "null");
}

// Place and rows

TEST_F(UiResourcePopup, ItLiesUnderTheFieldDownToTheEndOfTheMainWindow) {
    open(SomeTextures);
    for(const float scale: {0.8f, 1.0f, 1.25f, 2.0f}) {
        ImGui::GetStyle().FontScaleMain = scale;
        EXPECT_TRUE(run([](ImGuiTestContext& user) {
            openList(user);
            const ImRect field = user.ItemInfo(Field).RectFull;
            IM_CHECK_LE(ImAbs(popup()->Pos.x - field.Min.x), 1.0f);
            IM_CHECK_LE(ImAbs(popup()->Pos.y - field.Max.y), 1.0f);
            IM_CHECK_LE(ImAbs(popup()->Size.x - field.GetWidth()), 1.0f);
            const float end = ImGui::GetMainViewport()->Size.y - 2.0f * ImGui::GetTextLineHeight();
            IM_CHECK_LE(ImAbs(popup()->Pos.y + popup()->Size.y - end), 1.0f);
            // The bar's right end is not cut off.
            const ImRect bar = user.ItemInfo(Search).RectFull;
            IM_CHECK_LE(bar.Max.x, popup()->InnerClipRect.Max.x);
            user.KeyPress(ImGuiKey_Escape);
        })) << scale;
    }
}

TEST_F(UiResourcePopup, AtTheEndOfTheMainWindowItLiesAboveTheField) {
    position.y = 620.0f;
    for(const float scale: {0.8f, 1.0f, 1.25f, 2.0f}) {
        ImGui::GetStyle().FontScaleMain = scale;
        open(SomeTextures);
        EXPECT_TRUE(run([](ImGuiTestContext& user) {
            openList(user);
            const ImRect field = user.ItemInfo(Field).RectFull;
            IM_CHECK_LE(ImAbs(popup()->Pos.x - field.Min.x), 1.0f);
            IM_CHECK_LE(ImAbs(popup()->Pos.y + popup()->Size.y - field.Min.y), 1.0f);
            IM_CHECK_LE(ImAbs(popup()->Pos.y - 2.0f * ImGui::GetTextLineHeight()), 1.0f);
            choose(user, "t5");
        })) << scale;
        EXPECT_EQ(value(), R"("t5")") << scale;
    }
}

TEST_F(UiResourcePopup, RowsWithPicturesAreHigherThanThoseOfText) {
    constexpr int Count = 200;
    const struct {
        const char* collection;
        bool isHigh;
    } kinds[]{{"textures", true}, {"materials", true}, {"meshes", true}, {"images", false}, {"fonts", false},
        {"shaders", false}};
    for(const auto& kind: kinds) {
        type = kind.collection;
        open(idsOf(Count, kind.collection));
        EXPECT_TRUE(run([&](ImGuiTestContext& user) {
            openList(user);
            const float line = ImGui::GetTextLineHeight();
            const float row = kind.isHigh ? 64.0f : line;
            IM_CHECK_LE(ImAbs(region()->ContentSize.y - (line + float(Count) * (row + 2.0f))), 1.0f);
            user.KeyPress(ImGuiKey_Escape);
        }));
    }
}

TEST_F(UiResourcePopup, TheScrollRangeFitsAtEverySpacingAndScale) {
    constexpr int Count = 500;
    for(const char* const collection: {"textures", "fonts"}) {
        type = collection;
        open(idsOf(Count, collection));
        for(const float spacing: {0.0f, 2.0f, 4.0f, 7.5f}) {
            for(const float scale: {0.8f, 1.0f, 1.25f, 2.0f}) {
                ImGui::GetStyle().ItemSpacing.y = spacing;
                ImGui::GetStyle().FontScaleMain = scale;
                EXPECT_TRUE(run([&](ImGuiTestContext& user) {
                    openList(user);
                    const float line = ImGui::GetTextLineHeight();
                    const float row = type == StringView{"textures"} ? ImTrunc(64.0f * scale) : line;
                    const float gap = ImTrunc(2.0f * scale);
                    const float height = line + float(Count) * (row + gap);
                    for(const float share: {0.0f, 0.5f, 1.0f}) {
                        ImGui::SetScrollY(region(), share * region()->ScrollMax.y);
                        user.Yield(3);
                        IM_CHECK_LE(ImAbs(region()->ContentSize.y - height), 0.5f);
                    }
                    IM_CHECK(shows("name 499"));
                    user.KeyPress(ImGuiKey_Escape);
                    user.Yield(2);
                })) << collection
                    << " " << spacing << " " << scale;
            }
        }
    }
}

TEST_F(UiResourcePopup, WhatTheFilterHoldsBackLeavesNoGaps) {
    open(idsOf(300, "fonts"));
    type = "fonts";
    filter = [](ValueAccess& entry) {
        const StringView name = entry["name"].asString();
        return name.back() == '7';
    };
    EXPECT_TRUE(run([this](ImGuiTestContext& user) {
        openList(user);
        const float pitch = ImGui::GetTextLineHeight() + 2.0f;
        IM_CHECK_LE(ImAbs(region()->ContentSize.y - (ImGui::GetTextLineHeight() + 30.0f * pitch)), 1.0f);
        IM_CHECK(shows("name 7"));
        IM_CHECK(shows("name 17"));
    }));
}

TEST_F(UiResourcePopup, ASearchBeginsAtTheTopOfItsResults) {
    open(idsOf(500, "fonts"));
    type = "fonts";
    EXPECT_TRUE(run([this](ImGuiTestContext& user) {
        openList(user);
        ImGui::SetScrollY(region(), region()->ScrollMax.y);
        user.Yield(2);
        IM_CHECK_GT(region()->Scroll.y, 100.0f);
        user.KeyChars("1");
        user.Yield(3);
        IM_CHECK_EQ(region()->Scroll.y, 0.0f);
        IM_CHECK(shows("name 1"));
    }));
}

TEST_F(UiResourcePopup, TheLastOfManyIsReachedByScrolling) {
    open(idsOf(5000, "textures"));
    EXPECT_TRUE(run([](ImGuiTestContext& user) {
        openList(user);
        ImGui::SetScrollY(region(), region()->ScrollMax.y);
        user.Yield(3);
        const ImRect rect = region()->InnerRect;
        user.MouseMoveToPos({rect.Min.x + 100.0f, rect.Max.y - 30.0f});
        user.MouseClick();
        user.Yield(3);
    }));
    EXPECT_EQ(value(), R"("k4999")");
}

TEST_F(UiResourcePopup, AnIdleFrameAllocatesNothingAndLooksUpWhatShows) {
    open(idsOf(20000, "textures"));
    std::uint64_t count = 1;
    std::uint64_t lookups = 0;
    EXPECT_TRUE(gui.run(
        "idle",
        [&] {
            ImGui::SetNextWindowPos(position);
            ImGui::SetNextWindowSize({400.0f, 200.0f});
            const WindowGuard window{ImGui::Begin("Window")};
            const std::uint64_t before = project.lookupCount();
            const Allocations allocations;
            ui.selectResource("value", type, byName);
            count = allocations.count();
            lookups = project.lookupCount() - before;
        },
        [&](ImGuiTestContext& user) {
            openList(user);
            user.Yield(10);
            IM_CHECK_EQ(count, std::uint64_t{0});
            IM_CHECK_LT(lookups, std::uint64_t{100});
        }));
}

}
}
