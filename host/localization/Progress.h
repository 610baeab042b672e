#pragma once

#include <atomic>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** How far long work on other threads has come, and the wish that it ends. Any thread may read and write it. */
struct Progress {
    /** Of @ref total , in steps that take about the same time. It never goes back, but to 0 where other work begins. */
    std::atomic<UnsignedInt> done{0};

    /** 0 while nothing is known. */
    std::atomic<UnsignedInt> total{0};

    /** Set by who wants the work to end: it then stops at the next step, with nothing changed. */
    std::atomic<bool> isCancelled{false};
};

}
