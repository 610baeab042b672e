#include "app/HeldCommand.h"

#include <filesystem>
#include <utility>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>

#include "EditorFrameTest.h"

namespace QuorvaneEngine::Test {
namespace {

/** The counting view with a text, a name and a number of the project below its own widgets. */
class HeldCommandTest: public EditorFrameTest {
protected:
    HeldCommandTest() {
        write("first", Before);
        EXPECT_TRUE(open("first"));
        draw(3);
    }

    static void press(ImGuiTestContext& user, ImGuiKeyChord keys) {
        user.KeyPress(keys);
        user.Yield(4);
    }

    static bool isShown(const char* name) {
        const ImGuiWindow* const window = ImGui::FindWindowByName(name);
        return window && window->Active;
    }

    static void type(ImGuiTestContext& user, const char* item, const char* text) {
        user.ItemInput(item);
        user.KeyCharsReplace(text);
        user.Yield(2);
    }

    static constexpr const char* Before = "{\n  \"typed\": \"old\",\n  \"number\": 1\n}\n";
};

constexpr ImGuiKeyChord Save = ImGuiMod_Ctrl | ImGuiKey_S;

TEST_F(HeldCommandTest, WhatIsBeingTypedIsSaved) {
    EXPECT_TRUE(play("save", [this](ImGuiTestContext& user) {
        type(user, "//Counter/typed/##val", "new");
        IM_CHECK(!session.hasUnsavedChanges());
        press(user, Save);
        IM_CHECK(!session.hasUnsavedChanges());
        IM_CHECK(!ImGui::GetIO().WantTextInput);
    }));
    EXPECT_EQ(read("first"), "{\n  \"typed\": \"new\",\n  \"number\": 1\n}\n");
    session.undo();
    EXPECT_FALSE(session.changes().canUndo());
}

TEST_F(HeldCommandTest, ANumberThatIsBeingTypedIsSaved) {
    EXPECT_TRUE(play("number", [](ImGuiTestContext& user) {
        user.ItemDoubleClick("//Counter/number/##val");
        user.KeyCharsReplace("25");
        user.Yield(2);
        press(user, Save);
    }));
    EXPECT_EQ(read("first"), "{\n  \"typed\": \"old\",\n  \"number\": 25\n}\n");
}

TEST_F(HeldCommandTest, ANameThatIsBeingTypedIsSaved) {
    EXPECT_TRUE(play("rename", [this](ImGuiTestContext& user) {
        const ImGuiWindow* const window = ImGui::FindWindowByName("Counter");
        // The name is the last line of the window, and no item.
        user.MouseMoveToPos({window->DC.CursorStartPos.x + 4.0f, window->DC.CursorMaxPos.y - 6.0f});
        user.MouseDoubleClick();
        user.Yield(2);
        IM_CHECK(ImGui::GetIO().WantTextInput);
        user.KeyCharsReplace("name");
        user.Yield(2);
        press(user, Save);
        IM_CHECK(!session.hasUnsavedChanges());
    }));
    EXPECT_EQ(read("first"), "{\n  \"typed\": \"name\",\n  \"number\": 1\n}\n");
}

TEST_F(HeldCommandTest, WhatIsBeingTypedIsAskedForBeforeTheProjectIsLeft) {
    EXPECT_TRUE(play("leave", [this](ImGuiTestContext& user) {
        type(user, "//Counter/typed/##val", "new");
        press(user, ImGuiMod_Ctrl | ImGuiKey_Q);
        IM_CHECK(isShown("Unsaved changes"));
        user.ItemClick("//Unsaved changes/Cancel");
        user.Yield(2);
        press(user, Save);
        type(user, "//Counter/typed/##val", "newer");
        chosenFolder = path("second");
        press(user, ImGuiMod_Ctrl | ImGuiKey_O);
        IM_CHECK_EQ(dialogs, 1);
        IM_CHECK(isShown("Unsaved changes"));
        user.ItemClick("//Unsaved changes/Cancel");
        user.Yield(2);
        press(user, Save);
        type(user, "//Counter/typed/##val", "newest");
        frame.requestQuit();
        user.Yield(4);
        IM_CHECK(isShown("Unsaved changes"));
        user.ItemClick("//Unsaved changes/Save");
        user.Yield(3);
    }));
    EXPECT_TRUE(frame.isFinished());
    EXPECT_EQ(read("first"), "{\n  \"typed\": \"newest\",\n  \"number\": 1\n}\n");
}

TEST_F(HeldCommandTest, WhatIsBeingTypedIsAskedForBeforeADroppedProjectIsOpened) {
    EXPECT_TRUE(play("drop", [this](ImGuiTestContext& user) {
        type(user, "//Counter/typed/##val", "new");
        Containers::Array<Containers::String> dropped{Corrade::ValueInit, 1};
        dropped[0] = path("second").c_str();
        frame.drop(std::move(dropped));
        user.Yield(4);
        IM_CHECK(session.folder() == path("first").c_str());
        IM_CHECK(isShown("Unsaved changes"));
        user.ItemClick("//Unsaved changes/Save");
        user.Yield(3);
    }));
    EXPECT_EQ(session.folder(), path("second").c_str());
    EXPECT_EQ(read("first"), "{\n  \"typed\": \"new\",\n  \"number\": 1\n}\n");
}

TEST_F(HeldCommandTest, WhatIsBeingTypedIsKeptWhenTheSystemEndsTheEditor) {
    EXPECT_TRUE(play("end", [this](ImGuiTestContext& user) {
        user.ItemDoubleClick("//Counter/number/##val");
        user.KeyCharsReplace("25");
        user.Yield(2);
        IM_CHECK(!session.hasUnsavedChanges());
        frame.requestEnd();
        user.Yield(2);
        IM_CHECK(frame.isFinished());
    }));
    EXPECT_TRUE(session.hasUnsavedChanges());
    EXPECT_TRUE(std::filesystem::exists(root / "first/.editor/autosave"));
    EXPECT_EQ(read("first"), Before);
}

TEST_F(HeldCommandTest, AFieldThatHoldsNothingOfTheProjectSavesNothing) {
    EXPECT_TRUE(play("field", [this](ImGuiTestContext& user) {
        user.ItemInput("//Counter/Field");
        user.KeyChars("abc");
        press(user, Save);
        IM_CHECK(!session.hasUnsavedChanges());
        press(user, ImGuiMod_Ctrl | ImGuiKey_Q);
    }));
    EXPECT_TRUE(frame.isFinished());
    EXPECT_EQ(read("first"), Before);
    EXPECT_EQ(messages(("Saved " + path("first")).c_str()), 0);
}

}
}
