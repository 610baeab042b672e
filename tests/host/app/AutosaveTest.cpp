#include "app/Autosave.h"

#include <cerrno>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "../document/MemoryFileSystem.h"
#include "ChangeGroup.h"
#include "ChangeManager.h"
#include "QuorvaneEditor/JobSystem.h"
#include "document/EditorSession.h"
#include "host/localization/TestFolder.h"
#include "support/CapturedOutput.h"

namespace QuorvaneEngine {
namespace {

using Found = Autosave::Found;
using QuorvaneEngine::Test::CapturedOutput;

constexpr const char* File = "/p/.editor/autosave";

/** A program that has the project open, and may end at any time without a word. */
struct Program {
    explicit Program(MemoryFileSystem& disk): session{&jobs, &disk}, autosave{session, jobs, disk} {}

    Found open(bool isWriting = true) {
        EXPECT_TRUE(session.open("/p"));
        session.makeEditorFolder();
        return autosave.begin(isWriting);
    }

    void push(const char* path, int value) { session.changes().pushChange(path, rapidjson::Value{value}, false); }

    int value(const char* path) {
        const rapidjson::Value* const found = session.project().getValue(path, false);
        return found ? found->GetInt() : -1;
    }

    /** Some seconds go by. */
    void wait(double seconds = Autosave::Quiet + 1.0) {
        for(const double end = now + seconds; now < end; now += 0.1) {
            autosave.update(now);
            jobs.runMainThreadJobs();
        }
    }

    JobSystem jobs{0};
    EditorSession session;
    Autosave autosave;
    double now = 0.0;
};

class AutosaveTest: public testing::Test {
protected:
    AutosaveTest() {
        disk.put("/p/project.json", R"({"x": 1})");
        disk.put("/p/localization/de.json", R"({"t": {"text": "Hallo"}})");
    }

    /** A program that crashed with an unsaved change. */
    void crash() {
        Program program{disk};
        ASSERT_EQ(program.open(), Found::Nothing);
        program.push("/x", 2);
        program.wait();
        ASSERT_TRUE(disk.exists(File));
    }

    std::string read(const char* const path = File) {
        Containers::String bytes;
        EXPECT_EQ(disk.readFile(path, bytes), 0);
        return {bytes.data(), bytes.size()};
    }

    MemoryFileSystem disk;
};

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
    EXPECT_FALSE(disk.exists("/p/.editor/autosave.new"));
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
    for(int i = 0; i != 100000; ++i) large += ", \"t" + std::to_string(i) + "\": \"text\"";
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

TEST_F(AutosaveTest, WhoIsAboutToEndKeepsWhatHeHasAtOnce) {
    Program program{disk};
    program.open();
    program.autosave.keepNow();
    EXPECT_FALSE(disk.exists(File)) << "nothing has changed";
    program.push("/x", 2);
    program.autosave.keepNow();
    ASSERT_TRUE(disk.exists(File));
    EXPECT_FALSE(disk.exists("/p/.editor/autosave.now"));
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
    EXPECT_FALSE(disk.exists("/p/.editor/autosave.new"));
    Program next{disk};
    ASSERT_EQ(next.open(), Found::Changes);
    next.autosave.restore();
    EXPECT_EQ(next.value("/x"), 3);
}

TEST_F(AutosaveTest, WhatCannotBeKeptAtOnceIsAWarning) {
    Program program{disk};
    program.open();
    program.push("/x", 2);
    disk.failAt(0, ENOSPC, true);
    const CapturedOutput output;
    program.autosave.keepNow();
    EXPECT_EQ(output.warning(),
        "Autosave::keepNow(): /p/.editor/autosave: cannot be written: No space left on device; unsaved changes are "
        "lost\n");
}

TEST_F(AutosaveTest, BytesThatAreNoTextAreReplacedAndAllElseIsRestored) {
    {
        Program program{disk};
        program.open();
        program.push("/x", 2);
        program.session.changes().pushChange("/y",
            Containers::StringView{"Gr\xfc\xdf"
                                   "e \xe2\x82"},
            false);
        program.wait();
        ASSERT_TRUE(disk.exists(File));
    }
    const CapturedOutput output;
    Program next{disk};
    ASSERT_EQ(next.open(), Found::Changes);
    EXPECT_EQ(output.warning(), "");
    next.autosave.restore();
    EXPECT_EQ(next.value("/x"), 2);
    EXPECT_STREQ(next.session.project().getValue("/y", false)->GetString(),
        "Gr\xef\xbf\xbd\xef\xbf\xbd"
        "e \xef\xbf\xbd");
}

TEST_F(AutosaveTest, AFolderThatIsGoneIsMadeAgain) {
    Program program{disk};
    program.open();
    program.push("/x", 2);
    program.wait();
    for(const char* const name: {"autosave", ".gitignore"})
        EXPECT_EQ(disk.removeFile(("/p/.editor/" + std::string{name}).c_str()), 0);
    ASSERT_EQ(disk.removeFolder("/p/.editor"), 0);
    program.push("/x", 3);
    const CapturedOutput output;
    program.wait();
    EXPECT_TRUE(disk.exists(File));
    EXPECT_EQ(output.warning(), "");
}

TEST_F(AutosaveTest, AFailureIsToldWithTheFileThatItWasAbout) {
    disk.put("/q/project.json", "{}");
    Program program{disk};
    program.open();
    program.push("/x", 2);
    for(; program.now < Autosave::Quiet + 1.0; program.now += 0.1) program.autosave.update(program.now);
    const CapturedOutput output;
    disk.failAt(0, ENOSPC);
    program.jobs.runMainThreadJobs();
    disk.behave();
    ASSERT_TRUE(program.session.open("/q"));
    program.autosave.begin(true);
    program.push("/x", 2);
    program.wait();
    EXPECT_EQ(output.warning().find("Autosave::update(): /p/.editor/autosave: cannot be written: "), 0u)
        << output.warning();
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
    EXPECT_FALSE(disk.exists("/p/.editor/autosave.new"));
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

TEST_F(AutosaveTest, WhatIsGarbageCutOrForeignIsAWarningAndNothingElse) {
    crash();
    const std::string whole = read();
    const auto warningOf = [this](const std::string& bytes) {
        disk.put(File, bytes);
        const CapturedOutput output;
        Program next{disk};
        EXPECT_EQ(next.open(), Found::Nothing);
        EXPECT_EQ(next.value("/x"), 1);
        EXPECT_FALSE(disk.exists(File));
        EXPECT_EQ(read("/p/.editor/autosave.unreadable"), bytes);
        return output.warning();
    };
    const std::string kept = "; kept as /p/.editor/autosave.unreadable\n";
    const std::string foreign =
        "Autosave::begin(): /p/.editor/autosave: is nothing that was kept for the case of a crash" + kept;
    const std::string cut = "Autosave::begin(): /p/.editor/autosave: is cut or damaged, and cannot be restored" + kept;
    for(const std::string& bytes: {std::string{}, std::string{"garbage\n"}, std::string{"{}"}, std::string(10000, '\0'),
            "quorvane-autosave 2 " + whole.substr(20), std::string{"quorvane-autosave 1 \n"}})
        EXPECT_EQ(warningOf(bytes), foreign) << bytes;
    for(std::size_t size = 0; size != whole.size(); ++size)
        EXPECT_EQ(warningOf(whole.substr(0, size)), size <= whole.find('\n') ? foreign : cut) << size;
    std::string damaged = whole;
    damaged[damaged.size() - 3] ^= 1;
    EXPECT_EQ(warningOf(damaged), cut);
    EXPECT_EQ(warningOf(whole + " "), cut);
}

TEST_F(AutosaveTest, AFullDiskIsToldOfOnceAndTriedAgainAfterTheNextChange) {
    Program program{disk};
    program.open();
    program.push("/x", 2);
    {
        const CapturedOutput output;
        disk.failAt(0, ENOSPC, true);
        program.wait();
        program.push("/x", 3);
        program.wait();
        program.wait();
        EXPECT_EQ(output.warning(),
            "Autosave::update(): /p/.editor/autosave: cannot be written: No space left on device; unsaved changes are "
            "not kept "
            "for the case of a crash\n");
        disk.behave();
    }
    EXPECT_FALSE(disk.exists(File));
    EXPECT_EQ(program.value("/x"), 3);
    program.push("/x", 4);
    program.wait();
    EXPECT_TRUE(disk.exists(File));
}

TEST_F(AutosaveTest, WhatFailedIsTriedAgainAfterSomeTimeWithoutAChange) {
    Program program{disk};
    program.open();
    program.push("/x", 2);
    const CapturedOutput output;
    disk.failAt(0, ENOSPC, true);
    program.wait();
    disk.behave();
    program.wait(Autosave::RetryPeriod - Autosave::Quiet);
    EXPECT_FALSE(disk.exists(File));
    program.wait(2.0 * Autosave::Quiet);
    EXPECT_TRUE(disk.exists(File));
    const std::size_t changes = disk.changes;
    program.wait(2.0 * Autosave::RetryPeriod);
    EXPECT_EQ(disk.changes, changes) << "written once";
}

TEST_F(AutosaveTest, TheCopyHasTheRightsOfTheProject) {
    const TestFolder folder;
    folder.write("project.json", R"({"x": 1})");
    const std::filesystem::perms rights = std::filesystem::perms::owner_read | std::filesystem::perms::owner_write;
    std::filesystem::permissions(folder / "project.json", rights);
    JobSystem jobs{0};
    EditorSession session{&jobs};
    Autosave autosave{session, jobs, FileSystem::disk()};
    ASSERT_TRUE(session.open(folder.path.c_str()));
    session.makeEditorFolder();
    autosave.begin(true);
    session.changes().pushChange("/x", rapidjson::Value{2}, false);
    autosave.keepNow();
    EXPECT_EQ(std::filesystem::status(folder / ".editor/autosave").permissions(), rights);
}

TEST_F(AutosaveTest, APowerLossLeavesTheOldCopyOrTheNew) {
    crash();
    for(std::size_t step = 0; step != 4; ++step) {
        {
            Program program{disk};
            ASSERT_EQ(program.open(), Found::Changes);
            program.autosave.restore();
            program.push("/x", 3);
            disk.losePowerAfter(step);
            EXPECT_THROW(program.wait(), MemoryFileSystem::PowerLoss);
        }
        disk.powerOn(MemoryFileSystem::Kept::Everything, 1);
        Program next{disk};
        ASSERT_EQ(next.open(), Found::Changes) << step;
        next.autosave.restore();
        EXPECT_TRUE(next.value("/x") == 2 || next.value("/x") == 3);
    }
}

}
}
