#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>

#include <unistd.h>

#include "LockNote.h"
#include "ProjectStorageTest.h"
#include "support/OrdinaryUser.h"

namespace QuorvaneEngine {
namespace {

using QuorvaneEngine::Test::OrdinaryUser;

/* On the real disk. */
class ProjectStorageDiskTest: public ProjectStorageTest {
protected:
    ProjectStorageDiskTest() {
        std::string name = (std::filesystem::temp_directory_path() / "quorvane-XXXXXX").string();
        folder = mkdtemp(name.data());
        std::filesystem::create_directory(folder + "/localization");
        std::ofstream{folder + "/project.json"} << Project;
        std::ofstream{folder + "/localization/de.json"} << German;
    }
    ~ProjectStorageDiskTest() override {
        std::filesystem::permissions(folder, std::filesystem::perms::owner_all);
        std::filesystem::permissions(folder + "/localization", std::filesystem::perms::owner_all);
        std::filesystem::remove_all(folder);
    }

    std::string read(const std::string& name) {
        std::ifstream file{folder + "/" + name, std::ios::binary};
        return {std::istreambuf_iterator<char>{file}, std::istreambuf_iterator<char>{}};
    }

    /** What is said while this program has the project locked, which can be told where there is a folder for it. */
    std::string refusal() {
        if(!std::filesystem::exists(folder + "/.editor")) return ": another program has the project open for writing\n";
        const std::string holder = text(LockNote::read(FileSystem::disk(), {folder.data(), folder.size()}));
        EXPECT_NE(holder, "");
        return ": another program has the project open for writing: " + holder + '\n';
    }

    bool saveAfterEdit() {
        document["objects"]["o"]["text"].SetString("Hi");
        translations()["de"]["a"]["text"].SetString("He");
        return warned([&] { return disk.save(document); });
    }

    ProjectStorage disk{FileSystem::disk()};
    std::string folder;
};

TEST_F(ProjectStorageDiskTest, AProjectIsOpenedSavedAndOpenedAgain) {
    ASSERT_TRUE(open(disk, folder)) << warning;
    ASSERT_TRUE(saveAfterEdit()) << warning;
    const std::string before = textOf(document);
    EXPECT_NE(read("project.json").find("\"Hi\""), std::string::npos);
    EXPECT_NE(read("localization/de.json").find("\"He\""), std::string::npos);
    EXPECT_EQ(read(".editor/.gitignore"), "*\n");
    EXPECT_FALSE(std::filesystem::exists(folder + "/.editor/save"));
    ASSERT_TRUE(open(disk, folder));
    EXPECT_EQ(textOf(document), before);
}

TEST_F(ProjectStorageDiskTest, AProjectThatAnotherProgramHasLockedIsReadAndNotSaved) {
    {
        ProjectStorage other{FileSystem::disk()};
        ASSERT_TRUE(other.lock({folder.data(), folder.size()}));
        ASSERT_TRUE(open(disk, folder)) << warning;
        const std::string before = read("project.json");
        EXPECT_FALSE(saveAfterEdit());
        EXPECT_EQ(warning, "ProjectStorage::save(): " + folder + refusal());
        EXPECT_EQ(read("project.json"), before);
        EXPECT_FALSE(disk.isSaved(document));
    }
    EXPECT_TRUE(saveAfterEdit()) << warning;
}

TEST_F(ProjectStorageDiskTest, WhoHasTheLockOpensAndSavesAndSharesItWithNobody) {
    const Containers::StringView path{folder.data(), folder.size()};
    ASSERT_TRUE(disk.lock(path));
    EXPECT_TRUE(disk.lock(path));
    ProjectStorage other{FileSystem::disk()};
    Containers::String out;
    {
        Corrade::Utility::Warning redirect{&out};
        EXPECT_FALSE(other.lock(path));
    }
    EXPECT_EQ(text(out), "ProjectStorage::open(): " + folder + refusal());
    ASSERT_TRUE(open(disk, folder)) << warning;
    EXPECT_TRUE(saveAfterEdit()) << warning;
}

TEST_F(ProjectStorageDiskTest, TheLockGoesOnlyWhenAnotherProjectIsOpen) {
    std::filesystem::create_directory(folder + "/other");
    std::ofstream{folder + "/other/project.json"} << Project;
    const std::string second = folder + "/other", none = folder + "/none";
    const auto lock = [](auto&& storage, const std::string& path) {
        FileError error;
        return storage.tryLock({path.data(), path.size()}, error);
    };
    ProjectStorage other{FileSystem::disk()};
    ASSERT_TRUE(lock(disk, folder) && open(disk, folder));
    EXPECT_TRUE(disk.isLocked());
    // What is no project is told of when it is opened, and nothing is made there.
    EXPECT_TRUE(lock(disk, none));
    EXPECT_FALSE(open(disk, none));
    EXPECT_FALSE(std::filesystem::exists(none));
    std::ofstream{second + "/project.json"} << "{";
    EXPECT_TRUE(lock(disk, second));
    EXPECT_FALSE(open(disk, second));
    EXPECT_TRUE(lock(ProjectStorage{FileSystem::disk()}, second)) << "of what could not be opened nothing is kept";
    EXPECT_FALSE(lock(other, folder));
    std::ofstream{second + "/project.json"} << Project;
    EXPECT_TRUE(lock(disk, second) && open(disk, second));
    EXPECT_TRUE(disk.isLocked());
    EXPECT_TRUE(lock(other, folder));
    EXPECT_FALSE(lock(other, second));
    // Only to be read.
    EXPECT_FALSE(lock(disk, folder));
    EXPECT_TRUE(open(disk, folder));
    EXPECT_FALSE(disk.isLocked());
    EXPECT_TRUE(lock(other, second));
}

TEST_F(ProjectStorageDiskTest, ALockThatWasLostWithItsFolderIsTakenAgainAndTold) {
    const Containers::StringView path{folder.data(), folder.size()};
    FileError error;
    ASSERT_TRUE(disk.tryLock(path, error) && open(disk, folder));
    std::filesystem::remove_all(folder + "/.editor");
    EXPECT_FALSE(disk.isLocked());
    EXPECT_TRUE(disk.tryLock(path, error));
    EXPECT_TRUE(disk.isLocked());
    EXPECT_NE(text(LockNote::read(FileSystem::disk(), path)), "");
    EXPECT_EQ(read(".editor/.gitignore"), "*\n");
    ProjectStorage other{FileSystem::disk()};
    EXPECT_FALSE(other.tryLock(path, error));
}

TEST_F(ProjectStorageDiskTest, ASaveOfAnotherProgramIsNotRecoveredWhileItIsRunning) {
    const std::string journal = "quorvane-journal 1\ncomplete\nreplace project.json\nend\n";
    std::filesystem::create_directories(folder + "/.editor/save");
    std::ofstream{folder + "/.editor/save/journal"} << journal;
    std::ofstream{folder + "/.editor/save/0.new"} << "{}";
    const std::string before = read("project.json");
    {
        ProjectStorage other{FileSystem::disk()};
        ASSERT_TRUE(other.lock({folder.data(), folder.size()}));
        EXPECT_FALSE(open(disk, folder));
        EXPECT_EQ(warning, "ProjectStorage::open(): " + folder + refusal());
        EXPECT_EQ(read("project.json"), before);
        EXPECT_EQ(read(".editor/save/journal"), journal);
    }
    EXPECT_TRUE(open(disk, folder)) << warning;
    EXPECT_EQ(read("project.json"), "{}");
}

TEST_F(ProjectStorageDiskTest, AFolderThatCannotBeWrittenToIsToldOfAndNothingChanges) {
    const OrdinaryUser user{folder};
    if(!user.isOrdinary) GTEST_SKIP() << "permissions do not bind the superuser, who cannot become another user here";
    ASSERT_TRUE(open(disk, folder)) << warning;
    const std::pair<const char*, const char*> cases[]{
        {"", "/.editor: cannot be made"}, {"/localization", "/localization/de.json: cannot be put in place"}};
    for(const auto& [place, reason]: cases) {
        std::filesystem::permissions(
            folder + place, std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
        EXPECT_FALSE(saveAfterEdit());
        EXPECT_EQ(warning, "ProjectStorage::save(): " + folder + reason + ": Permission denied\n");
        EXPECT_EQ(read("project.json"), Project);
        EXPECT_EQ(read("localization/de.json"), German);
        EXPECT_FALSE(std::filesystem::exists(folder + "/.editor/save"));
        std::filesystem::permissions(folder + place, std::filesystem::perms::owner_all);
    }
    EXPECT_TRUE(saveAfterEdit()) << warning;
}

TEST_F(ProjectStorageDiskTest, AFileThatCannotBeReadIsToldOf) {
    const OrdinaryUser user{folder};
    if(!user.isOrdinary) GTEST_SKIP() << "permissions do not bind the superuser, who cannot become another user here";
    for(const char* const name: {"/project.json", "/localization/de.json", "/localization"}) {
        std::filesystem::permissions(folder + name, std::filesystem::perms::none);
        EXPECT_FALSE(open(disk, folder));
        EXPECT_EQ(warning, "ProjectStorage::open(): " + folder + name + ": cannot be read: Permission denied\n");
        std::filesystem::permissions(folder + name, std::filesystem::perms::owner_all);
    }
}

TEST_F(ProjectStorageDiskTest, AFileInTheWayOfASaveIsToldOf) {
    std::ofstream{folder + "/.editor"} << "x";
    ASSERT_TRUE(open(disk, folder)) << warning;
    EXPECT_FALSE(saveAfterEdit());
    EXPECT_EQ(warning, "ProjectStorage::save(): " + folder + "/.editor/save: cannot be made: Not a directory\n");
    EXPECT_EQ(read("project.json"), Project);
    EXPECT_EQ(read("localization/de.json"), German);
}

TEST_F(ProjectStorageDiskTest, AFolderInPlaceOfAFileIsToldOfAndTheOthersAreAsTheyWere) {
    ASSERT_TRUE(open(disk, folder));
    std::filesystem::remove(folder + "/localization/de.json");
    std::filesystem::create_directory(folder + "/localization/de.json");
    EXPECT_FALSE(saveAfterEdit());
    EXPECT_TRUE(warning.starts_with("ProjectStorage::save(): " + folder + "/localization/de.json: ")) << warning;
    EXPECT_EQ(read("project.json"), Project);
    EXPECT_FALSE(disk.isSaved(document));
}

}
}
