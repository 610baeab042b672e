#include "KnownFiles.h"

#include <cerrno>
#include <filesystem>
#include <string>

#include <Corrade/Containers/StringStl.h>
#include <gtest/gtest.h>

#include "AllocationCounter.h"
#include "MemoryFileSystem.h"
#include "host/localization/TestFolder.h"

namespace QuorvaneEngine {
namespace {

class KnownFilesTest: public testing::Test {
protected:
    KnownFilesTest() {
        for(const char* const path: {"project.json", "localization/de.json"}) {
            const std::string bytes = std::string{"{\""} + path + "\": 1}";
            disk.put("/p/" + std::string{path}, bytes);
            known.noteRead(path, known.stampOf(path), bytes.c_str());
        }
    }

    DiskState look() {
        changed = {};
        return known.look(&changed);
    }

    MemoryFileSystem disk;
    KnownFiles known{disk, "/p"};
    Containers::String changed;
};

TEST_F(KnownFilesTest, WhatNobodyTouchedIsTheSameAndNothingIsRead) {
    const std::size_t steps = disk.steps();
    EXPECT_EQ(look(), DiskState::Same);
    EXPECT_EQ(look(), DiskState::Same);
    // To see which files there are the folder is listed once.
    EXPECT_EQ(disk.steps(), steps + 1);
    EXPECT_EQ(changed, "");
}

TEST_F(KnownFilesTest, AFileWithOtherBytesIsChanged) {
    disk.put("/p/localization/de.json", "{}");
    EXPECT_EQ(look(), DiskState::Changed);
    EXPECT_EQ(changed, "/p/localization/de.json");
    EXPECT_TRUE(known.isForeign("localization/de.json"));
    EXPECT_FALSE(known.isForeign("project.json"));
    // As long as nobody says that this is known.
    EXPECT_EQ(look(), DiskState::Changed);
}

TEST_F(KnownFilesTest, OtherBytesInAsManyAreSeen) {
    disk.put("/p/localization/de.json", "{\"localization/de.json\": 2}");
    EXPECT_EQ(look(), DiskState::Changed);
}

TEST_F(KnownFilesTest, AFileThatWasWrittenAsItWasIsReadOnceAndTheSame) {
    disk.put("/p/project.json", "{\"project.json\": 1}");
    EXPECT_EQ(look(), DiskState::Same);
    const std::size_t steps = disk.steps();
    EXPECT_EQ(look(), DiskState::Same);
    EXPECT_EQ(disk.steps(), steps);
}

TEST_F(KnownFilesTest, AFileOfTranslationsThatAppearsOrVanishesIsAChange) {
    EXPECT_EQ(look(), DiskState::Same);
    disk.makeFolder("/p/localization/other");
    disk.put("/p/localization/notes.txt", "");
    disk.put("/p/localization/no code.json", "");
    EXPECT_EQ(look(), DiskState::Same);
    disk.put("/p/localization/fr.json", "{}");
    EXPECT_EQ(look(), DiskState::Changed);
    EXPECT_EQ(changed, "/p/localization/fr.json");
    EXPECT_TRUE(known.isForeign("localization/fr.json"));
    disk.removeFile("/p/localization/fr.json");
    EXPECT_EQ(look(), DiskState::Same);
    EXPECT_FALSE(known.isForeign("localization/fr.json"));
    disk.removeFile("/p/localization/de.json");
    EXPECT_EQ(look(), DiskState::Changed);
    EXPECT_EQ(changed, "/p/localization/de.json");
    EXPECT_FALSE(known.isForeign("localization/de.json")) << "there is nothing to write over";
}

TEST_F(KnownFilesTest, WithoutProjectFileTheProjectIsGone) {
    disk.removeFile("/p/project.json");
    EXPECT_EQ(look(), DiskState::Gone);
    disk.removeFile("/p/localization/de.json");
    EXPECT_EQ(look(), DiskState::Gone);
    disk.removeFolder("/p/localization");
    disk.removeFolder("/p");
    EXPECT_EQ(look(), DiskState::Gone);
    disk.put("/p/project.json", "{\"project.json\": 1}");
    disk.put("/p/localization/de.json", "{\"localization/de.json\": 1}");
    EXPECT_EQ(look(), DiskState::Same);
    // What is left must not be written over.
    disk.removeFile("/p/project.json");
    disk.put("/p/localization/de.json", "{}");
    EXPECT_EQ(look(), DiskState::Changed);
}

TEST_F(KnownFilesTest, WhatWasWrittenOrRemovedIsKnown) {
    disk.put("/p/localization/de.json", "{}");
    known.noteWritten("localization/de.json", "{}");
    disk.put("/p/localization/fr.json", "[]");
    known.noteWritten("localization/fr.json", "[]");
    EXPECT_EQ(look(), DiskState::Same);
    disk.removeFile("/p/localization/fr.json");
    known.noteRemoved("localization/fr.json");
    EXPECT_EQ(look(), DiskState::Same);
}

TEST_F(KnownFilesTest, LearningTellsWhatWasChangedAndKnowsItFromNowOn) {
    EXPECT_TRUE(known.learn().empty());
    disk.put("/p/project.json", "[]");
    disk.put("/p/localization/fr.json", "{}");
    disk.removeFile("/p/localization/de.json");
    std::string told;
    for(const KnownFiles::Difference& difference: known.learn())
        told += std::string{difference.path} + (difference.isThere ? " " : " gone ");
    EXPECT_EQ(told, "project.json localization/de.json gone localization/fr.json ");
    EXPECT_EQ(look(), DiskState::Same);
    EXPECT_TRUE(known.learn().empty());
    disk.put("/p/localization/fr.json", "[]");
    EXPECT_EQ(look(), DiskState::Changed);
}

TEST_F(KnownFilesTest, AFileThatWasChangedBetweenItsStampAndItsReadingIsSeen) {
    const FileStamp before = known.stampOf("project.json");
    known.noteRead("project.json", before, "[]");
    disk.put("/p/project.json", "[1]");
    EXPECT_EQ(look(), DiskState::Changed);
}

TEST_F(KnownFilesTest, SomeFilesCanBeLearnedAlone) {
    disk.put("/p/project.json", "[]");
    disk.put("/p/localization/fr.json", "{}");
    disk.removeFile("/p/localization/de.json");
    EXPECT_TRUE(known.learn({"localization/es.json"}).empty());
    const auto learned = known.learn({"localization/de.json", "localization/fr.json", "localization/es.json"});
    ASSERT_EQ(learned.size(), 2u);
    EXPECT_FALSE(learned[0].isThere);
    EXPECT_EQ(learned[1].path, "localization/fr.json");
    EXPECT_EQ(look(), DiskState::Changed);
    EXPECT_EQ(changed, "/p/project.json");
    EXPECT_FALSE(known.isForeign("localization/fr.json"));
}

TEST_F(KnownFilesTest, WhatSomebodyWritesRightAfterTheSaveIsSeen) {
    disk.put("/p/project.json", "[]");
    disk.put("/p/project.json", "[1]");
    known.noteWritten("project.json", "[]");
    EXPECT_EQ(look(), DiskState::Changed);
    EXPECT_TRUE(known.isForeign("project.json"));
}

/** One whose clock goes in steps of two seconds. */
class CoarseFileSystem: public MemoryFileSystem {
public:
    int stampOf(Containers::StringView path, FileStamp& stamp) override {
        if(const int error = MemoryFileSystem::stampOf(path, stamp)) return error;
        stamp.file = 1;
        stamp.changed = stamp.touched = now / 2'000'000'000 * 2'000'000'000;
        return 0;
    }

    inline static std::int64_t now = 0;
};

TEST(KnownFilesCoarse, ASecondChangeWithinTheStepsOfTheClockIsSeen) {
    CoarseFileSystem disk;
    CoarseFileSystem::now = 100'500'000'000;
    KnownFiles known{disk, "/p", [] { return CoarseFileSystem::now; }};
    disk.put("/p/project.json", "[1]");
    known.noteRead("project.json", known.stampOf("project.json"), "[1]");
    CoarseFileSystem::now += 1'000'000'000;
    disk.put("/p/project.json", "[2]");
    EXPECT_EQ(known.look(), DiskState::Changed);
    known.learn();
    EXPECT_EQ(known.look(), DiskState::Same);
}

TEST(KnownFilesDisk, AChangeWhoseAuthorSetsTheTimeBackIsSeen) {
    const TestFolder folder;
    KnownFiles known{FileSystem::disk(), folder.path.c_str()};
    folder.write("project.json", "[1]");
    const std::filesystem::path place = folder / "project.json";
    const auto time = std::filesystem::last_write_time(place);
    known.noteRead("project.json", known.stampOf("project.json"), "[1]");
    folder.write("project.json", "[2]");
    std::filesystem::last_write_time(place, time);
    EXPECT_EQ(known.look(), DiskState::Changed);
}

TEST(KnownFilesDisk, WhatCannotBeReadIsOneChangeAndThenKnown) {
    const TestFolder folder;
    KnownFiles known{FileSystem::disk(), folder.path.c_str()};
    for(const char* const path: {"project.json", "localization/de.json"}) {
        folder.write(path, "{}");
        known.noteRead(path, known.stampOf(path), "{}");
    }
    for(const char* const path: {"project.json", "localization/de.json"}) {
        const std::string place = folder.path + "/" + path;
        ASSERT_TRUE(std::filesystem::remove(place));
        ASSERT_TRUE(std::filesystem::create_directory(place));
        EXPECT_EQ(known.look(), DiskState::Changed);
        EXPECT_EQ(known.learn().size(), 1u);
        EXPECT_EQ(known.look(), DiskState::Same);
        EXPECT_FALSE(known.isForeign(path));
        ASSERT_TRUE(std::filesystem::remove(place));
        folder.write(path, "{}");
        EXPECT_TRUE(known.isForeign(path));
        known.learn();
    }
}

TEST(KnownFilesDisk, ALinkThatLeadsNowhereIsNoFile) {
    const TestFolder folder;
    KnownFiles known{FileSystem::disk(), folder.path.c_str()};
    folder.write("project.json", "{}");
    folder.write("localization/de.json", "{}");
    known.learn();
    known.noteRead("project.json", known.stampOf("project.json"), "{}");
    known.noteRead("localization/de.json", known.stampOf("localization/de.json"), "{}");
    ASSERT_EQ(known.look(), DiskState::Same);
    std::filesystem::create_symlink("nowhere", folder.path + "/localization/fr.json");
    EXPECT_EQ(known.look(), DiskState::Same);
    std::filesystem::remove(folder.path + "/localization/fr.json");
    folder.write("localization/fr.json", "{}");
    EXPECT_EQ(known.look(), DiskState::Changed);
}

TEST(KnownFilesDisk, LookingAllocatesNothing) {
    const TestFolder folder;
    KnownFiles known{FileSystem::disk(), folder.path.c_str()};
    for(const char* const path: {"project.json", "localization/de.json", "localization/fr.json"}) {
        folder.write(path, "{}");
        known.noteRead(path, known.stampOf(path), "{}");
    }
    ASSERT_EQ(known.look(), DiskState::Same);
    const std::size_t allocations = allocationCount();
    EXPECT_EQ(known.look(), DiskState::Same);
    EXPECT_EQ(allocationCount(), allocations);
    folder.write("localization/fr.json", "[]");
    EXPECT_EQ(known.look(), DiskState::Changed);
}

/** One that answers with an error where it is asked to look at a file. */
class SilentFileSystem: public MemoryFileSystem {
public:
    int stampOf(Containers::StringView path, FileStamp& stamp) override {
        return error ? error : MemoryFileSystem::stampOf(path, stamp);
    }

    int error = 0;
};

TEST(KnownFilesSilent, AFileIsMissingOnlyWhereTheDiskSaysSo) {
    SilentFileSystem disk;
    KnownFiles known{disk, "/p"};
    disk.put("/p/project.json", "{}");
    known.noteRead("project.json", known.stampOf("project.json"), "{}");
    for(const int error: {EIO, ESTALE, EACCES, ETIMEDOUT}) {
        disk.error = error;
        EXPECT_EQ(known.look(), DiskState::Same) << error;
        EXPECT_FALSE(known.isMissing("project.json")) << error;
        EXPECT_TRUE(known.learn().empty()) << error;
    }
    for(const int error: {ENOENT, ENOTDIR}) {
        disk.error = error;
        EXPECT_EQ(known.look(), DiskState::Gone) << error;
        EXPECT_TRUE(known.isMissing("project.json")) << error;
    }
    disk.error = 0;
    disk.put("/p/project.json", "[]");
    EXPECT_EQ(known.look(), DiskState::Changed) << "nothing was forgotten";
}

/** One that cannot tell. */
class BlindFileSystem: public MemoryFileSystem {
public:
    int stampOf(Containers::StringView path, FileStamp& stamp) override { return FileSystem::stampOf(path, stamp); }
};

TEST(KnownFilesBlind, WhereTheFileSystemCannotTellNothingIsNoticed) {
    BlindFileSystem disk;
    KnownFiles known{disk, "/p"};
    disk.put("/p/project.json", "{}");
    known.noteRead("project.json", known.stampOf("project.json"), "{}");
    disk.put("/p/project.json", "[]");
    EXPECT_EQ(known.look(), DiskState::Same);
    EXPECT_FALSE(known.isForeign("project.json"));
    EXPECT_FALSE(known.isForeign("localization/fr.json"));
    disk.removeFile("/p/project.json");
    EXPECT_EQ(known.look(), DiskState::Same);
}

}
}
