#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sched.h>
#include <string>

#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <sys/mount.h>
#include <unistd.h>

#include "ChangeManager.h"
#include "QuorvaneEditor/JobSystem.h"
#include "app/Autosave.h"
#include "document/EditorSession.h"
#include "document/FileSystem.h"
#include "host/localization/TestFolder.h"
#include "support/CapturedOutput.h"

/* A project on a disk that has no space for it any more. */

namespace QuorvaneEngine {
namespace {

using Test::CapturedOutput;

/** A disk of 256 KiB in a folder, which goes with the object. */
class SmallDisk {
public:
    explicit SmallDisk(const std::string& folder): _folder{folder} {
        isThere = mountIt();
        // Who may not do so here may do so in a world of his own.
        if(!isThere) isThere = enterWorld() && mountIt();
        if(!isThere) reason = std::strerror(errno);
    }
    ~SmallDisk() {
        if(isThere) umount2(_folder.c_str(), MNT_DETACH);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    bool isThere = false;
    std::string reason;

private:
    bool mountIt() const { return mount("tmpfs", _folder.c_str(), "tmpfs", 0, "size=256k,mode=777") == 0; }

    /** One in which this user has all rights, and the same number. */
    static bool enterWorld() {
        const uid_t user = geteuid();
        const gid_t group = getegid();
        if(unshare(CLONE_NEWUSER | CLONE_NEWNS)) return false;
        std::ofstream{"/proc/self/setgroups"} << "deny";
        std::ofstream{"/proc/self/uid_map"} << user << ' ' << user << " 1";
        std::ofstream{"/proc/self/gid_map"} << group << ' ' << group << " 1";
        return geteuid() == user;
    }

    std::string _folder;
};

class FullDiskTest: public testing::Test {
protected:
    void SetUp() override {
        if(!disk.isThere) GTEST_SKIP() << "no small disk can be mounted here: " << disk.reason;
        folder.write("project.json", R"({"x": 1})");
        ASSERT_TRUE(session.open(folder.path.c_str()));
        session.makeEditorFolder();
        // Rights and the like take some space, too.
        std::ofstream{folder / "other"} << std::string(100 * 1024, ' ');
    }

    void push(const std::size_t size) {
        const std::string text(size, 'x');
        session.changes().pushChange("/y", Containers::StringView{text.data(), text.size()}, false);
    }

    void makeSpace() const { std::filesystem::remove(folder / "other"); }

    /** Names of all files of the project, and of its folder for the editor. */
    std::string names() const {
        std::string names;
        for(const auto& [name, text]: folder.files()) names += name + " ";
        return names;
    }

    const TestFolder folder;
    const SmallDisk disk{folder.path};
    JobSystem jobs{0};
    EditorSession session{&jobs};
    Autosave autosave{session, jobs, FileSystem::disk()};
};

TEST_F(FullDiskTest, WhatWasSavedLastStaysWholeAndSavingWorksWhenThereIsSpace) {
    push(150 * 1024);
    {
        const CapturedOutput output;
        EXPECT_FALSE(session.save());
        EXPECT_NE(output.warning().find("cannot be written: No space left on device"), std::string::npos)
            << output.warning();
    }
    EXPECT_EQ(folder.read("project.json"), R"({"x": 1})");
    EXPECT_EQ(names(), ".editor/ .editor/.gitignore other project.json ") << "nothing takes what space is left";
    EXPECT_TRUE(session.hasUnsavedChanges());
    makeSpace();
    const CapturedOutput output;
    EXPECT_TRUE(session.save());
    EXPECT_EQ(output.warning(), "");
    EXPECT_FALSE(session.hasUnsavedChanges());
    EditorSession other;
    ASSERT_TRUE(other.open(folder.path.c_str()));
    EXPECT_EQ(other.project().getValue("/y", false)->GetStringLength(), 150u * 1024u);
}

TEST_F(FullDiskTest, TheCopyThatWasKeptLastStaysWholeAndIsReplacedWhenThereIsSpace) {
    autosave.begin(true);
    auto wait = [this, now = 0.0](const double seconds) mutable {
        for(const double end = now + seconds; now < end; now += 0.1) {
            autosave.update(now);
            jobs.runMainThreadJobs();
        }
    };
    push(10);
    wait(Autosave::Quiet + 1.0);
    const std::string kept = folder.read(".editor/autosave");
    ASSERT_FALSE(kept.empty());
    push(150 * 1024);
    {
        const CapturedOutput output;
        wait(Autosave::Quiet + 1.0);
        EXPECT_EQ(output.warning(),
            "Autosave::update(): " + (folder / ".editor/autosave") +
                ": cannot be written: No space left on device; unsaved changes are not kept for the case of a "
                "crash\n");
    }
    EXPECT_EQ(folder.read(".editor/autosave"), kept);
    EXPECT_EQ(names(), ".editor/ .editor/.gitignore .editor/autosave other project.json ");
    makeSpace();
    wait(Autosave::RetryPeriod + 1.0);
    EXPECT_GT(folder.read(".editor/autosave").size(), 150u * 1024u);
}

}
}
