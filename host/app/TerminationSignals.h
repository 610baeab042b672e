#pragma once

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Takes the signals by which a system asks a program to end, as it does when its user logs out or its terminal goes: SIGTERM, SIGHUP and SIGINT. A
    signal that was ignored stays so. One object at a time, on the GUI thread. */
class QUORVANE_API TerminationSignals {
public:
    /** Seconds after the first signal in which others are the same request: who ends a group of processes, or a session, may send several. */
    static constexpr double Grace = 3.0;

    /** @param grace    after so many seconds another signal ends the process */
    explicit TerminationSignals(double grace = Grace);

    /** The signals do again what they did before. */
    ~TerminationSignals();

    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

    /** Whether there was one. */
    bool isAsked() const;
};

}
