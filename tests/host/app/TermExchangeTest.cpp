#include "app/TermExchange.h"

#include <string>
#include <utility>

#include "QuorvaneEditor/LocalizationTools.h"
#include "QuorvaneEditor/QuorvaneEditor.h"
#include "TermExchangeTest.h"
#include "localization/LanguageLookup.h"
#include "localization/LastRun.h"

namespace QuorvaneEngine::Test {
namespace {

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

TEST_F(TermExchangeTest, AnImportIsUndoneInTheReportOfTheCheckThatFollows) {
    files.put("/terms/de/translation.json", R"({"door": "Pforte {{name}}"})");
    EXPECT_TRUE(play("check an import", [this](ImGuiTestContext& user) {
        preview(user);
        user.ItemClick("//Localization Report/###Apply");
        user.Yield(3);
        const std::string imported = document();
        IM_CHECK(imported != before);
        choose(user, "File/Check terms");
        await(user);
        IM_CHECK(lastRun(session.editor())->kind == LocalizationRun::Kind::Check);
        choose(user, "File/Check terms");
        await(user);
        IM_CHECK(document() == imported);
        user.ItemClick("//Localization Report/###Undo");
        user.Yield(3);
        IM_CHECK(document() == before);
    }));
}

TEST_F(TermExchangeTest, ACheckAfterAnythingElseHasNothingToUndo) {
    EXPECT_TRUE(play("check an edit", [this](ImGuiTestContext& user) {
        LocalizationTools::gatherStrings(session.editor());
        edit("/localization/translations/de/door/text", "Pforte {{name}}");
        choose(user, "File/Check terms");
        await(user);
        IM_CHECK(lastRun(session.editor())->kind == LocalizationRun::Kind::Check);
        IM_CHECK(isShown("Localization Report"));
        IM_CHECK(!user.ItemExists("//Localization Report/###Undo"));
    }));
}

TEST_F(TermExchangeTest, APreviewIsNotLostToACheck) {
    EXPECT_TRUE(play("check in a preview", [this](ImGuiTestContext& user) {
        preview(user);
        choose(user, "File");
        user.Yield();
        const ImGuiTestItemInfo item = user.ItemInfo("//$FOCUSED/Check terms");
        IM_CHECK(item.ItemFlags & ImGuiItemFlags_Disabled);
        user.PopupCloseAll();
        user.ItemClick("//Localization Report/###Discard");
        user.Yield(3);
        choose(user, "File/Check terms");
        await(user);
        IM_CHECK(lastRun(session.editor()));
    }));
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

}
}
