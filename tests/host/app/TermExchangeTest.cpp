#include "app/TermExchange.h"

#include <atomic>
#include <string>

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "ChangeManager.h"
#include "GatedFileSystem.h"
#include "QuorvaneEditor/EditorState.h"
#include "QuorvaneEditor/JobSystem.h"
#include "QuorvaneEditor/LocalizationTools.h"
#include "QuorvaneEditor/QuorvaneEditor.h"
#include "TwoTerms.h"
#include "app/DockLayout.h"
#include "app/EditorFrame.h"
#include "app/MessageLog.h"
#include "document/EditorSession.h"
#include "localization/LanguageLookup.h"
#include "localization/LastRun.h"
#include "modules/ModuleLoader.h"
#include "support/GuiTest.h"
#include "support/Json.h"

namespace QuorvaneEngine {
namespace {

using QuorvaneEngine::Test::GuiTest;
using QuorvaneEngine::Test::toText;
using QuorvaneEngine::Test::TwoTerms;

/* What the dialogs of these tests answer, which was asked for, and with which path */
std::string chosen;
std::string asked;

Containers::String chooseFolder(Containers::StringView, Containers::StringView defaultPath) {
    asked = "folder " + std::string{defaultPath.data(), defaultPath.size()};
    return chosen.c_str();
}

Containers::String chooseArchive(Containers::StringView, Containers::StringView defaultPath) {
    asked = "archive " + std::string{defaultPath.data(), defaultPath.size()};
    if(chosen.empty()) Corrade::Utility::Warning{} << "no program shows dialogs here";
    return chosen.c_str();
}

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

    GatedFileSystem files;
    MessageLog log;
    GuiTest gui;
    JobSystem jobs{1};
    EditorSession session{&jobs, &files};
    ModuleLoader modules{QUORVANE_FIXTURES "/good"};
    EditorFrame frame{session, jobs, modules, log, {}, chooseFolder, chooseArchive, &files};
    std::string before;
};

TEST_F(TermExchangeTest, APreviewIsAppliedAsOneStepThatIsUndoneAndRedone) {
    EXPECT_TRUE(play("apply", [this](ImGuiTestContext& user) {
        IM_CHECK(!isOpen());
        preview(user);
        IM_CHECK(!isShown("Preview Import"));
        IM_CHECK(isShown("Localization Report"));
        IM_CHECK(document() == before);
        IM_CHECK(says("What an import from /terms would do: 1 added, 1 changed"));
        user.ItemClick("//Localization Report/###Apply");
        user.Yield(2);
        const std::string after = document();
        IM_CHECK(after.find("\"Tuer\"") != std::string::npos);
        IM_CHECK(after.find("\"Lampe\"") != std::string::npos);
        IM_CHECK(says("Imported from /terms: 1 added, 1 changed"));
        user.ItemClick("//Localization Report/###Undo");
        user.Yield(2);
        IM_CHECK(document() == before);
        IM_CHECK(!session.changes().canUndo());
        IM_CHECK(says("Undone: Imported from /terms"));
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Y);
        user.Yield(2);
        IM_CHECK(document() == after);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Z);
        user.Yield(2);
        IM_CHECK(document() == before);
    }));
}

TEST_F(TermExchangeTest, ADiscardedPreviewLeavesNothingBehind) {
    EXPECT_TRUE(play("discard", [this](ImGuiTestContext& user) {
        preview(user);
        user.ItemClick("//Localization Report/Discard");
        user.Yield(2);
        IM_CHECK(document() == before);
        IM_CHECK(!session.changes().canUndo());
        IM_CHECK(!user.ItemExists("//Localization Report/###Apply"));
        IM_CHECK(says("Nothing was imported from /terms"));
    }));
    EXPECT_FALSE(session.hasUnsavedChanges());
}

TEST_F(TermExchangeTest, TheDialogsChooseThePathThatIsProposedNextTime) {
    EXPECT_TRUE(play("dialogs", [this](ImGuiTestContext& user) {
        choose(user, "File/Preview import...");
        user.Yield(3);
        chosen = "/nowhere";
        user.ItemClick("//Preview Import/###Folder");
        user.Yield(2);
        IM_CHECK_STR_EQ(asked.c_str(), "folder /project/i18n");
        chosen = "/terms/";
        user.ItemClick("//Preview Import/###Archive");
        user.Yield(2);
        IM_CHECK_STR_EQ(asked.c_str(), "archive /nowhere");
        user.ItemClick("//Preview Import/Preview");
        await(user);
        IM_CHECK(says("What an import from /terms would do: 1 added, 1 changed"));
        choose(user, "File/Preview import...");
        user.Yield(3);
        user.ItemClick("//Preview Import/###Folder");
        user.Yield(2);
        IM_CHECK_STR_EQ(asked.c_str(), "folder /terms");
    }));
}

TEST_F(TermExchangeTest, ADialogThatCannotBeShownIsExplainedInThePopup) {
    EXPECT_TRUE(play("dialog", [](ImGuiTestContext& user) {
        choose(user, "File/Preview import...");
        user.Yield(3);
        const float height = user.ItemInfo("//Preview Import/Preview").RectFull.Min.y;
        user.ItemClick("//Preview Import/###Folder");
        user.Yield(3);
        IM_CHECK_EQ(user.ItemInfo("//Preview Import/Preview").RectFull.Min.y, height);
        user.ItemClick("//Preview Import/###Archive");
        user.Yield(3);
        IM_CHECK(user.ItemInfo("//Preview Import/Preview").RectFull.Min.y != height);
    }));
}

TEST_F(TermExchangeTest, APathThatIsNoneIsExplainedInThePopupAndNothingRuns) {
    files.put("/a.txt", "no archive");
    EXPECT_TRUE(play("paths", [this](ImGuiTestContext& user) {
        for(const char* path: {"relative/path", "/nowhere"}) {
            start(user, path);
            user.Yield(2);
            IM_CHECK(!frame.exchange().isBusy());
            IM_CHECK(isShown("Preview Import"));
            user.ItemClick("//Preview Import/Cancel");
            user.Yield(3);
            IM_CHECK(!isShown("Preview Import"));
        }
        IM_CHECK(!isOpen());
        IM_CHECK(!lastRun(session.editor()));
    }));
}

TEST_F(TermExchangeTest, ARefusedSetIsExplainedInThePopupAndInTheReport) {
    files.put("/terms/fr/translation.json", "{\"door\": ");
    EXPECT_TRUE(play("refused", [this](ImGuiTestContext& user) {
        preview(user);
        IM_CHECK(isShown("Preview Import"));
        IM_CHECK(isOpen());
        IM_CHECK(lastRun(session.editor()) != nullptr);
        IM_CHECK_EQ(lastRun(session.editor())->refusals.size(), std::size_t(1));
        IM_CHECK(log.last()->text == lastRun(session.editor())->refusals[0]);
        files.put("/terms/fr/translation.json", "{\"door\": \"Porte\"}");
        user.ItemClick("//Preview Import/Preview");
        await(user);
        IM_CHECK(user.ItemExists("//Localization Report/###Apply"));
    }));
    EXPECT_EQ(document(), before);
}

TEST_F(TermExchangeTest, WhileAPreviewRunsNothingCanChangeTheProject) {
    edit("/objects/lamp/colour", "red");
    const std::string edited = document();
    files.close();
    EXPECT_TRUE(play("modal", [&](ImGuiTestContext& user) {
        start(user, "/terms");
        user.Yield();
        IM_CHECK(frame.exchange().isBusy());
        files.awaitReader();
        for(const ImGuiKeyChord keys: {ImGuiMod_Ctrl | ImGuiKey_Z, ImGuiMod_Ctrl | ImGuiKey_Y,
                ImGuiMod_Ctrl | ImGuiMod_Shift | ImGuiKey_Z, ImGuiMod_Ctrl | ImGuiKey_O, ImGuiMod_Ctrl | ImGuiKey_Q}) {
            user.KeyPress(keys);
            user.Yield(2);
        }
        const ImRect button = user.ItemInfo("//Counter/Count").RectFull;
        user.MouseMoveToPos(button.GetCenter());
        user.MouseClick();
        user.Yield(2);
        IM_CHECK(document() == edited);
        IM_CHECK(frame.exchange().isBusy());
        IM_CHECK(isShown("Preview Import"));
        IM_CHECK(!frame.isFinished());
        IM_CHECK(asked.empty());
        files.open();
        await(user);
        IM_CHECK(document() == edited);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Z);
        user.Yield(2);
        IM_CHECK(document() == before);
    }));
}

TEST_F(TermExchangeTest, ACancelledPreviewEndsAndLeavesNoTrace) {
    for(const char* code: {"es", "fr", "it", "ja"})
        files.put(std::string{"/terms/"} + code + "/translation.json", R"({"door": "x"})");
    files.close();
    EXPECT_TRUE(play("cancel", [this](ImGuiTestContext& user) {
        start(user, "/terms");
        files.awaitReader();
        user.ItemClick("//Preview Import/###Cancel");
        user.Yield(2);
        IM_CHECK(frame.exchange().isBusy());
        IM_CHECK(isShown("Preview Import"));
        const int reads = files.reads();
        files.open();
        await(user);
        IM_CHECK(files.reads() <= reads + 1);
        IM_CHECK(!isShown("Preview Import"));
        IM_CHECK(!isOpen());
        IM_CHECK(!lastRun(session.editor()));
        IM_CHECK(says("Nothing was imported from /terms"));
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Z);
        user.Yield(2);
    }));
    EXPECT_EQ(document(), before);
}

TEST_F(TermExchangeTest, QuittingCancelsWhatRunsAndWaitsForIt) {
    files.close();
    EXPECT_TRUE(play("quit", [this](ImGuiTestContext& user) {
        start(user, "/terms");
        files.awaitReader();
        frame.requestQuit();
        // The next frame waits for the job, and the job for this.
        files.open();
        user.Yield(2);
        IM_CHECK(frame.isFinished());
        IM_CHECK(!frame.exchange().isBusy());
        IM_CHECK(document() == before);
    }));
}

TEST_F(TermExchangeTest, QuittingAsksForUnsavedChangesInPlaceOfThePopup) {
    edit("/objects/lamp/colour", "red");
    EXPECT_TRUE(play("quit", [this](ImGuiTestContext& user) {
        choose(user, "File/Preview import...");
        user.Yield(3);
        frame.requestQuit();
        user.Yield(4);
        IM_CHECK(!isShown("Preview Import"));
        IM_CHECK(isShown("Unsaved changes"));
        user.ItemClick("//Unsaved changes/Cancel");
        user.Yield(2);
        IM_CHECK(!frame.isFinished());
    }));
}

TEST_F(TermExchangeTest, AJobOfTheGuiThreadWaitsForTheEndOfTheComparison) {
    std::atomic<bool> mayEnd{false};
    bool hasRun = false;
    files.close();
    EXPECT_TRUE(play("job", [&](ImGuiTestContext& user) {
        start(user, "/terms");
        files.awaitReader();
        // Keeps the only worker from the comparison when the files have been read.
        jobs.dispatch([&] { mayEnd.wait(false); }, {}, {});
        files.open();
        while(!frame.exchange().readsProject()) user.Yield();
        jobs.dispatch([&] { hasRun = true; }, {}, JobFlag::MainThread);
        user.Yield(5);
        IM_CHECK(!hasRun);
        IM_CHECK(frame.exchange().isBusy());
        mayEnd = true;
        mayEnd.notify_all();
        await(user);
        IM_CHECK(hasRun);
    }));
    mayEnd = true;
    mayEnd.notify_all();
}

TEST_F(TermExchangeTest, AProjectThatChangedIsComparedAgainAndImportedWhereThatComesToTheSame) {
    EXPECT_TRUE(play("changed", [this](ImGuiTestContext& user) {
        preview(user);
        user.ItemClick("//Counter/Count");
        user.Yield(2);
        const std::string edited = document();
        IM_CHECK(edited != before);
        user.ItemClick("//Localization Report/###Apply");
        await(user);
        IM_CHECK(document() != edited);
        IM_CHECK(says("Imported from /terms: 1 added, 1 changed"));
        session.undo();
        IM_CHECK(document() == edited);
        session.undo();
        IM_CHECK(document() == before);
    }));
}

TEST_F(TermExchangeTest, AnImportThatWouldDoSomethingElseByNowIsShownAgain) {
    EXPECT_TRUE(play("outdated", [this](ImGuiTestContext& user) {
        preview(user);
        edit("/localization/translations/de/door/text", "Tuer");
        const std::string edited = document();
        user.ItemClick("//Localization Report/###Apply");
        await(user);
        IM_CHECK(document() == edited);
        IM_CHECK(says("What an import from /terms would do: 1 added, 1 unchanged"));
        user.ItemClick("//Localization Report/###Apply");
        user.Yield(2);
        IM_CHECK(says("Imported from /terms: 1 added, 1 unchanged"));
        session.undo();
        IM_CHECK(document() == edited);
    }));
}

TEST_F(TermExchangeTest, WithoutLanguagesTheDefaultOneIsAskedFor) {
    files.put("/other/project.json", "{}");
    ASSERT_TRUE(frame.open("/other"));
    before = document();
    EXPECT_TRUE(play("language", [this](ImGuiTestContext& user) {
        choose(user, "File/Preview import...");
        user.Yield(3);
        user.KeyCharsReplace("/terms");
        user.ItemClick("//Preview Import/##language");
        user.Yield(3);
        user.KeyChars("German");
        user.Yield(2);
        user.ItemClick("//$FOCUSED/German");
        user.ItemClick("//Preview Import/Preview");
        await(user);
        user.ItemClick("//Localization Report/###Apply");
        user.Yield(2);
    }));
    EXPECT_EQ(document().find(R"({"languages":{"de":{"isDefault":true}},)"), 0u) << document();
    session.undo();
    EXPECT_EQ(document(), before);
}

TEST_F(TermExchangeTest, LanguagesWithoutADefaultAreARefusal) {
    files.put("/other/project.json", R"({"languages": {"de": {}}})");
    ASSERT_TRUE(frame.open("/other"));
    EXPECT_TRUE(play("no default", [this](ImGuiTestContext& user) {
        start(user, "/terms");
        user.Yield(2);
        IM_CHECK(!frame.exchange().isBusy());
        IM_CHECK(isShown("Preview Import"));
    }));
}

TEST_F(TermExchangeTest, TheReportOpensAfterARunThatNeedsAttentionAndOnlyThen) {
    const auto finish = [this](TermOutcome outcome) {
        isOpen() = false;
        LocalizationRun run{LocalizationRun::Kind::Export, "/i18n", {}, {}};
        run.report.add(UnsignedInt(findLanguage("de")), outcome, "door", "reason");
        setLastRun(session.editor(), std::move(run));
        draw(3);
        return isOpen();
    };
    for(const TermOutcome outcome:
        {TermOutcome::Added, TermOutcome::Changed, TermOutcome::Unchanged, TermOutcome::Empty})
        EXPECT_FALSE(finish(outcome)) << int(outcome);
    EXPECT_TRUE(says("Exported to /i18n: 1 without text"));
    EXPECT_TRUE(finish(TermOutcome::Skipped));
    EXPECT_TRUE(says("Exported to /i18n: 1 skipped"));
    EXPECT_TRUE(finish(TermOutcome::Notice));
}

TEST_F(TermExchangeTest, TheReportOpensAfterARefusedRunAndTheStatusBarKeepsTheReason) {
    Containers::Array<UnsignedInt> languages;
    LocalizationTools::importTerms(
        session.editor(), languages, UnsignedInt(findLanguage("en")), "/nowhere/at/all", LocalizationFormat::I18Next);
    draw(3);
    EXPECT_TRUE(isOpen());
    EXPECT_EQ(log.last()->severity, MessageLog::Severity::Warning);
    EXPECT_TRUE(log.last()->text.contains("/nowhere/at/all")) << log.last()->text.data();
}

TEST_F(TermExchangeTest, TheReportComesToTheFrontOfTheMessages) {
    files.put("/terms/de/translation.json", R"({"nowhere": "?"})");
    EXPECT_TRUE(play("tabs", [this](ImGuiTestContext& user) {
        choose(user, "View/Localization Report");
        choose(user, "View/Messages");
        user.Yield(3);
        user.WindowFocus("//Messages");
        user.Yield(3);
        IM_CHECK(isShown("Messages"));
        IM_CHECK(!isShown("Localization Report"));
        preview(user);
        user.Yield(3);
        IM_CHECK(isShown("Localization Report"));
        IM_CHECK(!isShown("Messages"));
    }));
}

TEST_F(TermExchangeTest, TermsAreCheckedAndTheReportShowsWhatWasFound) {
    session.changes().pushChange(
        "/localization/translations/de/door/text", Containers::StringView{"Pforte {{name}}"}, false);
    const std::string edited = document();
    EXPECT_TRUE(play("check", [this](ImGuiTestContext& user) {
        choose(user, "File/Check terms");
        for(int i = 0; i != 1000 && !lastRun(session.editor()); ++i) user.Yield();
        user.Yield(5);
        IM_CHECK(!isShown("Check Terms"));
        IM_CHECK(isShown("Localization Report"));
    }));
    ASSERT_TRUE(lastRun(session.editor()));
    const LocalizationReport& report = lastRun(session.editor())->report;
    ASSERT_EQ(report.lines().size(), 1u);
    EXPECT_EQ(report.lines()[0].term, "door");
    EXPECT_EQ(report.lines()[0].reason, "error: has {{name}}, which the source does not have [placeholder-differs]");
    EXPECT_EQ(report.languages().size(), 2u);
    EXPECT_TRUE(says("Checked the terms: 1 notice"));
    EXPECT_EQ(document(), edited);
}

TEST_F(TermExchangeTest, ChecksThatFindNothingSaySoInTheStatusBar) {
    EXPECT_TRUE(play("check", [this](ImGuiTestContext& user) {
        choose(user, "File/Check terms");
        for(int i = 0; i != 1000 && !lastRun(session.editor()); ++i) user.Yield();
        user.Yield(5);
        IM_CHECK(!isShown("Check Terms"));
    }));
    EXPECT_FALSE(isOpen());
    EXPECT_TRUE(says("Checked the terms: nothing was found"));
}

TEST_F(TermExchangeTest, AProjectWithoutADefaultLanguageIsNotChecked) {
    files.put("/other/project.json", R"({"languages": {"de": {}}})");
    ASSERT_TRUE(frame.open("/other"));
    EXPECT_TRUE(play("no default", [](ImGuiTestContext& user) {
        choose(user, "File/Check terms");
        user.Yield(5);
        IM_CHECK(!isShown("Check Terms"));
    }));
    EXPECT_FALSE(lastRun(session.editor()));
    EXPECT_TRUE(log.last()->text.contains("marks no language")) << log.last()->text.data();
}

TEST_F(TermExchangeTest, AnotherRunTakesThePlaceOfAPreview) {
    EXPECT_TRUE(play("another run", [this](ImGuiTestContext& user) {
        preview(user);
        LocalizationTools::gatherStrings(session.editor());
        user.Yield(3);
        IM_CHECK(!user.ItemExists("//Localization Report/###Apply"));
        IM_CHECK(says("Gathering found no new texts: nothing to do"));
    }));
}

TEST_F(TermExchangeTest, AnotherProjectHasNoReportOfThisOne) {
    EXPECT_TRUE(play("another project", [this](ImGuiTestContext& user) {
        preview(user);
        IM_CHECK(frame.open("/other"));
        user.Yield(3);
        IM_CHECK(!user.ItemExists("//Localization Report/###Apply"));
        IM_CHECK(!user.ItemExists("//Localization Report/###Copy"));
    }));
    EXPECT_FALSE(lastRun(session.editor()));
}

TEST_F(TermExchangeTest, AProjectIsOpenedWhileAPreviewRuns) {
    files.close();
    EXPECT_TRUE(play("open", [this](ImGuiTestContext& user) {
        start(user, "/terms");
        files.awaitReader();
        files.open();
        IM_CHECK(frame.open("/other"));
        IM_CHECK(!frame.exchange().isBusy());
        user.Yield(3);
        IM_CHECK(!isShown("Preview Import"));
    }));
    EXPECT_EQ(document(), "{}");
}

}
}
