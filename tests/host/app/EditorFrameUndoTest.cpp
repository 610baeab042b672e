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
        choose(user, "Edit/###Undo");
        user.Yield();
        IM_CHECK_EQ(counted(), 1);
        choose(user, "Edit/###Undo");
        user.Yield();
        IM_CHECK_EQ(counted(), 0);
        choose(user, "Edit/###Redo");
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
        user.KeyPress(ImGuiMod_Ctrl | ImGuiMod_Shift | ImGuiKey_Z);
        user.Yield(2);
        IM_CHECK_EQ(counted(), 1);
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
        IM_CHECK(!isEnabled(user, "//$FOCUSED/###Undo"));
        IM_CHECK(!isEnabled(user, "//$FOCUSED/###Redo"));
        user.PopupCloseAll();
        user.ItemClick("//Counter/Count");
        choose(user, "Edit");
        IM_CHECK(isEnabled(user, "//$FOCUSED/###Undo"));
        IM_CHECK(!isEnabled(user, "//$FOCUSED/###Redo"));
    }));
}

TEST_F(EditorFrameTest, TheMenuNamesWhatIsUndoneAndRedone) {
    ASSERT_TRUE(open("first"));
    session.changes().pushChange("/objects/door/text", Containers::StringView{"Open"}, false);
    session.changes().pushChange("/objects/door/text", Containers::StringView{"Shut"}, false);
    EXPECT_TRUE(playSeen("names", [this](ImGuiTestContext& user) {
        choose(user, "Edit");
        user.Yield();
        IM_CHECK(isSeen("Undo change of text of door"));
        IM_CHECK(!isSeen("Redo c"));
        user.PopupCloseAll();
        choose(user, "Edit/###Undo");
        user.Yield(2);
        choose(user, "Edit");
        user.Yield();
        IM_CHECK(isSeen("Undo creation of text of door"));
        IM_CHECK(isSeen("Redo change of text of door"));
        user.PopupCloseAll();
    }));
}

TEST_F(EditorFrameTest, AKeyWithNumberSignsIsNamedAsAWhole) {
    ASSERT_TRUE(open("first"));
    session.changes().pushChange("/objects/a###b/text", Containers::StringView{"Open"}, false);
    EXPECT_TRUE(playSeen("names", [this](ImGuiTestContext& user) {
        choose(user, "Edit");
        user.Yield();
        IM_CHECK(isSeen("Undo creation of text of a# # #b"));
        user.PopupCloseAll();
    }));
}

TEST_F(EditorFrameTest, AFieldThatCanOnlyBeReadLeavesTheKeysToTheMenu) {
    ASSERT_TRUE(open("first"));
    session.changes().pushChange("/counted", rapidjson::Value{1}, false);
    char text[]{"read"};
    const auto draw = [&] {
        frame.draw();
        ImGui::Begin("Reader");
        ImGui::InputText("Text", text, sizeof(text), ImGuiInputTextFlags_ReadOnly);
        ImGui::End();
    };
    EXPECT_TRUE(gui.run("read", draw, [this](ImGuiTestContext& user) {
        user.ItemClick("//Reader/Text");
        IM_CHECK(ImGui::IsAnyItemActive());
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Z);
        user.Yield(2);
        IM_CHECK_EQ(counted(), 0);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiMod_Shift | ImGuiKey_Z);
        user.Yield(2);
        IM_CHECK_EQ(counted(), 1);
    }));
}

TEST_F(EditorFrameTest, TheSystemsCommandKeyUndoesWhereItIsTheCustom) {
    ASSERT_TRUE(open("first"));
    session.changes().pushChange("/counted", rapidjson::Value{1}, false);
    draw(3);
    ImGuiIO& io = ImGui::GetIO();
    io.ConfigMacOSXBehaviors = true;
    const auto press = [&](bool isDown) {
        for(const ImGuiKey key: {ImGuiKey_LeftSuper, ImGuiKey(ImGuiMod_Super), ImGuiKey_Z}) io.AddKeyEvent(key, isDown);
        draw(4);
    };
    press(true);
    press(false);
    EXPECT_EQ(counted(), 0);
    EXPECT_TRUE(playSeen("keys", [this](ImGuiTestContext& user) {
        choose(user, "Edit");
        user.Yield(2);
        IM_CHECK(isSeen("Cmd+Shift+Z"));
        user.PopupCloseAll();
    }));
}

/* The mark of unsaved changes, as the menu has it. */

TEST_F(EditorFrameTest, TheMarkIsGoneWhereUndoAndRedoLeadBackToWhatWasSaved) {
    constexpr const char* Mark = "Unsaved changes";
    ASSERT_TRUE(open("first"));
    EXPECT_TRUE(playSeen("mark", [this](ImGuiTestContext& user) {
        const auto press = [&user](ImGuiKeyChord keys) {
            user.KeyPress(keys);
            user.Yield(2);
        };
        user.ItemClick("//Counter/Count");
        user.Yield();
        IM_CHECK(isSeen(Mark));
        press(ImGuiMod_Ctrl | ImGuiKey_S);
        IM_CHECK(!isSeen(Mark));
        user.ItemClick("//Counter/Count");
        user.Yield();
        IM_CHECK(isSeen(Mark));
        press(ImGuiMod_Ctrl | ImGuiKey_Z);
        IM_CHECK(!isSeen(Mark));
        press(ImGuiMod_Ctrl | ImGuiKey_Z);
        IM_CHECK(isSeen(Mark));
        press(ImGuiMod_Ctrl | ImGuiKey_Y);
        IM_CHECK(!isSeen(Mark));
        press(ImGuiMod_Ctrl | ImGuiKey_Y);
        IM_CHECK(isSeen(Mark));
    }));
}

TEST_F(EditorFrameTest, TheMarkSeesAnEditThatMergedWithTheSavedOne) {
    ASSERT_TRUE(open("first"));
    EXPECT_TRUE(playSeen("mark", [this](ImGuiTestContext& user) {
        session.changes().pushChange("/other", rapidjson::Value{1}, false);
        session.changes().pushChange("/counted", rapidjson::Value{1}, true);
        session.changes().pushChange("/counted", rapidjson::Value{2}, true);
        user.Yield(2);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_S);
        user.Yield(2);
        IM_CHECK(!isSeen("Unsaved changes"));
        session.changes().pushChange("/counted", rapidjson::Value{1}, true);
        user.Yield(2);
        // The change log's own mark is an index, which has stayed.
        IM_CHECK(!session.changes().hasUnsavedChanges());
        IM_CHECK(isSeen("Unsaved changes"));
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
