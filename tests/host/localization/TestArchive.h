#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace QuorvaneEngine {

/** Writes a ZIP archive byte by byte, with any lie that a test wants in it. Entries are stored, not packed. */
struct TestArchive {
    /** How a writer says what it knows only behind the bytes. */
    enum class Descriptor { None, Plain, Signed, Plain64, Signed64, Missing };

    struct Entry {
        std::string name;
        std::string bytes;
        unsigned flags = 0;
        unsigned method = 0;
        /** Upper half of the external attributes. */
        unsigned mode = 0100644;
        /** Added to what is true, in both headers. */
        int sizeLie = 0;
        int packedSizeLie = 0;
        int offsetLie = 0;
        std::uint32_t crcLie = 0;
        /** Added to what the header before the bytes has, which is otherwise as in the directory. */
        int localSizeLie = 0;
        std::uint32_t localCrcLie = 0;
        unsigned localFlagsLie = 0;
        unsigned localMethodLie = 0;
        /** Name in the header before the bytes where it is another one. */
        std::string localName = {};
        bool hasLocalName = false;
        /** Takes the bytes of this earlier entry instead of own ones; -1 for none. */
        int sharedWith = -1;
        std::string extra = {};
        std::string localExtra = {};
        Descriptor descriptor = Descriptor::None;
        /** Sizes and offset stand in a ZIP64 field; in the header before the bytes the sizes alone. */
        bool is64 = false;
        std::uint64_t offset64Lie = 0;
        std::uint64_t size64Lie = 0;
        /** Lower half of the external attributes, and the system that they are of. */
        unsigned attributes = 0;
        unsigned system = 3;
        unsigned disk = 0;
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
    /** With a ZIP64 end, and all numbers of the other one full where @ref isFull . */
    bool is64 = false;
    bool isFull = false;
    std::uint64_t count64Lie = 0;
    std::uint64_t directoryOffset64Lie = 0;
    std::uint64_t directorySize64Lie = 0;
    std::uint64_t end64OffsetLie = 0;
    unsigned disk64 = 0;
    unsigned diskCount64 = 1;

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
            if(entry.sharedWith >= 0) offsets.push_back(offsets[std::size_t(entry.sharedWith)]);
            else {
                offsets.push_back(std::uint32_t(out.size()));
                addLocal(out, entry);
            }
            addToDirectory(directory, entry, offsets.back() + std::uint32_t(entry.offsetLie));
        }
        const std::uint32_t begin = std::uint32_t(out.size());
        out += directory + beforeEnd;
        const unsigned count = unsigned(int(entries.size()) + countLie);
        const std::uint32_t size = std::uint32_t(directory.size()) + std::uint32_t(directorySizeLie);
        const std::uint32_t offset = begin + std::uint32_t(directoryOffsetLie);
        if(is64) addEnd64(out, begin, directory.size());
        four(out, 0x06054b50);
        two(out, disk);
        two(out, disk);
        for(int i = 0; i != 2; ++i) two(out, isFull ? 0xffff : count);
        four(out, isFull ? 0xffffffff : size);
        four(out, isFull ? 0xffffffff : offset);
        two(out, unsigned(comment.size()));
        return out + comment;
    }

    static std::string field(const unsigned id, const std::string& bytes) {
        std::string out;
        two(out, id);
        two(out, unsigned(bytes.size()));
        return out + bytes;
    }
    static void two(std::string& out, const unsigned value) {
        out += char(value & 255);
        out += char(value >> 8 & 255);
    }
    static void four(std::string& out, const std::uint32_t value) {
        two(out, value & 0xffff);
        two(out, value >> 16);
    }
    static void eight(std::string& out, const std::uint64_t value) {
        four(out, std::uint32_t(value));
        four(out, std::uint32_t(value >> 32));
    }

private:
    static unsigned flagsOf(const Entry& entry) {
        return entry.flags | (entry.descriptor == Descriptor::None ? 0u : 1u << 3);
    }

    static void addLocal(std::string& out, const Entry& entry) {
        const std::string& name = entry.hasLocalName ? entry.localName : entry.name;
        const std::uint32_t checksum = crc(entry.bytes) + entry.crcLie;
        const std::uint32_t packedSize = std::uint32_t(entry.bytes.size()) + std::uint32_t(entry.packedSizeLie);
        const std::uint32_t size = std::uint32_t(entry.bytes.size()) + std::uint32_t(entry.sizeLie);
        const bool isStreamed = entry.descriptor != Descriptor::None;
        std::string extra = entry.localExtra;
        if(entry.is64) {
            std::string sizes;
            eight(sizes, isStreamed ? 0 : size);
            eight(sizes, isStreamed ? 0 : packedSize);
            extra += field(1, sizes);
        }
        four(out, 0x04034b50);
        for(const unsigned number:
            {20u, flagsOf(entry) + entry.localFlagsLie, entry.method + entry.localMethodLie, 0u, 33u})
            two(out, number);
        four(out, (isStreamed ? 0 : checksum) + entry.localCrcLie);
        for(const std::uint32_t number: {packedSize, size})
            four(out, entry.is64 ? 0xffffffff : (isStreamed ? 0 : number) + std::uint32_t(entry.localSizeLie));
        two(out, unsigned(name.size()));
        two(out, unsigned(extra.size()));
        out += name + extra + entry.bytes;
        if(!isStreamed || entry.descriptor == Descriptor::Missing) return;
        if(entry.descriptor == Descriptor::Signed || entry.descriptor == Descriptor::Signed64) four(out, 0x08074b50);
        four(out, checksum);
        const bool has64 = entry.descriptor == Descriptor::Plain64 || entry.descriptor == Descriptor::Signed64;
        for(const std::uint32_t number: {packedSize, size}) has64 ? eight(out, number) : four(out, number);
    }

    static void addToDirectory(std::string& out, const Entry& entry, const std::uint32_t offset) {
        const std::uint32_t packedSize = std::uint32_t(entry.bytes.size()) + std::uint32_t(entry.packedSizeLie);
        const std::uint32_t size = std::uint32_t(entry.bytes.size()) + std::uint32_t(entry.sizeLie);
        std::string extra = entry.extra;
        if(entry.is64) {
            std::string numbers;
            eight(numbers, size + entry.size64Lie);
            eight(numbers, packedSize);
            eight(numbers, offset + entry.offset64Lie);
            extra += field(1, numbers);
        }
        four(out, 0x02014b50);
        for(const unsigned number: {entry.system << 8 | 20u, 20u, flagsOf(entry), entry.method, 0u, 33u})
            two(out, number);
        four(out, crc(entry.bytes) + entry.crcLie);
        four(out, entry.is64 ? 0xffffffff : packedSize);
        four(out, entry.is64 ? 0xffffffff : size);
        for(const unsigned number: {unsigned(entry.name.size()), unsigned(extra.size()), 0u, entry.disk, 0u})
            two(out, number);
        four(out, std::uint32_t(entry.mode) << 16 | entry.attributes);
        four(out, entry.is64 ? 0xffffffff : offset);
        out += entry.name + extra;
    }

    void addEnd64(std::string& out, const std::uint64_t begin, const std::uint64_t size) const {
        const std::uint64_t place = out.size();
        four(out, 0x06064b50);
        eight(out, 44);
        two(out, 45);
        two(out, 45);
        four(out, disk64);
        four(out, disk64);
        for(int i = 0; i != 2; ++i) eight(out, entries.size() + count64Lie);
        eight(out, size + directorySize64Lie);
        eight(out, begin + directoryOffset64Lie);
        four(out, 0x07064b50);
        four(out, disk64);
        eight(out, place + end64OffsetLie);
        four(out, diskCount64);
    }
};

}
