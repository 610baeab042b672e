#include "Utils/Shell.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include <sys/wait.h>

#include <gtest/gtest.h>

#include "host/localization/TestFolder.h"

namespace QuorvaneEngine {
namespace {

using Corrade::Containers::String;
using Corrade::Containers::StringView;
namespace fs = std::filesystem;

std::string text(const String& string) { return {string.data(), string.size()}; }

std::string run(const StringView command) {
    String output;
    EXPECT_EQ(runCommandCapture(command, output), 0) << text(command);
    return text(output);
}

std::string runInShell(const StringView command, const StringView preamble = "") {
    String output;
    EXPECT_EQ(runShellCommandCapture(command, preamble, output), 0) << text(command);
    return text(output);
}

std::string environment() {
    String output;
    EXPECT_EQ(getShellEnvironment(output), 0);
    return text(output);
}

/** Makes a program of the shell. */
void makeProgram(const std::string& path, const std::string& script) {
    std::ofstream{path} << "#!/bin/sh\n" << script;
    fs::permissions(path, fs::perms::owner_all);
}

/** A user's shell that lists these lines. */
class LoginShell {
public:
    explicit LoginShell(const std::string& lines, const int exitCode = 0) {
        _folder.write("lines", lines);
        makeProgram(_folder / "shell",
            "printf '%s\\n' \"$@\" >'" + (_folder / "arguments") + "'\ncat '" + (_folder / "lines") + "'\nexit " +
                std::to_string(exitCode) + "\n");
        setenv("SHELL", (_folder / "shell").c_str(), 1);
    }

    std::string arguments() const { return _folder.read("arguments"); }

private:
    TestFolder _folder;
};

TEST(RunCommandCapture, CapturesWhatACommandPrints) { EXPECT_EQ(run("echo hello"), "hello\n"); }

TEST(RunCommandCapture, CapturesErrorOutputToo) {
    EXPECT_EQ(run("sh -c 'echo wrong >&2'"), "wrong\n");
    EXPECT_EQ(run("{ echo a; echo b >&2; echo c; }"), "a\nb\nc\n");
}

TEST(RunCommandCapture, CapturesErrorOutputOfTheLastCommandAlone) {
    testing::internal::CaptureStderr();
    // The test's own capture has replaced the error output that the shell inherits.
    EXPECT_EQ(run("echo first >&2; sh -c 'echo second >&2'"), "second\n");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "first\n");
}

TEST(RunCommandCapture, CapturesMoreThanOneChunkWhole) {
    for(const int size: {8191, 8192, 8193, 100000}) {
        const std::string command = "head -c " + std::to_string(size) + " /dev/zero | tr '\\0' x";
        EXPECT_EQ(run(command.c_str()), std::string(std::size_t(size), 'x'));
    }
}

TEST(RunCommandCapture, CapturesOutputWithoutALineEndAsItIs) {
    EXPECT_EQ(run("printf 'no line end'"), "no line end");
    EXPECT_EQ(run(":"), "");
}

TEST(RunCommandCapture, CapturesZeroBytesAndWhatIsNoText) {
    EXPECT_EQ(run("printf 'a\\000b\\377\\300\\257\\000'"), (std::string{"a\0b\xff\xc0\xaf\0", 7}));
}

TEST(RunCommandCapture, TheTextEndsWithAZeroByte) {
    String output;
    runCommandCapture("printf abc", output);
    EXPECT_EQ(output.size(), 3u);
    EXPECT_EQ(output.data()[3], '\0');
    runCommandCapture(":", output);
    EXPECT_EQ(output.size(), 0u);
    ASSERT_TRUE(output.data());
    EXPECT_EQ(output.data()[0], '\0');
}

TEST(RunCommandCapture, ReplacesWhatWasInTheText) {
    String output = "a longer text that was there before";
    EXPECT_EQ(runCommandCapture("echo new", output), 0);
    EXPECT_EQ(text(output), "new\n");
}

TEST(RunCommandCapture, GivesTheRawWaitStatus) {
    String output;
    EXPECT_EQ(runCommandCapture("exit 1 #", output), 256);
    EXPECT_EQ(runCommandCapture("echo text; exit 255; ", output), 255 * 256);
    EXPECT_EQ(text(output), "text\n");
}

TEST(RunCommandCapture, ACommandThatIsNotThereIsToldByTheShell) {
    String output;
    EXPECT_EQ(runCommandCapture("no-such-command-anywhere", output), 127 * 256);
    EXPECT_NE(text(output).find("no-such-command-anywhere"), std::string::npos);
}

TEST(RunCommandCapture, AShellThatIsKilledHasTheSignalForItsStatus) {
    String output;
    const int status = runCommandCapture("echo before; kill -KILL $$; echo after", output);
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGKILL);
    EXPECT_EQ(status, SIGKILL);
    EXPECT_EQ(text(output), "before\n");
}

TEST(RunCommandCapture, ACommandThatIsKilledIsReportedByTheShell) {
    String output;
    const int status = runCommandCapture("sh -c 'kill -TERM $$'; (exit $?)", output);
    EXPECT_EQ(status, (128 + SIGTERM) * 256);
}

TEST(RunCommandCapture, TheCommandNeedNotBeTerminated) { EXPECT_EQ(run(StringView{"echo ab"}.prefix(6)), "a\n"); }

TEST(RunCommandCapture, TheCommandEndsAtItsFirstZeroByte) { EXPECT_EQ(run(StringView{"echo a\0; echo b", 15}), "a\n"); }

TEST(RunCommandCapture, ACommandMayBeginWithADash) {
    const TestFolder folder;
    makeProgram(folder / "-tool", "echo \"the tool\"\n");
    setenv("PATH", (folder.path + ":" + std::getenv("PATH")).c_str(), 1);
    EXPECT_EQ(run("-tool"), "the tool\n");
}

TEST(RunCommandCapture, WaitsForAllWhoMayPrint) {
    EXPECT_EQ(run("(sleep 0.3; echo late) & echo early"), "early\nlate\n");
}

TEST(GetShellEnvironment, AsksTheLoginShellForWhatItExports) {
    const LoginShell shell{"A=1\n"};
    EXPECT_EQ(environment(), "A=1\n");
    EXPECT_EQ(shell.arguments(), "--login\n-c\nexport\n-p\n");
}

TEST(GetShellEnvironment, ALineWithSeveralEqualsSignsIsKept) {
    const LoginShell shell{"A=1=2\nB==\n=\n"};
    EXPECT_EQ(environment(), "A=1=2\nB==\n=\n");
}

TEST(GetShellEnvironment, ALineWithoutAnEqualsSignIsDropped) {
    const LoginShell shell{"export A\n\nA=1\nmore\nexport B=2\n\n"};
    EXPECT_EQ(environment(), "A=1\nexport B=2\n");
}

TEST(GetShellEnvironment, LinesAreKeptAsTheShellPrintsThem) {
    const LoginShell shell{"declare -x A=\"b c\"\nexport D='e'\n \tF=g \r\n"};
    EXPECT_EQ(environment(), "declare -x A=\"b c\"\nexport D='e'\n \tF=g \r\n");
}

TEST(GetShellEnvironment, OfAValueOfSeveralLinesThoseWithAnEqualsSignAreKept) {
    const LoginShell shell{"declare -x A=\"one\ntwo\nthree=3\"\n"};
    EXPECT_EQ(environment(), "declare -x A=\"one\nthree=3\"\n");
}

TEST(GetShellEnvironment, EveryKeptLineEndsWithALineEnd) {
    const LoginShell shell{"A=1\nB=2"};
    EXPECT_EQ(environment(), "A=1\nB=2\n");
}

TEST(GetShellEnvironment, AnEmptyCaptureGivesAnEmptyEnvironment) {
    const LoginShell shell{""};
    String output = "what was there before";
    EXPECT_EQ(getShellEnvironment(output), 0);
    EXPECT_TRUE(output.isEmpty());
}

TEST(GetShellEnvironment, ACaptureWithoutAnEqualsSignGivesAnEmptyEnvironment) {
    const LoginShell shell{"nothing\nat all\n"};
    EXPECT_EQ(environment(), "");
}

TEST(GetShellEnvironment, KeepsZeroBytesAndWhatIsNoText) {
    const std::string lines{"A=\0\xff\nB\0=1\n", 10};
    const LoginShell shell{lines};
    EXPECT_EQ(environment(), lines);
}

TEST(GetShellEnvironment, AShellThatFailsGivesItsStatusAndWhatItPrinted) {
    const LoginShell shell{"A=1\nno login today\n", 3};
    String output;
    EXPECT_EQ(getShellEnvironment(output), 3 * 256);
    EXPECT_EQ(text(output), "A=1\nno login today\n");
}

TEST(GetShellEnvironment, WithoutAShellTheCommandIsNotFound) {
    unsetenv("SHELL");
    String output;
    EXPECT_EQ(getShellEnvironment(output), 127 * 256);
    EXPECT_NE(text(output).find("--login"), std::string::npos) << text(output);
}

TEST(GetShellEnvironment, AShellThatIsNotThereIsNotFound) {
    setenv("SHELL", "/no/such/shell", 1);
    String output;
    EXPECT_EQ(getShellEnvironment(output), 127 * 256);
    EXPECT_NE(text(output).find("/no/such/shell"), std::string::npos) << text(output);
}

TEST(GetShellEnvironment, AShellWithABlankInItsPathIsNotFound) {
    const TestFolder folder;
    makeProgram(folder / "a shell", "echo A=1\n");
    setenv("SHELL", (folder / "a shell").c_str(), 1);
    String output;
    EXPECT_EQ(getShellEnvironment(output), 127 * 256);
}

TEST(GetShellEnvironment, WhatARealShellExportsIsFedBackToAShell) {
    setenv("QUORVANE_TEST", "a b \"c\" $d 'e'", 1);
    const TestFolder folder;
    // The shell of the system, which need not know what a login is.
    makeProgram(folder / "shell", "shift\nexec /bin/sh \"$@\"\n");
    setenv("SHELL", (folder / "shell").c_str(), 1);
    const std::string variables = environment();
    unsetenv("QUORVANE_TEST");
    String output;
    EXPECT_EQ(
        runShellCommandCapture("sh -c 'echo \"$QUORVANE_TEST\"'", variables.c_str(), "/usr/tools/bin", output), 0);
    EXPECT_EQ(text(output), "a b \"c\" $d 'e'\n");
}

/** Lets bash be the user's shell, with a variable of its login. */
class GetEnvironmentOfBash: public testing::Test {
protected:
    void SetUp() override {
        if(!fs::exists("/bin/bash")) GTEST_SKIP() << "there is no bash on this system";
        _home.write(".bash_profile", "export QUORVANE_TEST='a b \"c\" $d'\n");
        setenv("HOME", _home.path.c_str(), 1);
        setenv("SHELL", "/bin/bash", 1);
    }

    /** Lets the shell that reads a script tell the variable, where it has it. */
    static constexpr const char* Tell = "echo \"value: $QUORVANE_TEST\"";

private:
    TestFolder _home;
};

TEST_F(GetEnvironmentOfBash, ListsWhatTheLoginExports) {
    const std::string variables = environment();
    EXPECT_NE(variables.find("declare -x QUORVANE_TEST=\"a b \\\"c\\\" \\$d\"\n"), std::string::npos) << variables;
}

TEST_F(GetEnvironmentOfBash, ThatListIsUnderstoodByBash) {
    const std::string script = "exec /bin/bash <<'END'\n" + environment() + Tell + "\nEND";
    EXPECT_EQ(runInShell(script.c_str()), "value: a b \"c\" $d\n");
}

TEST_F(GetEnvironmentOfBash, ThatListIsNotUnderstoodByAShellWithoutDeclare) {
    String output;
    if(runShellCommandCapture("declare -x QUORVANE_TEST=1", "", output) == 0)
        GTEST_SKIP() << "/bin/sh knows what bash lists";
    const std::string variables = environment();
    EXPECT_EQ(runShellCommandCapture(Tell, variables.c_str(), output), 0);
    EXPECT_TRUE(output.hasSuffix("value: \n")) << text(output);
    EXPECT_TRUE(output.contains("declare: not found")) << text(output);
}

TEST(RunShellCommandCapture, RunsThePreambleAndThenTheCommand) {
    EXPECT_EQ(runInShell("echo $A", "A=hello"), "hello\n");
    EXPECT_EQ(runInShell("echo b", "echo a"), "a\nb\n");
}

TEST(RunShellCommandCapture, CapturesErrorOutputOfAllCommandsInOrder) {
    EXPECT_EQ(runInShell("echo c; echo d >&2", "echo a\necho b >&2"), "a\nb\nc\nd\n");
}

TEST(RunShellCommandCapture, EndsWithTheCommandsStatus) {
    String output;
    EXPECT_EQ(runShellCommandCapture("(exit 7)", "", output), 7 * 256);
    EXPECT_EQ(runShellCommandCapture("exit 8", "", output), 8 * 256);
    EXPECT_EQ(runShellCommandCapture("no-such-command-anywhere", "", output), 127 * 256);
    EXPECT_EQ(runShellCommandCapture("", "(exit 5)", output), 5 * 256);
    EXPECT_EQ(runShellCommandCapture("true", "false", output), 0);
}

TEST(RunShellCommandCapture, AShellThatIsKilledHasTheSignalForItsStatus) {
    String output;
    EXPECT_EQ(runShellCommandCapture("echo before; kill -KILL $$; echo after", "", output), SIGKILL);
    EXPECT_EQ(text(output), "before\n");
}

TEST(RunShellCommandCapture, EachCallHasAShellOfItsOwn) {
    EXPECT_EQ(runInShell("echo $A", "A=1"), "1\n");
    EXPECT_EQ(runInShell("echo $A"), "\n");
    EXPECT_NE(runInShell("echo $$"), runInShell("echo $$"));
}

TEST(RunShellCommandCapture, CapturesZeroBytesAndWhatIsNoText) {
    EXPECT_EQ(runInShell("printf 'a\\000b\\377\\300\\257\\000'"), (std::string{"a\0b\xff\xc0\xaf\0", 7}));
}

TEST(RunShellCommandCapture, TheScriptEndsAtItsFirstZeroByte) {
    EXPECT_EQ(runInShell(StringView{"echo a\n\0echo b", 14}), "a\n");
}

TEST(RunShellCommandCapture, AnUnfinishedQuoteIsAnErrorOfTheShell) {
    String output;
    EXPECT_NE(runShellCommandCapture("echo \"open", "", output), 0);
    EXPECT_FALSE(output.isEmpty());
}

TEST(RunShellCommandCapture, TheScriptIsPreambleCommandAndExitLineByLine) {
    // From here on the shell prints what it reads.
    EXPECT_EQ(runInShell(": a command", "set -v\n: more"), ": more\n: a command\nexit $?\n");
}

TEST(RunShellCommandCapture, AnEnvironmentAndAPathMakeThePreamble) {
    String output;
    // The same environment as below, and the shell prints what it reads.
    EXPECT_EQ(runShellCommandCapture("echo $X", "set -v\nX=1", "/usr/tools/bin", output), 0);
    EXPECT_EQ(text(output), "X=1\nPATH=/usr/tools/bin:$PATH\necho $X\n1\nexit $?\n");

    EXPECT_EQ(runShellCommandCapture("echo $X", "X=1", "/usr/tools/bin", output), 0);
    EXPECT_EQ(text(output), "1\n");
    EXPECT_EQ(runShellCommandCapture("echo $PATH", "X=1", "/usr/tools/bin", output), 0);
    EXPECT_EQ(text(output), "/usr/tools/bin:" + std::string{std::getenv("PATH")} + "\n");
}

TEST(RunShellCommandCapture, ProgramsOfThePathComeFirst) {
    const TestFolder folder;
    makeProgram(folder / "uname", "echo a program of the path\n");
    String output;
    EXPECT_EQ(runShellCommandCapture("uname", "", folder.path.c_str(), output), 0);
    EXPECT_EQ(text(output), "a program of the path\n");
}

TEST(RunShellCommandCapture, TheTextsNeedNotBeTerminated) {
    String output;
    const StringView all = "echo abPATH=";
    EXPECT_EQ(runShellCommandCapture(all.prefix(6), all.prefix(0), output), 0);
    EXPECT_EQ(text(output), "a\n");
    EXPECT_EQ(runShellCommandCapture(all.prefix(7), all.prefix(0), all.prefix(0), output), 0);
    EXPECT_EQ(text(output), "ab\n");
}

TEST(ChangeDirectory, ChangesTheFolderOfTheProcess) {
    const TestFolder folder;
    folder.write("a folder/file", "");
    const fs::path before = fs::current_path();
    EXPECT_EQ(changeDirectory((folder / "a folder").c_str()), 0);
    EXPECT_EQ(run("ls"), "file\n");
    EXPECT_EQ(changeDirectory(".."), 0);
    EXPECT_EQ(run("ls"), "a folder\n");
    EXPECT_EQ(changeDirectory(StringView{"a folder or more"}.prefix(8)), 0);
    EXPECT_EQ(fs::current_path().filename(), "a folder");
    fs::current_path(before);
}

TEST(ChangeDirectory, FailsWhereThereIsNoFolder) {
    const TestFolder folder;
    folder.write("file", "");
    const fs::path before = fs::current_path();
    EXPECT_EQ(changeDirectory((folder / "none").c_str()), -1);
    EXPECT_EQ(changeDirectory((folder / "file").c_str()), -1);
    EXPECT_EQ(changeDirectory(""), -1);
    EXPECT_EQ(fs::current_path(), before);
}

}
}
