#include "ArchiveBytes.h"

#include <array>

namespace QuorvaneEngine {

namespace {

constexpr std::array<std::uint32_t, 256> Remainders = [] {
    std::array<std::uint32_t, 256> remainders{};
    for(std::uint32_t byte = 0; byte != 256; ++byte) {
        std::uint32_t value = byte;
        for(int bit = 0; bit != 8; ++bit) value = (value >> 1) ^ (value & 1 ? 0xedb88320u : 0);
        remainders[byte] = value;
    }
    return remainders;
}();

}

Containers::StringView ArchiveBytes::extraField(const Containers::StringView fields, const unsigned id) {
    const ArchiveBytes bytes{fields};
    for(std::size_t offset = 0; bytes.has(offset, 4);) {
        const std::size_t size = bytes.two(offset + 2);
        if(!bytes.has(offset + 4, size)) return {};
        if(bytes.two(offset) == id) return bytes.text(offset + 4, size);
        offset += 4 + size;
    }
    return {};
}

std::uint32_t ArchiveBytes::checksum(const Containers::StringView bytes) {
    std::uint32_t value = ~std::uint32_t{};
    for(const char byte: bytes) value = (value >> 8) ^ Remainders[(value ^ static_cast<unsigned char>(byte)) & 255];
    return ~value;
}

}
