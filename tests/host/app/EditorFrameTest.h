#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

#include <dlfcn.h>
#include <unistd.h>

#include <Corrade/Containers/String.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "ChangeManager.h"
#include "EditorView.h"
#include "QuorvaneEditor/EditorState.h"
#include "QuorvaneEditor/JobSystem.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "QuorvaneEditor/QuorvaneEditor.h"
#include "QuorvaneEditor/ValueAccess.h"
#include "app/EditorFrame.h"
#include "app/MessageLog.h"
#include "document/EditorSession.h"
#include "modules/ModuleLoader.h"
#include "support/GuiTest.h"
#include "support/ShownText.h"

namespace QuorvaneEngine::Test {

/** An editor without a window, with the counting view in it and two projects to open. */
class EditorFrameTest: public testing::Test {
protected:
    static constexpr const char* ModuleFile = QUORVANE_FIXTURES "/good/Counter.so";

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

    bool play(const char* name, const GuiTest::Script& script) {
        return gui.run(
            name, [this] { frame.draw(); }, script);
    }

    /** Chooses an item of the main menu, or opens a menu. */
    static void choose(ImGuiTestContext& user, const char* item) {
        user.SetRef("##MainMenuBar");
        user.MenuClick(item);
    }

    void draw(int count = 1) {
        gui.frames([this] { frame.draw(); }, count);
    }

    /** As @ref play() ; meanwhile @ref seen is all text that the last frame has shown. */
    bool playSeen(const char* name, const GuiTest::Script& script) {
        return gui.run(
            name,
            [this] {
                const ShownText text;
                frame.draw();
                seen = text.text();
            },
            script);
    }

    bool isSeen(const char* text) const { return seen.find(text) != std::string::npos; }

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

    /** A counter of the module that is in the process: draws, inits, deinits, loads without a state, values to show. */
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

    static Containers::String chooseFolder(Containers::StringView, Containers::StringView) {
        ++dialogs;
        return chosenFolder.c_str();
    }

    /** The view counts from 1 to 2 and cannot bear any other number. */
    static Containers::String counterReason(QuorvaneEditor& editor) {
        ++checks;
        const rapidjson::Value* const counted = editor.project().root()["/counted"].value();
        return !counted || (counted->IsInt() && counted->GetInt() < 3) ? "" : "/counted is out of hand.";
    }

    static void repairCounter(QuorvaneEditor& editor) {
        editor.changeManager().pushChange("/counted", rapidjson::Value{1}, false);
    }

    /* What the folder dialog answers, how often it was asked, and how often the view's condition was. */
    inline static std::string chosenFolder;
    inline static int dialogs = 0;
    inline static int checks = 0;

    std::string seen;
    const ViewCondition conditions[1]{{"Counter", counterReason, repairCounter}};
    std::filesystem::path root =
        std::filesystem::temp_directory_path() / ("quorvane-frame-" + std::to_string(getpid()));
    MessageLog log;
    GuiTest gui;
    JobSystem jobs{0};
    EditorSession session{&jobs};
    ModuleLoader modules{QUORVANE_FIXTURES "/good"};
    EditorFrame frame{session, jobs, modules, log, conditions, chooseFolder, chooseFolder};
};

}
