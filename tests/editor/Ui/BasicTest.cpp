#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include <Corrade/Containers/GrowableArray.h>
#include <gtest/gtest.h>
#include <imgui.h>

#include "ImGuiGuards.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "Ui/Ui.h"
#include "support/Allocations.h"
#include "support/GuiTest.h"
#include "support/Json.h"

namespace QuorvaneEngine {
namespace {

using Test::Allocations;
using Test::GuiTest;
using Test::load;

constexpr float SomeWidth = 400.0f;

class UiBasic: public testing::Test {
protected:
    /** Draws a window of a known size for some frames. */
    template <class F> void inWindow(F&& what, int frames = 2) {
        gui.frames([&] { draw(what); }, frames);
    }

    template <class F> static void draw(F&& what) {
        ImGui::SetNextWindowSize({SomeWidth, 300.0f});
        const WindowGuard window{ImGui::Begin("Window")};
        what();
    }

    GuiTest gui;
};

// Text and labels

TEST_F(UiBasic, AlignedTextHasTheHeightOfAFrame) {
    inWindow([] {
        Ui::alignedText("text");
        EXPECT_EQ(ImGui::GetItemRectSize().x, ImGui::CalcTextSize("text").x);
        EXPECT_EQ(ImGui::GetItemRectSize().y, ImGui::GetFrameHeight());
    });
}

TEST_F(UiBasic, AlignedTextHidesWhatFollowsTwoHashes) {
    inWindow([] {
        Ui::alignedText("text##hidden");
        EXPECT_EQ(ImGui::GetItemRectSize().x, ImGui::CalcTextSize("text").x);
    });
}

TEST_F(UiBasic, AlignedTextHasNoIdAndLinesUpWithAnInput) {
    inWindow([] {
        Ui::alignedText("text");
        EXPECT_EQ(ImGui::GetItemID(), 0u);
        const float top = ImGui::GetItemRectMin().y;
        ImGui::SameLine();
        float value = 0.0f;
        ImGui::DragFloat("##value", &value);
        EXPECT_EQ(ImGui::GetItemRectMin().y, top);
    });
}

/** The heights of the glyphs that were drawn since a vertex. */
ImVec2 drawnHeight(int firstVertex) {
    const ImDrawList& list = *ImGui::GetWindowDrawList();
    ImVec2 height{1.0e6f, -1.0e6f};
    for(int i = firstVertex; i != list.VtxBuffer.Size; ++i) {
        height.x = ImMin(height.x, list.VtxBuffer[i].pos.y);
        height.y = ImMax(height.y, list.VtxBuffer[i].pos.y);
    }
    return height;
}

TEST_F(UiBasic, ALabelStandsInTheMiddleOfTheInputsFrame) {
    inWindow([] {
        const int label = ImGui::GetWindowDrawList()->VtxBuffer.Size;
        Ui::label("Hxg");
        const ImVec2 labelHeight = drawnHeight(label);
        char text[8] = "Hxg";
        ImGui::SetNextItemWidth(100.0f);
        ImGui::InputText("##text", text, sizeof(text));
        const ImRect frame{ImGui::GetItemRectMin(), ImGui::GetItemRectMax()};
        // The glyphs of a line are drawn from its padding on; the same text in the input would stand at the same height.
        ImGui::SetCursorScreenPos({frame.Min.x, frame.Min.y + ImGui::GetStyle().FramePadding.y});
        const int reference = ImGui::GetWindowDrawList()->VtxBuffer.Size;
        ImGui::TextUnformatted("Hxg");
        const ImVec2 referenceHeight = drawnHeight(reference);
        EXPECT_NEAR(labelHeight.x, referenceHeight.x, 0.6f);
        EXPECT_NEAR(labelHeight.y, referenceHeight.y, 0.6f);
    });
}

TEST_F(UiBasic, AlignedTextWithoutTextIsAnItemOfNoWidth) {
    inWindow([] {
        for(const Containers::StringView text: {Containers::StringView{""}, Containers::StringView{}}) {
            const int before = ImGui::GetWindowDrawList()->VtxBuffer.Size;
            const float cursor = ImGui::GetCursorPosY();
            Ui::alignedText(text);
            EXPECT_EQ(ImGui::GetItemRectSize().x, 0.0f);
            EXPECT_EQ(ImGui::GetItemRectSize().y, ImGui::GetFrameHeight());
            EXPECT_EQ(ImGui::GetWindowDrawList()->VtxBuffer.Size, before);
            EXPECT_GT(ImGui::GetCursorPosY(), cursor);
        }
    });
}

TEST_F(UiBasic, AControlStartsAtAThirdOfTheWidth) {
    inWindow([] {
        const float width = ImGui::GetContentRegionAvail().x;
        Ui::label("Name");
        char text[8] = "";
        ImGui::InputText("##text", text, sizeof(text));
        EXPECT_FLOAT_EQ(ImGui::GetItemRectMin().x, ImGui::GetWindowPos().x + 0.33f * width);
    });
}

TEST_F(UiBasic, AControlFollowsALabelThatIsLongerThanItsColumn) {
    inWindow([] {
        Ui::label("A label that takes more than a third of the window's width");
        const float end = ImGui::GetItemRectMax().x;
        char text[8] = "";
        ImGui::InputText("##text", text, sizeof(text));
        EXPECT_FLOAT_EQ(ImGui::GetItemRectMin().x, end + ImGui::GetStyle().ItemSpacing.x);
    });
}

TEST_F(UiBasic, TheLabelOfAValueLeavesTheRestOfTheLine) {
    const Ui ui;
    inWindow([&] {
        const float end = ImGui::GetCursorScreenPos().x + ImGui::GetContentRegionAvail().x;
        const float start = ImGui::GetWindowPos().x + 0.33f * ImGui::GetContentRegionAvail().x;
        ui.valueLabel("Name");
        float value = 0.0f;
        ImGui::DragFloat("##value", &value);
        EXPECT_FLOAT_EQ(ImGui::GetItemRectMin().x, start);
        // Widths are whole pixels.
        EXPECT_NEAR(ImGui::GetItemRectMax().x, end, 1.0f);
    });
}

TEST_F(UiBasic, WithoutTheLabelTheValueHasTheWholeLine) {
    Ui ui;
    ui.pushFlags(Ui::Flag::NoLabel);
    inWindow([&] {
        const float start = ImGui::GetCursorScreenPos().x;
        const float width = ImGui::GetContentRegionAvail().x;
        ui.valueLabel("Name");
        float value = 0.0f;
        ImGui::DragFloat("##value", &value);
        EXPECT_FLOAT_EQ(ImGui::GetItemRectMin().x, start);
        EXPECT_FLOAT_EQ(ImGui::GetItemRectSize().x, width);
    });
}

TEST_F(UiBasic, AValueWhoseLabelTakesTheWholeLineHasSomeWidth) {
    const Ui ui;
    inWindow([&] {
        ui.valueLabel("A label that is longer than the whole window and leaves nothing at all for the value behind it");
        float value = 0.0f;
        ImGui::DragFloat("##value", &value);
        EXPECT_EQ(ImGui::GetItemRectSize().x, 1.0f);
    });
}

TEST_F(UiBasic, SameLineAtGoesBehindWhatItWouldCover) {
    inWindow([] {
        for(const float share: {0.5f, 1.5f}) {
            ImGui::Button("button");
            const float end = ImGui::GetItemRectMax().x;
            const float top = ImGui::GetItemRectMin().y;
            const float start = ImGui::GetWindowPos().x;
            const float x = (end - start) * share;
            Ui::sameLineAt(x);
            EXPECT_FLOAT_EQ(
                ImGui::GetCursorScreenPos().x, share < 1.0f ? end + ImGui::GetStyle().ItemSpacing.x : start + x);
            ImGui::Button("other");
            EXPECT_EQ(ImGui::GetItemRectMin().y, top);
        }
    });
}

TEST_F(UiBasic, DistancesFollowTheFontScale) {
    inWindow([] { EXPECT_EQ(Ui::scaled(30.0f), 30.0f); });
    ImGui::GetStyle().FontScaleMain = 1.5f;
    ImGui::GetStyle().FontScaleDpi = 2.0f;
    inWindow([] { EXPECT_EQ(Ui::scaled(30.0f), 90.0f); });
}

// Bound text

TEST_F(UiBasic, TextShowsTheValueOfTheProject) {
    ProjectFile project;
    load(project, R"({"a":{"text":"shown##too 100 %s"}})");
    Ui ui{&project};
    inWindow([&] {
        ui.pushScope("a", nullptr);
        ui.text("text");
        EXPECT_EQ(ImGui::GetItemRectSize().x, ImGui::CalcTextSize("shown##too 100 %s").x);
        ui.popScope();
        EXPECT_TRUE(ui.scopePath().isEmpty());
    });
}

TEST_F(UiBasic, TextOfWhatIsNoStringIsEmpty) {
    ProjectFile project;
    load(project, R"({"number":1})");
    Ui ui{&project};
    inWindow([&] {
        for(const char* name: {"number", "missing"}) {
            ui.text(name);
            EXPECT_EQ(ImGui::GetItemRectSize().x, 0.0f);
        }
    });
}

TEST_F(UiBasic, TextDoesNotShowDefaults) {
    ProjectFile project;
    load(project, "{}");
    // The default is an empty text, which would not show either.
    rapidjson::Value* const byDefault = project.getValue("/images/0/name", true);
    ASSERT_TRUE(byDefault);
    byDefault->SetString("by default");
    Ui ui{&project};
    inWindow([&] {
        ui.text("/images/0/name");
        EXPECT_EQ(ImGui::GetItemRectSize().x, 0.0f);
    });
}

// Buttons

TEST_F(UiBasic, AnIconButtonHasAPaddingOfFivePixels) {
    inWindow([] {
        Ui::iconButton("X", "");
        const ImVec2 text = ImGui::CalcTextSize("X");
        EXPECT_FLOAT_EQ(ImGui::GetItemRectSize().x, text.x + 10.0f);
        EXPECT_FLOAT_EQ(ImGui::GetItemRectSize().y, text.y + 10.0f);
    });
}

TEST_F(UiBasic, PaddingsFollowTheFontScale) {
    ImGui::GetStyle().FontScaleMain = 2.0f;
    inWindow([] {
        Ui::iconButton("X", "");
        EXPECT_FLOAT_EQ(ImGui::GetItemRectSize().x, ImGui::CalcTextSize("X").x + 20.0f);
        bool value = false;
        Ui::checkbox("##box", &value);
        EXPECT_FLOAT_EQ(ImGui::GetItemRectSize().y, ImGui::GetFontSize() + 4.0f);
    });
}

TEST_F(UiBasic, ButtonsTellWhenTheyArePressed) {
    std::vector<std::string> pressed;
    EXPECT_TRUE(gui.run(
        "press",
        [&] {
            draw([&] {
                if(Ui::iconButton("X", "one")) pressed.push_back("icon one");
                if(Ui::iconButton("X", "two")) pressed.push_back("icon two");
                if(Ui::buttonGrouped("Left", "", Ui::ButtonFlag::GroupStart)) pressed.push_back("left");
                ImGui::SameLine(0.0f, 0.0f);
                if(Ui::buttonGrouped("Right", "group", Ui::ButtonFlag::GroupEnd)) pressed.push_back("right");
            });
        },
        [](ImGuiTestContext& user) {
            user.SetRef("Window");
            user.ItemClick("two/X");
            user.ItemClick("one/X");
            user.ItemClick("Left");
            user.ItemClick("group/Right");
        }));
    EXPECT_EQ(pressed, (std::vector<std::string>{"icon two", "icon one", "left", "right"}));
}

TEST_F(UiBasic, AnEmptyIdPushesNone) {
    inWindow(
        [] {
            ImGuiID ids[4];
            Ui::iconButton("X", "");
            ids[0] = ImGui::GetItemID();
            EXPECT_EQ(ids[0], ImGui::GetID("X"));
            Ui::buttonGrouped("X", "", {});
            ids[1] = ImGui::GetItemID();
            Ui::iconButton("X", "a");
            ids[2] = ImGui::GetItemID();
            Ui::buttonGrouped("X", "a", {});
            ids[3] = ImGui::GetItemID();
            EXPECT_EQ(ids[0], ids[1]);
            EXPECT_EQ(ids[2], ids[3]);
            EXPECT_NE(ids[0], ids[2]);
            ImGui::PushID("a");
            EXPECT_EQ(ids[2], ImGui::GetID("X"));
            ImGui::PopID();
        },
        1);
}

TEST_F(UiBasic, AGroupedButtonIsAsLargeAsAPlainOne) {
    inWindow([] {
        ImGui::Button("Label##a");
        const ImVec2 plain = ImGui::GetItemRectSize();
        Ui::buttonGrouped("Label##b", "", {});
        EXPECT_EQ(ImGui::GetItemRectSize().x, plain.x);
        EXPECT_EQ(ImGui::GetItemRectSize().y, plain.y);
    });
}

/** Which of its four corners a button fills, in the order top left, top right, bottom left, bottom right. A rounded corner is one
    that no vertex comes to. */
std::string squareCorners(Ui::ButtonFlags flags) {
    const int first = ImGui::GetWindowDrawList()->VtxBuffer.Size;
    Ui::buttonGrouped("Label", std::to_string(UnsignedInt(flags)).c_str(), flags);
    const ImRect frame{ImGui::GetItemRectMin(), ImGui::GetItemRectMax()};
    const ImVec2 corners[]{frame.GetTL(), frame.GetTR(), frame.GetBL(), frame.GetBR()};
    std::string square;
    for(const ImVec2& corner: corners) {
        bool isReached = false;
        for(int i = first; i != ImGui::GetWindowDrawList()->VtxBuffer.Size; ++i) {
            const ImVec2 vertex = ImGui::GetWindowDrawList()->VtxBuffer[i].pos;
            isReached |= ImFabs(vertex.x - corner.x) <= 1.0f && ImFabs(vertex.y - corner.y) <= 1.0f;
        }
        square += isReached ? '#' : '.';
    }
    return square;
}

TEST_F(UiBasic, TheEndsOfAGroupAreRounded) {
    ImGui::GetStyle().FrameRounding = 6.0f;
    inWindow([] {
        EXPECT_EQ(squareCorners({}), "####");
        EXPECT_EQ(squareCorners(Ui::ButtonFlag::GroupStart), ".#.#");
        EXPECT_EQ(squareCorners(Ui::ButtonFlag::GroupEnd), "#.#.");
        EXPECT_EQ(squareCorners(Ui::ButtonFlag::GroupStart | Ui::ButtonFlag::GroupEnd), "....");
    });
}

/** Around all vertices of a colour that were drawn since one; its corners stand the wrong way round where there is none. */
ImRect drawnIn(ImU32 color, int firstVertex) {
    ImRect drawn{1.0e6f, 1.0e6f, -1.0e6f, -1.0e6f};
    const ImDrawList& list = *ImGui::GetWindowDrawList();
    for(int i = firstVertex; i != list.VtxBuffer.Size; ++i)
        if(list.VtxBuffer[i].col == color) drawn.Add(list.VtxBuffer[i].pos);
    return drawn;
}

constexpr ImU32 Red = IM_COL32(255, 0, 0, 255);
constexpr ImU32 Green = IM_COL32(0, 255, 0, 255);

TEST_F(UiBasic, AGroupedButtonDrawsItsBorderAndItsShadow) {
    for(const float scale: {1.0f, 2.0f}) {
        ImGui::GetStyle().FontScaleMain = scale;
        ImGui::GetStyle().FrameBorderSize = 1.0f;
        inWindow([&] {
            const int first = ImGui::GetWindowDrawList()->VtxBuffer.Size;
            StyleGuard style;
            style.color(ImGuiCol_BorderShadow, ImGui::ColorConvertU32ToFloat4(Red));
            style.color(ImGuiCol_Border, ImGui::ColorConvertU32ToFloat4(Green));
            Ui::buttonGrouped("Label", "", {});
            const ImRect shadow = drawnIn(Red, first);
            const ImRect border = drawnIn(Green, first);
            EXPECT_NEAR(border.Min.x, ImGui::GetItemRectMin().x, 1.5f);
            EXPECT_NEAR(border.Max.y, ImGui::GetItemRectMax().y, 1.5f);
            EXPECT_FLOAT_EQ(shadow.Min.x - border.Min.x, scale);
            EXPECT_FLOAT_EQ(shadow.Min.y - border.Min.y, scale);
            EXPECT_FLOAT_EQ(shadow.Max.x - border.Max.x, scale);
            EXPECT_FLOAT_EQ(shadow.Max.y - border.Max.y, scale);
        });
    }
}

TEST_F(UiBasic, AGroupedButtonHasNoBorderWhereTheStyleHasNone) {
    ImGui::GetStyle().FrameBorderSize = 0.0f;
    inWindow([] {
        const int first = ImGui::GetWindowDrawList()->VtxBuffer.Size;
        StyleGuard style;
        style.color(ImGuiCol_BorderShadow, ImGui::ColorConvertU32ToFloat4(Red));
        style.color(ImGuiCol_Border, ImGui::ColorConvertU32ToFloat4(Green));
        Ui::buttonGrouped("Label", "", {});
        EXPECT_TRUE(drawnIn(Red, first).IsInverted());
        EXPECT_TRUE(drawnIn(Green, first).IsInverted());
    });
}

TEST_F(UiBasic, AGroupedButtonShowsThatTheKeyboardIsOnIt) {
    ImGui::GetIO().ConfigFlags |= ImGuiConfigFlags_NavEnableKeyboard;
    bool isMarked = false;
    EXPECT_TRUE(gui.run(
        "navigate",
        [&] {
            draw([&] {
                StyleGuard style;
                style.color(ImGuiCol_NavCursor, ImGui::ColorConvertU32ToFloat4(Red));
                ImGui::Button("First");
                const int first = ImGui::GetWindowDrawList()->VtxBuffer.Size;
                Ui::buttonGrouped("Label", "", {});
                isMarked = !drawnIn(Red, first).IsInverted();
            });
        },
        [&](ImGuiTestContext& user) {
            user.SetRef("Window");
            user.NavMoveTo("First");
            user.Yield(2);
            IM_CHECK(!isMarked);
            user.KeyPress(ImGuiKey_DownArrow);
            user.Yield(2);
            IM_CHECK(isMarked);
        }));
}

TEST_F(UiBasic, AGroupedButtonShowsItsState) {
    ImU32 color = 0;
    const auto gui = [&] {
        draw([&] {
            const int first = ImGui::GetWindowDrawList()->VtxBuffer.Size;
            Ui::buttonGrouped("Label", "", {});
            color = ImGui::GetWindowDrawList()->VtxBuffer[first].col;
        });
    };
    EXPECT_TRUE(this->gui.run("hover and hold", gui, [&](ImGuiTestContext& user) {
        user.MouseMoveToVoid();
        user.Yield();
        IM_CHECK_EQ(color, ImGui::GetColorU32(ImGuiCol_Button));
        user.MouseMove("//Window/Label");
        user.Yield();
        IM_CHECK_EQ(color, ImGui::GetColorU32(ImGuiCol_ButtonHovered));
        user.MouseDown();
        user.Yield();
        IM_CHECK_EQ(color, ImGui::GetColorU32(ImGuiCol_ButtonActive));
        user.MouseUp();
    }));
}

TEST_F(UiBasic, AGroupedButtonIsLoggedInBrackets) {
    inWindow(
        [&] {
            ImGui::LogToBuffer();
            Ui::buttonGrouped("Label", "", {});
            const std::string log = gui.context()->LogBuffer.c_str();
            ImGui::LogFinish();
            EXPECT_NE(log.find("[ Label ]"), std::string::npos) << log;
        },
        1);
}

TEST_F(UiBasic, NothingIsPressedWhereTheWindowSkipsItems) {
    bool isOpen = true;
    gui.frames(
        [&] {
            ImGui::SetNextWindowCollapsed(true);
            const WindowGuard window{ImGui::Begin("Window")};
            isOpen = bool(window);
            const int before = ImGui::GetCurrentWindow()->IDStack.Size;
            EXPECT_FALSE(Ui::buttonGrouped("Label", "id", {}));
            EXPECT_FALSE(Ui::iconButton("X", "id"));
            Ui::alignedText("text");
            Ui::label("label");
            EXPECT_EQ(ImGui::GetCurrentWindow()->IDStack.Size, before);
        },
        3);
    EXPECT_FALSE(isOpen);
}

// Search bar

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

// Check boxes

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
