#include <string>

#include <Corrade/Containers/StringIterable.h>
#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "BoundUi.h"
#include "Ui/Scope.h"

namespace QuorvaneEngine {
namespace {

using namespace Containers::Literals;
using Test::GuiTest;
using Test::toText;

constexpr char Wrong[] = R"({"null":null,"number":2.5,"text":"true","object":{},"list":[true,1],"first":false})";
constexpr const char* WrongNames[]{"null", "number", "text", "object", "list", "missing"};

// Booleans

class UiBoolInputs: public Test::BoundUi {
protected:
    UiBoolInputs() { loadProject(R"({"a":{"yes":true,"no":false},"first":false})"); }
};

TEST_F(UiBoolInputs, ABoxShowsItsNameAndTogglesTheValue) {
    int toggles = 0;
    EXPECT_TRUE(run(
        [&] {
            toggles += ui.checkbox("a/yes");
            toggles += ui.checkbox("a/no");
        },
        [this](ImGuiTestContext& user) {
            IM_CHECK(user.ItemIsChecked("//Window/a/yes/a\\/yes"));
            IM_CHECK(!user.ItemIsChecked("//Window/a/no/a\\/no"));
            user.ItemClick("//Window/a/yes/a\\/yes");
            IM_CHECK_STR_EQ(value("/a/yes").c_str(), "false");
            user.ItemClick("//Window/a/no/a\\/no");
        }));
    EXPECT_EQ(value("/a/no"), "true");
    EXPECT_EQ(toggles, 2);
    EXPECT_EQ(recorded(), 2);
    expectUndoAndRedo();
}

TEST_F(UiBoolInputs, TogglesDoNotMerge) {
    EXPECT_TRUE(run([this] { ui.checkbox("a/yes"); },
        [](ImGuiTestContext& user) {
            for(int i = 0; i != 3; ++i) user.ItemClick("//Window/a/yes/a\\/yes");
        }));
    EXPECT_EQ(recorded(), 3);
    EXPECT_EQ(value("/a/yes"), "false");
    expectUndoAndRedo();
}

TEST_F(UiBoolInputs, TheNameIsTheOnlyLabel) {
    frames([this] {
        const Scope scope{&ui, "a"};
        const float start = ImGui::GetCursorScreenPos().x;
        ui.checkbox("yes");
        EXPECT_EQ(ImGui::GetItemRectMin().x, start);
        EXPECT_FLOAT_EQ(ImGui::GetItemRectSize().x,
            Ui::checkboxHeight() + ImGui::GetStyle().ItemInnerSpacing.x + ImGui::CalcTextSize("yes").x);
        ui.checkboxUnlabled("no");
        EXPECT_EQ(ImGui::GetItemRectMin().x, start);
        EXPECT_FLOAT_EQ(ImGui::GetItemRectSize().x, Ui::checkboxHeight());
    });
}

TEST_F(UiBoolInputs, ABoxWithoutALabelTogglesTheValue) {
    int toggles = 0;
    EXPECT_TRUE(run([&] { toggles += ui.checkboxUnlabled("a/no"); },
        [](ImGuiTestContext& user) { user.ItemClick("//Window/a/no/##a\\/no"); }));
    EXPECT_EQ(value("/a/no"), "true");
    EXPECT_EQ(toggles, 1);
    EXPECT_EQ(recorded(), 1);
    expectUndoAndRedo();
}

TEST_F(UiBoolInputs, WhatIsNotTrueIsUncheckedAndBecomesTrue) {
    for(const char* name: WrongNames) {
        loadProject(Wrong);
        const std::string item = std::string{"//Window/"} + name + "/" + name;
        EXPECT_TRUE(run([&] { ui.checkbox(name); },
            [&](ImGuiTestContext& user) {
                IM_CHECK(!user.ItemIsChecked(item.c_str()));
                user.ItemClick(item.c_str());
            }));
        EXPECT_EQ(value((std::string{"/"} + name).c_str()), "true");
        expectUndoAndRedo();
    }
}

TEST_F(UiBoolInputs, ThereIsNoMenu) {
    EXPECT_TRUE(run(
        [this] {
            ui.checkbox("a/yes");
            ui.checkboxUnlabled("a/no");
        },
        [](ImGuiTestContext& user) {
            for(const char* item: {"//Window/a/yes/a\\/yes", "//Window/a/no/##a\\/no"}) {
                user.ItemClick(item, ImGuiMouseButton_Right);
                IM_CHECK_EQ(ImGui::GetCurrentContext()->OpenPopupStack.Size, 0);
            }
        }));
}

TEST_F(UiBoolInputs, AnIdleFrameAllocatesNothing) {
    const auto widgets = [this] { ui.checkbox("a/yes"); };
    EXPECT_EQ(idleAllocations(widgets), 0u);
}

// Enumerations

constexpr Containers::StringView Lights[]{
    "point"_s, "spot"_s, "sun##hidden"_s, ""_s, "a"_s, "b"_s, "c"_s, "d"_s, "e"_s, "f"_s};

class UiEnumInput: public Test::BoundUi {
protected:
    UiEnumInput() { loadProject(R"({"light":"spot","other":"laser","first":false})"); }

    bool use(const GuiTest::Script& script) {
        return run([this] { changed += ui.inputEnum("light", Containers::arrayView(Lights)); }, script);
    }

    int changed = 0;
};

TEST_F(UiEnumInput, AnEntryIsChosenFromTheDropDown) {
    EXPECT_TRUE(use([this](ImGuiTestContext& user) {
        user.ItemClick("//Window/light/##val");
        user.ItemClick("//$FOCUSED/$$0/point");
        IM_CHECK_STR_EQ(value("/light").c_str(), "\"point\"");
        user.ItemClick("//Window/light/##val");
        user.ItemClick("//$FOCUSED/$$2/sun##hidden");
    }));
    EXPECT_EQ(value("/light"), "\"sun##hidden\"");
    EXPECT_EQ(changed, 2);
    EXPECT_EQ(recorded(), 2);
    expectUndoAndRedo();
}

TEST_F(UiEnumInput, NoEntryIsShownAsSelected) {
    EXPECT_TRUE(use([](ImGuiTestContext& user) {
        user.ItemClick("//Window/light/##val");
        user.MouseMoveToVoid();
        user.Yield(2);
        const ImVector<ImGuiPopupData>& open = ImGui::GetCurrentContext()->OpenPopupStack;
        IM_CHECK_EQ(open.Size, 1);
        const ImU32 selected = ImGui::GetColorU32(ImGuiCol_Header);
        IM_CHECK_GT(open[0].Window->DrawList->VtxBuffer.Size, 0);
        for(const ImDrawVert& vertex: open[0].Window->DrawList->VtxBuffer) IM_CHECK(vertex.col != selected);
        user.KeyPress(ImGuiKey_Escape);
    }));
}

TEST_F(UiEnumInput, AnEmptyEntryCanBeChosen) {
    EXPECT_TRUE(use([](ImGuiTestContext& user) {
        user.ItemClick("//Window/light/##val");
        // It has no label, and the ID of its number.
        const ImGuiWindow& list = *ImGui::GetCurrentContext()->NavWindow;
        user.MouseMoveToPos({list.Pos.x + 30.0f,
            list.Pos.y + ImGui::GetStyle().WindowPadding.y + 3.5f * ImGui::GetTextLineHeightWithSpacing()});
        user.MouseClick();
    }));
    EXPECT_EQ(value("/light"), "\"\"");
    expectUndoAndRedo();
}

TEST_F(UiEnumInput, TheDropDownShowsSevenEntries) {
    EXPECT_TRUE(use([](ImGuiTestContext& user) {
        user.ItemClick("//Window/light/##val");
        user.Yield(2);
        const ImGuiStyle& style = ImGui::GetStyle();
        const float height =
            2.0f * style.WindowPadding.y + 7.0f * (ImGui::GetFontSize() + style.ItemSpacing.y) - style.ItemSpacing.y;
        const ImGuiWindow& list = *ImGui::GetCurrentContext()->NavWindow;
        IM_CHECK_EQ(list.Size.y, height);
        IM_CHECK_GE(list.Size.x, user.ItemInfo("//Window/light/##val").RectFull.GetWidth() - 1.0f);
    }));
}

TEST_F(UiEnumInput, ItFillsTheLineBehindItsLabel) {
    frames([this] {
        const float start = ImGui::GetCursorScreenPos().x;
        const float width = ImGui::GetContentRegionAvail().x;
        ui.inputEnum("light", Containers::arrayView(Lights));
        EXPECT_FLOAT_EQ(ImGui::GetItemRectMin().x, ImGui::GetWindowPos().x + 0.33f * width);
        EXPECT_NEAR(ImGui::GetItemRectMax().x, start + width, 1.0f);
        ui.pushFlags(Ui::Flag::NoLabel);
        ui.inputEnum("other", Containers::arrayView(Lights));
        ui.popFlags();
        EXPECT_FLOAT_EQ(ImGui::GetItemRectMin().x, start);
    });
}

/** What is drawn of a text, for the preview is no item of its own. */
int verticesOf(Ui& ui, const char* name) {
    const int before = ImGui::GetWindowDrawList()->VtxBuffer.Size;
    ui.inputEnum(name, Containers::arrayView(Lights));
    return ImGui::GetWindowDrawList()->VtxBuffer.Size - before;
}

TEST_F(UiEnumInput, ItShowsTheStoredTextWhateverItIs) {
    loadProject(R"({"none":"","known":"point","unknown":"lasers","number":5,"first":false})");
    ui.pushFlags(Ui::Flag::NoLabel);
    frames([this] {
        constexpr int glyph = 4;
        const int none = verticesOf(ui, "none");
        EXPECT_EQ(verticesOf(ui, "known"), none + 5 * glyph);
        EXPECT_EQ(verticesOf(ui, "unknown"), none + 6 * glyph);
        EXPECT_EQ(verticesOf(ui, "number"), none);
        EXPECT_EQ(verticesOf(ui, "missing"), none);
    });
    EXPECT_EQ(toText(project), loaded);
}

TEST_F(UiEnumInput, ChoosingRepairsAValueOfAnotherType) {
    for(const char* name: WrongNames) {
        loadProject(Wrong);
        EXPECT_TRUE(run([&] { ui.inputEnum(name, Containers::arrayView(Lights)); },
            [&](ImGuiTestContext& user) {
                user.ItemClick((std::string{"//Window/"} + name + "/##val").c_str());
                user.ItemClick("//$FOCUSED/$$1/spot");
            }));
        EXPECT_EQ(value((std::string{"/"} + name).c_str()), "\"spot\"");
        expectUndoAndRedo();
    }
}

TEST_F(UiEnumInput, TheMenuCopiesAndPastes) {
    EXPECT_TRUE(use([](ImGuiTestContext& user) {
        user.ItemClick("//Window/light/##val", ImGuiMouseButton_Right);
        user.ItemClick("//$FOCUSED/\xef\x83\x85 Copy");
        user.Yield();
        IM_CHECK_STR_EQ(ImGui::GetClipboardText(), "\"spot\"");
        ImGui::SetClipboardText("\"point\"");
        user.ItemClick("//Window/light/##val", ImGuiMouseButton_Right);
        user.ItemClick("//$FOCUSED/\xef\x83\xaa Paste");
    }));
    EXPECT_EQ(value("/light"), "\"point\"");
    EXPECT_EQ(changed, 0);
    EXPECT_EQ(recorded(), 1);
}

TEST_F(UiEnumInput, AnIdleFrameAllocatesNothing) {
    const auto widgets = [this] {
        ui.inputEnum("light", Containers::arrayView(Lights));
        ui.inputEnum("other", Containers::arrayView(Lights));
    };
    EXPECT_EQ(idleAllocations(widgets), 0u);
}

}
}
