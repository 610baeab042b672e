#include <gtest/gtest.h>
#include <imgui.h>

#include "FileUi.h"
#include "support/CapturedOutput.h"

namespace QuorvaneEngine {
namespace {

using Test::CapturedOutput;
using Test::toText;

class UiFilePaths: public Test::FileUi {
protected:
    bool choose(const char* path) {
        dialog.choose(path);
        return FileUi::choose();
    }

    bool type(const char* path) {
        return use([path](ImGuiTestContext& user) {
            FileUi::type(user, path);
            user.KeyPress(ImGuiKey_Tab);
            user.Yield(2);
        });
    }
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
