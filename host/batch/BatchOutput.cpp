#include "batch/BatchOutput.h"

#include <cerrno>
#include <utility>

#include "document/PrintableText.h"

namespace QuorvaneEngine {

namespace {

/** Whether a path ends here in a message, or a part of it. */
bool endsPath(const std::string_view line, const std::size_t index) {
    return index == line.size() || line[index] == '/' || line[index] == ':' || line[index] == ' ' || line[index] == ',';
}

int put(std::FILE* const stream, const std::string_view text) {
    return std::fwrite(text.data(), 1, text.size(), stream) == text.size() ? 0 : errno;
}

}

BatchOutput::BatchOutput(
    std::FILE* const out, const Terminal& outTerminal, std::FILE* const error, const Terminal& errorTerminal)
    : _out{out}, _error{error}, _outTerminal{outTerminal}, _errorTerminal{errorTerminal} {}

void BatchOutput::showPathAs(std::string absolute, std::string typed) {
    while(typed.size() > 1 && typed.back() == '/') typed.pop_back();
    while(absolute.size() > 1 && absolute.back() == '/') absolute.pop_back();
    if(absolute.size() > 1) _paths.push_back({std::move(absolute), std::move(typed)});
}

void BatchOutput::print(const std::string_view line) { printText(shown(line) + '\n'); }

void BatchOutput::printText(const std::string_view text) {
    if(!_failure) _failure = put(_out, text);
}

void BatchOutput::warn(const std::string_view line) {
    // On a terminal both come in the order in which they were printed.
    if(!_failure && std::fflush(_out)) _failure = errno;
    put(_error, shown(line) + '\n');
}

void BatchOutput::fail(const std::string_view line) {
    warn(line);
    _failures.push_back(shown(line));
}

std::string BatchOutput::shown(const std::string_view line) const {
    std::string text;
    for(std::size_t i = 0; i != line.size();) {
        const Path* found = nullptr;
        if(i == 0 || line[i - 1] == ' ')
            for(const Path& path: _paths)
                if(line.substr(i, path.absolute.size()) == path.absolute && endsPath(line, i + path.absolute.size()) &&
                    (!found || found->absolute.size() < path.absolute.size()))
                    found = &path;
        if(found) text += found->typed;
        else text += line[i];
        i += found ? found->absolute.size() : 1;
    }
    const Containers::String safe = printable({text.data(), text.size()});
    return {safe.data(), safe.size()};
}

int BatchOutput::finish() {
    if(!_failure && std::fflush(_out)) _failure = errno;
    return _failure;
}

}
