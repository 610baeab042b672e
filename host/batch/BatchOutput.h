#pragma once

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "batch/Terminal.h"

namespace QuorvaneEngine {

/** Where the tool prints to. What a command finds goes to the output, and why it did not do something to the error output.

    Keys and file names may hold anything, so lines are printed as @ref printable() has them: each stays one line, and none moves
    the cursor or changes colours. */
class BatchOutput {
public:
    /** @param out      must outlive this object, as must @p error */
    explicit BatchOutput(std::FILE* out, const Terminal& outTerminal, std::FILE* error, const Terminal& errorTerminal);
    BatchOutput(const BatchOutput&) = delete;
    BatchOutput& operator=(const BatchOutput&) = delete;

    /** From now on a path is shown as the user typed it, also where other paths begin with it.
        @param absolute     as the tools name it */
    void showPathAs(std::string absolute, std::string typed);

    /** A line of output; without the line end. */
    void print(std::string_view line);

    /** Lines of output that are the tool's own, with line ends and maybe with colours. */
    void printText(std::string_view text);

    /** A line that tells why something was left out. */
    void warn(std::string_view line);

    /** A line that tells why the command was not carried out; @ref failures() has it as it was printed. */
    void fail(std::string_view line);

    const std::vector<std::string>& failures() const { return _failures; }

    const Terminal& terminal() const { return _outTerminal; }
    const Terminal& errorTerminal() const { return _errorTerminal; }

    /** The stream of errors, for what comes and goes on a terminal. */
    std::FILE* errorStream() { return _error; }

    /** Writes out what is buffered.
        @return the error number of the C library, 0 where everything that was printed has been written */
    int finish();

private:
    std::FILE* _out;
    std::FILE* _error;
    Terminal _outTerminal, _errorTerminal;
    struct Path {
        std::string absolute, typed;
    };

    std::string shown(std::string_view line) const;

    std::vector<Path> _paths;
    std::vector<std::string> _failures;
    int _failure = 0;
};

}
