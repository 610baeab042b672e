#include <string>
#include <vector>

#include <Corrade/Containers/GrowableArray.h>

#include "EditorFrameTest.h"

/* Folders and files are dropped onto the window. */

namespace QuorvaneEngine::Test {
namespace {

class EditorFrameDropTest: public EditorFrameTest {
protected:
    void drop(const std::vector<std::string>& paths) {
        Containers::Array<Containers::String> dropped;
        for(const std::string& path: paths) arrayAppend(dropped, Corrade::InPlaceInit, path.data(), path.size());
        frame.drop(std::move(dropped));
    }
};

TEST_F(EditorFrameDropTest, AFolderOpensItsProjectAndSoDoesTheFileInIt) {
    drop({path("first")});
    draw(3);
    EXPECT_EQ(session.folder(), path("first").c_str());
    drop({path("second") + "/project.json"});
    draw(3);
    EXPECT_EQ(session.folder(), path("second").c_str());
    EXPECT_EQ(frame.failure(), "");
}

TEST_F(EditorFrameDropTest, UnsavedChangesAreAskedForFirst) {
    ASSERT_TRUE(open("first"));
    draw(3);
    EXPECT_TRUE(play("drop", [this](ImGuiTestContext& user) {
        user.ItemClick("//Counter/Count");
        drop({path("second")});
        user.Yield(3);
        IM_CHECK(session.folder() == path("first").c_str());
        user.ItemClick("//Unsaved changes/Cancel");
        user.Yield(3);
        IM_CHECK(session.folder() == path("first").c_str());
        drop({path("second")});
        user.Yield(3);
        user.ItemClick("//Unsaved changes/Save");
        user.Yield(3);
    }));
    EXPECT_EQ(session.folder(), path("second").c_str());
    EXPECT_NE(read("first").find("\"counted\": 1"), std::string::npos);
}

TEST_F(EditorFrameDropTest, WhatIsNoProjectIsToldOf) {
    ASSERT_TRUE(open("first"));
    drop({path("second"), path("first")});
    draw(3);
    EXPECT_EQ(frame.failure(), "2 files were dropped here. A project is one folder, or the file project.json in it.");
    EXPECT_TRUE(play("read", [](ImGuiTestContext& user) { user.ItemClick("//Project not opened/OK"); }));
    drop({root.string()});
    draw(3);
    EXPECT_EQ(
        frame.failure(), (root.string() + ": there is no project.json in this folder, so it is no project").c_str());
    EXPECT_EQ(session.folder(), path("first").c_str());
}

TEST_F(EditorFrameDropTest, AQuestionIsAnsweredBeforeWhatWasDroppedIsLookedAt) {
    EXPECT_TRUE(play("wait", [this](ImGuiTestContext& user) {
        choose(user, "Help/About");
        user.Yield(3);
        drop({path("second")});
        user.Yield(3);
        IM_CHECK(session.folder().isEmpty());
        user.ItemClick("//About/Close");
        user.Yield(3);
    }));
    EXPECT_EQ(session.folder(), path("second").c_str());
}

}
}
