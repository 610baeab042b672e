#include "app/CommandPalette.h"

#include "EditorFrameTest.h"

namespace QuorvaneEngine::Test {
namespace {

class CommandPaletteTest: public EditorFrameTest {
protected:
    CommandPaletteTest() {
        EXPECT_TRUE(open("first"));
        draw(3);
    }

    static void press(ImGuiTestContext& user, ImGuiKeyChord keys) {
        user.KeyPress(keys);
        user.Yield(3);
    }

    static void openPalette(ImGuiTestContext& user) { press(user, ImGuiMod_Ctrl | ImGuiMod_Shift | ImGuiKey_P); }

    static void type(ImGuiTestContext& user, const char* text) {
        user.KeyChars(text);
        user.Yield(2);
    }

    static bool isShown() { return ImGui::IsPopupOpen(nullptr, ImGuiPopupFlags_AnyPopup); }
};

TEST_F(CommandPaletteTest, ACommandIsChosenByAFewLetters) {
    EXPECT_TRUE(play("undo", [this](ImGuiTestContext& user) {
        user.ItemClick("//Counter/Count");
        openPalette(user);
        IM_CHECK(isShown());
        type(user, "edun");
        press(user, ImGuiKey_Enter);
        IM_CHECK(!isShown());
        IM_CHECK_EQ(counted(), 0);
        openPalette(user);
        type(user, "REDO");
        press(user, ImGuiKey_Enter);
        IM_CHECK_EQ(counted(), 1);
    }));
}

TEST_F(CommandPaletteTest, CommandsAreShownWithTheirKeys) {
    EXPECT_TRUE(playSeen("keys", [this](ImGuiTestContext& user) {
        openPalette(user);
        for(const char* const text: {"File: Save", "Ctrl+S", "Edit: Redo", "Ctrl+Shift+Z", "View: Scale: Larger",
                "View: Counter", "Help: About"})
            IM_CHECK(isSeen(text));
        type(user, "abt");
        IM_CHECK(isSeen("Help: About"));
        IM_CHECK(!isSeen("File: Save"));
        type(user, "xyz");
        IM_CHECK(isSeen("No command has these letters in its name"));
        press(user, ImGuiKey_Enter);
        IM_CHECK(isShown());
        press(user, ImGuiKey_Escape);
        IM_CHECK(!isShown());
    }));
}

TEST_F(CommandPaletteTest, ACommandThatMakesNoSenseNowIsNotChosen) {
    EXPECT_TRUE(play("grey", [](ImGuiTestContext& user) {
        openPalette(user);
        type(user, "edit undo");
        press(user, ImGuiKey_Enter);
        IM_CHECK(isShown());
        press(user, ImGuiKey_Escape);
        IM_CHECK(!isShown());
    }));
}

TEST_F(CommandPaletteTest, TheArrowKeysAndTheMouseChooseAmongWhatFits) {
    EXPECT_TRUE(play("choose", [this](ImGuiTestContext& user) {
        openPalette(user);
        type(user, "view counter");
        press(user, ImGuiKey_Enter);
        IM_CHECK(!isOpen("Counter"));
        openPalette(user);
        type(user, "counter");
        user.ItemClick("**/View: Counter");
        user.Yield(2);
        IM_CHECK(isOpen("Counter"));
        IM_CHECK(!isShown());
        openPalette(user);
        press(user, ImGuiKey_UpArrow);
        press(user, ImGuiKey_DownArrow);
        press(user, ImGuiKey_DownArrow);
        press(user, ImGuiKey_UpArrow);
        press(user, ImGuiKey_Enter);
        // The first of all commands asks for a folder.
        IM_CHECK_EQ(dialogs, 1);
    }));
}

TEST_F(CommandPaletteTest, WhoMovesOnWhileTermsAreStillSearchedHasNotChosen) {
    std::string terms = R"("last":{})";
    for(int i = 0; i != 60000; ++i) terms += ",\"" + std::to_string(i) + R"(":{"sourceText":"/text"})";
    write("second",
        R"({"languages":{"en":{"isDefault":true}},"text":")" + std::string(1000, 'x') +
            R"(","localization":{"terms":{)" + terms + "}}}");
    ASSERT_TRUE(open("second"));
    draw(3);
    EXPECT_TRUE(play("move on", [](ImGuiTestContext& user) {
        openPalette(user);
        type(user, "file");
        user.KeyPress(ImGuiKey_Enter);
        IM_CHECK(isShown());
        user.KeyPress(ImGuiKey_DownArrow);
        user.Yield(200);
        IM_CHECK(isShown());
        IM_CHECK_EQ(dialogs, 0);
        press(user, ImGuiKey_UpArrow);
        press(user, ImGuiKey_Enter);
        IM_CHECK_EQ(dialogs, 1);
    }));
}

TEST_F(CommandPaletteTest, ATextThatIsBeingEditedLeavesItsKeysToIt) {
    EXPECT_TRUE(play("field", [](ImGuiTestContext& user) {
        user.ItemInput("//Counter/Field");
        openPalette(user);
        IM_CHECK(isShown());
    }));
}

}
}
