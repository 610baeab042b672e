#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "FileUi.h"
#include "support/CapturedOutput.h"
#include "support/ShownText.h"

namespace QuorvaneEngine {
namespace {

using Containers::StringView;
using Test::CapturedOutput;
using Test::ShownText;
using Test::toText;

using UiFileSelect = Test::FileUi;

// The dialog

TEST_F(UiFileSelect, AChosenPathIsSetAsOneChange) {
    dialog.choose("/elsewhere/new.png");
    EXPECT_TRUE(choose());
    EXPECT_EQ(file(), R"("/elsewhere/new.png")");
    EXPECT_EQ(recorded(), 1);
    EXPECT_EQ(pushes, 1);
    expectUndoAndRedo();
}

TEST_F(UiFileSelect, TheDialogHasTitleAndFiltersAndOneChoice) {
    dialog.choose("/x");
    EXPECT_TRUE(choose());
    const std::vector<std::string> arguments = dialog.takeArguments();
    const auto has = [&](const std::string& text) {
        return std::any_of(arguments.begin(), arguments.end(),
            [&](const std::string& argument) { return argument.find(text) != std::string::npos; });
    };
    EXPECT_TRUE(has("--file-selection"));
    EXPECT_TRUE(has("Choose a picture"));
    EXPECT_FALSE(has("Choose a picture!"));
    EXPECT_TRUE(has("Pictures"));
    EXPECT_TRUE(has("*.png *.jpg"));
    EXPECT_FALSE(has("--multiple"));
}

TEST_F(UiFileSelect, ThereNeedBeNoFilters) {
    filters.clear();
    dialog.choose("/x");
    EXPECT_TRUE(choose());
    EXPECT_EQ(file(), R"("/x")");
}

TEST_F(UiFileSelect, ACancelledDialogChangesNothing) {
    dialog.cancel();
    EXPECT_TRUE(choose());
    EXPECT_FALSE(dialog.takeArguments().empty());
    EXPECT_EQ(toText(project), loaded);
    EXPECT_EQ(recorded(), 0);
}

TEST_F(UiFileSelect, TheDialogIsShownByTheButtonAlone) {
    EXPECT_TRUE(use([](ImGuiTestContext& user) {
        user.ItemClick(Field);
        user.ItemClick("//Window/elsewhere");
    }));
    EXPECT_TRUE(dialog.takeArguments().empty());
}

TEST_F(UiFileSelect, APathInTheProjectsFolderIsStoredRelativeToIt) {
    const struct {
        const char* folder;
        const char* chosen;
        const char* stored;
    } cases[]{
        {"/projects/game", "/projects/game/pictures/new.png", R"("pictures/new.png")"},
        {"/projects/game", "/projects/game/new.png", R"("new.png")"},
        {"/projects/game/", "/projects/game/new.png", R"("new.png")"},
        {"/", "/new.png", R"("new.png")"},
        {"/projects/game", "/projects/game2/new.png", R"("/projects/game2/new.png")"},
        {"/projects/game", "/projects/new.png", R"("/projects/new.png")"},
        {"/projects/game", "/projects/game", R"("/projects/game")"},
        {"", "/projects/game/new.png", R"("/projects/game/new.png")"},
    };
    for(const auto& each: cases) {
        data.projectFolder = each.folder;
        dialog.choose(each.chosen);
        EXPECT_TRUE(choose());
        EXPECT_EQ(file(), each.stored) << each.folder << " " << each.chosen;
    }
}

TEST_F(UiFileSelect, WithoutDataOfAHostPathsAreStoredAsTheyAre) {
    ui.editorData = nullptr;
    dialog.choose("/projects/game/new.png");
    EXPECT_TRUE(choose());
    EXPECT_EQ(file(), R"("/projects/game/new.png")");
}

TEST_F(UiFileSelect, TheDialogStartsAtThePresentPathOrInTheProjectsFolder) {
    const std::string folder = dialog.folder().string();
    std::filesystem::create_directories(dialog.folder() / "pictures");
    data.projectFolder = StringView{folder.data(), folder.size()};
    dialog.choose("/x");
    const auto startsAt = [&] {
        EXPECT_TRUE(choose());
        for(const std::string& argument: dialog.takeArguments())
            if(argument.find("--filename=") == 0) return argument.substr(11);
        return std::string{"nowhere"};
    };
    EXPECT_EQ(startsAt(), folder + "/pictures/") << "the nearest one that exists";
    EXPECT_EQ(file(), R"("/x")");
    EXPECT_EQ(startsAt(), "/");
    loadProject(R"({"a":{"file":""},"first":false})");
    EXPECT_EQ(startsAt(), folder + "/");
    loadProject(R"({"a":{"file":5},"first":false})");
    EXPECT_EQ(startsAt(), folder + "/");
}

TEST_F(UiFileSelect, WithoutAProgramForDialogsThereIsAWarning) {
    setenv("PATH", "/nowhere", 1);
    CapturedOutput output;
    EXPECT_TRUE(choose());
    EXPECT_EQ(output.warning(), "openFileDialog(): no program shows dialogs here, install zenity or kdialog\n");
    EXPECT_EQ(recorded(), 0);
}

// Typing

TEST_F(UiFileSelect, ATypedPathIsSetWhenTheFieldIsLeft) {
    EXPECT_TRUE(use([this](ImGuiTestContext& user) {
        type(user, "pictures/typed.png");
        IM_CHECK_EQ(recorded(), 0);
        IM_CHECK_EQ(pushes, 0);
        user.KeyPress(ImGuiKey_Tab);
        user.Yield(2);
        IM_CHECK_EQ(recorded(), 1);
        IM_CHECK_EQ(pushes, 1);
    }));
    EXPECT_EQ(file(), R"("pictures/typed.png")");
    expectUndoAndRedo();
}

TEST_F(UiFileSelect, ATypedPathInTheProjectsFolderIsStoredRelativeToIt) {
    EXPECT_TRUE(use([](ImGuiTestContext& user) {
        type(user, "/projects/game/pictures/typed.png");
        user.KeyPress(ImGuiKey_Enter);
        user.Yield(2);
    }));
    EXPECT_EQ(file(), R"("pictures/typed.png")");
}

TEST_F(UiFileSelect, EscapeKeepsThePath) {
    EXPECT_TRUE(use([](ImGuiTestContext& user) {
        type(user, "typed.png");
        user.KeyPress(ImGuiKey_Escape);
        user.Yield(2);
    }));
    EXPECT_EQ(toText(project), loaded);
    EXPECT_EQ(recorded(), 0);
}

TEST_F(UiFileSelect, APathCanBeEmptied) {
    EXPECT_TRUE(use([](ImGuiTestContext& user) {
        user.ItemClick(Field);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_A);
        user.KeyPress(ImGuiKey_Delete);
        user.KeyPress(ImGuiKey_Tab);
        user.Yield(2);
    }));
    EXPECT_EQ(file(), R"("")");
}

TEST_F(UiFileSelect, APathOfAnyLengthIsTyped) {
    const std::string path = std::string(300, 'a') + "/" + std::string(300, 'b');
    EXPECT_TRUE(use([&](ImGuiTestContext& user) {
        type(user, path.c_str());
        user.KeyPress(ImGuiKey_Tab);
        user.Yield(2);
    }));
    EXPECT_EQ(file(), "\"" + path + "\"");
}

TEST_F(UiFileSelect, WhatWasTypedIsSetBeforeTheDialogStartsAndBothAreOneStep) {
    dialog.choose("/elsewhere/new.png");
    EXPECT_TRUE(use([](ImGuiTestContext& user) {
        type(user, "/");
        user.ItemClick(Button);
        user.Yield(2);
    }));
    const std::vector<std::string> arguments = dialog.takeArguments();
    EXPECT_NE(std::find(arguments.begin(), arguments.end(), "--filename=/"), arguments.end());
    EXPECT_EQ(file(), R"("/elsewhere/new.png")");
    EXPECT_EQ(recorded(), 1);
    expectUndoAndRedo();
}

// Values

TEST_F(UiFileSelect, ValuesOfOtherTypesCountAsEmptyUntilAPathIsSet) {
    for(const char* const stored: {"null", "5", "true", "[]", "{}"}) {
        loadProject(std::string{R"({"a":{"file":)"} + stored + R"(},"first":false})");
        EXPECT_TRUE(use([](ImGuiTestContext& user) {
            user.ItemClick(Field);
            user.KeyPress(ImGuiKey_Tab);
            user.Yield(2);
        }));
        EXPECT_EQ(file(), stored);
        dialog.choose("/x");
        EXPECT_TRUE(choose());
        EXPECT_EQ(file(), R"("/x")");
        expectUndoAndRedo();
    }
}

TEST_F(UiFileSelect, AMissingValueIsCreated) {
    loadProject(R"({"a":{"other":1},"first":false})");
    dialog.choose("/x");
    EXPECT_TRUE(choose());
    EXPECT_EQ(file(), R"("/x")");
    expectUndoAndRedo();
}

TEST_F(UiFileSelect, ThePathIsShownAsItStands) {
    loadProject(R"({"a":{"file":"a##b%s.png"},"first":false})");
    std::string shown;
    frames([&] {
        const ShownText text;
        draw();
        shown = text.text();
    });
    EXPECT_NE(shown.find("a##b%s.png"), std::string::npos);
    EXPECT_NE(shown.find("a/file"), std::string::npos) << "the label";
}

// Place

TEST_F(UiFileSelect, FieldAndButtonFillTheLine) {
    for(const float scale: {1.0f, 2.0f}) {
        for(const bool isLabelled: {true, false}) {
            ImGui::GetStyle().FontScaleMain = scale;
            ui.flags = isLabelled ? Ui::Flags{} : Ui::Flags{Ui::Flag::NoLabel};
            EXPECT_TRUE(use([&](ImGuiTestContext& user) {
                user.Yield(2);
                const ImRect field = user.ItemInfo(Field).RectFull;
                const ImRect button = user.ItemInfo(Button).RectFull;
                if(!isLabelled) IM_CHECK_LE(ImAbs(field.Min.x - start.x), 1.0f);
                else
                    IM_CHECK_LE(
                        ImAbs(field.Min.x - (start.x - ImGui::GetStyle().WindowPadding.x + 0.33f * width)), 1.0f);
                IM_CHECK_LE(ImAbs(button.Min.x - field.Max.x - ImGui::GetStyle().ItemSpacing.x), 1.0f);
                IM_CHECK_LE(ImAbs(button.Max.x + scale - start.x - width), 1.5f);
            }));
        }
    }
}

TEST_F(UiFileSelect, CtrlShowsThePathOfTheValue) {
    std::string shown;
    EXPECT_TRUE(run(
        [&] {
            const ShownText text;
            draw();
            shown = text.text();
        },
        [&](ImGuiTestContext& user) {
            user.KeyDown(ImGuiMod_Ctrl);
            for(const char* const part: {Field, Button}) {
                user.MouseMove(part);
                user.Yield(2);
                IM_CHECK(shown.find("/a/file") != std::string::npos);
            }
            user.KeyUp(ImGuiMod_Ctrl);
        }));
}

TEST_F(UiFileSelect, ThePathIsCopiedAndPastedByTheFieldsMenu) {
    EXPECT_TRUE(use([](ImGuiTestContext& user) {
        user.ItemClick(Field, ImGuiMouseButton_Right);
        user.ItemClick("//$FOCUSED/\xef\x83\x85 Copy");
        IM_CHECK_STR_EQ(ImGui::GetClipboardText(), R"("pictures/old.png")");
        ImGui::SetClipboardText(R"("pasted.png")");
        user.ItemClick(Field, ImGuiMouseButton_Right);
        user.ItemClick("//$FOCUSED/\xef\x83\xaa Paste");
    }));
    EXPECT_EQ(file(), R"("pasted.png")");
}

TEST_F(UiFileSelect, AnIdleFrameAllocatesNothing) {
    EXPECT_EQ(idleAllocations([this] { draw(); }), 0u);
}

}
}
