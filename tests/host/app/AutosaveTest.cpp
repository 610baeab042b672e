#include "AutosaveTest.h"

#include <string>

#include "ChangeGroup.h"

namespace QuorvaneEngine::Test {
namespace {

TEST_F(AutosaveTest, UnsavedChangesAreFoundAndRestoredUnsaved) {
    crash();
    Program next{disk};
    ASSERT_EQ(next.open(), Found::Changes);
    EXPECT_EQ(next.value("/x"), 1) << "nothing is applied unasked";
    next.wait();
    EXPECT_TRUE(disk.exists(File)) << "and nothing is lost before there is an answer";
    next.autosave.restore();
    EXPECT_EQ(next.value("/x"), 2);
    EXPECT_TRUE(next.session.project().getValue("/localization/translations/de/t/text", false));
    EXPECT_TRUE(next.session.hasUnsavedChanges());
    next.wait();
    EXPECT_TRUE(disk.exists(File));
    ASSERT_TRUE(next.session.save());
    next.wait(0.2);
    EXPECT_FALSE(disk.exists(File));
    Program last{disk};
    EXPECT_EQ(last.open(), Found::Nothing);
    EXPECT_EQ(last.value("/x"), 2);
}

TEST_F(AutosaveTest, WhatIsDiscardedIsGone) {
    crash();
    Program next{disk};
    ASSERT_EQ(next.open(), Found::Changes);
    next.autosave.discard();
    EXPECT_FALSE(disk.exists(File));
    next.autosave.restore();
    EXPECT_EQ(next.value("/x"), 1);
}

TEST_F(AutosaveTest, OfOtherFilesItIsToldThatTheyHaveChanged) {
    crash();
    disk.put("/p/localization/de.json", R"({"t": {"text": "Guten Tag"}})");
    Program next{disk};
    EXPECT_EQ(next.open(), Found::Outdated);
    EXPECT_EQ(next.value("/x"), 1);
    // Formatting is no change.
    disk.put("/p/localization/de.json", R"({  "t":{"text":  "Hallo"}})");
    Program last{disk};
    EXPECT_EQ(last.open(), Found::Changes);
}

TEST_F(AutosaveTest, WhatWasSavedAllTheSameIsNotOffered) {
    crash();
    disk.put("/p/project.json", R"({"x": 2})");
    Program next{disk};
    EXPECT_EQ(next.open(), Found::Nothing);
    EXPECT_FALSE(disk.exists(File));
}

TEST_F(AutosaveTest, NothingIsKeptBeforeSomeQuietSecondsNorInAGroup) {
    Program program{disk};
    program.open();
    program.wait();
    EXPECT_FALSE(disk.exists(File)) << "nothing has changed";
    for(int i = 2; i != 10; ++i) {
        program.push("/x", i);
        program.wait(Autosave::Quiet * 0.5);
    }
    EXPECT_FALSE(disk.exists(File));
    {
        const ChangeGroup group{program.session.changes()};
        program.push("/x", 10);
        program.wait();
        EXPECT_FALSE(disk.exists(File));
    }
    program.wait();
    EXPECT_TRUE(disk.exists(File));
    EXPECT_FALSE(isAnythingAside());
    const std::size_t changes = disk.changes;
    program.wait(100.0);
    EXPECT_EQ(disk.changes, changes) << "written once";
}

TEST_F(AutosaveTest, WhoNeverStopsHasACopyOfWhatIsOldAllTheSame) {
    Program program{disk};
    program.open();
    const auto work = [&](const double seconds) {
        for(const double end = program.now + seconds; program.now < end;) {
            program.push("/x", int(program.now * 10.0) + 2);
            program.wait(0.1);
        }
    };
    work(Autosave::OldestAge - 1.0);
    EXPECT_FALSE(disk.exists(File));
    work(Autosave::Grace + 2.0);
    ASSERT_TRUE(disk.exists(File));
    const std::string first = read();
    work(Autosave::OldestAge - Autosave::Grace - 2.0);
    EXPECT_EQ(read(), first) << "not at every change from then on";
    work(2.0 * Autosave::Grace + 2.0);
    EXPECT_NE(read(), first);
}

TEST_F(AutosaveTest, WhatIsLargeIsKeptWhileItsUserGoesOn) {
    std::string large{R"({"x": 1)"};
    for(int i = 0; i != 20000; ++i) large += ", \"t" + std::to_string(i) + "\": \"text\"";
    disk.put("/p/project.json", large + "}");
    Program program{disk};
    program.open();
    // Too often for a few milliseconds a frame to be enough.
    for(int i = 2; program.now < Autosave::OldestAge + Autosave::Grace + 1.0; ++i) {
        program.push("/x", i);
        program.wait(0.1);
    }
    EXPECT_TRUE(disk.exists(File));
    EXPECT_FALSE(program.autosave.isBusy());
}

TEST_F(AutosaveTest, WhatIsHalfWrittenWhenTheProjectIsSavedIsFreedByAJob) {
    std::string large{R"({"x": 1)"};
    for(int i = 0; i != 20000; ++i) large += ", \"t" + std::to_string(i) + "\": \"text\"";
    disk.put("/p/project.json", large + "}");
    Program program{disk};
    program.open();
    program.push("/x", 2);
    program.autosave.update(0.0);
    program.autosave.update(Autosave::Quiet);
    ASSERT_TRUE(program.autosave.isBusy());
    ASSERT_TRUE(program.session.save());
    const auto nextJob = [&program] { return program.jobs.dispatch([] {}, {}, {}); };
    const int before = nextJob();
    program.autosave.update(Autosave::Quiet);
    EXPECT_EQ(nextJob(), before + 2);
    EXPECT_FALSE(program.autosave.isBusy());
}

TEST_F(AutosaveTest, WhoIsAboutToEndKeepsWhatHeHasAtOnce) {
    Program program{disk};
    program.open();
    program.autosave.keepNow();
    EXPECT_FALSE(disk.exists(File)) << "nothing has changed";
    program.push("/x", 2);
    program.autosave.keepNow();
    ASSERT_TRUE(disk.exists(File));
    EXPECT_FALSE(isAnythingAside());
    Program next{disk};
    ASSERT_EQ(next.open(), Found::Changes);
    next.autosave.keepNow();
    next.autosave.restore();
    EXPECT_EQ(next.value("/x"), 2);
}

TEST_F(AutosaveTest, WhatIsKeptAtOnceIsNotReplacedByAnOlderCopyThatComesLate) {
    Program program{disk};
    program.open();
    program.push("/x", 2);
    for(; program.now < Autosave::Quiet + 1.0; program.now += 0.1) program.autosave.update(program.now);
    program.push("/x", 3);
    program.autosave.keepNow();
    program.jobs.runMainThreadJobs();
    EXPECT_FALSE(isAnythingAside());
    Program next{disk};
    ASSERT_EQ(next.open(), Found::Changes);
    next.autosave.restore();
    EXPECT_EQ(next.value("/x"), 3);
}

TEST_F(AutosaveTest, ItGoesWithTheChanges) {
    Program program{disk};
    program.open();
    program.push("/x", 2);
    program.wait();
    EXPECT_TRUE(disk.exists(File));
    program.session.undo();
    program.wait(0.2);
    EXPECT_FALSE(disk.exists(File));
    program.session.redo();
    program.wait();
    EXPECT_TRUE(disk.exists(File));
    program.autosave.end();
    EXPECT_FALSE(disk.exists(File));
    program.push("/x", 3);
    program.wait();
    EXPECT_FALSE(disk.exists(File));
}

TEST_F(AutosaveTest, WhoDoesNotAnswerFindsItAgain) {
    crash();
    {
        Program next{disk};
        ASSERT_EQ(next.open(), Found::Changes);
        next.autosave.end();
    }
    Program last{disk};
    EXPECT_EQ(last.open(), Found::Changes);
}

TEST_F(AutosaveTest, AJobThatComesLateBringsNothingBack) {
    Program program{disk};
    program.open();
    program.push("/x", 2);
    for(; program.now < Autosave::Quiet + 1.0; program.now += 0.1) program.autosave.update(program.now);
    program.autosave.discard();
    program.jobs.runMainThreadJobs();
    EXPECT_FALSE(disk.exists(File));
    EXPECT_FALSE(isAnythingAside());
}

TEST_F(AutosaveTest, AJobThatComesLateLeavesTheCopyOfWhoHasTheProjectNow) {
    Program program{disk};
    program.open();
    program.push("/x", 2);
    for(; program.now < Autosave::Quiet + 1.0; program.now += 0.1) program.autosave.update(program.now);
    disk.put(File, "another program's");
    EXPECT_EQ(program.autosave.begin(false), Found::Nothing);
    program.jobs.runMainThreadJobs();
    EXPECT_EQ(read(), "another program's");
    EXPECT_FALSE(isAnythingAside());
}

TEST_F(AutosaveTest, TheCopyOfAnotherProgramIsLeftAlone) {
    crash();
    Program reader{disk};
    EXPECT_EQ(reader.open(false), Found::Nothing);
    reader.push("/x", 7);
    reader.wait();
    reader.autosave.discard();
    reader.autosave.end();
    Program next{disk};
    EXPECT_EQ(next.open(), Found::Changes);
}

}
}
