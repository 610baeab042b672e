#include <gtest/gtest.h>
#include <imgui.h>

#include "BasicUi.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "support/Json.h"

namespace QuorvaneEngine {
namespace {

using Test::load;
using Test::UiBasic;

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

}
}
