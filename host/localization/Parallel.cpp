#include "Parallel.h"

#include <algorithm>
#include <atomic>
#include <system_error>
#include <thread>
#include <vector>

#include "Progress.h"

namespace QuorvaneEngine {

bool forEachInParallel(const std::size_t count, const std::function<void(std::size_t)>& run, Progress* const progress) {
    if(progress) {
        progress->done = 0;
        progress->total = UnsignedInt(count);
    }
    std::atomic<std::size_t> next{0};
    std::atomic<std::size_t> done{0};
    const auto work = [&] {
        for(std::size_t i; (!progress || !progress->isCancelled) && (i = next++) < count; ++done) {
            run(i);
            if(progress) ++progress->done;
        }
    };
    {
        std::vector<std::jthread> threads;
        const std::size_t cores = std::thread::hardware_concurrency();
        // A machine that is short of threads does the work with those that it has.
        try {
            while(threads.size() + 1 < std::min(cores, count)) threads.emplace_back(work);
        } catch(const std::system_error&) {
        }
        work();
    }
    return done == count;
}

}
