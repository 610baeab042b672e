#pragma once

#include <string>

#include "Corrade/Utility/AbstractHash.h"

namespace Corrade::Utility {

namespace Implementation {

/** MurmurHash64A of Austin Appleby over bytes, the same on every machine. */
template <std::size_t> struct MurmurHash2;
template <> struct MurmurHash2<8> {
    unsigned long long operator()(unsigned long long seed, const char* data, unsigned long long size) const;
};

} // namespace Implementation

/** Hash of text: fast, of 64 bits, and no protection against somebody who looks for collisions. */
class MurmurHash2: public AbstractHash<sizeof(std::size_t)> {
public:
    static Digest digest(const std::string& data) { return MurmurHash2{}(data); }

    constexpr explicit MurmurHash2(std::size_t seed = 0): _seed(seed) {}

    Digest operator()(const std::string& data) const { return (*this)(data.data(), data.size()); }
    Digest operator()(const char* data, std::size_t size) const {
        const std::size_t hash = Implementation::MurmurHash2<sizeof(std::size_t)>{}(_seed, data, size);
        return Digest::fromByteArray(reinterpret_cast<const char*>(&hash));
    }

private:
    std::size_t _seed;
};

} // namespace Corrade::Utility
