#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace QuorvaneEngine {

/** Writes a ZIP archive byte by byte, with any lie that a test wants in it. Entries are stored, not packed. */
struct TestArchive {
    struct Entry {
        std::string name;
        std::string bytes;
        unsigned flags = 0;
        unsigned method = 0;
        /** Upper half of the external attributes, with 3 for Unix as the system. */
        unsigned mode = 0100644;
        /** Added to what is true. */
        int sizeLie = 0;
        int packedSizeLie = 0;
        int offsetLie = 0;
        std::uint32_t crcLie = 0;
        /** Name in the header before the bytes where it is another one. */
        std::string localName = {};
        bool hasLocalName = false;
        /** Takes the bytes of this earlier entry instead of own ones; -1 for none. */
        int sharedWith = -1;
    };

    std::vector<Entry> entries;
    unsigned disk = 0;
    int countLie = 0;
    int directoryOffsetLie = 0;
    int directorySizeLie = 0;
    std::string before = {};
    std::string comment = {};
    /** Between the directory and its end. */
    std::string beforeEnd = {};

    static std::uint32_t crc(const std::string& bytes) {
        std::uint32_t value = ~std::uint32_t{};
        for(const char c: bytes) {
            value ^= static_cast<unsigned char>(c);
            for(int i = 0; i != 8; ++i) value = (value >> 1) ^ (value & 1 ? 0xedb88320u : 0);
        }
        return ~value;
    }

    std::string make() const {
        std::string out = before;
        std::string directory;
        std::vector<std::uint32_t> offsets;
        for(const Entry& entry: entries) {
            const std::uint32_t size = std::uint32_t(entry.bytes.size());
            const std::string& localName = entry.hasLocalName ? entry.localName : entry.name;
            const std::uint32_t sums[]{crc(entry.bytes) + entry.crcLie, size + std::uint32_t(entry.packedSizeLie),
                size + std::uint32_t(entry.sizeLie)};
            if(entry.sharedWith >= 0) offsets.push_back(offsets[std::size_t(entry.sharedWith)]);
            else {
                offsets.push_back(std::uint32_t(out.size()));
                four(out, 0x04034b50);
                for(const unsigned number: {20u, entry.flags, entry.method, 0u, 33u}) two(out, number);
                for(const std::uint32_t sum: sums) four(out, sum);
                two(out, unsigned(localName.size()));
                two(out, 0);
                out += localName + entry.bytes;
            }
            four(directory, 0x02014b50);
            for(const unsigned number: {0x0314u, 20u, entry.flags, entry.method, 0u, 33u}) two(directory, number);
            for(const std::uint32_t sum: sums) four(directory, sum);
            for(const unsigned number: {unsigned(entry.name.size()), 0u, 0u, 0u, 0u}) two(directory, number);
            four(directory, std::uint32_t(entry.mode) << 16);
            four(directory, offsets.back() + std::uint32_t(entry.offsetLie));
            directory += entry.name;
        }
        const std::uint32_t begin = std::uint32_t(out.size());
        out += directory + beforeEnd;
        four(out, 0x06054b50);
        for(const unsigned number:
            {disk, disk, unsigned(int(entries.size()) + countLie), unsigned(int(entries.size()) + countLie)})
            two(out, number);
        four(out, std::uint32_t(directory.size()) + std::uint32_t(directorySizeLie));
        four(out, begin + std::uint32_t(directoryOffsetLie));
        two(out, unsigned(comment.size()));
        return out + comment;
    }

    static void two(std::string& out, const unsigned value) {
        out += char(value & 255);
        out += char(value >> 8 & 255);
    }
    static void four(std::string& out, const std::uint32_t value) {
        two(out, value & 0xffff);
        two(out, value >> 16);
    }
};

}
