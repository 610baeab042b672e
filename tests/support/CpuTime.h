#pragma once

#include <ctime>

namespace QuorvaneEngine {

/** Seconds of a core that this process has used so far, which other processes on the machine do not lengthen. */
inline double cpuTime() {
    std::timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return double(time.tv_sec) + double(time.tv_nsec) * 1.0e-9;
}

}
