#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <unistd.h>

#include <gtest/gtest.h>
#include <imgui_internal.h>
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "EditorView.h"
#include "QuorvaneEditor/EditorState.h"
#include "QuorvaneEditor/JobSystem.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "app/EditorFrame.h"
#include "app/MessageLog.h"
#include "app/ViewConditions.h"
#include "document/EditorSession.h"
#include "modules/ModuleLoader.h"
#include "support/GuiTest.h"

namespace QuorvaneEngine::Test {
namespace {

namespace fs = std::filesystem;

Containers::String noDialog(Containers::StringView, Containers::StringView) { return {}; }

/** The Localization view in the editor that comes with it, on two copies of the sample project, by mouse and keys alone. */
class HostedView: public testing::Test {
protected:
    HostedView() {
        fs::create_directories(root);
        for(const char* name: {"first", "second"}) {
            fs::copy(QUORVANE_SOURCE_DIR "/samples/lighthouse", root / name, fs::copy_options::recursive);
            fs::remove_all(root / name / ".editor");
        }
        gui.prepareFrames([this] { frame.prepare(); });
    }

    ~HostedView() override {
        std::error_code error;
        fs::remove_all(root, error);
    }

    bool play(const char* name, const GuiTest::Script& script) {
        return gui.run(
            name, [this] { frame.draw(); },
            [&script](ImGuiTestContext& user) {
                user.SetRef("Localization");
                script(user);
            });
    }

    std::string document() {
        rapidjson::StringBuffer buffer;
        rapidjson::Writer<rapidjson::StringBuffer> writer{buffer};
        session.project().document().Accept(writer);
        return buffer.GetString();
    }

    std::string file(const char* project) const {
        std::ifstream stream{root / project / "project.json", std::ios::binary};
        return {std::istreambuf_iterator<char>{stream}, {}};
    }

    static void replace(std::string& text, const std::string& from, const std::string& to) {
        const std::size_t at = text.find(from);
        ASSERT_NE(at, std::string::npos) << from;
        text.replace(at, from.size(), to);
    }

    /** What the text input with the keyboard holds. */
    static std::string editedText() {
        const ImGuiInputTextState& input = ImGui::GetCurrentContext()->InputTextState;
        return {input.TextSrc, std::size_t(input.TextLen)};
    }

    static void search(ImGuiTestContext& user, const char* text) {
        user.ItemInput("##termsearch");
        user.KeyCharsReplaceEnter(text);
        user.Yield(2);
    }

    fs::path root = fs::temp_directory_path() / ("quorvane-hosted-" + std::to_string(getpid()));
    MessageLog log;
    GuiTest gui{{1600.0f, 1000.0f}};
    JobSystem jobs{1};
    EditorSession session{&jobs};
    ModuleLoader modules{QUORVANE_MODULE_DIR};
    EditorFrame frame{session, jobs, modules, log, viewConditions(), noDialog, noDialog};
};

TEST_F(HostedView, ATermIsUntickedUndoneRedoneAndSavedByMouseAndKeys) {
    ASSERT_TRUE(frame.open((root / "first").c_str()));
    const std::string before = document();
    const std::string saved = file("first");
    std::string expected = before;
    replace(expected, R"("menu.start":{"sourceText":"/objects/title_screen/startText","translatable":true)",
        R"("menu.start":{"sourceText":"/objects/title_screen/startText","translatable":false)");
    std::string expectedFile = saved;
    replace(expectedFile, R"("menu.start": {"sourceText": "/objects/title_screen/startText", "translatable": true)",
        R"("menu.start": {"sourceText": "/objects/title_screen/startText", "translatable": false)");

    EXPECT_TRUE(play("untick", [&](ImGuiTestContext& user) {
        search(user, "menu.start");
        IM_CHECK(document() == before);
        user.ItemClick("**/##translatable");
        user.Yield(2);
        IM_CHECK(document() == expected);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Z);
        user.Yield(2);
        IM_CHECK(document() == before);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiMod_Shift | ImGuiKey_Z);
        user.Yield(2);
        IM_CHECK(document() == expected);
        IM_CHECK(file("first") == saved);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_S);
        user.Yield(2);
        IM_CHECK(!session.hasUnsavedChanges());
    }));
    EXPECT_EQ(file("first"), expectedFile);
}

TEST_F(HostedView, APopupOfTheViewStaysWhateverTheHostsKeysAsk) {
    ASSERT_TRUE(frame.open((root / "first").c_str()));
    const std::string before = document();
    EXPECT_TRUE(play("popup", [&](ImGuiTestContext& user) {
        const auto isShown = [](const char* name) {
            const ImGuiWindow* const window = ImGui::FindWindowByName(name);
            return window && window->Active;
        };
        search(user, "menu.start");
        user.ItemClick("**/##translatable");
        user.Yield(2);
        const std::string changed = document();
        IM_CHECK(changed != before);
        user.MenuClick("File/Export");
        user.Yield(4);
        IM_CHECK(isShown("Export Terms"));
        IM_CHECK(!ImGui::GetIO().WantTextInput);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Z);
        user.Yield(3);
        IM_CHECK(document() == changed);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Q);
        user.Yield(3);
        IM_CHECK(isShown("Export Terms"));
        IM_CHECK(!isShown("Unsaved changes"));

        // The window's close button is none of the keys: its question comes when the popup has gone.
        frame.requestQuit();
        user.Yield(3);
        IM_CHECK(isShown("Export Terms"));
        IM_CHECK(!isShown("Unsaved changes"));
        user.WindowClose("//Export Terms");
        user.Yield(3);
        IM_CHECK(isShown("Unsaved changes"));
        user.ItemClick("//Unsaved changes/Cancel");
        user.Yield(3);
        IM_CHECK(!frame.isFinished());

        user.SetRef("Localization");
        user.MenuClick("File/Export");
        user.Yield(4);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_S);
        user.Yield(3);
        IM_CHECK(!session.hasUnsavedChanges());
        IM_CHECK(isShown("Export Terms"));
        user.WindowClose("//Export Terms");
        user.Yield(3);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Z);
        user.Yield(3);
        IM_CHECK(document() == before);
    }));
}

TEST_F(HostedView, NothingOfTheOldProjectIsLeftInTheView) {
    ASSERT_TRUE(frame.open((root / "first").c_str()));
    const UnsignedInt id = session.state().registerView("Localization");
    EXPECT_TRUE(play("leave traces", [](ImGuiTestContext& user) {
        search(user, "menu.start");
        user.MenuClick("File/Export");
        user.Yield(4);
        user.SetRef("//Export Terms");
        user.ItemInput("##path");
        user.KeyCharsReplaceEnter("/an/old/path");
        user.WindowClose("//Export Terms");
        user.Yield(2);
    }));
    ASSERT_TRUE(frame.open((root / "second").c_str()));
    EXPECT_EQ(session.state().registerView("Localization"), id);
    EXPECT_TRUE(play("look for them", [this](ImGuiTestContext& user) {
        user.ItemInput("##termsearch");
        user.Yield(2);
        IM_CHECK_STR_EQ(editedText().c_str(), "");
        user.KeyPress(ImGuiKey_Escape);
        user.MenuClick("File/Export");
        user.Yield(4);
        user.SetRef("//Export Terms");
        user.ItemInput("##path");
        user.Yield(2);
        IM_CHECK_STR_EQ(editedText().c_str(), ((root / "second").string() + "/i18n/").c_str());
        user.KeyPress(ImGuiKey_Escape);
    }));
}

TEST_F(HostedView, AProjectWithoutAKnownDefaultIsRepairedInOneStep) {
    std::ofstream{root / "first" / "project.json"} << R"({"languages": {"de": {}, "en": {}}})";
    ASSERT_TRUE(frame.open((root / "first").c_str()));
    const std::string broken = document();
    EXPECT_TRUE(play("repair", [&](ImGuiTestContext& user) {
        IM_CHECK(!user.ItemExists("##termsearch"));
        user.ItemClick("**/Repair");
        user.Yield(3);
        IM_CHECK(user.ItemExists("##termsearch"));
        const std::string repaired = document();
        IM_CHECK(repaired != broken);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Z);
        user.Yield(3);
        IM_CHECK(document() == broken);
        IM_CHECK(user.ItemExists("**/Repair"));
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Y);
        user.Yield(3);
        IM_CHECK(document() == repaired);
        IM_CHECK(user.ItemExists("##termsearch"));
    }));
}

TEST_F(HostedView, AnImportOfTheHostBringsItsLanguagesToTheView) {
    ASSERT_TRUE(frame.open((root / "first").c_str()));
    fs::create_directories(root / "terms" / "es");
    std::ofstream{root / "terms" / "es" / "translation.json"} << R"({"menu": {"start": "Juego nuevo"}})";
    const std::string before = document();
    EXPECT_TRUE(play("preview", [&](ImGuiTestContext& user) {
        const auto isListed = [&user] {
            user.ItemClick("localizationtabs/Languages");
            user.Yield(3);
            return user.ItemExists("//Localization/**/##Spanish");
        };
        IM_CHECK(!isListed());
        user.SetRef("##MainMenuBar");
        user.MenuClick("File/Preview import...");
        user.Yield(3);
        user.KeyCharsReplace((root / "terms").c_str());
        user.ItemClick("//Preview Import/Preview");
        user.Yield();
        while(frame.exchange().isBusy()) user.Yield();
        user.Yield(3);
        IM_CHECK(document() == before);
        user.ItemClick("//Localization Report/###Apply");
        user.Yield(3);
        IM_CHECK(document() != before);
        user.SetRef("Localization");
        IM_CHECK(isListed());
        user.ItemClick("//Localization Report/###Undo");
        user.Yield(3);
        IM_CHECK(document() == before);
        IM_CHECK(!isListed());
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Y);
        user.Yield(3);
        IM_CHECK(isListed());
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Z);
        user.Yield(3);
        IM_CHECK(document() == before);
        IM_CHECK(!isListed());
    }));
}

TEST_F(HostedView, UndoingWhatAddsNoLanguageLeavesTheViewAsItIs) {
    ASSERT_TRUE(frame.open((root / "first").c_str()));
    EXPECT_TRUE(play("other change", [&](ImGuiTestContext& user) {
        const auto shownBoxes = [&user] {
            ImGuiTestItemList items;
            user.GatherItems(&items, "//Localization", -1);
            return int(std::count_if(items.begin(), items.end(), [](const ImGuiTestItemInfo& item) {
                return Containers::StringView{item.DebugLabel} == "##translatable";
            }));
        };
        IM_CHECK(shownBoxes() > 1);
        search(user, "menu.start");
        IM_CHECK_EQ(shownBoxes(), 1);
        session.changes().pushChange("/languages/en/reviewer", Containers::StringView{"Mo"}, false);
        user.Yield(2);
        IM_CHECK_EQ(shownBoxes(), 1);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Z);
        user.Yield(3);
        IM_CHECK(!session.changes().canUndo());
        IM_CHECK_EQ(shownBoxes(), 1);
    }));
}

TEST_F(HostedView, WhatTheViewImportsIsReportedAndUndoneInTheReport) {
    ASSERT_TRUE(frame.open((root / "first").c_str()));
    fs::create_directories(root / "terms" / "de");
    std::ofstream{root / "terms" / "de" / "translation.json"}
        << R"({"menu": {"start": "Los!", "nowhere_to_be_found": "?"}})";
    const std::string before = document();
    EXPECT_TRUE(play("import", [&](ImGuiTestContext& user) {
        IM_CHECK(!session.state().isViewOpen(session.state().registerView("Localization Report")));
        user.MenuClick("File/Import");
        user.Yield(4);
        user.SetRef("//Import Terms");
        user.ItemInput("##path");
        user.KeyCharsReplace((root / "terms").c_str());
        user.KeyPress(ImGuiKey_Enter);
        user.ItemClick("Import");
        user.Yield(4);
        const std::string after = document();
        IM_CHECK(after != before);
        user.ItemClick("//Localization Report/###Skipped");
        user.ItemClick("//Localization Report/###Copy");
        const std::string copied = ImGui::GetClipboardText();
        IM_CHECK(copied.find("de\tChanged\tmenu.start\t") != std::string::npos);
        IM_CHECK(copied.find("nowhere_to_be_found") == std::string::npos);
        user.ItemClick("//Localization Report/###Undo");
        user.Yield(3);
        IM_CHECK(document() == before);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Y);
        user.Yield(3);
        IM_CHECK(document() == after);
    }));
}

}
}
