#pragma once

#include <cstdint>

#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Little-endian numbers in the bytes of a ZIP archive. But for @ref has() , offsets must be ones that were checked. */
class QUORVANE_API ArchiveBytes {
public:
    explicit ArchiveBytes(const Containers::StringView bytes): _bytes{bytes} {}

    std::size_t size() const { return _bytes.size(); }

    bool has(const std::uint64_t offset, const std::uint64_t count) const {
        return offset <= size() && count <= size() - offset;
    }

    unsigned byte(const std::size_t offset) const { return static_cast<unsigned char>(_bytes[offset]); }
    unsigned two(const std::size_t offset) const { return byte(offset) | byte(offset + 1) << 8; }
    std::uint32_t four(const std::size_t offset) const { return two(offset) | std::uint32_t(two(offset + 2)) << 16; }
    std::uint64_t eight(const std::size_t offset) const { return four(offset) | std::uint64_t(four(offset + 4)) << 32; }
    Containers::StringView text(const std::size_t offset, const std::size_t count) const {
        return Containers::StringView{_bytes.data() + offset, count};
    }

    /** The contents of the first field with an ID among extra fields. Empty where there is none, and where they are damaged before
        it; some writers put zeros behind the last one. */
    static Containers::StringView extraField(Containers::StringView fields, unsigned id);

    /** CRC-32 as the format has it. */
    static std::uint32_t checksum(Containers::StringView bytes);

private:
    Containers::StringView _bytes;
};

}
