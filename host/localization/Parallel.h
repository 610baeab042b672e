#pragma once

#include <cstddef>
#include <functional>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

struct Progress;

/** Calls a function for every number from 0 up to a count, on as many threads as the machine has cores, the calling one among
    them. They end before this returns. In which order and on which thread a number is taken is left open, so each has to have
    its own place for what it finds.
    @param run          must not throw
    @param progress     may be null; else its total becomes @p count , and each number that is done counts as one
    @return whether all numbers were done; false where @p progress was cancelled */
QUORVANE_API bool forEachInParallel(
    std::size_t count, const std::function<void(std::size_t)>& run, Progress* progress = nullptr);

}
