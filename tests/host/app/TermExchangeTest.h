#pragma once

#include <string>

#include <Corrade/Containers/String.h>
#include <Corrade/Utility/Debug.h>
#include <gtest/gtest.h>

#include "ChangeManager.h"
#include "GatedFileSystem.h"
#include "QuorvaneEditor/EditorState.h"
#include "QuorvaneEditor/JobSystem.h"
#include "TwoTerms.h"
#include "app/DockLayout.h"
#include "app/EditorFrame.h"
#include "app/MessageLog.h"
#include "document/EditorSession.h"
#include "modules/ModuleLoader.h"
#include "support/GuiTest.h"
#include "support/Json.h"

namespace QuorvaneEngine::Test {

/** The editor without a window, with the counting view in it, all files in memory, by mouse and keys. */
class TermExchangeTest: public testing::Test {
protected:
    TermExchangeTest() {
        chosen.clear();
        asked.clear();
        files.put("/project/project.json", TwoTerms);
        files.put("/other/project.json", "{}");
        files.put("/terms/de/translation.json", R"({"door": "Tuer", "lamp": "Lampe"})");
        gui.prepareFrames([this] { frame.prepare(); });
        EXPECT_TRUE(frame.open("/project"));
        before = document();
    }

    ~TermExchangeTest() override { files.open(); }

    bool play(const char* name, const GuiTest::Script& script) {
        return gui.run(
            name, [this] { frame.draw(); }, script);
    }

    void draw(int count = 1) {
        gui.frames([this] { frame.draw(); }, count);
    }

    std::string document() { return toText(session.project()); }

    static void choose(ImGuiTestContext& user, const char* item) {
        user.SetRef("##MainMenuBar");
        user.MenuClick(item);
    }

    static bool isShown(const char* window) {
        const ImGuiWindow* const found = ImGui::FindWindowByName(window);
        return found && found->WasActive && !found->Hidden;
    }

    bool& isOpen() { return session.state().isViewOpen(session.state().registerView(DockLayout::Report)); }

    /** Asks for a preview and lets it begin. */
    static void start(ImGuiTestContext& user, const char* path) {
        choose(user, "File/Preview import...");
        user.Yield(3);
        user.KeyCharsReplace(path);
        user.ItemClick("//Preview Import/Preview");
    }

    /** Also waits for its end. */
    void preview(ImGuiTestContext& user, const char* path = "/terms") {
        start(user, path);
        await(user);
    }

    void await(ImGuiTestContext& user) {
        user.Yield();
        while(frame.exchange().isBusy()) user.Yield();
        user.Yield(3);
    }

    void edit(const char* path, const char* text) {
        session.changes().pushChange(Containers::StringView{path}, Containers::StringView{text}, false);
    }

    /** Whether the status bar shows a message. */
    bool says(const std::string& text) const { return log.last() && std::string{log.last()->text.data()} == text; }

    static Containers::String chooseFolder(Containers::StringView, Containers::StringView defaultPath) {
        asked = "folder " + std::string{defaultPath.data(), defaultPath.size()};
        return chosen.c_str();
    }

    static Containers::String chooseArchive(Containers::StringView, Containers::StringView defaultPath) {
        asked = "archive " + std::string{defaultPath.data(), defaultPath.size()};
        if(chosen.empty()) Corrade::Utility::Warning{} << "no program shows dialogs here";
        return chosen.c_str();
    }

    /* What the dialogs answer, which was asked for, and with which path */
    inline static std::string chosen;
    inline static std::string asked;

    GatedFileSystem files;
    MessageLog log;
    GuiTest gui;
    JobSystem jobs{1};
    EditorSession session{&jobs, &files};
    ModuleLoader modules{QUORVANE_FIXTURES "/good"};
    EditorFrame frame{session, jobs, modules, log, {}, chooseFolder, chooseArchive, &files};
    std::string before;
};

}
