#include "EditorFrameTest.h"

/* What is undone and redone by the main menu and by keys, and which items are grey. */

namespace QuorvaneEngine::Test {
namespace {

TEST_F(EditorFrameTest, UndoAndRedoByMenu) {
    ASSERT_TRUE(open("first"));
    EXPECT_TRUE(play("undo and redo", [this](ImGuiTestContext& user) {
        user.ItemClick("//Counter/Count");
        user.ItemClick("//Counter/Count");
        IM_CHECK_EQ(counted(), 2);
        choose(user, "Edit/Undo");
        user.Yield();
        IM_CHECK_EQ(counted(), 1);
        choose(user, "Edit/Undo");
        user.Yield();
        IM_CHECK_EQ(counted(), 0);
        choose(user, "Edit/Redo");
        user.Yield();
        IM_CHECK_EQ(counted(), 1);
    }));
}

TEST_F(EditorFrameTest, UndoAndRedoByKeys) {
    ASSERT_TRUE(open("first"));
    EXPECT_TRUE(play("undo and redo", [this](ImGuiTestContext& user) {
        user.ItemClick("//Counter/Count");
        user.ItemClick("//Counter/Count");
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Z);
        user.Yield();
        IM_CHECK_EQ(counted(), 1);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Z);
        user.Yield();
        IM_CHECK_EQ(counted(), 0);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Z);
        user.Yield();
        IM_CHECK_EQ(counted(), 0);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiMod_Shift | ImGuiKey_Z);
        user.Yield();
        IM_CHECK_EQ(counted(), 1);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Y);
        user.Yield();
        IM_CHECK_EQ(counted(), 2);
    }));
}

TEST_F(EditorFrameTest, ATextInputThatIsEditedKeepsTheKeysForItself) {
    ASSERT_TRUE(open("first"));
    EXPECT_TRUE(play("text input", [this](ImGuiTestContext& user) {
        user.ItemClick("//Counter/Count");
        user.ItemInput("//Counter/Field");
        user.KeyChars("lamp");
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Z);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_S);
        user.Yield(2);
        IM_CHECK_EQ(counted(), 1);
        IM_CHECK(session.hasUnsavedChanges());
        user.KeyPress(ImGuiKey_Escape);
        user.Yield(2);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Z);
        user.Yield(2);
        IM_CHECK_EQ(counted(), 0);
    }));
}

TEST_F(EditorFrameTest, MenuItemsAreGreyWhereThereIsNothingToDo) {
    ASSERT_TRUE(open("first"));
    const auto isEnabled = [](ImGuiTestContext& user, const char* item) {
        return !(user.ItemInfo(item).ItemFlags & ImGuiItemFlags_Disabled);
    };
    EXPECT_TRUE(play("grey", [&](ImGuiTestContext& user) {
        choose(user, "Edit");
        IM_CHECK(!isEnabled(user, "//$FOCUSED/Undo"));
        IM_CHECK(!isEnabled(user, "//$FOCUSED/Redo"));
        user.PopupCloseAll();
        user.ItemClick("//Counter/Count");
        choose(user, "Edit");
        IM_CHECK(isEnabled(user, "//$FOCUSED/Undo"));
        IM_CHECK(!isEnabled(user, "//$FOCUSED/Redo"));
    }));
}

TEST_F(EditorFrameTest, WithoutAProjectThereIsNoImportToPreview) {
    const auto isEnabled = [](ImGuiTestContext& user) {
        choose(user, "File");
        const ImGuiTestItemInfo item = user.ItemInfo("//$FOCUSED/Preview import...");
        user.PopupCloseAll();
        return item.ID && !(item.ItemFlags & ImGuiItemFlags_Disabled);
    };
    EXPECT_TRUE(play("menu", [&](ImGuiTestContext& user) {
        IM_CHECK(!isEnabled(user));
        IM_CHECK(open("first"));
        IM_CHECK(isEnabled(user));
    }));
}

TEST_F(EditorFrameTest, NothingIsUndoneWhileAGroupIsOpen) {
    ASSERT_TRUE(open("first"));
    session.changes().openGroup();
    session.changes().pushChange("/counted", rapidjson::Value{1}, false);
    EXPECT_TRUE(play("undo", [](ImGuiTestContext& user) { user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Z); }));
    draw(2);
    EXPECT_EQ(counted(), 1);
    session.changes().commit();
}

}
}
