#pragma once

#include <cstdint>

namespace QuorvaneEngine::Test {

/** Counts how often its thread asks for memory, by `malloc`, `calloc`, `realloc` or `operator new`, while the object lives. The
    whole process is watched, shared libraries and plug-ins included. */
class Allocations {
public:
    Allocations();

    std::uint64_t count() const;

private:
    std::uint64_t _before;
};

}
