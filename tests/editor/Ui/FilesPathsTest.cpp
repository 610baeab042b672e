#include <string>

#include <gtest/gtest.h>
#include <imgui.h>

#include "QuorvaneEditor/EditorData.h"
#include "editor/Ui/BoundUi.h"
#include "support/CapturedOutput.h"
#include "support/DialogProgram.h"

namespace QuorvaneEngine {
namespace {

using Test::CapturedOutput;
using Test::DialogProgram;
using Test::GuiTest;
using Test::toText;

constexpr const char* Field = "//Window/a/file/##value";
constexpr const char* Button = "//Window/a/file/...";

class UiFilePaths: public Test::BoundUi {
protected:
    UiFilePaths() {
        ui.editorData = &data;
        data.projectFolder = "/projects/game";
        loadProject(R"({"a":{"file":"pictures/old.png"},"first":false})");
    }

    bool use(const GuiTest::Script& script) {
        return run(
            [this] {
                pushes += ui.fileSelect("a/file", "Choose a picture", {});
                ImGui::InputText("elsewhere", other, sizeof(other));
            },
            script);
    }

    bool choose(const std::string& path) {
        dialog.choose(path);
        return use([](ImGuiTestContext& user) {
            user.ItemClick(Button);
            user.Yield(2);
        });
    }

    bool type(const char* path) {
        return use([path](ImGuiTestContext& user) {
            user.ItemClick(Field);
            user.KeyCharsReplace(path);
            user.KeyPress(ImGuiKey_Tab);
            user.Yield(3);
        });
    }

    std::string file() { return value("/a/file"); }

    DialogProgram dialog;
    EditorData data{project};
    int pushes = 0;
    char other[8] = "";
};

TEST_F(UiFilePaths, TheSamePathInAnotherFormIsNoChange) {
    EXPECT_TRUE(type("/projects/game/pictures/old.png"));
    EXPECT_EQ(recorded(), 0);
    EXPECT_TRUE(choose("/projects/game/pictures/old.png"));
    EXPECT_EQ(recorded(), 0);
    EXPECT_EQ(pushes, 0);
    EXPECT_EQ(toText(project), loaded);
}

TEST_F(UiFilePaths, TheSameFileOutsideOfTheProjectIsNoChange) {
    loadProject(R"({"a":{"file":"/elsewhere/old.png"},"first":false})");
    EXPECT_TRUE(choose("/elsewhere/old.png"));
    EXPECT_EQ(recorded(), 0);
    EXPECT_EQ(pushes, 0);
}

TEST_F(UiFilePaths, PathsThatAreTypedOneAfterTheOtherAreOneStep) {
    EXPECT_TRUE(type("one.png"));
    EXPECT_TRUE(type("two.png"));
    EXPECT_EQ(pushes, 2);
    EXPECT_EQ(recorded(), 1);
    EXPECT_EQ(file(), "\"two.png\"");
    expectUndoAndRedo();
}

TEST_F(UiFilePaths, ANameThatIsNotUtf8ChangesNothing) {
    for(const char* path: {"/elsewhere/caf\xe9.png", "/projects/game/\xff", "\xc3"}) {
        const CapturedOutput output;
        EXPECT_TRUE(choose(path));
        EXPECT_EQ(
            output.warning(), "Ui::fileSelect(): the name of the file that was chosen for /a/file is not UTF-8\n");
        EXPECT_EQ(output.error(), "");
    }
    EXPECT_EQ(toText(project), loaded);
    EXPECT_EQ(recorded(), 0);
    EXPECT_EQ(pushes, 0);
    EXPECT_TRUE(choose("/elsewhere/caf\xc3\xa9.png"));
    EXPECT_EQ(file(), "\"/elsewhere/caf\xc3\xa9.png\"");
}

TEST_F(UiFilePaths, ANameWithALineBreakChangesNothing) {
    const CapturedOutput output;
    EXPECT_TRUE(choose("/elsewhere/two\nlines.png"));
    EXPECT_EQ(
        output.warning(), "Ui::fileSelect(): the name of the file that was chosen for /a/file has a line break\n");
    EXPECT_EQ(toText(project), loaded);
    EXPECT_EQ(recorded(), 0);
    EXPECT_EQ(pushes, 0);
}

}
}
