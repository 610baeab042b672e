#pragma once

#include <utility>

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/EnumSet.h>
#include <Corrade/Containers/Pointer.h>

#include "QuorvaneEditor/Host.h"
#include "Utils/Function.h"

namespace QuorvaneEngine {

enum class JobFlag : UnsignedInt {
    /** The job runs on the GUI thread between two frames, in the order of dispatch. */
    MainThread = 1
};

using JobFlags = Containers::EnumSet<JobFlag>;
CORRADE_ENUMSET_OPERATORS(JobFlags)

enum class JobResult : Int {
    /** The job did not do its work; what depends on it runs all the same. */
    Failed = 0,
    Done = 1
};

/** Runs functions beside the GUI thread, or on it between frames. Dispatching, waiting and @ref runMainThreadJobs() belong to the
    GUI thread. */
class QUORVANE_API JobSystem {
public:
    using Job = Function<JobResult(JobSystem&, int)>;

    /** @param threads  worker threads; 0 lets every job run in @ref runMainThreadJobs() */
    explicit JobSystem(UnsignedInt threads);

    /** Waits for the jobs that run; those that have not begun are dropped. */
    ~JobSystem();

    JobSystem(const JobSystem&) = delete;
    JobSystem& operator=(const JobSystem&) = delete;

    /** The number of worker threads. */
    UnsignedInt threadCount() const;

    /** Queues a job.
        @param job              is called with this object and the job's id
        @param dependencies     ids of jobs that must have ended before; an id that was never given out has ended
        @return the job's id, counted from 0 */
    int dispatchFunc(Job&& job, Containers::ArrayView<const int> dependencies, JobFlags flags);

    /** Queues a callable without arguments; the job reports @ref JobResult::Done after calling it. */
    template <class T> int dispatch(T&& callable, Containers::ArrayView<const int> dependencies, JobFlags flags) {
        return dispatchFunc(Job{[callable = std::forward<T>(callable)](JobSystem&, int) mutable {
            callable();
            return JobResult::Done;
        }},
            dependencies, flags);
    }

    /** Runs the jobs of the GUI thread whose turn has come. Those that they dispatch wait for the next call. */
    void runMainThreadJobs();

    /** Whether a job has ended. */
    bool isDone(int job) const;

    /** Blocks until a job has ended, running jobs of the GUI thread meanwhile. */
    void wait(int job);

    /** Blocks until no job is left, those of the GUI thread included, and those that they dispatch. */
    void waitForAll();

private:
    struct State;

    Containers::Pointer<State> _state;
};

}
