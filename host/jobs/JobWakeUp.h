#pragma once

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Has a function called whenever a job of the GUI thread of any job system becomes ready, so that whoever sleeps on that thread wakes up.
    @param wakeUp   called on any thread, and must not use a job system; null for nobody */
QUORVANE_API void setJobWakeUp(void (*wakeUp)());

/** Calls it. */
void wakeUpForJob();

}
