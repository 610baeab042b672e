#include "app/DesktopOpener.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <Corrade/Containers/StringView.h>
#include <gtest/gtest.h>

#include "host/localization/TestFolder.h"
#include "support/ChildProcesses.h"

/* A program named like the desktop's opener waits for leave, and then writes its argument into a pipe with a name. */

namespace QuorvaneEngine {
namespace {

using Test::isChildless;
using Test::openDescriptors;

namespace fs = std::filesystem;

class DesktopOpenerTest: public testing::Test {
protected:
    DesktopOpenerTest() {
        for(int i = 0; i != 2; ++i) {
            const std::string name = folder / (i ? "argument" : "leave");
            EXPECT_EQ(mkfifo(name.c_str(), 0600), 0);
            (i ? argument : leave) = open(name.c_str(), O_RDWR | O_CLOEXEC);
        }
        for(const char* const name: {"xdg-open", "open"}) {
            std::ofstream{folder / name} << "#!/bin/sh\nread line <'" << folder / "leave"
                                         << "'\nprintf '%s\\0' \"$@\" >'" << folder / "argument"
                                         << "'\n";
            fs::permissions(folder / name, fs::perms::owner_all);
        }
        setenv("PATH", (folder.path + ":" + std::getenv("PATH")).c_str(), 1);
    }
    ~DesktopOpenerTest() override {
        close(leave);
        close(argument);
    }

    /** Lets the opener go on, and waits for what it was given. */
    std::string opened() const {
        EXPECT_EQ(write(leave, "\n", 1), 1);
        std::string text;
        pollfd end{argument, POLLIN, 0};
        constexpr int Patience = 20000;
        while(poll(&end, 1, Patience) == 1) {
            char letter = 0;
            if(read(argument, &letter, 1) != 1) break;
            if(!letter) return text;
            text += letter;
        }
        ADD_FAILURE() << "nothing was opened";
        return text;
    }

    const TestFolder folder;
    int leave = -1;
    int argument = -1;
};

TEST_F(DesktopOpenerTest, ShowsAFolderAndDoesNotWait) {
    DesktopOpener::showFolder("/a folder");
    EXPECT_EQ(opened(), "/a folder");
}

TEST_F(DesktopOpenerTest, OpensAFileAndDoesNotWait) {
    DesktopOpener::open("/a folder/file.md");
    EXPECT_EQ(opened(), "/a folder/file.md");
}

TEST_F(DesktopOpenerTest, ManyCallsLeaveNoThreadNoDescriptorAndNoZombie) {
    const auto threads = [] {
        const fs::directory_iterator all{"/proc/self/task"};
        return std::distance(begin(all), end(all));
    };
    const auto threadsBefore = threads();
    const std::size_t before = openDescriptors();
    for(int i = 0; i != 100; ++i) {
        DesktopOpener::showFolder("/a folder");
        ASSERT_EQ(opened(), "/a folder");
        DesktopOpener::open("/a file");
        ASSERT_EQ(opened(), "/a file");
    }
    // The last opener has written, but may not have ended.
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds{20};
    while(threads() > threadsBefore && std::chrono::steady_clock::now() < end) std::this_thread::yield();
    EXPECT_LE(threads(), threadsBefore);
    EXPECT_EQ(openDescriptors(), before);
    EXPECT_TRUE(isChildless());
}

TEST_F(DesktopOpenerTest, NothingInAPathIsTheShellsToRead) {
    const std::string path = "/\"; touch '" + (folder / "hacked") + "'; \"$(touch hacked)`touch hacked`\\$HOME\n'";
    DesktopOpener::showFolder(path.c_str());
    EXPECT_EQ(opened(), path);
    DesktopOpener::open(path.c_str());
    EXPECT_EQ(opened(), path);
    EXPECT_FALSE(fs::exists(folder / "hacked"));
}

}
}
