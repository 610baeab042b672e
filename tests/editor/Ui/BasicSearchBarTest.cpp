#include <cstdint>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <imgui.h>

#include "BasicUi.h"
#include "support/Allocations.h"

namespace QuorvaneEngine {
namespace {

using Test::Allocations;
using Test::GuiTest;
using Test::UiBasic;

class UiSearchBar: public UiBasic {
protected:
    UiSearchBar() { buffer = Containers::Array<char>{Corrade::ValueInit, 8}; }

    void drawBar(bool focus) {
        draw([&] {
            ImGui::Button("Elsewhere");
            start = ImGui::GetCursorScreenPos();
            if(Ui::searchBar("search", buffer, 200.0f, {0.0f, -4.0f}, 30.0f, focus)) ++changes;
            input = {ImGui::GetItemRectMin(), ImGui::GetItemRectMax()};
        });
    }

    std::string text() const { return buffer.data(); }

    static float iconWidth() { return ImGui::CalcTextSize("\xef\x80\x82").x; }

    Containers::Array<char> buffer;
    ImVec2 start;
    ImRect input;
    int changes = 0;
};

TEST_F(UiSearchBar, TheInputStandsBehindTheIcon) {
    gui.frames([this] { drawBar(false); }, 2);
    EXPECT_FLOAT_EQ(input.Min.x, ImGui::FindWindowByName("Window")->Pos.x + 30.0f);
    EXPECT_FLOAT_EQ(input.Min.y, start.y - 4.0f);
    EXPECT_FLOAT_EQ(input.GetWidth(), 200.0f - iconWidth());
}

TEST_F(UiSearchBar, WithoutAStartTheInputFollowsTheIcon) {
    gui.frames(
        [this] {
            draw([this] {
                start = ImGui::GetCursorScreenPos();
                Ui::searchBar("search", buffer, 200.0f, {}, 0.0f, false);
                input = {ImGui::GetItemRectMin(), ImGui::GetItemRectMax()};
            });
        },
        2);
    EXPECT_FLOAT_EQ(input.Min.x, start.x + iconWidth() + ImGui::GetStyle().ItemSpacing.x);
}

TEST_F(UiSearchBar, TheOffsetMovesItAllInBothDirections) {
    gui.frames(
        [this] {
            draw([this] {
                start = ImGui::GetCursorScreenPos();
                Ui::searchBar("search", buffer, 200.0f, {7.0f, 3.0f}, 0.0f, false);
                input = {ImGui::GetItemRectMin(), ImGui::GetItemRectMax()};
            });
        },
        2);
    EXPECT_FLOAT_EQ(input.Min.x, start.x + 7.0f + iconWidth() + ImGui::GetStyle().ItemSpacing.x);
    EXPECT_FLOAT_EQ(input.Min.y, start.y + 3.0f);
}

TEST_F(UiSearchBar, TypingChangesTheText) {
    EXPECT_TRUE(gui.run(
        "type", [this] { drawBar(false); },
        [this](ImGuiTestContext& user) {
            user.ItemClick("//Window/##search");
            user.KeyChars("abc");
            user.Yield();
            IM_CHECK_STR_EQ(buffer.data(), "abc");
            IM_CHECK_EQ(changes, 1);
            user.Yield(3);
            IM_CHECK_EQ(changes, 1);
        }));
}

TEST_F(UiSearchBar, ItsCapacityDoesNotGrow) {
    EXPECT_TRUE(gui.run(
        "type too much", [this] { drawBar(false); },
        [](ImGuiTestContext& user) {
            user.ItemClick("//Window/##search");
            user.KeyChars("abcdefghijkl");
            user.Yield();
        }));
    EXPECT_EQ(buffer.size(), 8u);
    EXPECT_EQ(text(), "abcdefg");
}

TEST_F(UiSearchBar, WithFocusItEmptiesTheTextAndTakesTheKeyboard) {
    std::strcpy(buffer.data(), "old");
    EXPECT_TRUE(gui.run(
        "type at once", [this] { drawBar(true); },
        [this](ImGuiTestContext& user) {
            user.Yield(3);
            IM_CHECK_STR_EQ(buffer.data(), "");
            user.KeyChars("new");
            user.Yield(3);
            // The input is active, so the text is kept.
            IM_CHECK_STR_EQ(buffer.data(), "new");
        }));
}

TEST_F(UiSearchBar, WithoutFocusTheTextIsKept) {
    std::strcpy(buffer.data(), "old");
    gui.frames([this] { drawBar(false); }, 5);
    EXPECT_EQ(text(), "old");
}

TEST_F(UiSearchBar, WithFocusTheTextIsEmptiedInEveryFrameWithoutAnActiveItem) {
    // The keyboard arrives a frame later, so that the first frames show it.
    for(int i = 0; i != 2; ++i) {
        std::strcpy(buffer.data(), "old");
        GuiTest fresh;
        fresh.frames([this] { drawBar(true); });
        EXPECT_EQ(text(), "");
    }
}

TEST_F(UiSearchBar, WithFocusTheTextAndTheKeyboardAreLeftAloneWhileAnotherItemIsActive) {
    EXPECT_TRUE(gui.run(
        "hold a button", [this] { drawBar(true); },
        [this](ImGuiTestContext& user) {
            user.Yield(3);
            user.KeyChars("abc");
            user.MouseMove("//Window/Elsewhere");
            user.MouseDown();
            user.Yield(5);
            IM_CHECK_EQ(ImGui::GetActiveID(), user.ItemInfo("//Window/Elsewhere").ID);
            IM_CHECK_STR_EQ(buffer.data(), "abc");
            user.MouseUp();
            user.Yield(3);
            IM_CHECK_EQ(ImGui::GetActiveID(), user.ItemInfo("//Window/##search").ID);
            IM_CHECK_STR_EQ(buffer.data(), "");
        }));
}

/** Where in the font's texture the last glyphs stand that were drawn. */
std::vector<std::pair<float, float>> lastGlyphs(std::size_t count) {
    const ImDrawList& list = *ImGui::FindWindowByName("Window")->DrawList;
    std::vector<std::pair<float, float>> places;
    for(int i = list.VtxBuffer.Size - 4 * int(count); i < list.VtxBuffer.Size; ++i)
        places.emplace_back(list.VtxBuffer[i].uv.x, list.VtxBuffer[i].uv.y);
    return places;
}

TEST_F(UiSearchBar, TheHintIsShownWhileThereIsNoText) {
    constexpr std::size_t letters = 6;
    std::vector<std::pair<float, float>> search, empty, filled;
    // Twice, for the font is rendered as it is used.
    for(int i = 0; i != 2; ++i) {
        gui.frames([&] {
            draw([&] {
                ImGui::TextUnformatted("Search");
                search = lastGlyphs(letters);
            });
        });
        buffer[0] = '\0';
        gui.frames([&] {
            drawBar(false);
            empty = lastGlyphs(letters);
        });
        std::strcpy(buffer.data(), "Sea");
        gui.frames([&] {
            drawBar(false);
            filled = lastGlyphs(letters);
        });
    }
    EXPECT_EQ(empty, search);
    EXPECT_NE(filled, search);
}

TEST_F(UiSearchBar, AnIdleFrameAllocatesNothing) {
    gui.frames([this] { drawBar(false); }, 5);
    std::uint64_t count = 1;
    gui.frames([&] {
        const Allocations allocations;
        drawBar(false);
        count = allocations.count();
    });
    EXPECT_EQ(count, 0u);
}

// Growing texts

class UiTextResize: public testing::Test {
protected:
    int resize(int event, int size) {
        data.EventFlag = event;
        data.BufSize = size;
        data.UserData = &array;
        data.Buf = array.data();
        return Ui::textResizeCallback(&data);
    }

    Containers::Array<char> array{Corrade::DirectInit, 4, 'x'};
    ImGuiInputTextCallbackData data{};
};

TEST_F(UiTextResize, OtherEventsChangeNothing) {
    EXPECT_EQ(resize(ImGuiInputTextFlags_CallbackEdit, 100), 0);
    EXPECT_EQ(array.size(), 4u);
}

TEST_F(UiTextResize, AnArrayNeverShrinks) {
    const char* const before = array.data();
    for(const int size: {0, 3, 4}) EXPECT_EQ(resize(ImGuiInputTextFlags_CallbackResize, size), 0);
    EXPECT_EQ(array.size(), 4u);
    EXPECT_EQ(array.data(), before);
}

TEST_F(UiTextResize, ItGrowsToExactlyTheRequestAndZeroFills) {
    EXPECT_EQ(resize(ImGuiInputTextFlags_CallbackResize, 100), 0);
    ASSERT_EQ(array.size(), 100u);
    EXPECT_EQ(data.Buf, array.data());
    for(int i = 0; i != 100; ++i) EXPECT_EQ(array[i], i < 4 ? 'x' : '\0') << i;
}

TEST_F(UiBasic, ATextInputGrowsItsArrayAsTheUserTypes) {
    Containers::Array<char> array{Corrade::ValueInit, 4};
    EXPECT_TRUE(gui.run(
        "type",
        [&] {
            draw([&] {
                ImGui::InputText("Text", array.data(), array.size(), ImGuiInputTextFlags_CallbackResize,
                    Ui::textResizeCallback, &array);
            });
        },
        [](ImGuiTestContext& user) {
            user.ItemClick("//Window/Text");
            user.KeyChars("a text that is longer than four bytes");
            user.Yield();
        }));
    EXPECT_STREQ(array.data(), "a text that is longer than four bytes");
}

}
}
