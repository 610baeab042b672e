#include "batch/Terminal.h"

#include <cstdio>
#include <cstdlib>

#include <pty.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace QuorvaneEngine {
namespace {

/* A terminal that nobody looks at. Each case runs in a process of its own, so the environment is its own, too. */
class TerminalTest: public testing::Test {
protected:
    TerminalTest() {
        winsize size{};
        size.ws_col = 132;
        size.ws_row = 40;
        EXPECT_EQ(openpty(&_master, &terminal, nullptr, nullptr, &size), 0);
        setenv("TERM", "xterm", 1);
        unsetenv("NO_COLOR");
    }
    ~TerminalTest() override {
        close(_master);
        close(terminal);
    }

    int terminal = -1;

private:
    int _master = -1;
};

TEST_F(TerminalTest, ATerminalHasItsWidthAndColours) {
    const Terminal found = Terminal::of(terminal);
    EXPECT_TRUE(found.isTerminal);
    EXPECT_EQ(found.width, 132u);
    EXPECT_TRUE(found.hasColors);
}

TEST_F(TerminalTest, ATerminalOfUnknownWidthHasTheUsualOne) {
    winsize size{};
    ASSERT_EQ(ioctl(terminal, TIOCSWINSZ, &size), 0);
    EXPECT_EQ(Terminal::of(terminal).width, 80u);
}

TEST_F(TerminalTest, ColoursCanBeRefused) {
    setenv("NO_COLOR", "1", 1);
    EXPECT_FALSE(Terminal::of(terminal).hasColors);
    setenv("NO_COLOR", "", 1);
    EXPECT_TRUE(Terminal::of(terminal).hasColors);
    setenv("TERM", "dumb", 1);
    EXPECT_FALSE(Terminal::of(terminal).hasColors);
    unsetenv("TERM");
    EXPECT_FALSE(Terminal::of(terminal).hasColors);
}

TEST_F(TerminalTest, AFileHasAFixedWidthAndNoColours) {
    std::FILE* const file = std::tmpfile();
    const Terminal found = Terminal::of(fileno(file));
    EXPECT_FALSE(found.isTerminal);
    EXPECT_FALSE(found.hasColors);
    EXPECT_EQ(found.width, Terminal{}.width);
    std::fclose(file);
}

TEST_F(TerminalTest, TheLocaleSaysWhetherThereIsMoreThanAscii) {
    setenv("LC_ALL", "C.UTF-8", 1);
    EXPECT_TRUE(Terminal::of(terminal).isUtf8);
    setenv("LC_ALL", "C", 1);
    EXPECT_FALSE(Terminal::of(terminal).isUtf8);
    setenv("LC_ALL", "xx_YY.UTF-8", 1);
    EXPECT_FALSE(Terminal::of(terminal).isUtf8);
}

}
}
