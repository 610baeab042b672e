#include "LockNote.h"

#include <cstdlib>
#include <ctime>
#include <string>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "MemoryFileSystem.h"

namespace QuorvaneEngine {
namespace {

class LockNoteTest: public testing::Test {
protected:
    LockNoteTest() {
        setenv("TZ", "UTC", 1);
        tzset();
        files.put("/p/.editor/.gitignore", "*\n");
        char name[256]{};
        gethostname(name, sizeof(name) - 1);
        host = name;
    }

    std::string read() {
        const Containers::String who = LockNote::read(files, "/p");
        return {who.data(), who.size()};
    }

    std::string read(const std::string& note) {
        files.put("/p/.editor/lock", note);
        return read();
    }

    MemoryFileSystem files;
    std::string host;
    const std::string own = std::to_string(getpid());
};

TEST_F(LockNoteTest, TellsProgramHostProcessAndTime) {
    EXPECT_EQ(read("quorvane-lock 1\nquorvane-editor\n4711\nelsewhere\n1772387100\n"),
        "quorvane-editor on elsewhere, process 4711, since 2026-03-01 17:45");
    EXPECT_EQ(read("quorvane-lock 1\n\n4711\n\n1772387100\n"), "a program, process 4711, since 2026-03-01 17:45");
}

TEST_F(LockNoteTest, WhatIsWrittenIsRead) {
    EXPECT_EQ(read(), "");
    LockNote::write(files, "/p");
    const std::string who = read();
    EXPECT_TRUE(who.starts_with("host-document-tests on " + host + ", process " + own + ", since 20")) << who;
    EXPECT_EQ(LockNote::readOther(files, "/p"), "");
    LockNote::remove(files, "/p");
    EXPECT_EQ(read(), "");
    EXPECT_FALSE(files.exists("/p/.editor/lock"));
}

TEST_F(LockNoteTest, WithoutItsFolderNothingIsWritten) {
    LockNote::write(files, "/q");
    EXPECT_FALSE(files.exists("/q/.editor/lock"));
    LockNote::remove(files, "/q");
}

TEST_F(LockNoteTest, NothingGoesThroughALink) {
    LockNote::write(files, "/p");
    files.links.insert("/p/.editor");
    EXPECT_EQ(read(), "");
    LockNote::remove(files, "/p");
    EXPECT_TRUE(files.exists("/p/.editor/lock"));
    files.links.clear();
    LockNote::remove(files, "/p");
    files.links.insert("/p/.editor");
    LockNote::write(files, "/p");
    EXPECT_FALSE(files.exists("/p/.editor/lock"));
}

TEST_F(LockNoteTest, AProcessOfThisHostThatIsGoneIsNotNamed) {
    const pid_t child = fork();
    if(child == 0) _exit(0);
    waitpid(child, nullptr, 0);
    const std::string gone = "quorvane-lock 1\nx\n" + std::to_string(child) + '\n';
    EXPECT_EQ(read(gone + host + "\n1772387100\n"), "");
    EXPECT_NE(read(gone + "elsewhere\n1772387100\n"), "");
    EXPECT_NE(read("quorvane-lock 1\nx\n" + own + '\n' + host + "\n1772387100\n"), "");
}

TEST_F(LockNoteTest, WhatMakesNoSenseTellsNothing) {
    const std::string whole = "quorvane-lock 1\nx\n4711\nelsewhere\n1772387100\n";
    ASSERT_NE(read(whole), "");
    for(std::size_t size = 0; size != whole.size(); ++size) EXPECT_EQ(read(whole.substr(0, size)), "") << size;
    for(const char* const note: {"\n\n\n\n\n", "quorvane-lock 2\nx\n4711\nh\n1772387100\n",
            "quorvane-lock 1\nx\n-1\nh\n1772387100\n", "quorvane-lock 1\nx\n0\nh\n1772387100\n",
            "quorvane-lock 1\nx\n99999999999999\nh\n1\n", "quorvane-lock 1\nx\n1x\nh\n1\n",
            "quorvane-lock 1\nx\n1\nh\n1\nmore\n", "quorvane-lock 1\nx\n1\nh\n9223372036854775807\n"})
        EXPECT_EQ(read(note), "") << note;
    EXPECT_EQ(read(whole + std::string(5000, '\n')), "");
}

TEST_F(LockNoteTest, NamesCannotCommandATerminal) {
    EXPECT_EQ(read("quorvane-lock 1\n\x1b[2Jx\n4711\nh\xff\n1772387100\n"),
        "\\x1b[2Jx on h\\xff, process 4711, since 2026-03-01 17:45");
}

}
}
