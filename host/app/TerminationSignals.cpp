#include "app/TerminationSignals.h"

#include <atomic>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <ctime>

namespace QuorvaneEngine {

namespace {

constexpr int Signals[]{SIGTERM, SIGHUP, SIGINT};
constexpr std::size_t Count = sizeof(Signals) / sizeof(*Signals);

/* What a handler uses must not wait for the code that it has interrupted. */
std::atomic<std::int64_t> firstTime{0};
std::atomic<std::int64_t> graceTime{0};
static_assert(std::atomic<std::int64_t>::is_always_lock_free);

struct sigaction before[Count];

/** In nanoseconds, never 0. */
std::int64_t now() {
    std::timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return (std::int64_t(time.tv_sec) * 1000000000 + time.tv_nsec) | 1;
}

void take(const int signal) {
    const std::int64_t time = now();
    std::int64_t first = 0;
    if(firstTime.compare_exchange_strong(first, time) || time - first < graceTime) return;
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

}

TerminationSignals::TerminationSignals(const double grace) {
    firstTime = 0;
    graceTime = std::int64_t(grace * 1.0e9);
    for(std::size_t i = 0; i != Count; ++i) {
        struct sigaction action {};
        action.sa_handler = take;
        sigemptyset(&action.sa_mask);
        sigaction(Signals[i], nullptr, &before[i]);
        if(before[i].sa_handler != SIG_IGN) sigaction(Signals[i], &action, nullptr);
    }
}

TerminationSignals::~TerminationSignals() {
    for(std::size_t i = 0; i != Count; ++i) sigaction(Signals[i], &before[i], nullptr);
}

bool TerminationSignals::isAsked() const { return firstTime != 0; }

}
