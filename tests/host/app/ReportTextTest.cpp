#include "app/ReportText.h"

#include <cstdlib>
#include <ctime>

#include <Corrade/Containers/GrowableArray.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "ChangeManager.h"
#include "Language.h"
#include "app/ReportRows.h"
#include "document/EditorSession.h"
#include "localization/LastRun.h"

namespace QuorvaneEngine {
namespace {

using QuorvaneEngine::Test::language;
using Kind = LocalizationRun::Kind;

LocalizationRun runOf(Kind kind) {
    LocalizationRun run{kind, "/here/i18n", {}, {}};
    run.group = 1;
    return run;
}

TEST(ReportText, TheHeadlineSaysWhatWasDoneWithWhat) {
    EXPECT_EQ(ReportText::headline(runOf(Kind::Import), false), "Imported from /here/i18n");
    EXPECT_EQ(ReportText::headline(runOf(Kind::Export), false), "Exported to /here/i18n");
    EXPECT_EQ(ReportText::headline(runOf(Kind::Gathering), false), "Gathered new terms");
    EXPECT_EQ(ReportText::headline(runOf(Kind::Check), false), "Checked the terms");
}

TEST(ReportText, TheHeadlineOfARunThatChangedNothingSaysSo) {
    LocalizationRun import = runOf(Kind::Import);
    LocalizationRun gathering = runOf(Kind::Gathering);
    LocalizationRun exported = runOf(Kind::Export);
    import.group = gathering.group = exported.group = -1;
    EXPECT_EQ(ReportText::headline(import, false), "The import from /here/i18n changed nothing");
    EXPECT_EQ(ReportText::headline(gathering, false), "Gathering found no new texts");
    EXPECT_EQ(ReportText::headline(exported, false), "Exported to /here/i18n");
}

TEST(ReportText, TheHeadlineOfARefusedRunSaysThatNothingWasDone) {
    const auto refused = [](Kind kind) {
        LocalizationRun run = runOf(kind);
        Containers::arrayAppend(run.refusals, Containers::String{"de.json: is empty"});
        return ReportText::headline(run, false);
    };
    EXPECT_EQ(refused(Kind::Import), "Nothing was imported from /here/i18n");
    EXPECT_EQ(refused(Kind::Export), "Nothing was exported to /here/i18n");
    EXPECT_EQ(refused(Kind::Gathering), "No terms were gathered");
}

TEST(ReportText, TheHeadlineOfAPreviewSaysThatNothingIsDoneYet) {
    EXPECT_EQ(ReportText::headline(runOf(Kind::Import), true), "What an import from /here/i18n would do");
}

TEST(ReportText, APathMayHoldWhatFormatsMean) {
    LocalizationRun run = runOf(Kind::Import);
    run.path = "/a {} %s/i18n";
    EXPECT_EQ(ReportText::headline(run, false), "Imported from /a {} %s/i18n");
}

TEST(ReportText, TheSummaryCountsAllLanguagesAndWhatBelongsToNone) {
    LocalizationRun run = runOf(Kind::Import);
    EXPECT_EQ(ReportText::summary(run), "nothing to do");
    run.report.add(language("de"), TermOutcome::Added, "a");
    run.report.add(language("fr"), TermOutcome::Added, "a");
    run.report.add(language("fr"), TermOutcome::Unchanged, "b");
    run.report.add(language("fr"), TermOutcome::Empty, "c");
    run.report.add(LocalizationReport::NoLanguage, TermOutcome::Notice, "", "one");
    EXPECT_EQ(ReportText::summary(run), "2 added, 1 unchanged, 1 without text, 1 notice");
    run.report.add(LocalizationReport::NoLanguage, TermOutcome::Notice, "", "two");
    run.report.add(language("fr"), TermOutcome::Changed, "d");
    run.report.add(language("fr"), TermOutcome::Skipped, "e", "is not translatable");
    EXPECT_EQ(ReportText::summary(run), "2 added, 1 changed, 1 unchanged, 1 without text, 1 skipped, 2 notices");
    EXPECT_EQ(ReportText::count(run.report, TermOutcome::Added), 2u);
    EXPECT_EQ(ReportText::count(run.report, TermOutcome::Skipped), 1u);
}

TEST(ReportText, TheSummaryOfARefusedRunIsItsFirstReason) {
    LocalizationRun run = runOf(Kind::Import);
    for(const char* reason: {"de.json: is empty", "fr.json: is empty"})
        Containers::arrayAppend(run.refusals, Containers::String{reason});
    EXPECT_EQ(ReportText::summary(run), "de.json: is empty");
}

TEST(ReportText, TheTimeIsTheLocalOne) {
    setenv("TZ", "XXX-3", 1);
    tzset();
    LocalizationRun run = runOf(Kind::Import);
    run.when = std::chrono::system_clock::from_time_t(1709219109);
    EXPECT_EQ(ReportText::time(run), "2024-02-29 18:05:09");
}

TEST(ReportText, OutcomesAndLanguagesHaveNames) {
    EXPECT_EQ(ReportText::outcomeName(TermOutcome::Added), "Added");
    EXPECT_EQ(ReportText::outcomeName(TermOutcome::Notice), "Notice");
    EXPECT_EQ(ReportText::languageName(language("pt-BR")), "Portuguese (Brazil)");
    EXPECT_EQ(ReportText::languageName(LocalizationReport::NoLanguage), "");
}

/** A project in which a run has set /text. */
class ReportTextUndo: public testing::Test {
protected:
    ReportTextUndo() {
        run.group = session.changes().openGroup();
        push("run");
        session.changes().commit();
    }

    void push(const char* text) { session.changes().pushChange("/text", Containers::StringView{text}, false); }

    Containers::StringView obstacle() { return ReportText::undoObstacle(session.editor(), run); }
    bool isUndone() { return ReportText::isUndone(session.editor(), run); }

    EditorSession session;
    LocalizationRun run = runOf(Kind::Import);
};

TEST_F(ReportTextUndo, NothingStandsInTheWayOfTheLastStep) {
    EXPECT_EQ(obstacle(), "");
    EXPECT_FALSE(isUndone());
}

TEST_F(ReportTextUndo, WhatChangedNothingIsNotUndone) {
    run.group = -1;
    EXPECT_EQ(obstacle(), "It changed nothing");
    EXPECT_FALSE(isUndone());
}

TEST_F(ReportTextUndo, LaterChangesComeFirst) {
    push("later");
    EXPECT_EQ(obstacle(), "The project was changed since then: undo that first, by Edit > Undo");
    EXPECT_FALSE(isUndone());
    session.undo();
    EXPECT_EQ(obstacle(), "");
}

TEST_F(ReportTextUndo, AnOpenGroupComesFirst) {
    session.changes().openGroup();
    EXPECT_EQ(obstacle(), "Another change is not finished yet");
    session.changes().commit();
    EXPECT_EQ(obstacle(), "");
}

TEST_F(ReportTextUndo, WhatIsUndoneCanBeBroughtBack) {
    session.undo();
    EXPECT_EQ(obstacle(), "It is undone: Edit > Redo brings it back");
    EXPECT_TRUE(isUndone());
    session.redo();
    EXPECT_EQ(obstacle(), "");
    EXPECT_FALSE(isUndone());
}

TEST_F(ReportTextUndo, WhatIsUndoneAndReplacedIsGone) {
    session.undo();
    push("other");
    EXPECT_EQ(obstacle(), "It is undone");
    EXPECT_TRUE(isUndone());
}

TEST(ReportText, ALineIsCopiedWithTabsBetween) {
    LocalizationReport report;
    report.add(language("pt-BR"), TermOutcome::Skipped, "menu.start", "is not translatable", "pt-BR/common.json");
    report.add(LocalizationReport::NoLanguage, TermOutcome::Notice, "a\tb\nc", "tells");
    EXPECT_EQ(
        ReportText::copied(report.lines()[0]), "pt-BR\tSkipped\tmenu.start\tis not translatable\tpt-BR/common.json\n");
    EXPECT_EQ(ReportText::copied(report.lines()[1]), "\tNotice\ta b c\ttells\t\n");
}

TEST(ReportText, AReportIsCopiedAsItIsShown) {
    LocalizationRun run = runOf(Kind::Import);
    run.report.add(language("fr"), TermOutcome::Added, "b");
    run.report.add(language("de"), TermOutcome::Skipped, "c", "is not translatable");
    run.report.add(language("de"), TermOutcome::Added, "a");
    ReportRows rows;
    rows.assign(run.report.lines());
    rows.filter(ReportRows::bit(TermOutcome::Added), "");
    rows.sort(ReportRows::Column::Term, false);
    EXPECT_EQ(ReportText::copied(run, rows),
        "Language\tOutcome\tTerm\tReason\tFile\n"
        "de\tAdded\ta\t\t\n"
        "fr\tAdded\tb\t\t\n");
}

TEST(ReportText, OfARefusedRunTheReasonsAreCopied) {
    LocalizationRun run = runOf(Kind::Import);
    for(const char* reason: {"de.json: is empty", "fr.json:\nis empty"})
        Containers::arrayAppend(run.refusals, Containers::String{reason});
    EXPECT_EQ(ReportText::copied(run, ReportRows{}), "de.json: is empty\nfr.json: is empty\n");
}

}
}
