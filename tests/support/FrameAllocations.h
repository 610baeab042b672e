#pragma once

#include <cstdint>

#include "support/Allocations.h"
#include "support/GuiTest.h"

namespace QuorvaneEngine::Test {

/** Draws frames with nobody at mouse and keyboard.
    @return how often @p draw asked for memory in all of them */
inline std::uint64_t frameAllocations(GuiTest& gui, int frames, const GuiTest::Gui& draw) {
    std::uint64_t allocations = 0;
    gui.frames(
        [&] {
            const Allocations counter;
            draw();
            allocations += counter.count();
        },
        frames);
    return allocations;
}

}
