#include <cerrno>
#include <filesystem>
#include <functional>
#include <string>

#include <unistd.h>

#include "AutosaveTest.h"
#include "host/localization/TestFolder.h"
#include "support/CapturedOutput.h"

/* What becomes of the copy where the disk, the files or the texts are not as they should be. */

namespace QuorvaneEngine::Test {
namespace {

class AutosaveTroubleTest: public AutosaveTest {};

TEST_F(AutosaveTroubleTest, WhatCannotBeKeptAtOnceIsAWarning) {
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

TEST_F(AutosaveTroubleTest, WhoMayNotKeepWhatHeHasIsToldThatItIsLost) {
    crash();
    Program reader{disk};
    reader.open(false);
    const std::string start = "Autosave::keepNow(): /p: ", end = "; unsaved changes are lost\n";
    const auto warning = [&reader] {
        const CapturedOutput output;
        reader.autosave.keepNow();
        return output.warning();
    };
    EXPECT_EQ(warning(), "") << "nothing has changed";
    ASSERT_EQ(reader.autosave.begin(true), Found::Changes);
    reader.push("/x", 7);
    EXPECT_EQ(warning(), start + "what was kept before waits for an answer" + end);
    reader.autosave.begin(false);
    EXPECT_EQ(warning(), start + "nothing can be kept here, as in a project that is read-only" + end);
    reader.autosave.end();
    EXPECT_EQ(warning(), "") << "who leaves them behind knows it";
    Program next{disk};
    EXPECT_EQ(next.open(), Found::Changes) << "what another program kept is as it was";
}

TEST_F(AutosaveTroubleTest, BytesThatAreNoTextAreReplacedAndAllElseIsRestored) {
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

TEST_F(AutosaveTroubleTest, AFolderThatIsGoneIsMadeAgain) {
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

TEST_F(AutosaveTroubleTest, AFailureIsToldWithTheFileThatItWasAbout) {
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

TEST_F(AutosaveTroubleTest, WhatIsGarbageCutOrForeignIsAWarningAndNothingElse) {
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

TEST_F(AutosaveTroubleTest, WhoHasChangesOfHisOwnKeepsThemAndWhatAnotherProgramKeptLiesAside) {
    const std::string text = "Autosave::begin(): /p/.editor/autosave: another program kept its unsaved changes here";
    const char* const places[]{"/p/.editor/autosave.of-another", "/p/.editor/autosave.of-another-2"};
    std::string bytes[2];
    for(int i = 0; i != 2; ++i) {
        crash();
        bytes[i] = read();
        Program reader{disk};
        EXPECT_EQ(reader.open(false), Found::Nothing);
        reader.push("/x", 7);
        const CapturedOutput output;
        EXPECT_EQ(reader.autosave.begin(true), Found::Nothing);
        EXPECT_EQ(output.warning(), text + "; kept as " + places[i] + "\n");
        reader.autosave.restore();
        EXPECT_EQ(reader.value("/x"), 7);
        reader.wait();
        EXPECT_TRUE(disk.exists(File)) << "from now on they are kept";
        reader.autosave.end();
    }
    for(int i = 0; i != 2; ++i) EXPECT_EQ(read(places[i]), bytes[i]);
    // It is what it was under its first name.
    ASSERT_EQ(disk.renameFile(places[0], File), 0);
    Program next{disk};
    EXPECT_EQ(next.open(), Found::Changes);
}

TEST_F(AutosaveTroubleTest, WhatCannotBePutAsideIsNotWrittenOver) {
    crash();
    const std::string bytes = read();
    Program reader{disk};
    reader.open(false);
    reader.push("/x", 7);
    const CapturedOutput output;
    // The folder is listed and the file is read first.
    disk.failAt(2, EACCES);
    EXPECT_EQ(reader.autosave.begin(true), Found::Nothing);
    disk.behave();
    EXPECT_EQ(output.warning(),
        "Autosave::begin(): /p/.editor/autosave: another program kept its unsaved changes here, and the file cannot be "
        "renamed: Permission denied; unsaved changes are not kept for the case of a crash\n");
    reader.wait();
    EXPECT_EQ(read(), bytes);
}

TEST_F(AutosaveTroubleTest, AFullDiskIsToldOfOnceAndTriedAgainAfterTheNextChange) {
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

TEST_F(AutosaveTroubleTest, WhatFailedIsTriedAgainAfterSomeTimeWithoutAChange) {
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

TEST_F(AutosaveTroubleTest, TheCopyHasTheRightsOfTheProject) {
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

TEST_F(AutosaveTroubleTest, WhatAProgramLeftAsideBearsItsNumberAndIsRemovedByTheNextOneThatWrites) {
    const std::string aside = "/p/.editor/autosave." + std::to_string(getpid());
    const auto lose = [this](const std::function<void(Program&)>& keep, const std::string& name) {
        {
            Program program{disk};
            program.open();
            program.push("/x", 2);
            disk.losePowerAfter(2);
            EXPECT_THROW(keep(program), MemoryFileSystem::PowerLoss);
        }
        disk.powerOn(MemoryFileSystem::Kept::Everything, 1);
        EXPECT_TRUE(disk.exists(name));
    };
    lose([](Program& program) { program.autosave.keepNow(); }, aside + ".now");
    Program reader{disk};
    reader.open(false);
    EXPECT_TRUE(isAnythingAside()) << "it may be on its way to its place";
    lose([](Program& program) { program.wait(); }, aside + ".new");
    disk.put("/p/.editor/autosave.of-another", "kept");
    Program next{disk};
    next.open();
    EXPECT_FALSE(isAnythingAside());
    EXPECT_EQ(read("/p/.editor/autosave.of-another"), "kept");
}

TEST_F(AutosaveTroubleTest, APowerLossLeavesTheOldCopyOrTheNew) {
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
