#include "batch/ProgressLine.h"

#include <cstdio>
#include <utility>

#include "batch/BatchOutput.h"
#include "localization/Progress.h"

namespace QuorvaneEngine {

ProgressLine::ProgressLine(
    BatchOutput& output, std::string what, const Progress& progress, const std::chrono::milliseconds patience)
    : _output{output}, _progress{progress}, _what{std::move(what)} {
    if(output.errorTerminal().isTerminal) _thread = std::thread{[this, patience] { run(patience); }};
}

ProgressLine::~ProgressLine() {
    if(!_thread.joinable()) return;
    {
        const std::lock_guard<std::mutex> lock{_mutex};
        _isEnded = true;
    }
    _ended.notify_one();
    _thread.join();
    show({});
}

void ProgressLine::run(std::chrono::milliseconds patience) {
    constexpr std::chrono::milliseconds Pause{100};
    std::unique_lock<std::mutex> lock{_mutex};
    while(!_ended.wait_for(lock, patience, [this] { return _isEnded; })) {
        const UnsignedInt total = _progress.total;
        const UnsignedInt done = _progress.done;
        // What goes on when all is done, such as packing, is not counted.
        show(_what + (done < total ? ": " + std::to_string(std::size_t(done) * 100 / total) + " %" : " ..."));
        patience = Pause;
    }
}

void ProgressLine::show(const std::string& line) {
    if(line == _shown) return;
    // Blanks wipe out a longer line on every terminal; a code for it is not known to all.
    const std::string blanks(_shown.size() > line.size() ? _shown.size() - line.size() : 0, ' ');
    const std::string text = '\r' + line + blanks + (line.empty() ? "\r" : "");
    std::fwrite(text.data(), 1, text.size(), _output.errorStream());
    std::fflush(_output.errorStream());
    _shown = line;
}

}
