#include "app/ImportPreview.h"

#include <atomic>
#include <string>
#include <thread>

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "ChangeManager.h"
#include "GatedFileSystem.h"
#include "QuorvaneEditor/AllLanguages.h"
#include "QuorvaneEditor/JobSystem.h"
#include "TwoTerms.h"
#include "document/EditorSession.h"
#include "localization/LanguageLookup.h"
#include "localization/LastRun.h"
#include "localization/Progress.h"
#include "support/Json.h"

namespace QuorvaneEngine {
namespace {

using Event = ImportPreview::Event;
using State = ImportPreview::State;
using QuorvaneEngine::Test::toText;
using QuorvaneEngine::Test::TwoTerms;

const UnsignedInt English = UnsignedInt(findLanguage("en"));

/** A project in two languages, and files that translate it. */
class ImportPreviewTest: public testing::TestWithParam<UnsignedInt> {
protected:
    ImportPreviewTest() {
        session.replaceDocument(QuorvaneEngine::Test::parsed(TwoTerms));
        files.put("/terms/de/translation.json", R"({"door": "Tuer", "lamp": "Lampe", "moon": "Mond"})");
        before = document();
    }

    std::string document() { return toText(session.project()); }

    /** Goes on until something happens. */
    Event follow() {
        while(true) {
            jobs.runMainThreadJobs();
            const Event event = preview.update();
            if(event != Event::None || !preview.isRunning()) return event;
            std::this_thread::yield();
        }
    }

    Event see(const char* path = "/terms") {
        preview.start(path, English);
        return follow();
    }

    /** Other work on the project. */
    void edit(const char* path, const char* text) {
        session.changes().pushChange(Containers::StringView{path}, Containers::StringView{text}, false);
    }

    const LocalizationRun* last() { return lastRun(session.editor()); }

    GatedFileSystem files;
    JobSystem jobs{GetParam()};
    EditorSession session{&jobs};
    ImportPreview preview{session.editor(), jobs, files};
    std::string before;
};

/* With a worker, and without any, where all jobs belong to the GUI thread. */
INSTANTIATE_TEST_SUITE_P(
    Threads, ImportPreviewTest, testing::Values(0u, 2u), [](const auto& info) { return std::to_string(info.param); });

TEST_P(ImportPreviewTest, BeginsWithNothing) {
    EXPECT_EQ(preview.state(), State::None);
    EXPECT_FALSE(preview.isRunning());
    EXPECT_FALSE(preview.readsProject());
    EXPECT_EQ(preview.update(), Event::None);
    EXPECT_FALSE(preview.run());
    preview.cancel();
    preview.discard();
    EXPECT_EQ(preview.state(), State::None);
}

TEST_P(ImportPreviewTest, ShowsWhatAnImportWouldDoAndChangesNothing) {
    const Int revision = session.project().revision();
    EXPECT_EQ(see(), Event::Ready);
    EXPECT_EQ(preview.state(), State::Ready);
    ASSERT_TRUE(preview.run());
    EXPECT_EQ(preview.run()->kind, LocalizationRun::Kind::Import);
    EXPECT_EQ(preview.run()->path, "/terms");
    EXPECT_EQ(preview.run()->group, -1);
    const LocalizationReport::Counts counts = preview.run()->report.counts(UnsignedInt(findLanguage("de")));
    EXPECT_EQ(counts.added, 1u);
    EXPECT_EQ(counts.changed, 1u);
    EXPECT_EQ(counts.skipped, 1u);
    EXPECT_EQ(document(), before);
    EXPECT_EQ(session.project().revision(), revision);
    EXPECT_FALSE(session.changes().canUndo());
    EXPECT_FALSE(last());
}

TEST_P(ImportPreviewTest, ApplyingItIsOneStepOfUndoAndTheLastRun) {
    ASSERT_EQ(see(), Event::Ready);
    const std::shared_ptr<LocalizationRun> run = preview.run();
    EXPECT_EQ(preview.apply(), Event::Applied);
    EXPECT_EQ(preview.state(), State::None);
    EXPECT_EQ(last(), run.get());
    EXPECT_TRUE(canUndo(session.editor(), *run));
    const std::string after = document();
    EXPECT_NE(after.find("\"Tuer\""), std::string::npos) << after;
    EXPECT_NE(after.find("\"Lampe\""), std::string::npos) << after;
    session.undo();
    EXPECT_EQ(document(), before);
    EXPECT_FALSE(session.changes().canUndo());
    session.redo();
    EXPECT_EQ(document(), after);
}

TEST_P(ImportPreviewTest, DiscardingItLeavesEverythingAsItWas) {
    ASSERT_EQ(see(), Event::Ready);
    preview.discard();
    EXPECT_EQ(preview.state(), State::None);
    EXPECT_FALSE(preview.run());
    EXPECT_EQ(document(), before);
    EXPECT_FALSE(session.changes().canUndo());
    EXPECT_FALSE(last());
}

TEST_P(ImportPreviewTest, ARefusedSetIsTheLastRunAndChangesNothing) {
    files.put("/terms/fr/translation.json", "{\"door\": ");
    EXPECT_EQ(see(), Event::Refused);
    EXPECT_EQ(preview.state(), State::None);
    ASSERT_TRUE(last());
    ASSERT_EQ(last()->refusals.size(), 1u);
    EXPECT_TRUE(last()->refusals[0].hasPrefix("/terms/fr/translation.json:1:")) << last()->refusals[0].data();
    EXPECT_EQ(last()->group, -1);
    EXPECT_EQ(document(), before);
}

TEST_P(ImportPreviewTest, AProjectThatCannotTakeItIsARefusalToo) {
    session.replaceDocument(
        QuorvaneEngine::Test::parsed(R"({"languages": {"en": {"isDefault": true}}, "localization": []})"));
    before = document();
    EXPECT_EQ(see(), Event::Refused);
    ASSERT_TRUE(last());
    EXPECT_EQ(last()->refusals.size(), 1u);
    EXPECT_EQ(document(), before);
}

TEST_P(ImportPreviewTest, AProjectThatChangedIsComparedAgainBeforeItIsChanged) {
    ASSERT_EQ(see(), Event::Ready);
    edit("/objects/lamp/colour", "red");
    const std::string edited = document();
    EXPECT_EQ(preview.apply(), Event::None);
    EXPECT_TRUE(preview.isRunning());
    EXPECT_TRUE(preview.isApplying());
    EXPECT_EQ(document(), edited);
    EXPECT_EQ(follow(), Event::Applied);
    EXPECT_FALSE(preview.isApplying());
    EXPECT_NE(document(), edited);
    session.undo();
    EXPECT_EQ(document(), edited);
    session.undo();
    EXPECT_EQ(document(), before);
}

TEST_P(ImportPreviewTest, WhatIsAppliedIsWhatWasReadOfTheFiles) {
    ASSERT_EQ(see(), Event::Ready);
    edit("/objects/lamp/colour", "red");
    files.put("/terms/de/translation.json", R"({"door": "Tor", "lamp": "Licht", "moon": "Mond"})");
    EXPECT_EQ(preview.apply(), Event::None);
    EXPECT_EQ(follow(), Event::Applied);
    EXPECT_NE(document().find("\"Lampe\""), std::string::npos) << document();
    EXPECT_EQ(document().find("\"Licht\""), std::string::npos) << document();
}

TEST_P(ImportPreviewTest, WhatIsNoLongerWhatWasShownIsShownAgain) {
    ASSERT_EQ(see(), Event::Ready);
    edit("/localization/translations/de/door/text", "Tuer");
    const std::string edited = document();
    EXPECT_EQ(preview.apply(), Event::None);
    EXPECT_EQ(follow(), Event::Outdated);
    EXPECT_EQ(preview.state(), State::Ready);
    EXPECT_EQ(preview.run()->report.counts(UnsignedInt(findLanguage("de"))).changed, 0u);
    EXPECT_EQ(document(), edited);
    EXPECT_EQ(preview.apply(), Event::Applied);
    session.undo();
    EXPECT_EQ(document(), edited);
}

TEST_P(ImportPreviewTest, ATextThatWouldBeReplacedAndIsAnotherOneNowIsShownAgain) {
    ASSERT_EQ(see(), Event::Ready);
    edit("/localization/translations/de/door/text", "Portal");
    const std::string edited = document();
    EXPECT_EQ(preview.apply(), Event::None);
    EXPECT_EQ(follow(), Event::Outdated);
    EXPECT_EQ(preview.run()->report.counts(UnsignedInt(findLanguage("de"))).changed, 1u);
    EXPECT_EQ(document(), edited);
    EXPECT_EQ(preview.apply(), Event::Applied);
    session.undo();
    EXPECT_EQ(document(), edited);
}

TEST_P(ImportPreviewTest, ASourceTextThatIsAnotherOneNowIsShownAgain) {
    ASSERT_EQ(see(), Event::Ready);
    edit("/objects/lamp/text", "Lantern");
    EXPECT_EQ(preview.apply(), Event::None);
    EXPECT_EQ(follow(), Event::Outdated);
}

TEST_P(ImportPreviewTest, IsNotAppliedInTheMiddleOfAnotherChange) {
    ASSERT_EQ(see(), Event::Ready);
    edit("/objects/lamp/colour", "red");
    EXPECT_EQ(preview.apply(), Event::None);
    session.changes().openGroup();
    const std::string edited = document();
    EXPECT_EQ(follow(), Event::Outdated);
    EXPECT_EQ(document(), edited);
    session.changes().commit();
    EXPECT_EQ(preview.apply(), Event::Applied);
}

TEST_P(ImportPreviewTest, WhatIsRefusedBeforeItIsAppliedEndsThePreview) {
    ASSERT_EQ(see(), Event::Ready);
    edit("/localization/translations/de", "no object any more");
    const std::string edited = document();
    EXPECT_EQ(preview.apply(), Event::None);
    EXPECT_EQ(follow(), Event::Refused);
    ASSERT_TRUE(last());
    EXPECT_EQ(last()->refusals.size(), 1u);
    EXPECT_FALSE(preview.isApplying());
    EXPECT_EQ(preview.state(), State::None);
    EXPECT_EQ(document(), edited);
}

TEST_P(ImportPreviewTest, AnotherOneTakesItsPlace) {
    ASSERT_EQ(see(), Event::Ready);
    files.put("/other/de/translation.json", R"({"lamp": "Laterne"})");
    ASSERT_EQ(see("/other"), Event::Ready);
    EXPECT_EQ(preview.path(), "/other");
    EXPECT_EQ(preview.run()->report.lines().size(), 1u);
    ASSERT_EQ(preview.apply(), Event::Applied);
    EXPECT_NE(document().find("\"Laterne\""), std::string::npos);
}

TEST_P(ImportPreviewTest, ACancelledOneLeavesNoTrace) {
    preview.start("/terms", English);
    preview.cancel();
    EXPECT_TRUE(preview.progress().isCancelled);
    EXPECT_EQ(follow(), Event::Cancelled);
    EXPECT_EQ(preview.state(), State::None);
    EXPECT_FALSE(preview.run());
    EXPECT_FALSE(last());
    EXPECT_EQ(document(), before);
}

TEST_P(ImportPreviewTest, DiscardingWhatRunsWaitsForItsEnd) {
    preview.start("/terms", English);
    preview.discard();
    EXPECT_EQ(preview.state(), State::None);
    EXPECT_EQ(preview.update(), Event::None);
    EXPECT_EQ(document(), before);
}

TEST(ImportPreview, AComparisonByTheGuiThreadItselfKeepsNobodyFromChangingTheProject) {
    GatedFileSystem files;
    files.put("/terms/de.json", R"({"door": "x"})");
    JobSystem jobs{0};
    EditorSession session{&jobs};
    session.replaceDocument(QuorvaneEngine::Test::parsed(TwoTerms));
    ImportPreview preview{session.editor(), jobs, files};
    preview.start("/terms", English);
    jobs.runMainThreadJobs();
    ASSERT_EQ(preview.update(), Event::None);
    ASSERT_EQ(preview.state(), State::Comparing);
    EXPECT_FALSE(preview.readsProject());
    jobs.runMainThreadJobs();
    EXPECT_EQ(preview.update(), Event::Ready);
}

TEST(ImportPreview, ReadsBesideTheGuiThreadAndEndsWithTheFileThatItIsAt) {
    GatedFileSystem files;
    JobSystem jobs{1};
    EditorSession session{&jobs};
    session.replaceDocument(QuorvaneEngine::Test::parsed(TwoTerms));
    for(const char* code: {"de", "es", "fr", "it"})
        files.put(std::string{"/terms/"} + code + "/translation.json", R"({"door": "x"})");
    ImportPreview preview{session.editor(), jobs, files};
    files.close();
    preview.start("/terms", English);
    files.awaitReader();
    EXPECT_EQ(preview.update(), Event::None);
    EXPECT_EQ(preview.state(), State::Reading);
    preview.cancel();
    EXPECT_EQ(preview.update(), Event::None);
    files.open();
    Event event = Event::None;
    while(event == Event::None) event = preview.update();
    EXPECT_EQ(event, Event::Cancelled);
    EXPECT_LE(files.reads(), 2);
}

TEST(ImportPreview, AComparisonIsCancelledToo) {
    GatedFileSystem files;
    files.put("/terms/de.json", R"({"door": "x"})");
    JobSystem jobs{1};
    EditorSession session{&jobs};
    session.replaceDocument(QuorvaneEngine::Test::parsed(TwoTerms));
    const std::string before = toText(session.project());
    ImportPreview preview{session.editor(), jobs, files};
    std::atomic<bool> mayEnd{false};
    files.close();
    preview.start("/terms", English);
    files.awaitReader();
    // Keeps the only worker from the comparison when the file has been read.
    jobs.dispatch([&] { mayEnd.wait(false); }, {}, {});
    files.open();
    while(preview.state() == State::Reading) preview.update();
    EXPECT_TRUE(preview.readsProject());
    preview.cancel();
    EXPECT_EQ(preview.update(), Event::None);
    mayEnd = true;
    mayEnd.notify_all();
    Event event = Event::None;
    while(event == Event::None) event = preview.update();
    EXPECT_EQ(event, Event::Cancelled);
    EXPECT_FALSE(preview.readsProject());
    EXPECT_EQ(toText(session.project()), before);
    EXPECT_FALSE(lastRun(session.editor()));
}

}
}
