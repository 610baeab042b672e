#include "app/TerminationSignals.h"

#include <csignal>
#include <cstddef>

namespace QuorvaneEngine {

namespace {

constexpr int Signals[]{SIGTERM, SIGHUP, SIGINT};
constexpr std::size_t Count = sizeof(Signals) / sizeof(*Signals);

volatile std::sig_atomic_t isTaken = 0;
struct sigaction before[Count];

void take(int) { isTaken = 1; }

}

TerminationSignals::TerminationSignals() {
    isTaken = 0;
    for(std::size_t i = 0; i != Count; ++i) {
        struct sigaction action {};
        action.sa_handler = take;
        action.sa_flags = int(SA_RESETHAND);
        sigemptyset(&action.sa_mask);
        sigaction(Signals[i], nullptr, &before[i]);
        if(before[i].sa_handler != SIG_IGN) sigaction(Signals[i], &action, nullptr);
    }
}

TerminationSignals::~TerminationSignals() {
    for(std::size_t i = 0; i != Count; ++i) sigaction(Signals[i], &before[i], nullptr);
}

bool TerminationSignals::isAsked() const { return isTaken != 0; }

}
