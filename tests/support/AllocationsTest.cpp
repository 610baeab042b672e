#include "support/Allocations.h"

#include <cstdlib>
#include <memory>
#include <string>
#include <thread>

#include <gtest/gtest.h>
#include <imgui.h>

#include "support/FrameAllocations.h"

namespace QuorvaneEngine::Test {
namespace {

/** Keeps the compiler from dropping an allocation that nobody uses. */
void* volatile kept;

TEST(Allocations, NothingIsCountedWhereNothingIsAllocated) {
    const Allocations allocations;
    EXPECT_EQ(allocations.count(), 0u);
}

TEST(Allocations, MallocCallocAndReallocCountOnceEach) {
    const Allocations allocations;
    kept = std::malloc(8);
    kept = std::realloc(kept, 4000);
    std::free(kept);
    kept = std::calloc(2, 8);
    std::free(kept);
    EXPECT_EQ(allocations.count(), 3u);
}

TEST(Allocations, OperatorNewCounts) {
    const Allocations allocations;
    const std::unique_ptr<std::string> text = std::make_unique<std::string>(100, 'a');
    kept = text.get();
    EXPECT_EQ(allocations.count(), 2u);
}

TEST(Allocations, SharedLibrariesAreWatched) {
    const Allocations allocations;
    kept = ImGui::MemAlloc(10);
    ImGui::MemFree(kept);
    EXPECT_EQ(allocations.count(), 1u);
}

TEST(Allocations, OtherThreadsAreNot) {
    std::uint64_t here = 0;
    std::uint64_t there = 0;
    std::thread{[&] {
        const Allocations allocations;
        kept = std::malloc(8);
        std::free(kept);
        there = allocations.count();
    }}.join();
    const Allocations allocations;
    here = allocations.count();
    EXPECT_EQ(here, 0u);
    EXPECT_EQ(there, 1u);
}

TEST(Allocations, OfFramesOnlyWhatTheirGuiAsksForIsCounted) {
    const auto allocate = [] {
        kept = std::malloc(8);
        std::free(kept);
    };
    GuiTest gui;
    gui.prepareFrames(allocate);
    EXPECT_EQ(frameAllocations(gui, 3, [] {}), 0u);
    EXPECT_EQ(frameAllocations(gui, 3, allocate), 3u);
}

}
}
