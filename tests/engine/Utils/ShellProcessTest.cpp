#include "Utils/ShellProcess.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <sched.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "Utils/Shell.h"
#include "host/localization/TestFolder.h"
#include "support/AddressSanitizer.h"
#include "support/ChildProcesses.h"

/* What goes on between two processes: pipes, signals, descriptors and memory. */

namespace QuorvaneEngine {
namespace {

using Test::isChildless;
using Test::openDescriptors;

using Corrade::Containers::Optional;
using Corrade::Containers::String;
using Corrade::Containers::StringView;

constexpr std::size_t Megabyte = 1024 * 1024;

/** Whether something holds in a process of its own, to which it may do anything. */
bool holdsInAChild(const std::function<bool()>& something) {
    const pid_t child = fork();
    if(!child) _exit(something() ? 0 : 1);
    int status = -1;
    waitpid(child, &status, 0);
    return status == 0;
}

void closeAllButTheStandardStreams() {
    for(int descriptor = STDERR_FILENO + 1; descriptor != 1024; ++descriptor) close(descriptor);
}

/** Whether both ways of capturing answer as where there is no shell, and leave the text as it was. */
bool failsToStart() {
    String output = "as it was";
    return runCommandCapture("echo a", output) == 1 && output == "as it was" &&
        runShellCommandCapture("echo a", "", output) == 1 && output == "as it was" &&
        runShellCommandCapture("echo a", "", "", output) == 1 && output == "as it was" &&
        getShellEnvironment(output) == 1 && output == "as it was";
}

/** In bytes, a line of the system's account of this process. */
std::size_t memory(const std::string& name) {
    std::ifstream file{"/proc/self/status"};
    for(std::string line; std::getline(file, line);)
        if(line.compare(0, name.size(), name) == 0) return std::stoull(line.substr(name.size())) * 1024;
    return 0;
}

/** The most memory that this process had at once, address space and what was used of it, beyond what it has now. */
class PeakMemory {
public:
    PeakMemory() {
        // Begins to count anew what is used.
        std::ofstream{"/proc/self/clear_refs"} << "5";
        _used = memory("VmRSS:");
        _reserved = memory("VmSize:");
    }
    std::size_t used() const { return memory("VmHWM:") - _used; }
    std::size_t reserved() const { return memory("VmPeak:") - _reserved; }

private:
    std::size_t _used;
    std::size_t _reserved;
};

std::string megabytes(const std::size_t count) { return std::to_string(count * Megabyte); }

TEST(ShellProcess, AScriptAndItsOutputMayBothBeLargerThanAPipe) {
    // Every line of the script prints as much as it has itself, so the output is full long before the script is read.
    const std::string line = "echo " + std::string(1018, 'x') + "\n";
    std::string script;
    while(script.size() < 10 * Megabyte) script += line;
    const std::size_t lines = script.size() / line.size();
    String output;
    ASSERT_EQ(runShellCommandCapture({script.data(), script.size()}, "", output), 0);
    ASSERT_EQ(output.size(), lines * 1019);
    EXPECT_GT(output.size(), 9 * Megabyte);
    EXPECT_EQ(std::size_t(std::count(output.begin(), output.end(), '\n')), lines);
    EXPECT_EQ(std::size_t(std::count(output.begin(), output.end(), 'x')), lines * 1018);
    EXPECT_TRUE(isChildless());
}

TEST(ShellProcess, TenMegabytesGoThereAndBackToTheByte) {
    std::string document;
    for(int i = 0; document.size() < 10 * Megabyte; ++i)
        document += "line " + std::to_string(i) + " of \xff\xc0 text\n";
    String output;
    ASSERT_EQ(runShellCommandCapture(("cat <<'END'\n" + document + "END").c_str(), "", output), 0);
    ASSERT_EQ(output.size(), document.size());
    EXPECT_TRUE(output == StringView(document.data(), document.size()));
}

TEST(ShellProcess, AShellThatEndsEarlyDropsTheRestOfTheScript) {
    const std::string rest(4 * Megabyte, '#');
    String output;
    EXPECT_EQ(runShellCommandCapture(rest.c_str(), "echo a; exit 3", output), 3 * 256);
    EXPECT_EQ(output, "a\n");
    EXPECT_EQ(runShellCommandCapture(rest.c_str(), "kill -KILL $$", output), SIGKILL);
    EXPECT_EQ(output, "");
    EXPECT_TRUE(isChildless());
}

TEST(ShellProcess, ABrokenPipeIsNoSignalForTheProcess) {
    static bool wasCalled = false;
    std::signal(SIGPIPE, [](int) { wasCalled = true; });
    const std::string rest(4 * Megabyte, '#');
    String output;
    EXPECT_EQ(runShellCommandCapture(rest.c_str(), "exit 3", output), 3 * 256);
    sigset_t pending;
    sigpending(&pending);
    EXPECT_FALSE(sigismember(&pending, SIGPIPE));
    EXPECT_FALSE(wasCalled);
    // What the host wants holds again.
    raise(SIGPIPE);
    EXPECT_TRUE(wasCalled);
}

TEST(ShellProcess, ABrokenPipeThatWaitsForTheHostStaysItsOwn) {
    sigset_t brokenPipe;
    sigemptyset(&brokenPipe);
    sigaddset(&brokenPipe, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &brokenPipe, nullptr);
    raise(SIGPIPE);
    const std::string rest(Megabyte, '#');
    String output;
    EXPECT_EQ(runShellCommandCapture(rest.c_str(), "exit 3", output), 3 * 256);
    sigset_t pending;
    sigpending(&pending);
    EXPECT_TRUE(sigismember(&pending, SIGPIPE));
}

TEST(ShellProcess, AShellThatClosesItsOutputStillGetsTheWholeScript) {
    const TestFolder folder;
    const std::string last = "\necho end >'" + (folder / "end") + "'";
    const std::string script = "exec >/dev/null 2>&1\n" + std::string(Megabyte, '#') + last;
    String output;
    EXPECT_EQ(runShellCommandCapture(script.c_str(), "echo a", output), 0);
    EXPECT_EQ(output, "a\n");
    EXPECT_EQ(folder.read("end"), "end\n");
}

TEST(ShellProcess, SignalsThatAreHandledCutNothingShort) {
    struct sigaction interrupt {};
    interrupt.sa_handler = [](int) {};
    sigaction(SIGUSR1, &interrupt, nullptr);
    const std::string command = "for i in 1 2 3 4 5 6 7 8 9 10; do kill -USR1 " + std::to_string(getpid()) +
        "; head -c 100000 /dev/zero; done; (exit 4)";
    String output;
    EXPECT_EQ(runCommandCapture(command.c_str(), output), 4 * 256);
    EXPECT_EQ(output.size(), 1000000u);
    EXPECT_EQ(runShellCommandCapture(command.c_str(), "", output), 4 * 256);
    EXPECT_EQ(output.size(), 1000000u);
}

TEST(ShellProcess, LargeOutputTakesLittleMoreMemoryThanItsText) {
#ifdef QUORVANE_ADDRESS_SANITIZER
    GTEST_SKIP() << "the sanitizer's own memory counts, too";
#endif
    const std::string command = "head -c " + megabytes(256) + " /dev/zero";
    const auto expectLittle = [](const PeakMemory& peak, const String& output) {
        EXPECT_EQ(output.size(), 256 * Megabyte);
        const double used = double(peak.used()) / double(output.size());
        const double reserved = double(peak.reserved()) / double(output.size());
        testing::Test::RecordProperty("used", std::to_string(used));
        testing::Test::RecordProperty("reserved", std::to_string(reserved));
        EXPECT_GE(used, 1.0);
        EXPECT_LE(used, 2.5);
        EXPECT_LE(reserved, 2.5);
    };
    {
        const PeakMemory peak;
        String output;
        EXPECT_EQ(runCommandCapture(command.c_str(), output), 0);
        expectLittle(peak, output);
    }
    {
        const PeakMemory peak;
        String output;
        EXPECT_EQ(runShellCommandCapture(command.c_str(), "", output), 0);
        expectLittle(peak, output);
    }
    // A user's shell that lists many variables, of 64 bytes each.
    const TestFolder folder;
    folder.write("shell", "yes VARIABLE=" + std::string(54, 'x') + " | head -c " + megabytes(256) + "\n");
    setenv("SHELL", ("sh " + (folder / "shell")).c_str(), 1);
    const PeakMemory peak;
    String output;
    EXPECT_EQ(getShellEnvironment(output), 0);
    expectLittle(peak, output);
}

TEST(ShellProcess, AThousandCallsLeaveNoDescriptorAndNoZombie) {
    String output;
    const std::size_t before = openDescriptors();
    for(int i = 0; i != 1000; ++i) {
        ASSERT_EQ(runCommandCapture("echo a", output), 0);
        ASSERT_EQ(runShellCommandCapture("echo a", "", output), 0);
    }
    EXPECT_EQ(openDescriptors(), before);
    EXPECT_TRUE(isChildless());
}

TEST(ShellProcess, AThousandCallsWithAnEnvironmentLeaveNoDescriptorAndNoZombie) {
    String output;
    // A login shell that exports nothing.
    setenv("SHELL", ":", 1);
    const std::size_t before = openDescriptors();
    for(int i = 0; i != 1000; ++i) {
        ASSERT_EQ(getShellEnvironment(output), 0);
        ASSERT_EQ(runShellCommandCapture("echo $A", "A=1", "/usr/tools/bin", output), 0);
        ASSERT_EQ(output, "1\n");
    }
    EXPECT_EQ(openDescriptors(), before);
    EXPECT_TRUE(isChildless());
}

TEST(ShellProcess, AThousandCallsThatFailLeaveNoDescriptorAndNoZombie) {
    String output;
    setenv("SHELL", "/no/such/shell", 1);
    const std::string rest(Megabyte / 10, '#');
    const std::size_t before = openDescriptors();
    for(int i = 0; i != 1000; ++i) {
        ASSERT_EQ(getShellEnvironment(output), 127 * 256);
        ASSERT_EQ(runShellCommandCapture(rest.c_str(), "kill -KILL $$", output), SIGKILL);
    }
    EXPECT_EQ(openDescriptors(), before);
    EXPECT_TRUE(isChildless());
}

TEST(ShellProcess, OneThatNobodyWaitsForLeavesNothing) {
    const std::size_t before = openDescriptors();
    {
        Optional<ShellProcess> shell = ShellProcess::open();
        ASSERT_TRUE(shell);
        ShellProcess moved = std::move(*shell);
        const Optional<ShellProcess> other = ShellProcess::run("echo a");
        EXPECT_TRUE(other);
    }
    EXPECT_EQ(openDescriptors(), before);
    EXPECT_TRUE(isChildless());
}

TEST(ShellProcess, TheShellInheritsNothingOfThePipes) {
    // The numbers of what it has open itself, with one for the folder that it lists.
    constexpr const char* List = "cd /proc/$$/fd; echo *";
    String fewest;
    ASSERT_TRUE(holdsInAChild([] {
        closeAllButTheStandardStreams();
        String list;
        return runShellCommandCapture(List, "", list) == 0 && list == "0 1 2 3\n" &&
            runCommandCapture(List, list) == 0 && list == "0 1 2 3\n";
    }));
    // What this process has inherited itself may go on to its children.
    ASSERT_EQ(runShellCommandCapture(List, "", fewest), 0);
    const Optional<ShellProcess> other = ShellProcess::open();
    ASSERT_TRUE(other);
    std::vector<std::thread> threads;
    std::vector<int> different(8);
    for(int& count: different)
        threads.emplace_back([&count, &fewest] {
            String list;
            for(int i = 0; i != 50; ++i) {
                runShellCommandCapture(List, "", list);
                count += list != fewest;
                runCommandCapture(List, list);
                count += list != fewest;
            }
        });
    for(std::thread& thread: threads) thread.join();
    EXPECT_EQ(different, std::vector<int>(8));
}

TEST(ShellProcess, WorksWhereTheStandardStreamsAreClosed) {
    for(int closed = 0; closed != 8; ++closed)
        EXPECT_TRUE(holdsInAChild([closed] {
            for(const int stream: {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
                if(closed & (1 << stream)) close(stream);
            String output;
            return runShellCommandCapture("echo a; echo b >&2", "", output) == 0 && output == "a\nb\n" &&
                runCommandCapture("{ echo a; echo b >&2; }", output) == 0 && output == "a\nb\n";
        })) << closed;
}

TEST(ShellProcess, AShellThatIsNotThereCannotBeStarted) {
    const TestFolder folder;
    const auto leaveTheFileSystem = [&folder] {
        // Everybody may do so in a world of his own.
        if(geteuid() != 0 && unshare(CLONE_NEWUSER) != 0) return false;
        return chroot(folder.path.c_str()) == 0 && chdir("/") == 0;
    };
    if(!holdsInAChild(leaveTheFileSystem)) GTEST_SKIP() << "no folder can become the root of a process here";
    EXPECT_TRUE(holdsInAChild([&] { return leaveTheFileSystem() && failsToStart() && isChildless(); }));
}

TEST(ShellProcess, WithoutDescriptorsNoShellCanBeStarted) {
    // There is room for one pipe, or for a part of one.
    for(rlim_t room = 0; room != 4; ++room)
        EXPECT_TRUE(holdsInAChild([room] {
            closeAllButTheStandardStreams();
            const rlimit limit{STDERR_FILENO + 1 + room, STDERR_FILENO + 1 + room};
            if(setrlimit(RLIMIT_NOFILE, &limit) != 0) return false;
            String output = "as it was";
            const bool needsTwoPipes = runShellCommandCapture("echo a", "", output) == 1 && output == "as it was";
            return needsTwoPipes && (room >= 2 || failsToStart()) && isChildless();
        })) << room;
}

TEST(ShellProcess, WhereTheHostIgnoresItsChildrenThereIsNoStatus) {
    std::signal(SIGCHLD, SIG_IGN);
    String output;
    EXPECT_EQ(runCommandCapture("echo a", output), -1);
    EXPECT_EQ(output, "a\n");
    EXPECT_EQ(runShellCommandCapture("echo a", "", output), -1);
    EXPECT_EQ(output, "a\n");
}

}
}
