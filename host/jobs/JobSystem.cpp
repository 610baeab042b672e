#include "QuorvaneEditor/JobSystem.h"

#include <condition_variable>
#include <cstdlib>
#include <map>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

#include <Corrade/Utility/Debug.h>

#include "JobWakeUp.h"

namespace QuorvaneEngine {

/** A job waits for a number of others, is then ready, runs, and is forgotten when it has ended: an id that is not among the jobs
    has ended. */
struct JobSystem::State {
    struct Entry {
        Job job;
        bool mainThread;
        std::size_t unmet;
        std::vector<int> dependents;
    };

    explicit State(JobSystem& system): system{&system} {}

    void work();
    void makeReady(int job, const Entry& entry);
    void run(std::unique_lock<std::mutex>& lock, std::set<int>& ready);
    bool hasMainThreadJob(int before) const { return !readyMain.empty() && *readyMain.begin() < before; }

    JobSystem* system;
    mutable std::mutex mutex;
    /** Workers wait for jobs here, the GUI thread for the end of one. */
    std::condition_variable changed;
    std::map<int, Entry> jobs;
    std::set<int> readyMain;
    std::set<int> readyWorker;
    int next = 0;
    int runningWorkers = 0;
    bool stop = false;
    std::vector<std::thread> threads;
};

void JobSystem::State::makeReady(int job, const Entry& entry) {
    (entry.mainThread ? readyMain : readyWorker).insert(job);
    changed.notify_all();
    if(entry.mainThread) wakeUpForJob();
}

/** Runs the first ready job, with the lock released meanwhile. */
void JobSystem::State::run(std::unique_lock<std::mutex>& lock, std::set<int>& ready) {
    const int id = *ready.begin();
    ready.erase(ready.begin());
    {
        Job job = std::move(jobs.at(id).job);
        lock.unlock();
        job(*system, id);
        // What the job holds is destroyed here, before it counts as ended.
    }
    lock.lock();
    const std::vector<int> dependents = std::move(jobs.at(id).dependents);
    jobs.erase(id);
    for(int dependent: dependents) {
        Entry& entry = jobs.at(dependent);
        if(!--entry.unmet) makeReady(dependent, entry);
    }
    changed.notify_all();
}

void JobSystem::State::work() {
    std::unique_lock lock{mutex};
    while(true) {
        changed.wait(lock, [this] { return stop || !readyWorker.empty(); });
        if(stop) return;
        ++runningWorkers;
        run(lock, readyWorker);
        --runningWorkers;
        changed.notify_all();
    }
}

JobSystem::JobSystem(UnsignedInt threads): _state{Corrade::InPlaceInit, *this} {
    _state->threads.reserve(threads);
    for(UnsignedInt i = 0; i != threads; ++i) _state->threads.emplace_back([state = _state.get()] { state->work(); });
}

JobSystem::~JobSystem() {
    {
        std::lock_guard lock{_state->mutex};
        _state->stop = true;
    }
    _state->changed.notify_all();
    for(std::thread& thread: _state->threads) thread.join();
}

UnsignedInt JobSystem::threadCount() const { return UnsignedInt(_state->threads.size()); }

int JobSystem::dispatchFunc(Job&& job, Containers::ArrayView<const int> dependencies, JobFlags flags) {
    std::lock_guard lock{_state->mutex};
    const int id = _state->next++;
    std::size_t unmet = 0;
    for(int dependency: dependencies) {
        // Found means given out and not ended; this job itself is not among them yet.
        const auto found = _state->jobs.find(dependency);
        if(found == _state->jobs.end()) continue;
        found->second.dependents.push_back(id);
        ++unmet;
    }
    const bool mainThread = _state->threads.empty() || flags & JobFlag::MainThread;
    const auto inserted = _state->jobs.try_emplace(id, State::Entry{std::move(job), mainThread, unmet, {}}).first;
    if(!unmet) _state->makeReady(id, inserted->second);
    return id;
}

void JobSystem::runMainThreadJobs() {
    std::unique_lock lock{_state->mutex};
    const int end = _state->next;
    while(_state->hasMainThreadJob(end)) _state->run(lock, _state->readyMain);
}

bool JobSystem::isDone(int job) const {
    std::lock_guard lock{_state->mutex};
    return !_state->jobs.count(job);
}

void JobSystem::wait(int job) {
    std::unique_lock lock{_state->mutex};
    while(_state->jobs.count(job)) {
        // A job waits for earlier ones only, so later ones need not run for it.
        if(_state->hasMainThreadJob(job + 1)) {
            _state->run(lock, _state->readyMain);
            continue;
        }
        if(!_state->runningWorkers && _state->readyWorker.empty()) {
            Corrade::Utility::Error{} << "JobSystem::wait(): job" << job
                                      << "cannot end before the job that waits for it";
            std::abort();
        }
        _state->changed.wait(lock);
    }
}

void JobSystem::waitForAll() {
    std::unique_lock lock{_state->mutex};
    while(!_state->jobs.empty()) {
        const int last = _state->jobs.rbegin()->first;
        lock.unlock();
        wait(last);
        lock.lock();
    }
}

}
