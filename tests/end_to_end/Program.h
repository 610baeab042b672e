#pragma once

#include <string>
#include <vector>

namespace QuorvaneEngine::Test {

/** How a program ended. */
struct ProgramResult {
    /** -1 when a signal ended it. */
    int exitCode;

    std::string out;
    std::string error;
};

/** Runs a program and waits for its end.
    @param command      the program and its arguments
    @param folder       where it is started
    @param environment  what is set for it beside the environment of the test, as "NAME=value"; "NAME" alone takes a variable away */
ProgramResult runProgram(const std::vector<std::string>& command, const std::string& folder,
    const std::vector<std::string>& environment = {});

/** Makes the calling process, which was forked for that, a program; ends it with 127 where there is none. */
[[noreturn]] void becomeProgram(
    const std::vector<std::string>& command, const std::string& folder, const std::vector<std::string>& environment);

}
