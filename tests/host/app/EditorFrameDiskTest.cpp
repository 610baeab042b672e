#include <filesystem>
#include <string>

#include "EditorFrameTest.h"

/* A project whose files somebody else changes. */

namespace QuorvaneEngine::Test {
namespace {

/** More than there are until the next look at the disk, and until a dialog has its place. */
constexpr int LookFrames = 80;

class EditorFrameDiskTest: public EditorFrameTest {
protected:
    /** As another program does: not by the same length. */
    void change() const { write("first", R"({"name": "first", "other": true, "counted": 2})"); }

    static bool isAsked(ImGuiTestContext& user) { return user.ItemExists("//Changed on disk/Reload"); }
};

TEST_F(EditorFrameDiskTest, AChangedProjectIsReloadedIfTheUserWishes) {
    ASSERT_TRUE(open("first"));
    draw(3);
    EXPECT_TRUE(play("reload", [this](ImGuiTestContext& user) {
        user.Yield(LookFrames);
        IM_CHECK(!isAsked(user));
        user.ItemClick("//Counter/Count");
        change();
        user.Yield(LookFrames);
        IM_CHECK(isAsked(user));
        user.ItemClick("//Changed on disk/Reload");
        user.Yield(LookFrames);
        IM_CHECK(!isAsked(user));
    }));
    EXPECT_EQ(counted(), 2);
    EXPECT_FALSE(session.hasUnsavedChanges());
    EXPECT_FALSE(session.changes().canUndo());
    EXPECT_TRUE(session.isLocked());
}

TEST_F(EditorFrameDiskTest, WhoDecidesLaterIsAskedWhenMoreChangesAndWhenHeSaves) {
    ASSERT_TRUE(open("first"));
    draw(3);
    EXPECT_TRUE(play("later", [this](ImGuiTestContext& user) {
        user.ItemClick("//Counter/Count");
        change();
        user.Yield(LookFrames);
        user.ItemClick("//Changed on disk/Later");
        user.Yield(3 * LookFrames);
        IM_CHECK(!isAsked(user));
        std::filesystem::create_directories(root / "first/localization");
        std::ofstream{root / "first/localization/de.json"} << "{}";
        user.Yield(LookFrames);
        IM_CHECK(isAsked(user));
        user.KeyPress(ImGuiKey_Escape);
        user.Yield(2 * LookFrames);
        IM_CHECK(!isAsked(user));
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_S);
        user.Yield(3);
        user.ItemClick("//Save over changes/Cancel");
        user.Yield(LookFrames);
    }));
    EXPECT_EQ(counted(), 1);
    EXPECT_TRUE(session.hasUnsavedChanges());
    EXPECT_NE(read("first").find("other"), std::string::npos);
}

TEST_F(EditorFrameDiskTest, WhatWasPutOffIsForgottenWithTheNextProject) {
    ASSERT_TRUE(open("first"));
    draw(3);
    EXPECT_TRUE(play("later", [this](ImGuiTestContext& user) {
        change();
        user.Yield(LookFrames);
        user.ItemClick("//Changed on disk/Later");
        user.Yield(2);
        IM_CHECK(open("second"));
        write("second", R"({"name": "second", "other": true})");
        user.Yield(LookFrames);
        IM_CHECK(isAsked(user));
    }));
}

TEST_F(EditorFrameDiskTest, TheQuestionSaysHowManyFilesWereChanged) {
    std::filesystem::create_directories(root / "first/localization");
    ASSERT_TRUE(open("first"));
    draw(3);
    EXPECT_TRUE(playSeen("count", [this](ImGuiTestContext& user) {
        change();
        user.Yield(LookFrames);
        IM_CHECK(isSeen((path("first") + "/project.json").c_str()));
        IM_CHECK(!isSeen("project.json and"));
        user.ItemClick("//Changed on disk/Later");
        for(const char* const code: {"de", "fr", "it"})
            std::ofstream{root / "first/localization" / (std::string{code} + ".json")} << "{}";
        user.Yield(LookFrames);
        IM_CHECK(isSeen((path("first") + "/project.json and 3 more").c_str()));
        user.ItemClick("//Changed on disk/Later");
    }));
}

TEST_F(EditorFrameDiskTest, WhoKeepsWhatIsHereSavesOverTheChanges) {
    ASSERT_TRUE(open("first"));
    draw(3);
    EXPECT_TRUE(play("keep", [this](ImGuiTestContext& user) {
        change();
        user.Yield(LookFrames);
        user.ItemClick("//Changed on disk/Keep mine");
        user.Yield(2);
        IM_CHECK(session.hasUnsavedChanges());
        user.Yield(LookFrames);
        IM_CHECK(!isAsked(user));
        IM_CHECK(read("first").find("other") != std::string::npos);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_S);
        user.Yield(2);
        IM_CHECK(!session.hasUnsavedChanges());
    }));
    EXPECT_EQ(read("first"), "{\n  \"name\": \"first\"\n}\n");
}

TEST_F(EditorFrameDiskTest, SavingOverChangesAsksFirst) {
    ASSERT_TRUE(open("first"));
    draw(3);
    EXPECT_TRUE(play("save", [this](ImGuiTestContext& user) {
        user.ItemClick("//Counter/Count");
        change();
        const std::string changed = read("first");
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_S);
        user.Yield(3);
        IM_CHECK(user.ItemExists("//Save over changes/Save over it"));
        user.ItemClick("//Save over changes/Cancel");
        user.Yield(2);
        IM_CHECK(read("first") == changed);
        IM_CHECK(session.hasUnsavedChanges());
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_S);
        user.Yield(3);
        user.ItemClick("//Save over changes/Save over it");
        user.Yield(LookFrames);
        IM_CHECK(!isAsked(user));
    }));
    EXPECT_FALSE(session.hasUnsavedChanges());
    EXPECT_NE(read("first").find("\"counted\": 1"), std::string::npos);
    EXPECT_EQ(read("first").find("other"), std::string::npos);
}

TEST_F(EditorFrameDiskTest, TheQuestionOfSavingOverEndsWhenTheFilesAreAsTheyWere) {
    ASSERT_TRUE(open("first"));
    draw(3);
    EXPECT_TRUE(play("as they were", [this](ImGuiTestContext& user) {
        const std::string before = read("first");
        user.ItemClick("//Counter/Count");
        change();
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Q);
        user.Yield(3);
        user.ItemClick("//Unsaved changes/Save");
        user.Yield(3);
        IM_CHECK(user.ItemExists("//Save over changes/Save over it"));
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_S);
        user.Yield(3);
        IM_CHECK(user.ItemExists("//Save over changes/Save over it"));
        write("first", before);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_S);
        user.Yield(3);
        IM_CHECK(!session.hasUnsavedChanges());
        IM_CHECK(!user.ItemExists("//Save over changes/Save over it"));
        user.Yield(LookFrames);
        IM_CHECK(!isAsked(user));
    }));
    EXPECT_FALSE(frame.isFinished());
    EXPECT_NE(read("first").find("\"counted\": 1"), std::string::npos);
}

TEST_F(EditorFrameDiskTest, QuittingWithChangesOnBothSidesAsksForBothAndLosesNothingUnasked) {
    ASSERT_TRUE(open("first"));
    draw(3);
    EXPECT_TRUE(play("quit", [this](ImGuiTestContext& user) {
        user.ItemClick("//Counter/Count");
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Q);
        user.Yield(3);
        change();
        user.Yield(LookFrames);
        user.ItemClick("//Unsaved changes/Save");
        user.Yield(3);
        user.ItemClick("//Save over changes/Cancel");
        user.Yield(3);
        IM_CHECK(!frame.isFinished());
        IM_CHECK(read("first").find("other") != std::string::npos);
        user.Yield(LookFrames);
        user.ItemClick("//Changed on disk/Keep mine");
        user.Yield(3);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Q);
        user.Yield(3);
        user.ItemClick("//Unsaved changes/Save");
        user.Yield(3);
    }));
    EXPECT_TRUE(frame.isFinished());
    EXPECT_NE(read("first").find("\"counted\": 1"), std::string::npos);
}

TEST_F(EditorFrameDiskTest, QuittingGoesOnAfterSavingOverChanges) {
    ASSERT_TRUE(open("first"));
    draw(3);
    EXPECT_TRUE(play("quit", [this](ImGuiTestContext& user) {
        user.ItemClick("//Counter/Count");
        change();
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Q);
        user.Yield(3);
        user.ItemClick("//Unsaved changes/Save");
        user.Yield(3);
        user.ItemClick("//Save over changes/Save over it");
        user.Yield(3);
    }));
    EXPECT_TRUE(frame.isFinished());
    EXPECT_NE(read("first").find("\"counted\": 1"), std::string::npos);
}

TEST_F(EditorFrameDiskTest, WhatCannotBeReloadedIsToldOfAndTheDocumentStays) {
    ASSERT_TRUE(open("first"));
    draw(3);
    EXPECT_TRUE(play("reload", [this](ImGuiTestContext& user) {
        user.ItemClick("//Counter/Count");
        write("first", "{\"name\": \n<<<<<<<");
        // As long as it takes to read the question.
        user.Yield(3 * LookFrames);
        user.ItemClick("//Changed on disk/Reload");
        user.Yield(3);
        IM_CHECK(frame.failure().contains("project.json:2:1: "));
        user.ItemClick("//Project not opened/OK");
        user.Yield(LookFrames);
        user.ItemClick("//Changed on disk/Keep mine");
        user.Yield(2);
    }));
    EXPECT_EQ(counted(), 1);
    EXPECT_TRUE(session.changes().canUndo());
}

TEST_F(EditorFrameDiskTest, WhoIsTypingIsAskedAfterwards) {
    ASSERT_TRUE(open("first"));
    draw(3);
    EXPECT_TRUE(play("type", [this](ImGuiTestContext& user) {
        choose(user, "View/Messages");
        user.ItemClick("//Messages/**/##messages");
        change();
        user.Yield(2 * LookFrames);
        IM_CHECK(!isAsked(user));
        user.KeyPress(ImGuiKey_Escape);
        user.Yield(LookFrames);
        IM_CHECK(isAsked(user));
    }));
    EXPECT_EQ(counted(), 0);
}

TEST_F(EditorFrameDiskTest, AKeyThatWasMeantForSomethingElseReloadsNothing) {
    ImGui::GetIO().ConfigFlags |= ImGuiConfigFlags_NavEnableKeyboard;
    ASSERT_TRUE(open("first"));
    draw(3);
    EXPECT_TRUE(play("press", [this](ImGuiTestContext& user) {
        user.ItemClick("//Counter/Count");
        user.NavMoveTo("//Counter/Count");
        user.KeyPress(ImGuiKey_RightArrow);
        IM_CHECK(ImGui::GetIO().NavVisible);
        change();
        user.Yield(LookFrames);
        IM_CHECK(isAsked(user));
        for(const ImGuiKey key: {ImGuiKey_Space, ImGuiKey_Enter}) {
            user.KeyPress(key);
            user.Yield(LookFrames);
            IM_CHECK(isAsked(user));
        }
    }));
    EXPECT_EQ(counted(), 1);
    EXPECT_TRUE(session.changes().canUndo());
}

TEST_F(EditorFrameDiskTest, AProjectThatVanishesStaysOpenAndIsSavedAnew) {
    ASSERT_TRUE(open("first"));
    draw(3);
    std::filesystem::remove_all(root / "first");
    draw(LookFrames);
    EXPECT_TRUE(session.hasUnsavedChanges());
    ASSERT_TRUE(log.last());
    const std::string expected = "EditorSession::lookAtDisk(): " + path("first") +
        " has no project.json any more; what is open here stays, and is saved anew";
    EXPECT_EQ(log.last()->text, expected.c_str());
    EXPECT_TRUE(play("save", [](ImGuiTestContext& user) {
        user.ItemClick("//Counter/Count");
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_S);
        user.Yield(LookFrames);
        IM_CHECK(!isAsked(user));
    }));
    EXPECT_FALSE(session.hasUnsavedChanges());
    EXPECT_NE(read("first").find("\"counted\": 1"), std::string::npos);
    EXPECT_TRUE(session.isLocked());
    EXPECT_EQ(messages(expected.c_str()), 1);
}

TEST_F(EditorFrameDiskTest, WhereNothingCanBeWrittenSavingSaysSo) {
    ASSERT_TRUE(open("first"));
    draw(3);
    EXPECT_TRUE(play("save", [this](ImGuiTestContext& user) {
        user.ItemClick("//Counter/Count");
        std::filesystem::remove_all(root);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_S);
        user.Yield(LookFrames);
        IM_CHECK(session.hasUnsavedChanges());
    }));
    EXPECT_EQ(
        messages(("ProjectStorage::save(): " + path("first") + "/.editor: cannot be made: No such file or directory")
                     .c_str()),
        1);
    EXPECT_EQ(counted(), 1);
}

}
}
