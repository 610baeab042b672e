#include "JobWakeUp.h"

#include <atomic>

namespace QuorvaneEngine {

namespace {

std::atomic<void (*)()> sleeper{nullptr};

}

void setJobWakeUp(void (*const wakeUp)()) { sleeper = wakeUp; }

void wakeUpForJob() {
    if(void (*const wakeUp)() = sleeper) wakeUp();
}

}
