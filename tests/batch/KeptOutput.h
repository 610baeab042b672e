#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

#include "batch/BatchOutput.h"

namespace QuorvaneEngine {

/** An output of the batch tool that is kept. */
class KeptOutput {
public:
    explicit KeptOutput(const Terminal& out = {}, const Terminal& error = {})
        : _outFile{open_memstream(&_out, &_outSize)},
          _errorFile{open_memstream(&_error, &_errorSize)},
          output{_outFile, out, _errorFile, error} {}
    ~KeptOutput() {
        std::fclose(_outFile);
        std::fclose(_errorFile);
        std::free(_out);
        std::free(_error);
    }
    KeptOutput(const KeptOutput&) = delete;
    KeptOutput& operator=(const KeptOutput&) = delete;

    std::string out() { return textOf(_outFile, _out, _outSize); }
    std::string error() { return textOf(_errorFile, _error, _errorSize); }

private:
    /** Another thread may print meanwhile. */
    static std::string textOf(std::FILE* const file, char* const& text, const std::size_t& size) {
        flockfile(file);
        std::fflush(file);
        std::string copy{text, size};
        funlockfile(file);
        return copy;
    }

    char* _out = nullptr;
    char* _error = nullptr;
    std::size_t _outSize = 0;
    std::size_t _errorSize = 0;
    std::FILE* _outFile;
    std::FILE* _errorFile;

public:
    BatchOutput output;
};

}
