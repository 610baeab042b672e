#include "StagedFiles.h"

#include <atomic>
#include <cerrno>
#include <thread>
#include <vector>

#include <Corrade/Containers/GrowableArray.h>
#include <gtest/gtest.h>

#include "../document/MemoryFileSystem.h"
#include "FolderLock.h"
#include "TestFolder.h"
#include "TestProject.h"

namespace QuorvaneEngine {

namespace {

using Files = std::map<std::string, std::string>;

bool put(MemoryFileSystem& files, FileError& error) {
    const StagedFile staged[]{
        {"de/translation.json", "new german"}, {"fr/translation.json", "new french"}, {"ja.json", "new japanese"}};
    FolderLock lock;
    return putInPlace(files, "/out/i18n", staged, lock, error);
}

MemoryFileSystem withGerman() {
    MemoryFileSystem files;
    files.put("/out/i18n/de/translation.json", "old german");
    files.put("/out/i18n/ja.json", "old japanese");
    return files;
}

/** Without what could not be cleared after a failure; the next export does. */
Files inPlace(const MemoryFileSystem& files) {
    Files found = files.files();
    std::erase_if(
        found, [](const auto& file) { return file.first.find("/.localization-export/") != std::string::npos; });
    return found;
}

const Files NewFiles{{"/out/i18n/de/translation.json", "new german"}, {"/out/i18n/fr/translation.json", "new french"},
    {"/out/i18n/ja.json", "new japanese"}};

}

TEST(StagedFiles, FoldersAreNamedWithoutWhatLeadsNowhere) {
    for(const char* const path: {"/a/b", "/a/b/", "/a/b//", "/a/b/.", "/a/b/./", "/a/b/.//./"})
        EXPECT_EQ(folderName(path), "/a/b") << path;
    EXPECT_EQ(folderName("/"), "/");
    EXPECT_EQ(folderName("/."), "/");
    EXPECT_EQ(folderName("//"), "/");
    EXPECT_EQ(folderName("/a/.b"), "/a/.b");
    EXPECT_EQ(folderName("/a/b."), "/a/b.");
    EXPECT_EQ(folderName("/a/.."), "/a/..");
    EXPECT_EQ(folderName(""), "");
}

TEST(StagedFiles, ReplacesAndMakesFilesAndFolders) {
    MemoryFileSystem files = withGerman();
    FileError error;
    EXPECT_TRUE(put(files, error));
    EXPECT_EQ(files.files(), NewFiles);
    EXPECT_FALSE(files.exists("/out/i18n/.localization-export"));
}

TEST(StagedFiles, MakesTheWholeWayToTheFolder) {
    MemoryFileSystem files;
    files.putFolder("/out");
    FileError error;
    EXPECT_TRUE(put(files, error)) << copied(error.path) << copied(error.reason);
    EXPECT_EQ(files.files(), NewFiles);
}

TEST(StagedFiles, NothingToPutTouchesNothing) {
    MemoryFileSystem files;
    FileError error;
    FolderLock lock;
    EXPECT_TRUE(putInPlace(files, "/out", {}, lock, error));
    EXPECT_EQ(files.steps(), 0u);
}

TEST(StagedFiles, WhateverFailsAllIsAsItWas) {
    MemoryFileSystem measured = withGerman();
    FileError error;
    put(measured, error);
    const std::size_t steps = measured.steps();
    std::size_t failures = 0;
    for(std::size_t step = 0; step != steps; ++step) {
        MemoryFileSystem files = withGerman();
        const Files before = files.files();
        files.failAt(step, ENOSPC);
        if(put(files, error)) {
            // Only what is done after the files are in place may fail without consequence.
            EXPECT_EQ(inPlace(files), NewFiles) << step;
            continue;
        }
        ++failures;
        EXPECT_EQ(inPlace(files), before) << step;
        EXPECT_FALSE(error.path.isEmpty());
        EXPECT_TRUE(error.reason.contains("No space left on device")) << copied(error.reason);
        EXPECT_FALSE(files.exists("/out/i18n/fr")) << step;
    }
    EXPECT_GT(failures, 10u);
}

TEST(StagedFiles, FileSystemWithoutSecondNamesKeepsCopies) {
    MemoryFileSystem measured = withGerman();
    measured.linkError = EPERM;
    FileError error;
    EXPECT_TRUE(put(measured, error));
    EXPECT_EQ(measured.files(), NewFiles);
    for(std::size_t step = 0; step != measured.steps(); ++step) {
        MemoryFileSystem files = withGerman();
        files.linkError = EPERM;
        const Files before = files.files();
        files.failAt(step, EACCES);
        const bool isPut = put(files, error);
        EXPECT_EQ(inPlace(files), isPut ? NewFiles : before) << step;
    }
}

TEST(StagedFiles, FileWhereAFolderIsNeededIsSaid) {
    MemoryFileSystem files;
    files.put("/out/i18n", "a file");
    FileError error;
    EXPECT_FALSE(put(files, error));
    EXPECT_EQ(error.path, "/out/i18n");
    EXPECT_EQ(error.reason, "is a file where a folder is needed");

    MemoryFileSystem inside;
    inside.put("/out/i18n/fr", "a file");
    EXPECT_FALSE(put(inside, error));
    EXPECT_EQ(error.path, "/out/i18n/fr");
    EXPECT_EQ(error.reason, "is a file where a folder is needed");
    EXPECT_FALSE(inside.exists("/out/i18n/de"));
}

TEST(StagedFiles, FileInPlaceOfTheStageIsSaid) {
    MemoryFileSystem files = withGerman();
    files.put("/out/i18n/.localization-export", "a file");
    FileError error;
    EXPECT_FALSE(put(files, error));
    EXPECT_EQ(error.path, "/out/i18n/.localization-export");
    EXPECT_EQ(error.reason, "is a file where a folder is needed");
    EXPECT_FALSE(files.exists("/out/i18n/fr"));
}

TEST(StagedFiles, WhatACrashBeforeTheJournalLeftBehindIsCleared) {
    MemoryFileSystem files = withGerman();
    files.put("/out/i18n/.localization-export/0.old", "crashed");
    files.put("/out/i18n/.localization-export/7.new", "crashed");
    files.put("/out/i18n/.localization-export/journal.new", "crashed");
    FileError error;
    EXPECT_TRUE(checkStaged(files, "/out/i18n", error));
    EXPECT_TRUE(put(files, error));
    EXPECT_EQ(files.files(), NewFiles);
}

TEST(StagedFiles, WhereNothingWasCutShortNothingIsDone) {
    for(const char* const folder: {"/out/i18n", "/gone"}) {
        MemoryFileSystem files = withGerman();
        FileError error;
        EXPECT_TRUE(checkStaged(files, folder, error));
        EXPECT_TRUE(finishStaged(files, folder, error));
        EXPECT_EQ(files.changes, 0u);
    }
}

TEST(StagedFiles, WhereverThePowerGoesAllFilesAreOldOrAllAreNewAfterTheNextExport) {
    using Kept = MemoryFileSystem::Kept;
    const MemoryFileSystem german = withGerman();
    MemoryFileSystem measured = withGerman();
    FileError error;
    ASSERT_TRUE(put(measured, error));
    std::size_t old = 0, fresh = 0, half = 0;
    for(std::size_t step = 0; step != measured.steps(); ++step)
        for(unsigned seed = 0; seed != 24; ++seed) {
            MemoryFileSystem files = withGerman();
            files.losePowerAfter(step);
            EXPECT_THROW(put(files, error), MemoryFileSystem::PowerLoss);
            files.powerOn(seed < 4 ? Kept(seed) : Kept::AnyPart, seed);

            // Who only reads is not given files of two exports.
            const Files found = inPlace(files);
            const bool isWhole = found == german.files() || found == NewFiles;
            const std::size_t changes = files.changes;
            if(checkStaged(files, "/out/i18n", error)) {
                EXPECT_TRUE(isWhole) << step << ' ' << seed << testing::PrintToString(found);
            } else {
                EXPECT_EQ(error.path, "/out/i18n/.localization-export");
                EXPECT_EQ(error.reason,
                    "an export was cut short here, and another one puts the files in order; without this folder they "
                    "are taken as they are");
                half += isWhole ? 0 : 1;
            }
            EXPECT_EQ(files.changes, changes);

            ASSERT_TRUE(finishStaged(files, "/out/i18n", error)) << copied(error.path) << copied(error.reason);
            const Files after = files.files();
            ASSERT_TRUE(after == german.files() || after == NewFiles)
                << step << ' ' << seed << testing::PrintToString(after);
            EXPECT_TRUE(checkStaged(files, "/out/i18n", error));
            (after == NewFiles ? fresh : old)++;
            ASSERT_TRUE(put(files, error));
            EXPECT_EQ(files.files(), NewFiles);
        }
    EXPECT_GT(old, 100u);
    EXPECT_GT(fresh, 100u);
    EXPECT_GT(half, 10u);
}

TEST(StagedFiles, WhenEvenTheWayBackFailsTheReasonSaysWhatHelps) {
    MemoryFileSystem measured = withGerman();
    FileError error;
    ASSERT_TRUE(put(measured, error));
    std::size_t stuck = 0;
    for(std::size_t step = 0; step != measured.steps(); ++step) {
        MemoryFileSystem files = withGerman();
        files.failAt(step, EIO, true);
        const bool isPut = put(files, error);
        files.behave();
        if(!isPut && error.reason.hasSuffix("; what is on the disk is put in order by the next export")) ++stuck;
        EXPECT_TRUE(finishStaged(files, "/out/i18n", error));
        const Files after = files.files();
        EXPECT_TRUE(after == withGerman().files() || after == NewFiles) << step << testing::PrintToString(after);
        EXPECT_TRUE(!isPut || after == NewFiles) << step;
    }
    EXPECT_GT(stuck, 5u);
}

TEST(StagedFiles, OnceDoneTheNewFilesAndFoldersSurviveAPowerLoss) {
    MemoryFileSystem files;
    files.putFolder("/out");
    FileError error;
    ASSERT_TRUE(put(files, error));
    files.powerOn(MemoryFileSystem::Kept::Nothing, 0);
    EXPECT_EQ(inPlace(files), NewFiles);
    EXPECT_TRUE(checkStaged(files, "/out/i18n", error));
}

TEST(StagedFiles, AnArchiveIsOldOrNewWhereverThePowerGoes) {
    const StagedFile archive{"localization.zip", "new archive"};
    const auto putArchive = [&](MemoryFileSystem& files, FileError& error) {
        FolderLock lock;
        return putInPlace(files, "/out", Containers::arrayView(&archive, 1), lock, error);
    };
    MemoryFileSystem measured;
    measured.put("/out/localization.zip", "old archive");
    FileError error;
    ASSERT_TRUE(putArchive(measured, error));
    for(std::size_t step = 0; step != measured.steps(); ++step)
        for(unsigned seed = 0; seed != 8; ++seed) {
            MemoryFileSystem files;
            files.put("/out/localization.zip", "old archive");
            files.losePowerAfter(step);
            EXPECT_THROW(putArchive(files, error), MemoryFileSystem::PowerLoss);
            files.powerOn(seed < 4 ? MemoryFileSystem::Kept(seed) : MemoryFileSystem::Kept::AnyPart, seed);
            const std::string found = files.files()["/out/localization.zip"];
            EXPECT_TRUE(found == "old archive" || found == "new archive") << step << ' ' << seed << ' ' << found;
            ASSERT_TRUE(putArchive(files, error));
            EXPECT_EQ(files.files(), (Files{{"/out/localization.zip", "new archive"}}));
        }
}

TEST(StagedFiles, JournalThatNoExportWritesIsNotFollowed) {
    for(const char* const line: {"remove ja.json", "replace notes.txt", "create .bashrc", "replace ../ja.json"}) {
        MemoryFileSystem files = withGerman();
        files.put("/out/i18n/notes.txt", "kept");
        files.put("/out/i18n/.localization-export/0.new", "hostile");
        files.put(
            "/out/i18n/.localization-export/journal", "quorvane-journal 1\ncomplete\n" + std::string{line} + "\nend\n");
        const Files before = files.files();
        FileError error;
        EXPECT_FALSE(put(files, error)) << line;
        EXPECT_TRUE(error.path.hasPrefix("/out/i18n/.localization-export")) << copied(error.path);
        EXPECT_TRUE(error.reason.hasSuffix("without it the files are taken as they are")) << copied(error.reason);
        EXPECT_FALSE(checkStaged(files, "/out/i18n", error));
        EXPECT_EQ(files.files(), before);
    }
}

TEST(StagedFiles, NothingIsRemovedOrRecoveredThroughALink) {
    MemoryFileSystem files = withGerman();
    files.put("/out/i18n/.localization-export/0.new", "hostile");
    files.links = {"/out/i18n/.localization-export"};
    const Files before = files.files();
    FileError error;
    EXPECT_FALSE(put(files, error));
    EXPECT_EQ(error.path, "/out/i18n/.localization-export");
    EXPECT_EQ(error.reason, "is a link where a folder is needed");
    EXPECT_FALSE(checkStaged(files, "/out/i18n", error));

    files.put(
        "/out/i18n/.localization-export/journal", "quorvane-journal 1\ncomplete\nreplace de/translation.json\nend\n");
    files.links = {"/out/i18n/de"};
    EXPECT_FALSE(finishStaged(files, "/out/i18n", error));
    EXPECT_EQ(error.path, "/out/i18n/de");
    EXPECT_EQ(error.reason, "is a link, through which nothing is put in order that was cut short");
    EXPECT_EQ(inPlace(files), withGerman().files());
}

TEST(StagedFiles, WhileAnExportIsRunningAnotherOneIsRefusedAndChangesNothing) {
    const TestFolder folder;
    folder.write("de/translation.json", "old german");
    const Files before = folder.files();
    const StagedFile staged[]{{"de/translation.json", "new german"}};
    FolderLock running, lock;
    FileError error;
    ASSERT_TRUE(lockExport(FileSystem::disk(), viewed(folder.path), running, error));
    EXPECT_FALSE(putInPlace(FileSystem::disk(), viewed(folder.path), staged, lock, error));
    EXPECT_EQ(error.path, viewed(folder.path));
    EXPECT_EQ(error.reason, "another export to this folder is running");
    EXPECT_EQ(folder.files(), before);
    running.release();
    EXPECT_TRUE(putInPlace(FileSystem::disk(), viewed(folder.path), staged, lock, error));
    EXPECT_EQ(folder.read("de/translation.json"), "new german");
}

TEST(StagedFiles, OfExportsAtOnceEachIsDoneWhollyOrToldOf) {
    const TestFolder folder;
    const Containers::String path{viewed(folder / "i18n")};
    std::atomic<std::size_t> done{0}, refused{0}, others{0};
    {
        std::vector<std::jthread> threads;
        for(const char* const text: {"first", "second"})
            threads.emplace_back([&, text] {
                Containers::Array<StagedFile> staged;
                for(int i = 0; i != 20; ++i)
                    Containers::arrayAppend(staged, StagedFile{viewed(std::to_string(i) + "/translation.json"), text});
                for(int i = 0; i != 20; ++i) {
                    FolderLock lock;
                    FileError error;
                    if(putInPlace(FileSystem::disk(), path, staged, lock, error)) ++done;
                    else if(error.reason == "another export to this folder is running") ++refused;
                    else ++others;
                }
            });
    }
    EXPECT_GT(done, 0u);
    EXPECT_EQ(done + refused, 40u);
    EXPECT_EQ(others, 0u);
    const std::string first = folder.read("i18n/0/translation.json");
    EXPECT_TRUE(first == "first" || first == "second") << first;
    for(int i = 1; i != 20; ++i) EXPECT_EQ(folder.read("i18n/" + std::to_string(i) + "/translation.json"), first) << i;
    EXPECT_FALSE(folder.files().contains("i18n/.localization-export/"));
}

}
