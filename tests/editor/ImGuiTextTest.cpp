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

}
}
