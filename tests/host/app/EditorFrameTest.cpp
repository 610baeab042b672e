#include "app/EditorFrame.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include <dlfcn.h>
#include <unistd.h>

#include <Corrade/Containers/StringStl.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "ChangeManager.h"
#include "EditorView.h"
#include "QuorvaneEditor/EditorState.h"
#include "QuorvaneEditor/JobSystem.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "QuorvaneEditor/QuorvaneEditor.h"
#include "QuorvaneEditor/ValueAccess.h"
#include "app/MessageLog.h"
#include "document/EditorSession.h"
#include "modules/ModuleLoader.h"
#include "support/GuiTest.h"

namespace QuorvaneEngine {
namespace {

using namespace Containers::Literals;

constexpr const char* ModuleFolder = QUORVANE_FIXTURES "/good";
constexpr const char* ModuleFile = QUORVANE_FIXTURES "/good/Counter.so";

/* What the folder dialog of these tests answers, and how often it was asked. */
std::string chosenFolder;
int dialogs = 0;

Containers::String chooseFolder(Containers::StringView, Containers::StringView) {
    ++dialogs;
    return chosenFolder.c_str();
}

/** Chooses an item of the main menu, or opens a menu. */
void choose(ImGuiTestContext& user, const char* item) {
    user.SetRef("##MainMenuBar");
    user.MenuClick(item);
}

int checks = 0;

/** The view counts from 1 to 2 and cannot bear any other number. */
Containers::String counterReason(QuorvaneEditor& editor) {
    ++checks;
    const rapidjson::Value* const counted = editor.project().root()["/counted"].value();
    return !counted || (counted->IsInt() && counted->GetInt() < 3) ? "" : "/counted is out of hand.";
}

void repairCounter(QuorvaneEditor& editor) {
    editor.changeManager().pushChange("/counted", rapidjson::Value{1}, false);
}

const ViewCondition Conditions[]{{"Counter"_s, counterReason, repairCounter}};

/** An editor without a window, with the counting view in it and two projects to open. */
class EditorFrameTest: public testing::Test {
protected:
    EditorFrameTest() {
        chosenFolder.clear();
        dialogs = checks = 0;
        for(const char* name: {"first", "second"}) write(name, R"({"name": ")" + std::string{name} + "\"}\n");
        gui.prepareFrames([this] { frame.prepare(); });
    }

    ~EditorFrameTest() override {
        std::error_code error;
        std::filesystem::remove_all(root, error);
    }

    void write(const std::string& project, const std::string& text) const {
        std::filesystem::create_directories(root / project);
        std::ofstream{root / project / "project.json"} << text;
    }

    std::string read(const std::string& project) const {
        std::ifstream file{root / project / "project.json"};
        return {std::istreambuf_iterator<char>{file}, {}};
    }

    std::string path(const char* project) const { return (root / project).string(); }

    bool open(const char* project) { return frame.open(path(project).c_str()); }

    bool play(const char* name, const QuorvaneEngine::Test::GuiTest::Script& script) {
        return gui.run(
            name, [this] { frame.draw(); }, script);
    }

    void draw(int count = 1) {
        gui.frames([this] { frame.draw(); }, count);
    }

    int counted() {
        const rapidjson::Value* const value = session.project().root()["/counted"].value();
        return value ? value->GetInt() : 0;
    }

    /** How often a message was printed. */
    int messages(Containers::StringView text) const {
        int count = 0;
        for(const MessageLog::Message& message: log.messages()) count += message.text == text;
        return count;
    }

    /** A counter of the module that is in the process: draws, inits, deinits, loads without a state. */
    static int moduleCounter(int which) {
        void* const handle = dlopen(ModuleFile, RTLD_LAZY | RTLD_NOLOAD);
        if(!handle) return -1;
        const int value = reinterpret_cast<int (*)(int)>(dlsym(handle, "counterValue"))(which);
        dlclose(handle);
        return value;
    }

    UnsignedInt viewId(Containers::StringView title) {
        const UnsignedInt count = session.state().viewCount();
        const UnsignedInt id = session.state().registerView(title);
        EXPECT_EQ(session.state().viewCount(), count) << "the view was not known";
        return id;
    }

    bool& isOpen(Containers::StringView title) { return session.state().isViewOpen(viewId(title)); }

    std::filesystem::path root =
        std::filesystem::temp_directory_path() / ("quorvane-frame-" + std::to_string(getpid()));
    MessageLog log;
    QuorvaneEngine::Test::GuiTest gui;
    JobSystem jobs{0};
    EditorSession session{&jobs};
    ModuleLoader modules{ModuleFolder};
    EditorFrame frame{session, jobs, modules, log, Conditions, chooseFolder, chooseFolder};
};

TEST_F(EditorFrameTest, WithoutAProjectNoViewIsDrawnAndTheStartPageOpensOne) {
    draw(3);
    EXPECT_EQ(moduleCounter(0), 0);
    chosenFolder = path("first");
    EXPECT_TRUE(play("start page", [](ImGuiTestContext& user) { user.ItemClick("//Start/Open a project..."); }));
    EXPECT_EQ(session.folder(), path("first").c_str());
    draw(2);
    EXPECT_GT(moduleCounter(0), 0);
}

TEST_F(EditorFrameTest, OpenProjectAsksForAFolder) {
    ASSERT_TRUE(open("first"));
    chosenFolder = path("second");
    EXPECT_TRUE(play("open", [](ImGuiTestContext& user) { choose(user, "File/Open project..."); }));
    draw();
    EXPECT_EQ(dialogs, 1);
    EXPECT_EQ(session.folder(), path("second").c_str());
}

TEST_F(EditorFrameTest, ACancelledFolderDialogChangesNothing) {
    ASSERT_TRUE(open("first"));
    draw(3);
    const int draws = moduleCounter(0);
    EXPECT_TRUE(play("open", [](ImGuiTestContext& user) { user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_O); }));
    draw();
    EXPECT_EQ(dialogs, 1);
    EXPECT_EQ(session.folder(), path("first").c_str());
    EXPECT_GT(moduleCounter(0), draws);
}

TEST_F(EditorFrameTest, AProjectThatCannotBeReadIsExplainedAndTheOpenOneStays) {
    ASSERT_TRUE(open("first"));
    write("second", "{\"name\": \n");
    chosenFolder = path("second");
    EXPECT_TRUE(play("open", [this](ImGuiTestContext& user) {
        user.ItemClick("//Counter/Count");
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_S);
        choose(user, "File/Open project...");
        user.Yield(2);
        IM_CHECK(frame.failure().contains("project.json:2:1: "));
        user.ItemClick("//Project not opened/OK");
        IM_CHECK(frame.failure().isEmpty());
    }));
    EXPECT_EQ(session.folder(), path("first").c_str());
    EXPECT_EQ(counted(), 1);
    EXPECT_TRUE(session.changes().canUndo());
}

TEST_F(EditorFrameTest, AnotherProjectGetsAFreshViewWithTheSameIdAndOpenFlag) {
    ASSERT_TRUE(open("first"));
    draw(10);
    const UnsignedInt id = viewId("Counter");
    const UnsignedInt count = session.state().viewCount();
    ASSERT_TRUE(open("second"));
    EXPECT_EQ(moduleCounter(0), 0);
    EXPECT_EQ(moduleCounter(1), 1);
    EXPECT_EQ(moduleCounter(3), 1);
    EXPECT_EQ(viewId("Counter"), id);
    EXPECT_EQ(session.state().viewCount(), count);

    session.state().isViewOpen(id) = false;
    ASSERT_TRUE(open("first"));
    draw(3);
    EXPECT_FALSE(session.state().isViewOpen(id));
    EXPECT_EQ(moduleCounter(0), 0);
}

TEST_F(EditorFrameTest, HandlersOfTheOldViewAreForgottenBeforeItsModuleGoes) {
    ASSERT_TRUE(open("first"));
    int calls = 0;
    session.changes().addChangeHandler(
        "counted", [&calls](const Change&, Containers::ArrayView<Containers::StringView>, void*) { ++calls; }, nullptr);
    ASSERT_TRUE(open("second"));
    session.changes().pushChange("/counted", rapidjson::Value{1}, false);
    EXPECT_EQ(calls, 0);
}

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

TEST_F(EditorFrameTest, SaveWritesTheProjectAndTakesTheMarkAway) {
    ASSERT_TRUE(open("first"));
    EXPECT_TRUE(play("save", [this](ImGuiTestContext& user) {
        user.ItemClick("//Counter/Count");
        IM_CHECK(session.hasUnsavedChanges());
        choose(user, "File/Save");
        user.Yield(2);
        IM_CHECK(!session.hasUnsavedChanges());
        IM_CHECK(read("first").find("\"counted\": 1") != std::string::npos);
        user.ItemClick("//Counter/Count");
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_S);
        user.Yield(2);
        IM_CHECK(!session.hasUnsavedChanges());
        IM_CHECK(read("first").find("\"counted\": 2") != std::string::npos);
    }));
    ASSERT_TRUE(log.last());
    EXPECT_EQ(std::string{log.last()->text}, "Saved " + path("first"));
}

TEST_F(EditorFrameTest, AClosedViewIsNotDrawnUntilTheMenuOpensItAgain) {
    ASSERT_TRUE(open("first"));
    draw(3);
    const UnsignedInt id = viewId("Counter");
    EXPECT_TRUE(play("close", [this](ImGuiTestContext& user) {
        user.WindowClose("//Counter");
        IM_CHECK(!isOpen("Counter"));
        const int draws = moduleCounter(0);
        user.Yield(5);
        IM_CHECK_EQ(moduleCounter(0), draws);
        choose(user, "View/Counter");
        user.Yield(2);
        IM_CHECK(isOpen("Counter"));
        IM_CHECK(moduleCounter(0) > draws);
        choose(user, "View/Counter");
        user.Yield(2);
        IM_CHECK(!isOpen("Counter"));
    }));
    EXPECT_EQ(viewId("Counter"), id);
}

TEST_F(EditorFrameTest, TheDefaultLayoutGivesTheViewTheDockSpace) {
    ASSERT_TRUE(open("first"));
    draw(5);
    const ImGuiWindow* const window = ImGui::FindWindowByName("Counter");
    ASSERT_TRUE(window);
    EXPECT_TRUE(window->DockIsActive);
    const ImGuiViewport& viewport = *ImGui::GetMainViewport();
    EXPECT_EQ(window->Pos.x, viewport.WorkPos.x);
    EXPECT_EQ(window->Size.x, viewport.WorkSize.x);
    EXPECT_GT(window->Size.y, viewport.WorkSize.y * 0.9f);
}

TEST_F(EditorFrameTest, AViewWhoseConditionFailsShowsItsReasonAndIsNotDrawn) {
    write("first", R"({"counted": 7})");
    ASSERT_TRUE(open("first"));
    draw(5);
    EXPECT_EQ(moduleCounter(0), 0);
    EXPECT_EQ(frame.views().reason(viewId("Counter")), "/counted is out of hand.");
    EXPECT_TRUE(play("reason", [](ImGuiTestContext& user) { IM_CHECK(user.ItemExists("//Counter/**/Repair")); }));
}

TEST_F(EditorFrameTest, AConditionThatBeginsToFailIsAWarningOnce) {
    constexpr Containers::StringView Text = "project.json: /counted is out of hand."_s;
    write("first", R"({"counted": 7})");
    ASSERT_TRUE(open("first"));
    draw(5);
    EXPECT_EQ(messages(Text), 1);
    ASSERT_TRUE(log.last());
    EXPECT_EQ(log.last()->severity, MessageLog::Severity::Warning);
    session.changes().pushChange("/counted", rapidjson::Value{8}, false);
    draw(5);
    EXPECT_EQ(messages(Text), 1);
    session.changes().pushChange("/counted", rapidjson::Value{1}, false);
    draw(5);
    session.undo();
    draw(5);
    EXPECT_EQ(messages(Text), 2);
    ASSERT_TRUE(open("first"));
    draw(5);
    EXPECT_EQ(messages(Text), 3);
}

TEST_F(EditorFrameTest, WhatIsWrongWithAProjectThatOpensIsAWarningEach) {
    write("first", R"({"languages": {"de": {}}, "objects": {"door": {"name": 7}}})");
    const std::string before = read("first");
    ASSERT_TRUE(open("first"));
    draw(5);
    EXPECT_EQ(messages("project.json: /objects/door/name: is a number, but must be a string"), 1);
    EXPECT_EQ(messages("localization/de.json: missing, no texts of de"), 1);
    ASSERT_TRUE(log.last());
    EXPECT_EQ(log.last()->severity, MessageLog::Severity::Warning);
    EXPECT_FALSE(session.hasUnsavedChanges());
    EXPECT_EQ(read("first"), before);
    EXPECT_GT(moduleCounter(0), 0);
}

TEST_F(EditorFrameTest, ViewsAreMadeOncePerProject) {
    draw(3);
    EXPECT_EQ(messages("Initializing View: Counter"), 0);
    ASSERT_TRUE(open("first"));
    EXPECT_EQ(messages("Initializing View: Counter"), 1);
    ASSERT_TRUE(open("second"));
    EXPECT_EQ(messages("Initializing View: Counter"), 2);
}

TEST_F(EditorFrameTest, ModulesReloadedBeforeTheFirstProjectGetTheirViewsWithIt) {
    EXPECT_TRUE(play("reload", [](ImGuiTestContext& user) { choose(user, "View/Reload modules"); }));
    draw(3);
    EXPECT_EQ(moduleCounter(1), 0);
    ASSERT_TRUE(open("first"));
    draw(3);
    EXPECT_EQ(moduleCounter(1), 1);
    EXPECT_GT(moduleCounter(0), 0);
}

TEST_F(EditorFrameTest, RepairIsOneStepThatCanBeUndoneAndRedone) {
    write("first", R"({"counted": 7})");
    ASSERT_TRUE(open("first"));
    EXPECT_TRUE(play("repair", [this](ImGuiTestContext& user) {
        user.ItemClick("//Counter/**/Repair");
        user.Yield(2);
        IM_CHECK_EQ(counted(), 1);
        const int draws = moduleCounter(0);
        IM_CHECK(draws > 0);

        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Z);
        user.Yield(2);
        IM_CHECK_EQ(counted(), 7);
        IM_CHECK(!session.changes().canUndo());
        IM_CHECK(user.ItemExists("//Counter/**/Repair"));
        const int drawsBefore = moduleCounter(0);
        user.Yield(5);
        IM_CHECK_EQ(moduleCounter(0), drawsBefore);

        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Y);
        user.Yield(2);
        IM_CHECK(moduleCounter(0) > drawsBefore);
    }));
}

TEST_F(EditorFrameTest, ConditionsAreCheckedWhenTheRevisionChangesAndOnlyThen) {
    ASSERT_TRUE(open("first"));
    draw();
    const int after = checks;
    draw(20);
    EXPECT_EQ(checks, after);
    session.changes().pushChange("/counted", rapidjson::Value{9}, false);
    const int draws = moduleCounter(0);
    draw();
    EXPECT_EQ(checks, after + 1);
    EXPECT_EQ(moduleCounter(0), draws);
}

TEST_F(EditorFrameTest, MainThreadJobsRunBetweenFrames) {
    bool inside = true;
    jobs.dispatch([&] { inside = ImGui::GetCurrentContext()->WithinFrameScope; }, {}, JobFlag::MainThread);
    draw();
    EXPECT_FALSE(inside);
}

TEST_F(EditorFrameTest, AFrameInWhichNothingHappensLooksNothingUp) {
    ASSERT_TRUE(open("first"));
    draw(10);
    const std::uint64_t lookups = session.project().lookupCount();
    draw(10);
    EXPECT_EQ(session.project().lookupCount(), lookups);
}

TEST_F(EditorFrameTest, QuitEndsAtOnceWhenEverythingIsSaved) {
    ASSERT_TRUE(open("first"));
    EXPECT_TRUE(play("quit", [](ImGuiTestContext& user) { choose(user, "File/Quit"); }));
    draw();
    EXPECT_TRUE(frame.isFinished());
}

TEST_F(EditorFrameTest, QuitAsksForUnsavedChanges) {
    ASSERT_TRUE(open("first"));
    EXPECT_TRUE(play("quit", [this](ImGuiTestContext& user) {
        user.ItemClick("//Counter/Count");
        frame.requestQuit();
        user.Yield(3);
        user.ItemClick("//Unsaved changes/Cancel");
        user.Yield(2);
        IM_CHECK(!frame.isFinished());
        IM_CHECK(session.hasUnsavedChanges());
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Q);
        user.Yield(3);
        user.ItemClick("//Unsaved changes/Save");
        user.Yield(2);
    }));
    EXPECT_TRUE(frame.isFinished());
    EXPECT_NE(read("first").find("\"counted\": 1"), std::string::npos);
}

TEST_F(EditorFrameTest, QuitWithoutSavingLeavesTheFilesAlone) {
    ASSERT_TRUE(open("first"));
    const std::string before = read("first");
    EXPECT_TRUE(play("quit", [this](ImGuiTestContext& user) {
        user.ItemClick("//Counter/Count");
        frame.requestQuit();
        user.Yield(3);
        user.ItemClick("//Unsaved changes/Don't save");
        user.Yield(2);
    }));
    EXPECT_TRUE(frame.isFinished());
    EXPECT_EQ(read("first"), before);
}

TEST_F(EditorFrameTest, OpeningAnotherProjectAsksForUnsavedChanges) {
    ASSERT_TRUE(open("first"));
    chosenFolder = path("second");
    EXPECT_TRUE(play("open", [this](ImGuiTestContext& user) {
        user.ItemClick("//Counter/Count");
        choose(user, "File/Open project...");
        user.Yield(3);
        IM_CHECK(session.folder() == path("first").c_str());
        user.ItemClick("//Unsaved changes/Save");
        user.Yield(2);
        IM_CHECK(session.folder() == path("second").c_str());
    }));
    EXPECT_FALSE(frame.isFinished());
    EXPECT_NE(read("first").find("\"counted\": 1"), std::string::npos);
}

TEST_F(EditorFrameTest, ReloadedModulesKeepTheirBinding) {
    ASSERT_TRUE(open("first"));
    draw(10);
    EXPECT_TRUE(play("reload", [](ImGuiTestContext& user) { choose(user, "View/Reload modules"); }));
    draw(3);
    EXPECT_EQ(moduleCounter(1), 1);
    EXPECT_GT(moduleCounter(0), 0);
    EXPECT_LT(moduleCounter(0), 10);
}

TEST_F(EditorFrameTest, TheLastMessageOpensThePanelOfAllMessages) {
    ASSERT_TRUE(open("first"));
    draw(3);
    EXPECT_FALSE(isOpen("Messages"));
    EXPECT_TRUE(play("messages", [this](ImGuiTestContext& user) {
        user.ItemClick("//##status/##message");
        user.Yield(2);
        IM_CHECK(isOpen("Messages"));
        user.ItemClick("//##status/##message");
        user.Yield(2);
        IM_CHECK(!isOpen("Messages"));
    }));
}

TEST_F(EditorFrameTest, AboutTellsTheVersion) {
    EXPECT_TRUE(play("about", [](ImGuiTestContext& user) {
        choose(user, "Help/About");
        user.Yield(2);
        user.ItemClick("//About/Close");
        user.Yield(2);
        IM_CHECK(!user.ItemExists("//About/Close"));
    }));
}

}
}
