#include "Fingerprint.h"

#include <cstdint>

namespace QuorvaneEngine {

Containers::String fingerprint(const Containers::StringView text) {
    std::uint64_t hash = 0xcbf29ce484222325u;
    for(const char c: text) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3u;

    char digits[16];
    for(int i = 16; i-- != 0; hash >>= 4) digits[i] = "0123456789abcdef"[hash & 15];
    return Containers::String{digits, sizeof(digits)};
}

}
