#include "ImGuiText.h"

#include <cstring>
#include <string>

#include <gtest/gtest.h>

#include "support/Allocations.h"
#include "support/GuiTest.h"

namespace QuorvaneEngine {
namespace {

using Containers::StringView;
using Test::Allocations;
using Test::GuiTest;

const char* pointer(const ImGuiText& text) { return text; }

TEST(ImGuiText, ATerminatedViewPassesItsPointer) {
    const StringView view = "a label";
    ASSERT_TRUE(view.flags() & Containers::StringViewFlag::NullTerminated);
    EXPECT_EQ(pointer(ImGuiText{view}), view.data());
}

TEST(ImGuiText, AnyOtherViewIsCopiedAndTerminated) {
    const StringView view = "a label and more";
    EXPECT_STREQ(ImGuiText{view.prefix(7)}, "a label");
}

TEST(ImGuiText, AShortCopyAllocatesNothing) {
    const std::string text(255, 'a');
    const Allocations allocations;
    const ImGuiText label{StringView{text.data(), text.size()}};
    EXPECT_EQ(allocations.count(), 0u);
    EXPECT_EQ(std::strlen(label), 255u);
}

TEST(ImGuiText, ALongTextIsCopiedWhole) {
    for(const std::size_t size: {256u, 257u, 10000u}) {
        const std::string text(size, 'a');
        EXPECT_EQ(std::string{pointer(ImGuiText{StringView{text.data(), text.size()}})}, text);
    }
}

TEST(ImGuiText, ANullViewIsAnEmptyText) {
    EXPECT_STREQ(ImGuiText{StringView{}}, "");
    EXPECT_STREQ((ImGuiText{StringView{}, StringView{}}), "");
}

TEST(ImGuiText, TwoTextsAreJoined) {
    EXPECT_STREQ((ImGuiText{"##", "search"}), "##search");
    const std::string text(300, 'a');
    EXPECT_EQ(std::string{pointer(ImGuiText{"##", StringView{text.data(), text.size()}})}, "##" + text);
}

class ImGuiTextFunctions: public testing::Test {
protected:
    /** Does something in a window. */
    template <class F> void inWindow(F&& what) {
        gui.frames([&] {
            ImGui::Begin("Window");
            what();
            ImGui::End();
        });
    }

    GuiTest gui;
};

TEST_F(ImGuiTextFunctions, AreThoseOfTheLibrary) {
    inWindow([] {
        const StringView text = "shown##hidden and more";
        const StringView part = text.prefix(13);
        EXPECT_EQ(getId(part), ImGui::GetID("shown##hidden"));
        EXPECT_EQ(calcTextSize(part).x, ImGui::CalcTextSize("shown##hidden").x);
        EXPECT_EQ(calcTextSize(part, true).x, ImGui::CalcTextSize("shown").x);
        EXPECT_EQ(calcTextSize("one two three", false, 30.0f).y,
            ImGui::CalcTextSize("one two three", nullptr, false, 30.0f).y);
        pushId(part);
        const ImGuiID inside = ImGui::GetID("x");
        ImGui::PopID();
        ImGui::PushID("shown##hidden");
        EXPECT_EQ(ImGui::GetID("x"), inside);
        ImGui::PopID();
        textUnformatted(part);
        EXPECT_EQ(ImGui::GetItemRectSize().x, ImGui::CalcTextSize("shown##hidden").x);
    });
}

TEST_F(ImGuiTextFunctions, TakeEmptyAndNullViews) {
    inWindow([] {
        const StringView text = "abc";
        for(const StringView empty: {StringView{}, text.prefix(0)}) {
            EXPECT_EQ(getId(empty), ImGui::GetID(""));
            EXPECT_EQ(calcTextSize(empty).x, 0.0f);
            textUnformatted(empty);
            EXPECT_EQ(ImGui::GetItemRectSize().x, 0.0f);
            renderTextClipped({0.0f, 0.0f}, {10.0f, 10.0f}, empty, {0.0f, 0.0f}, {0.0f, 0.0f});
        }
    });
}

TEST_F(ImGuiTextFunctions, AFormatInATooltipIsText) {
    // A tooltip has its size a frame later.
    for(int i = 0; i != 3; ++i) inWindow([] { setTooltip("%s %d 100 %"); });
    const ImGuiWindow* const tooltip = ImGui::FindWindowByName("##Tooltip_00");
    ASSERT_TRUE(tooltip);
    EXPECT_NEAR(tooltip->ContentSize.x, ImGui::CalcTextSize("%s %d 100 %").x, 1.0f);
}

TEST_F(ImGuiTextFunctions, ALabelForALineIsShownWhole) {
    EXPECT_TRUE(isLineLabel("a label"));
    EXPECT_TRUE(isLineLabel("a#b #"));
    EXPECT_FALSE(isLineLabel("a##b"));
    EXPECT_FALSE(isLineLabel("a\nb"));
    EXPECT_FALSE(isLineLabel({"a\0b", 3}));
    const std::string text(100000, 'a');
    EXPECT_FALSE(isLineLabel({text.data(), text.size()}));
}

TEST_F(ImGuiTextFunctions, ALineIsDrawnInTheMiddleAndCutOff) {
    inWindow([] { ImGui::SetWindowSize({1000.0f, 300.0f}); });
    inWindow([] {
        const ImVec2 min = ImGui::GetCursorScreenPos();
        const auto drawn = [&](const StringView text, const ImVec2& max) {
            const int before = ImGui::GetWindowDrawList()->VtxBuffer.Size;
            renderLine(min, max, text);
            return ImGui::GetWindowDrawList()->VtxBuffer.Size - before;
        };
        const float height = ImGui::GetTextLineHeight();
        const ImVec2 wide{min.x + 1000.0f, min.y + height};
        EXPECT_EQ(drawn("ab##c", wide), 20);
        EXPECT_EQ(drawn("ab\nc", wide), 8);
        EXPECT_EQ(drawn({}, wide), 0);
        const std::string text(100000, 'a');
        EXPECT_LE(drawn({text.data(), text.size()}, wide), 4096 * 4);

        drawn("a", {min.x + 1000.0f, min.y + height + 20.0f});
        const float lower = ImGui::GetWindowDrawList()->VtxBuffer.back().pos.y;
        drawn("a", wide);
        EXPECT_FLOAT_EQ(lower, ImGui::GetWindowDrawList()->VtxBuffer.back().pos.y + 10.0f);
        renderLine(min, {min.x + 5.0f, min.y + 3.0f}, "a");
        const ImVec4 clip = ImGui::GetWindowDrawList()->CmdBuffer.back().ClipRect;
        EXPECT_NE(clip.z, min.x + 5.0f) << "it is taken back";
    });
}

}
}
