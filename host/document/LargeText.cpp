#include "LargeText.h"

#include <sys/mman.h>

namespace QuorvaneEngine {

namespace {

/** In bytes. Below, the pages that are cut would outweigh what is gained. */
constexpr std::size_t SmallestLarge = std::size_t{128} << 10;

#ifdef MAP_POPULATE
constexpr int PopulateFlag = MAP_POPULATE;
#else
constexpr int PopulateFlag = 0;
#endif

}

Containers::String largeText(const std::size_t size, const bool isFilled) {
    void* memory = MAP_FAILED;
    if(size >= SmallestLarge)
        memory = ::mmap(nullptr, size + 1, PROT_READ | PROT_WRITE,
            MAP_PRIVATE | MAP_ANONYMOUS | (isFilled ? PopulateFlag : 0), -1, 0);
    if(memory == MAP_FAILED) return Containers::String{Corrade::NoInit, size};
    return Containers::String{static_cast<char*>(memory), size,
        [](char* const data, const std::size_t mapped) { ::munmap(data, mapped + 1); }};
}

}
