#include <csignal>
#include <cstdlib>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "QuorvaneEditor/EditorState.h"
#include "QuorvaneEditor/JobSystem.h"
#include "app/EditorFrame.h"
#include "app/LeftOutModules.h"
#include "app/MessageLog.h"
#include "document/EditorSession.h"
#include "host/localization/TestFolder.h"
#include "modules/ModuleLoader.h"
#include "support/GuiTest.h"
#include "support/ShownText.h"

/* A module that the editor dies with. */

namespace QuorvaneEngine::Test {
namespace {

/** An editor without a window that starts with the folder of the user's settings as it is. */
struct Start {
    explicit Start(const TestFolder& folder)
        : note{(folder / "data").c_str()},
          modules{QUORVANE_FIXTURES "/dying", &note},
          leftOut{(folder / "data").c_str(), modules},
          frame{session, jobs, modules, log, {}, nullptr, nullptr} {
        EditorFrame::Desktop desktop;
        desktop.leftOut = &leftOut;
        frame.setDesktop(std::move(desktop));
        gui.prepareFrames([this] { frame.prepare(); });
        isOpened = frame.open((folder / "project").c_str());
        session.state().isViewOpen(session.state().registerView("Plug-ins")) = true;
    }

    void draw() {
        const ShownText text;
        frame.draw();
        seen = text.text();
    }

    bool play(const char* const name, const GuiTest::Script& script) {
        return gui.run(
            name, [this] { draw(); }, script);
    }

    bool sees(const char* const text) const { return seen.find(text) != std::string::npos; }

    MessageLog log;
    GuiTest gui;
    JobSystem jobs{0};
    EditorSession session{&jobs};
    LoadNote note;
    ModuleLoader modules;
    LeftOutModules leftOut;
    EditorFrame frame;
    bool isOpened = false;
    std::string seen;
};

class EditorFrameModules: public testing::TestWithParam<const char*> {
protected:
    EditorFrameModules() { folder.write("project/project.json", "{}"); }

    /** An editor that dies with the module, in a process of its own. */
    void die() const {
        EXPECT_EXIT(
            {
                setenv("QUORVANE_DYING", GetParam(), 1);
                Start start{folder};
                start.gui.frames([&] { start.draw(); }, 3);
            },
            testing::KilledBySignal(SIGABRT), "");
    }

    std::size_t notes() const {
        std::size_t count = 0;
        for(const auto& [name, text]: folder.files()) count += name.find("data/loading-") == 0;
        return count;
    }

    const TestFolder folder;
};

INSTANTIATE_TEST_SUITE_P(When, EditorFrameModules, testing::Values("constructed", "bound", "drawn"),
    [](const testing::TestParamInfo<const char*>& when) { return std::string{when.param}; });

TEST_P(EditorFrameModules, WhatTheEditorDiedWithIsNotLoadedBeforeTheUserSaysSo) {
    die();
    ASSERT_EQ(notes(), 1u);
    Start start{folder};
    ASSERT_TRUE(start.isOpened);
    EXPECT_EQ(start.modules.module("Dying"), nullptr);
    EXPECT_TRUE(start.play("load", [&](ImGuiTestContext& user) {
        user.Yield(5);
        IM_CHECK_EQ(start.modules.module("Dying"), nullptr);
        IM_CHECK(start.sees("The editor died while it was loading a plug-in"));
        IM_CHECK(start.sees("Dying, " QUORVANE_FIXTURES "/dying/Dying.so"));
        user.ItemClick("//Plug-in trouble/Load anyway");
        user.Yield(5);
        IM_CHECK(start.modules.module("Dying"));
        IM_CHECK(start.sees("I am alive"));
        IM_CHECK(!start.sees("Plug-in trouble"));
    }));
    EXPECT_EQ(notes(), 0u);
    EXPECT_EQ(LeftOutModules((folder / "data").c_str(), start.modules).suspect(), "");
}

TEST_P(EditorFrameModules, WhatIsLeftOutStaysOutUntilItIsLoadedInThePanel) {
    die();
    {
        Start start{folder};
        EXPECT_TRUE(start.play("leave out", [&](ImGuiTestContext& user) {
            user.Yield(5);
            user.ItemClick("//Plug-in trouble/Leave out");
            user.Yield(5);
            IM_CHECK(!user.ItemExists("//Plug-in trouble/Leave out"));
            IM_CHECK(start.sees("Left out"));
            IM_CHECK(start.sees("the editor died while it was loading this module"));
        }));
        EXPECT_EQ(start.modules.module("Dying"), nullptr);
    }
    {
        Start start{folder};
        EXPECT_TRUE(start.play("load", [&](ImGuiTestContext& user) {
            user.Yield(5);
            IM_CHECK(!user.ItemExists("//Plug-in trouble/Leave out"));
            IM_CHECK(!start.sees("I am alive"));
            user.ItemClick("//Plug-ins/**/Dying/###Load");
            user.Yield(5);
            IM_CHECK(start.sees("I am alive"));
            IM_CHECK(!start.sees("Left out"));
        }));
    }
    const Start last{folder};
    EXPECT_NE(last.modules.module("Dying"), nullptr);
}

TEST_P(EditorFrameModules, WhatDiesAgainIsAskedAboutAgain) {
    die();
    EXPECT_EXIT(
        {
            Start start{folder};
            setenv("QUORVANE_DYING", GetParam(), 1);
            start.play("load", [&](ImGuiTestContext& user) {
                user.Yield(5);
                user.ItemClick("//Plug-in trouble/Load anyway");
                user.Yield(5);
            });
        },
        testing::KilledBySignal(SIGABRT), "");
    Start start{folder};
    EXPECT_EQ(start.leftOut.suspect(), "Dying");
    EXPECT_TRUE(start.play("escape", [&](ImGuiTestContext& user) {
        user.Yield(5);
        user.KeyPress(ImGuiKey_Escape);
        user.Yield(5);
    }));
    EXPECT_EQ(start.modules.module("Dying"), nullptr);
    EXPECT_EQ(start.leftOut.suspect(), "");
    EXPECT_EQ(LeftOutModules((folder / "data").c_str(), start.modules).suspect(), "Dying") << "Escape is no answer";
}

TEST_P(EditorFrameModules, AnEditorThatEndsWellLeavesNothing) {
    {
        Start start{folder};
        start.gui.frames([&] { start.draw(); }, 3);
        EXPECT_TRUE(start.sees("I am alive"));
        EXPECT_EQ(notes(), 0u);
    }
    EXPECT_EQ(folder.files().count("data/left-out-modules.json"), 0u);
    EXPECT_EQ(notes(), 0u);
}

}
}
