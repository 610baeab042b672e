#include "Corrade/Utility/MurmurHash2.h"

#include <bit>
#include <cstdint>
#include <cstring>

namespace Corrade::Utility::Implementation {

static_assert(std::endian::native == std::endian::little, "words are read as they lie in memory");

unsigned long long MurmurHash2<8>::operator()(
    unsigned long long seed, const char* data, unsigned long long size) const {
    constexpr std::uint64_t Factor = 0xc6a4a7935bd1e995;
    const auto mixed = [](std::uint64_t value) { return (value ^ value >> 47) * Factor; };

    std::uint64_t hash = seed ^ size * Factor;
    for(; size >= 8; size -= 8, data += 8) {
        std::uint64_t word;
        std::memcpy(&word, data, 8);
        hash = (hash ^ mixed(word * Factor)) * Factor;
    }
    if(size) {
        std::uint64_t rest = 0;
        std::memcpy(&rest, data, size);
        hash = (hash ^ rest) * Factor;
    }
    hash = mixed(hash);
    return hash ^ hash >> 47;
}

} // namespace Corrade::Utility::Implementation
