#pragma once

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Takes the signals by which a system asks a program to end, as it does when its user logs out or its terminal goes: SIGTERM, SIGHUP and SIGINT. A
    signal that was ignored stays so. A second one ends the process. One object at a time, on the GUI thread. */
class QUORVANE_API TerminationSignals {
public:
    TerminationSignals();

    /** The signals do again what they did before. */
    ~TerminationSignals();

    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

    /** Whether there was one. */
    bool isAsked() const;
};

}
