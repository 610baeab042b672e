#include "app/ReportPanel.h"

#include <string>

#include <Corrade/Containers/GrowableArray.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "ChangeManager.h"
#include "Language.h"
#include "ShownText.h"
#include "document/EditorSession.h"
#include "localization/LastRun.h"
#include "support/FrameAllocations.h"

namespace QuorvaneEngine {
namespace {

using QuorvaneEngine::Test::frameAllocations;
using QuorvaneEngine::Test::GuiTest;
using QuorvaneEngine::Test::language;
using QuorvaneEngine::Test::shownText;
using Action = ReportPanel::Action;
using Mode = ReportPanel::Mode;

class ReportPanelTest: public testing::Test {
protected:
    ReportPanelTest() {
        LocalizationReport& report = run->report;
        for(const char* code: {"fr", "de"}) report.addLanguage(language(code));
        report.add(language("fr"), TermOutcome::Skipped, "door", "no term has this key", "fr/translation.json");
        report.add(language("de"), TermOutcome::Added, "lamp");
        report.add(language("de"), TermOutcome::Changed, "moon");
        report.add(language("de"), TermOutcome::Unchanged, "sun");
    }

    /** Changes the project as the run is said to have done. */
    void change() {
        run->group = session.changes().openGroup();
        push("run");
        session.changes().commit();
    }

    void push(const char* text) { session.changes().pushChange("/text", Containers::StringView{text}, false); }

    void draw() {
        ImGui::SetNextWindowPos({0.0f, 0.0f});
        ImGui::SetNextWindowSize({width, 600.0f});
        if(!open) return;
        if(const Action action = panel.draw(session.editor(), run, mode, &open); action != Action::None) asked = action;
    }

    bool play(const char* name, const GuiTest::Script& script) {
        return gui.run(
            name, [this] { draw(); },
            [&](ImGuiTestContext& user) {
                user.SetRef("//Localization Report");
                user.Yield(2);
                script(user);
            });
    }

    std::string shown() {
        return shownText(gui, [this] { draw(); });
    }

    bool shows(const char* text) { return shown().find(text) != std::string::npos; }

    static bool isEnabled(ImGuiTestContext& user, const char* item) {
        const ImGuiTestItemInfo info = user.ItemInfo(item);
        return info.ID && !(info.ItemFlags & ImGuiItemFlags_Disabled);
    }

    static std::string clipboard() {
        const char* const text = ImGui::GetClipboardText();
        return text ? text : "";
    }

    std::shared_ptr<LocalizationRun> run =
        std::make_shared<LocalizationRun>(LocalizationRun{LocalizationRun::Kind::Import, "/here/i18n", {}, {}});
    EditorSession session;
    ReportPanel panel;
    GuiTest gui{{1600.0f, 800.0f}};
    Mode mode = Mode::Done;
    Action asked = Action::None;
    float width = 1500.0f;
    bool open = true;
};

TEST_F(ReportPanelTest, WithoutARunItSaysWhatItIsFor) {
    run = nullptr;
    EXPECT_TRUE(shows("What gathering, export and import have done, and what checks have found, is reported here."));
}

TEST_F(ReportPanelTest, ShowsWhatWasDoneTheCountsAndTheLines) {
    change();
    for(const char* text: {"Imported from /here/i18n", "1 Added", "1 Changed", "1 Skipped", "All", "German",
            "no term has this key", "fr/translation.json"})
        EXPECT_TRUE(shows(text)) << text << "\n" << shown();
    EXPECT_FALSE(shows("1 Unchanged")) << "there are no lines of this outcome";
    EXPECT_FALSE(shows("1 Notice"));
    run->report.add(language("de"), TermOutcome::Notice, "", "something");
    panel = {};
    EXPECT_TRUE(shows("1 Notice"));
    EXPECT_FALSE(shows("1 Notices"));
}

TEST_F(ReportPanelTest, NothingIsLeftOutInANarrowWindow) {
    change();
    width = 420.0f;
    for(const char* text: {"Imported from", "1 Added", "Undo this import", "All", "no term has this key"})
        EXPECT_TRUE(shows(text)) << text << "\n" << shown();
    EXPECT_TRUE(play("narrow", [this](ImGuiTestContext& user) {
        user.ItemClick("###Undo");
        IM_CHECK(asked == Action::Undo);
        user.ItemClick("###Copy");
        IM_CHECK(clipboard().find("lamp") != std::string::npos);
    }));
}

TEST_F(ReportPanelTest, TheLastStepCanBeUndoneAndOnlyThat) {
    change();
    EXPECT_TRUE(play("undo", [this](ImGuiTestContext& user) {
        IM_CHECK(isEnabled(user, "###Undo"));
        user.ItemClick("###Undo");
        IM_CHECK(asked == Action::Undo);
        push("later");
        user.Yield();
        IM_CHECK(!isEnabled(user, "###Undo"));
        session.undo();
        user.Yield();
        IM_CHECK(isEnabled(user, "###Undo"));
        session.undo();
        user.Yield();
        IM_CHECK(!isEnabled(user, "###Undo"));
    }));
    EXPECT_TRUE(shows("(undone)"));
    session.redo();
    EXPECT_FALSE(shows("(undone)"));
}

TEST_F(ReportPanelTest, ADisabledButtonSaysWhy) {
    change();
    push("later");
    EXPECT_TRUE(play("tooltip", [this](ImGuiTestContext& user) {
        user.MouseMove("###Undo", ImGuiTestOpFlags_NoCheckHoveredId);
        user.Yield(3);
        bool isShown = false;
        for(const ImGuiWindow* const window: user.UiContext->Windows)
            isShown = isShown || (window->WasActive && window->Flags & ImGuiWindowFlags_Tooltip);
        IM_CHECK(isShown);
        IM_CHECK(asked == Action::None);
    }));
}

TEST_F(ReportPanelTest, NothingIsUndoneWhileAnotherChangeIsOpen) {
    change();
    session.changes().openGroup();
    EXPECT_TRUE(play("group", [this](ImGuiTestContext& user) {
        IM_CHECK(!isEnabled(user, "###Undo"));
        session.changes().commit();
        user.Yield();
        IM_CHECK(isEnabled(user, "###Undo"));
    }));
}

TEST_F(ReportPanelTest, AnExportHasNothingToUndoAndAGatheringHas) {
    run->kind = LocalizationRun::Kind::Export;
    EXPECT_FALSE(shows("Undo"));
    panel = {};
    run->kind = LocalizationRun::Kind::Gathering;
    EXPECT_TRUE(shows("Undo this gathering"));
}

TEST_F(ReportPanelTest, APreviewIsAppliedOrDiscarded) {
    mode = Mode::Preview;
    EXPECT_TRUE(shows("What an import from /here/i18n would do"));
    EXPECT_FALSE(shows("Undo"));
    EXPECT_TRUE(play("preview", [this](ImGuiTestContext& user) {
        user.ItemClick("###Apply");
        IM_CHECK(asked == Action::Apply);
        user.ItemClick("Discard");
        IM_CHECK(asked == Action::Discard);
        asked = Action::None;
        session.changes().openGroup();
        user.Yield();
        IM_CHECK(!isEnabled(user, "###Apply"));
        IM_CHECK(isEnabled(user, "Discard"));
        session.changes().commit();
    }));
    EXPECT_FALSE(shows("has changed since the preview"));
    mode = Mode::Outdated;
    EXPECT_TRUE(shows("has changed since the preview"));
}

TEST_F(ReportPanelTest, ASecondClickOnApplyDoesNotUndo) {
    mode = Mode::Preview;
    EXPECT_TRUE(play("twice", [this](ImGuiTestContext& user) {
        user.ItemClick("###Apply");
        IM_CHECK(asked == Action::Apply);
        asked = Action::None;
        change();
        mode = Mode::Done;
        user.Yield(2);
        user.MouseClick();
        user.Yield(2);
        IM_CHECK(asked == Action::None);
    }));
}

TEST_F(ReportPanelTest, OutcomesAreHiddenAndShownAgain) {
    EXPECT_TRUE(play("outcomes", [](ImGuiTestContext& user) {
        user.ItemClick("###Skipped");
        user.ItemClick("###Copy");
        IM_CHECK_STR_EQ(
            clipboard().c_str(), "Language\tOutcome\tTerm\tReason\tFile\nde\tChanged\tmoon\t\t\nde\tAdded\tlamp\t\t\n");
        user.ItemClick("###Added");
        user.ItemClick("###Skipped");
        user.ItemClick("###Copy");
        IM_CHECK_STR_EQ(clipboard().c_str(),
            "Language\tOutcome\tTerm\tReason\tFile\n"
            "fr\tSkipped\tdoor\tno term has this key\tfr/translation.json\nde\tChanged\tmoon\t\t\n");
    }));
}

TEST_F(ReportPanelTest, LinesAreSearched) {
    EXPECT_TRUE(play("search", [](ImGuiTestContext& user) {
        user.ItemInput("##report");
        user.KeyChars("GERMAN");
        user.ItemClick("###Copy");
        IM_CHECK_STR_EQ(
            clipboard().c_str(), "Language\tOutcome\tTerm\tReason\tFile\nde\tChanged\tmoon\t\t\nde\tAdded\tlamp\t\t\n");
    }));
}

TEST_F(ReportPanelTest, AnotherReportIsShownAsAWhole) {
    EXPECT_TRUE(play("another", [this](ImGuiTestContext& user) {
        user.ItemClick("###Skipped");
        user.ItemInput("##report");
        user.KeyChars("moon");
        auto other =
            std::make_shared<LocalizationRun>(LocalizationRun{LocalizationRun::Kind::Export, "/there", {}, {}});
        other->report.addLanguage(language("ja"));
        other->report.add(language("ja"), TermOutcome::Skipped, "star", "has no source");
        run = other;
        user.Yield(2);
        user.ItemClick("###Copy");
        IM_CHECK_STR_EQ(
            clipboard().c_str(), "Language\tOutcome\tTerm\tReason\tFile\nja\tSkipped\tstar\thas no source\t\n");
    }));
    EXPECT_TRUE(shows("Exported to /there"));
}

TEST_F(ReportPanelTest, TheSelectedLineIsCopiedByKeys) {
    EXPECT_TRUE(play("keys", [](ImGuiTestContext& user) {
        int index = 1;
        const ImGuiID table = ImHashStr("lines", 0, ImGui::FindWindowByName("Localization Report")->ID);
        // The middle of the row may be the border of a column, which is for another purpose.
        const ImRect row = user.ItemInfo(ImHashStr("##line", 0, ImHashData(&index, sizeof(index), table))).RectFull;
        user.MouseMoveToPos({row.Min.x + 20.0f, row.GetCenter().y});
        user.MouseClick();
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_C);
        IM_CHECK_STR_EQ(clipboard().c_str(), "de\tAdded\tlamp\t\t\n");
    }));
}

TEST_F(ReportPanelTest, OfARefusedRunTheReasonsAreShown) {
    run = std::make_shared<LocalizationRun>(LocalizationRun{LocalizationRun::Kind::Import, "/here", {}, {}});
    for(const char* reason: {"/here/de.json:1:2: is cut off", "/here/fr.json: is empty"})
        Containers::arrayAppend(run->refusals, Containers::String{reason});
    for(const char* text:
        {"Nothing was imported from /here", "/here/de.json:1:2: is cut off", "/here/fr.json: is empty"})
        EXPECT_TRUE(shows(text)) << text << "\n" << shown();
    EXPECT_FALSE(shows("Undo"));
    EXPECT_TRUE(play("copy", [](ImGuiTestContext& user) {
        user.ItemClick("###Copy");
        IM_CHECK_STR_EQ(clipboard().c_str(), "/here/de.json:1:2: is cut off\n/here/fr.json: is empty\n");
    }));
}

TEST_F(ReportPanelTest, ClosesByItsButton) {
    EXPECT_TRUE(play("close", [this](ImGuiTestContext& user) {
        user.WindowClose("//Localization Report");
        IM_CHECK(!open);
    }));
}

TEST_F(ReportPanelTest, AFrameAllocatesNothingWhateverTheSizeOfTheReport) {
    change();
    for(int i = 0; i != 600000; ++i)
        run->report.add(language("de"), TermOutcome::Added, "settings.sound.volume", "", "de/translation.json");
    gui.frames([this] { draw(); }, 10);
    const std::uint64_t lookups = session.project().lookupCount();
    EXPECT_EQ(frameAllocations(gui, 20, [this] { draw(); }), 0u);
    EXPECT_EQ(session.project().lookupCount(), lookups);
}

}
}
