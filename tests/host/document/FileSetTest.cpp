#include "FileSet.h"

#include <cerrno>
#include <map>
#include <string>

#include <gtest/gtest.h>

#include "MemoryFileSystem.h"

namespace QuorvaneEngine {
namespace {

using Files = std::map<std::string, std::string>;

/* A set that replaces two files, makes one and removes one, in a folder in memory. */
struct Project {
    explicit Project(bool hasTranslations = true) {
        disk.putFolder("/p/.editor");
        disk.put("/p/.editor/.gitignore", "*\n");
        for(const auto& [path, bytes]: before)
            if(hasTranslations || path == "/p/project.json") disk.put(path, bytes);
        old = disk.files();
        if(!hasTranslations) after = {{"/p/project.json", "new project"}, {"/p/localization/ja.json", "new ja"}};
    }

    bool save() {
        FileSet set{disk, "/p"};
        set.write("project.json", "new project");
        if(old.size() > 1) {
            set.write("localization/de.json", "new de");
            set.remove("localization/fr.json");
        }
        set.write("localization/ja.json", "new ja");
        return set.commit(error);
    }

    bool recover() { return FileSet::recover(disk, "/p", error); }

    Files before{{"/p/project.json", "old project"}, {"/p/localization/de.json", "old de"},
        {"/p/localization/fr.json", "old fr"}, {"/p/other.txt", "other"}};
    Files after{{"/p/project.json", "new project"}, {"/p/localization/de.json", "new de"},
        {"/p/localization/ja.json", "new ja"}, {"/p/other.txt", "other"}};
    Files old;
    MemoryFileSystem disk;
    FileError error;
};

std::size_t stepsOfASave(bool hasTranslations) {
    Project project{hasTranslations};
    EXPECT_TRUE(project.save());
    return project.disk.steps();
}

TEST(FileSet, PutsFilesInPlaceAndRemovesOthers) {
    for(const bool hasTranslations: {true, false}) {
        Project project{hasTranslations};
        EXPECT_TRUE(project.save());
        EXPECT_EQ(project.disk.files(), project.after);
        EXPECT_FALSE(project.disk.exists("/p/.editor/save"));
    }
}

TEST(FileSet, WithoutFilesTakesNoStep) {
    Project project;
    FileSet set{project.disk, "/p"};
    EXPECT_TRUE(set.commit(project.error));
    EXPECT_EQ(project.disk.steps(), 0);
}

TEST(FileSet, TellsVersionControlToIgnoreTheFolderOfTheEditor) {
    MemoryFileSystem disk;
    disk.put("/p/project.json", "old");
    FileError error;
    FileSet set{disk, "/p"};
    set.write("project.json", "new");
    EXPECT_TRUE(set.commit(error));
    Containers::String bytes;
    EXPECT_EQ(disk.readFile("/p/.editor/.gitignore", bytes), 0);
    EXPECT_EQ(bytes, "*\n");

    // One that was cut short says nothing.
    for(const char* const kept: {"", "*.bak\n"}) {
        disk.put("/p/.editor/.gitignore", kept);
        EXPECT_TRUE(FileSet::makeEditorFolder(disk, "/p", error));
        EXPECT_EQ(disk.readFile("/p/.editor/.gitignore", bytes), 0);
        EXPECT_EQ(bytes, *kept ? kept : "*\n");
    }
}

TEST(FileSet, TellsVersionControlToIgnoreAStageElsewhere) {
    MemoryFileSystem disk;
    disk.put("/p/a.json", "old");
    FileError error;
    const FileSet::Stage stage{".stage", "later"};
    FileSet set{disk, "/p", stage};
    set.write("a.json", "new");
    // The power goes when all is staged.
    disk.losePowerAfter(5);
    EXPECT_THROW(set.commit(error), MemoryFileSystem::PowerLoss);
    disk.powerOn(MemoryFileSystem::Kept::Everything, 0);
    Containers::String bytes;
    EXPECT_EQ(disk.readFile("/p/.stage/.gitignore", bytes), 0);
    EXPECT_EQ(bytes, "*\n");
    EXPECT_TRUE(FileSet::recover(disk, "/p", error, stage));
    EXPECT_EQ(disk.files(), (Files{{"/p/a.json", "old"}}));
    EXPECT_FALSE(disk.exists("/p/.stage"));
}

TEST(FileSet, RemovingAFileThatIsNotThereIsDone) {
    MemoryFileSystem disk;
    disk.put("/p/project.json", "old");
    FileError error;
    FileSet set{disk, "/p"};
    set.remove("localization/de.json");
    EXPECT_TRUE(set.commit(error)) << error.reason.data();
    EXPECT_EQ(disk.files().size(), 1);
}

TEST(FileSet, WhereverThePowerGoesAllFilesAreOldOrAllAreNew) {
    using Kept = MemoryFileSystem::Kept;
    for(const bool hasTranslations: {true, false}) {
        const std::size_t steps = stepsOfASave(hasTranslations);
        ASSERT_GT(steps, 20);
        std::size_t old = 0, fresh = 0;
        for(std::size_t step = 0; step != steps; ++step)
            for(unsigned seed = 0; seed != 24; ++seed) {
                const Kept kept = seed < 4 ? Kept(seed) : Kept::AnyPart;
                Project project{hasTranslations};
                project.disk.losePowerAfter(step);
                EXPECT_THROW(project.save(), MemoryFileSystem::PowerLoss);
                project.disk.powerOn(kept, seed);
                ASSERT_TRUE(project.recover()) << project.error.reason.data();
                const Files files = project.disk.files();
                ASSERT_TRUE(files == project.old || files == project.after)
                    << "step " << step << ", seed " << seed << ": " << testing::PrintToString(files);
                ASSERT_FALSE(project.disk.exists("/p/.editor/save"));
                (files == project.old ? old : fresh)++;
            }
        EXPECT_GT(old, 100);
        EXPECT_GT(fresh, 100);
    }
}

TEST(FileSet, WhereverThePowerGoesAgainDuringTheRecoveryItCanBeRecovered) {
    using Kept = MemoryFileSystem::Kept;
    const std::size_t steps = stepsOfASave(true);
    for(std::size_t step = 0; step != steps; ++step)
        for(unsigned seed = 0; seed != 5; ++seed)
            for(std::size_t again = 0;; ++again) {
                Project project;
                project.disk.losePowerAfter(step);
                EXPECT_THROW(project.save(), MemoryFileSystem::PowerLoss);
                project.disk.powerOn(Kept(seed), seed);
                project.disk.losePowerAfter(again);
                bool isCut = false;
                try {
                    ASSERT_TRUE(project.recover());
                } catch(const MemoryFileSystem::PowerLoss&) {
                    isCut = true;
                }
                project.disk.powerOn(Kept((seed + again) % 5), seed);
                ASSERT_TRUE(project.recover());
                const Files files = project.disk.files();
                ASSERT_TRUE(files == project.old || files == project.after)
                    << "steps " << step << " and " << again << ", seed " << seed << ": "
                    << testing::PrintToString(files);
                if(!isCut) break;
            }
}

TEST(FileSet, OnceDoneTheNewFilesSurviveAPowerLoss) {
    Project project;
    EXPECT_TRUE(project.save());
    project.disk.powerOn(MemoryFileSystem::Kept::Nothing, 0);
    EXPECT_TRUE(project.recover());
    EXPECT_EQ(project.disk.files(), project.after);
}

TEST(FileSet, AStepThatFailsLeavesAllFilesAsTheyWere) {
    for(const bool hasTranslations: {true, false})
        for(const int error: {ENOSPC, EACCES, EIO}) {
            std::size_t failures = 0;
            const std::size_t steps = stepsOfASave(hasTranslations);
            for(std::size_t step = 0; step != steps; ++step) {
                Project project{hasTranslations};
                project.disk.failAt(step, error);
                const bool isDone = project.save();
                EXPECT_EQ(project.disk.files(), isDone ? project.after : project.old) << "step " << step;
                if(isDone) continue;
                ++failures;
                EXPECT_TRUE(project.error.path.hasPrefix("/p")) << project.error.path.data();
                EXPECT_TRUE(project.error.reason.hasSuffix(std::strerror(error))) << project.error.reason.data();
                // The way back is as durable as the way there.
                project.disk.powerOn(MemoryFileSystem::Kept::Nothing, 0);
                EXPECT_TRUE(project.recover());
                EXPECT_EQ(project.disk.files(), project.old) << "step " << step;
            }
            // All steps but those that only tidy up.
            EXPECT_GT(failures, steps * 2 / 3);
        }
}

TEST(FileSet, WhenEvenTheWayBackFailsARecoveryLeadsToOneState) {
    const std::size_t steps = stepsOfASave(true);
    std::size_t stuck = 0;
    for(std::size_t step = 0; step != steps; ++step) {
        Project project;
        project.disk.failAt(step, EIO, true);
        const bool isDone = project.save();
        project.disk.behave();
        if(!isDone &&
            project.error.reason.hasSuffix(
                "Input/output error; what is on the disk is put in order when the project is saved or opened next"))
            ++stuck;
        EXPECT_TRUE(project.recover());
        const Files files = project.disk.files();
        EXPECT_TRUE(files == project.old || files == project.after)
            << "step " << step << ": " << testing::PrintToString(files);
        EXPECT_TRUE(!isDone || files == project.after);
    }
    EXPECT_GT(stuck, 5);
}

TEST(FileSet, AStagedFileThatAnotherProgramTakesAwayFailsTheSave) {
    struct Meddler: MemoryFileSystem {
        int renameFile(Containers::StringView from, Containers::StringView to) override {
            const int error = MemoryFileSystem::renameFile(from, to);
            if(to.hasSuffix("/journal") && from.hasSuffix("/journal.new")) removeFile("/p/.editor/save/0.new");
            return error;
        }
    } disk;
    disk.put("/p/project.json", "old project");
    disk.put("/p/localization/de.json", "old de");
    const Files before = disk.files();
    FileSet set{disk, "/p"};
    set.write("project.json", "new project");
    set.write("localization/de.json", "new de");
    FileError error;
    EXPECT_FALSE(set.commit(error));
    EXPECT_EQ(error.path, "/p/project.json");
    EXPECT_EQ(disk.files(), before);
}

TEST(FileSet, AFailedSaveCanBeRepeated) {
    const std::size_t steps = stepsOfASave(true);
    for(std::size_t step = 0; step != steps; ++step)
        for(const bool isLasting: {true, false}) {
            Project project;
            project.disk.failAt(step, ENOSPC, isLasting);
            project.save();
            project.disk.behave();
            EXPECT_TRUE(project.save()) << "step " << step << ": " << project.error.reason.data();
            EXPECT_EQ(project.disk.files(), project.after);
        }
}

TEST(FileSet, WhereTheDiskKnowsNoSecondNamesItKeepsCopies) {
    for(const int error: {EPERM, EOPNOTSUPP, ENOSYS, EMLINK}) {
        Project project;
        project.disk.linkError = error;
        const std::size_t begin = project.disk.steps();
        EXPECT_TRUE(project.save()) << project.error.reason.data();
        EXPECT_EQ(project.disk.files(), project.after);
        const std::size_t steps = project.disk.steps() - begin;
        for(std::size_t step = 0; step != steps; ++step) {
            Project again;
            again.disk.linkError = error;
            again.disk.failAt(step, EIO);
            const bool isDone = again.save();
            EXPECT_EQ(again.disk.files(), isDone ? again.after : again.old) << "step " << step;
        }
    }
}

TEST(FileSet, AFileInPlaceOfTheEditorsFolderIsToldOf) {
    MemoryFileSystem disk;
    disk.put("/p/.editor", "no folder");
    FileError error;
    FileSet set{disk, "/p"};
    set.write("project.json", "new");
    EXPECT_FALSE(set.commit(error));
    EXPECT_EQ(error.path, "/p/.editor/save");
    EXPECT_EQ(error.reason, "cannot be made: Not a directory");
}

TEST(FileSet, AJournalThatIsNoneStopsTheRecovery) {
    for(const char* const text: {"", "quorvane-journal 1\ncomplete\nremove ../x\nend\n"}) {
        Project project;
        project.disk.put("/x", "kept");
        project.disk.put("/p/.editor/save/journal", text);
        EXPECT_FALSE(project.recover());
        EXPECT_EQ(project.error.path, "/p/.editor/save/journal");
        EXPECT_EQ(project.error.reason, "is no journal of a save; without it the files are taken as they are");
        EXPECT_TRUE(project.disk.exists("/x"));
        EXPECT_EQ(project.disk.changes, 0);
        EXPECT_FALSE(project.save());
    }
}

TEST(FileSet, NothingIsRemovedOrRecoveredThroughALink) {
    // A project may come from a stranger: these would empty a folder elsewhere, or put a file there.
    for(const char* const link: {"/p/.editor", "/p/.editor/save"}) {
        Project project;
        project.disk.put("/p/.editor/save/kept", "kept");
        project.disk.links = {link};
        EXPECT_FALSE(project.recover());
        EXPECT_EQ(project.error.path, link);
        EXPECT_EQ(project.error.reason, "is a link where a folder is needed");
        EXPECT_FALSE(project.save());
        EXPECT_TRUE(project.disk.exists("/p/.editor/save/kept"));
        EXPECT_EQ(project.disk.changes, 0);
    }
    for(const char* const path: {"localization/x.json", "a/b/x.json"}) {
        Project project;
        project.disk.put("/p/.editor/save/0.new", "new");
        project.disk.put(
            "/p/.editor/save/journal", "quorvane-journal 1\ncomplete\ncreate " + std::string{path} + "\nend\n");
        project.disk.links = {"/p/localization", "/p/a/b"};
        EXPECT_FALSE(project.recover());
        EXPECT_EQ(project.error.reason, "is a link, through which nothing is put in order that was cut short");
        EXPECT_EQ(project.disk.files(), project.old);
    }
    {
        Project project;
        project.disk.putFolder("/p/.editor");
        project.disk.links = {"/p/.editor"};
        EXPECT_FALSE(FileSet::makeEditorFolder(project.disk, "/p", project.error));
        EXPECT_EQ(project.error.reason, "is a link where a folder is needed");
        EXPECT_EQ(project.disk.changes, 0);
    }
    // A folder of translations that lies elsewhere is the user's own affair.
    Project project;
    project.disk.links = {"/p/localization"};
    EXPECT_TRUE(project.save());
    EXPECT_EQ(project.disk.files(), project.after);
}

TEST(FileSet, AFileThatCannotBeWrittenIsNamedByItsPlace) {
    const std::size_t steps = stepsOfASave(true);
    std::size_t named = 0;
    for(std::size_t step = 0; step != steps; ++step) {
        Project project;
        project.disk.failAt(step, ENOSPC);
        if(project.save()) continue;
        EXPECT_FALSE(project.error.path.hasSuffix("0.new")) << project.error.path.data();
        if(project.error.path == "/p/localization/de.json") ++named;
    }
    EXPECT_GE(named, 3);
}

}
}
