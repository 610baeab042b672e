#pragma once

#include <algorithm>
#include <cstddef>
#include <string>

#include "Corrade/Utility/Debug.h"

namespace Corrade::Utility {

/** The bytes that a hash gives. */
template <std::size_t size> class HashDigest {
public:
    constexpr HashDigest() = default;
    static HashDigest fromByteArray(const char* bytes) {
        HashDigest out;
        std::copy_n(bytes, size, out._bytes);
        return out;
    }

    bool operator==(const HashDigest& other) const = default;
    constexpr const char* byteArray() const { return _bytes; }
    /** Two lower-case digits for each byte, first byte first. */
    std::string hexString() const {
        std::string out;
        for(char byte: _bytes) {
            out += "0123456789abcdef"[byte >> 4 & 0xf];
            out += "0123456789abcdef"[byte & 0xf];
        }
        return out;
    }

private:
    char _bytes[size]{};
};

template <std::size_t digestSize> class AbstractHash {
public:
    using Digest = HashDigest<digestSize>;
    enum : std::size_t { DigestSize = digestSize };
};

template <std::size_t size> Debug& operator<<(Debug& debug, const HashDigest<size>& value) {
    return debug << value.hexString().data();
}

} // namespace Corrade::Utility
