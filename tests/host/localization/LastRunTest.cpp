#include "LastRun.h"

#include "Exchange.h"
#include "support/CapturedOutput.h"

namespace QuorvaneEngine {

using Test::CapturedOutput;

namespace {

constexpr const char* Door =
    R"({"x":"X","languages":{"en":{"isDefault":true}},"localization":{"terms":{"a":{"sourceText":"x","translatable":true}}}})";

}

TEST(LastRun, IsThatOfTheToolThatRanLast) {
    TestProject project{Door};
    TestFolder folder;
    const CapturedOutput output;
    EXPECT_EQ(lastRun(project.editor()), nullptr);

    exportTo(project, {"en"}, folder.path);
    const LocalizationRun* run = lastRun(project.editor());
    ASSERT_NE(run, nullptr);
    EXPECT_EQ(run->kind, LocalizationRun::Kind::Export);
    EXPECT_EQ(copied(run->path), folder.path);
    EXPECT_EQ(run->report.counts(FallbackLanguage).added, 1u);
    EXPECT_EQ(run->refusals.size(), 0u);
    EXPECT_LE(run->when, std::chrono::system_clock::now());
    EXPECT_EQ(run->group, -1);

    LocalizationTools::gatherStrings(project.editor());
    EXPECT_EQ(lastRun(project.editor())->kind, LocalizationRun::Kind::Gathering);

    importFrom(project, {"en"}, folder / "gone");
    run = lastRun(project.editor());
    EXPECT_EQ(run->kind, LocalizationRun::Kind::Import);
    ASSERT_EQ(run->refusals.size(), 1u);
    EXPECT_EQ(copied(run->refusals[0]), (folder / "gone") + ": cannot be read: No such file or directory");
}

TEST(LastRun, EndsWithTheProject) {
    TestProject project{Door};
    const CapturedOutput output;
    LocalizationTools::gatherStrings(project.editor());
    EXPECT_NE(lastRun(project.editor()), nullptr);
    project.session.replaceDocument(rapidjson::Document{rapidjson::kObjectType});
    EXPECT_EQ(lastRun(project.editor()), nullptr);
}

TEST(LastRun, CanBeUndoneWhileItsChangesAreTheLastOnes) {
    TestProject project{Door};
    TestFolder folder;
    folder.write("de.json", R"({"a": "A"})");
    const CapturedOutput output;
    importFrom(project, {"en"}, folder.path);
    const LocalizationRun* const run = lastRun(project.editor());
    EXPECT_TRUE(canUndo(project.editor(), *run));
    project.session.undo();
    EXPECT_FALSE(canUndo(project.editor(), *run));
    project.session.redo();
    EXPECT_TRUE(canUndo(project.editor(), *run));
    project.session.changes().pushChange("/x", "Y", false);
    EXPECT_FALSE(canUndo(project.editor(), *run));
    project.session.undo();
    EXPECT_TRUE(canUndo(project.editor(), *run));

    // One that changed nothing has nothing to take back.
    importFrom(project, {"en"}, folder.path);
    EXPECT_FALSE(canUndo(project.editor(), *lastRun(project.editor())));
}

}
