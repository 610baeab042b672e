#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

class BatchOutput;
struct Progress;

/** Shows on a terminal how far work has come that takes its time, and nothing where there is no terminal or the work is soon done.
    The line stands in the stream of errors while the object lives, and is gone afterwards. */
class ProgressLine {
public:
    /** How long work may take before it is shown. */
    static constexpr std::chrono::milliseconds Patience{500};

    /** @param output       must outlive this object and must not be used meanwhile, as must @p progress outlive it
        @param what         what is done, as the beginning of a line
        @param patience     how long to wait before the line is shown */
    explicit ProgressLine(
        BatchOutput& output, std::string what, const Progress& progress, std::chrono::milliseconds patience = Patience);
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

private:
    void run(std::chrono::milliseconds patience);
    void show(const std::string& line);

    BatchOutput& _output;
    const Progress& _progress;
    std::string _what;
    /** What is on the terminal now. */
    std::string _shown;
    std::mutex _mutex;
    std::condition_variable _ended;
    bool _isEnded = false;
    std::thread _thread;
};

}
