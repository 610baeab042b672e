#pragma once

#include <Corrade/Containers/String.h>

/** @file
    Commands that /bin/sh runs, with what they print.

    Each call blocks until the shell has ended and nobody is left who could print: a command that leaves something running in the background with
    the same output keeps its caller waiting. The calls keep no state and may come from any thread, except @ref changeDirectory().

    What they return is the raw wait status of the shell, as `waitpid()` gives it and WIFEXITED() and its relatives read it: 256 for a
    command that exits with 1, 9 for a shell that was killed. It is 1 where the shell could not be started, and -1 where the process ignores
    `SIGCHLD`, so that the system keeps no status. Text that is captured may hold any bytes, zero bytes and invalid UTF-8 too.

    @attention The texts go to the shell as they are, up to their first zero byte. Nothing is escaped or quoted: what comes from a user, from a
    project or from its file names must be quoted by the caller. */

namespace QuorvaneEngine {

/** Runs a command as `sh -c` does, and captures what it prints to its standard output and error output.

    " 2>&1" is put behind the command. Of several commands it is therefore the last that is captured with its error output, and in a command that
    ends in a comment it is part of that. Standard input is that of this process.
    @param output   replaced by what was printed; unchanged where the shell could not be started */
int runCommandCapture(Corrade::Containers::StringView command, Corrade::Containers::String& output);

/** Captures the variables that the user's login shell exports, as that shell lists them, for a shell that shall know what a terminal would know.

    @attention The shell is the variable SHELL, unquoted: a path with a blank in it is not found. Of the list only lines with an "=" are
    kept. A value of several lines loses those without one, and its closing quote may be among them.
    @attention The list is in the words of the user's shell, which another shell need not know. That of bash, `declare -x A="b"`, is not
    understood by a /bin/sh such as dash: it sets nothing, and prints a complaint for each line. Let the shell that wrote the list read it.
    @param environment  replaced by the lines, each with a line end; by what was printed where the result is not 0; unchanged where
        /bin/sh could not be started
    @return 0, or what @ref runCommandCapture() returns */
int getShellEnvironment(Corrade::Containers::String& environment);

/** Runs a command in a shell of its own after some others, and captures what they print to standard output and error output.

    The shell reads preamble, command and "exit $?", one below the other, from its standard input. A command that reads standard input
    may take the rest of the script away from the shell, so give it an input of its own. The script may have any size.
    @param output   as above
    @return as above, of the command */
int runShellCommandCapture(Corrade::Containers::StringView command, Corrade::Containers::StringView preamble,
    Corrade::Containers::String& output);

/** The same after variables are set.
    @param environment  lines for /bin/sh, usually those of @ref getShellEnvironment() where it understands them
    @param path         a folder that is searched for programs before all others; not quoted, so without blanks */
int runShellCommandCapture(Corrade::Containers::StringView command, Corrade::Containers::StringView environment,
    Corrade::Containers::StringView path, Corrade::Containers::String& output);

/** Changes the folder that relative paths begin at.

    @attention There is one for the whole process: relative paths that other threads use meanwhile lead elsewhere, and so do those of
    everything that the process loads later. Not for use while jobs run.
    @return 0, or -1 where there is no such folder or no right to enter it */
int changeDirectory(Corrade::Containers::StringView path);

}
