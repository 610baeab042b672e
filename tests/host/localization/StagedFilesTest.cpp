#include "StagedFiles.h"

#include <cerrno>

#include <gtest/gtest.h>

#include "../document/MemoryFileSystem.h"
#include "TestProject.h"

namespace QuorvaneEngine {

namespace {

using Files = std::map<std::string, std::string>;

bool put(MemoryFileSystem& files, FileError& error) {
    const StagedFile staged[]{
        {"de/translation.json", "new german"}, {"fr/translation.json", "new french"}, {"ja.json", "new japanese"}};
    return putInPlace(files, "/out/i18n", staged, error);
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
    EXPECT_TRUE(putInPlace(files, "/out", {}, error));
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

TEST(StagedFiles, WhatACrashLeftBehindIsCleared) {
    MemoryFileSystem files = withGerman();
    files.put("/out/i18n/.localization-export/0.old", "crashed");
    files.put("/out/i18n/.localization-export/7.new", "crashed");
    FileError error;
    EXPECT_TRUE(put(files, error));
    EXPECT_EQ(files.files(), NewFiles);
}

TEST(StagedFiles, PowerLossBeforeTheRenamesLeavesTheOldFiles) {
    MemoryFileSystem measured = withGerman();
    FileError error;
    put(measured, error);
    for(std::size_t step = 0; step != measured.steps(); ++step) {
        MemoryFileSystem files = withGerman();
        files.losePowerAfter(step);
        try {
            put(files, error);
        } catch(const MemoryFileSystem::PowerLoss&) {
        }
        files.powerOn(MemoryFileSystem::Kept::Everything, 1);
        for(const auto& [name, bytes]: inPlace(files)) {
            // A reader finds each file whole, the old or the new one.
            EXPECT_TRUE(bytes == NewFiles.at(name) || bytes == withGerman().files().at(name)) << name << bytes;
        }
    }
}

}
