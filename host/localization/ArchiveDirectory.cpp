#include "ArchiveDirectory.h"

#include <algorithm>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include <Corrade/Containers/GrowableArray.h>

#include "../document/PrintableText.h"
#include "ArchiveBytes.h"
#include "ArchiveName.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

constexpr std::size_t EndSize = 22;
constexpr std::size_t End64Size = 56;
constexpr std::size_t Locator64Size = 20;
constexpr std::size_t EntrySize = 46;
constexpr std::size_t LocalSize = 30;
constexpr std::uint32_t EndSignature = 0x06054b50;
constexpr std::uint32_t End64Signature = 0x06064b50;
constexpr std::uint32_t Locator64Signature = 0x07064b50;
constexpr std::uint32_t EntrySignature = 0x02014b50;
constexpr std::uint32_t LocalSignature = 0x04034b50;
constexpr std::uint32_t DescriptorSignature = 0x08074b50;
constexpr unsigned Zip64Field = 1;
/** A number of 16 or 32 bits in place of which a ZIP64 one counts. */
constexpr std::uint32_t Full16 = 0xffff;
constexpr std::uint32_t Full32 = 0xffffffff;
/** Encrypted, encrypted strongly, with a masked directory. */
constexpr unsigned EncryptedFlags = 1 << 0 | 1 << 6 | 1 << 13;
constexpr unsigned DescriptorFlag = 1 << 3;
constexpr unsigned Utf8Flag = 1 << 11;
constexpr unsigned FileTypeMask = 0170000;
constexpr unsigned RegularFile = 0100000;
constexpr unsigned Folder = 0040000;
/** Windows' attribute of links. */
constexpr std::uint32_t ReparsePoint = 0x400;

class Reading {
public:
    Reading(const Containers::StringView bytes, ArchiveDirectory& directory, ArchiveRefusal& refusal)
        : _bytes{bytes}, _directory{directory}, _refusal{refusal} {}

    bool run() {
        std::size_t end = 0;
        return findEnd(end) && readEnd(end) && readEntries() && checkOverlaps();
    }

private:
    struct Extent {
        std::size_t begin;
        std::size_t end;
        Containers::StringView name;
    };

    /** The numbers of an entry that may stand in an extra field. */
    struct Sizes {
        std::uint64_t size;
        std::uint64_t packedSize;
        std::uint64_t offset;
        std::uint32_t disk;
    };

    bool refuse(const Containers::StringView reason) {
        _refusal.entry = printable(_name);
        _refusal.reason = reason;
        return false;
    }

    /** A comment of up to 64 KB may follow the end, and zeros, as writers of whole blocks put there. Nothing else may, and nothing
        may be in the comment that somebody else could take for the end. */
    bool findEnd(std::size_t& end) {
        std::size_t content = _bytes.size();
        while(content != 0 && _bytes.byte(content - 1) == 0) --content;
        std::size_t fitting = 0, inComment = 0;
        bool isFollowed = false;
        for(std::size_t back = 0; back <= Full16 && _bytes.size() >= EndSize + back; ++back) {
            const std::size_t place = _bytes.size() - EndSize - back;
            if(_bytes.four(place) != EndSignature) continue;
            const std::size_t comment = _bytes.two(place + 20);
            const bool isFitting = comment <= back && place + EndSize + comment >= content;
            if(isFitting && fitting++ == 0) end = place;
            if(fitting != 0) continue;
            ++inComment;
            isFollowed = isFollowed || comment < back;
        }
        if(fitting == 0)
            return refuse(
                isFollowed ? "is damaged: something follows its end"_s : "is no ZIP archive, or is cut off"_s);
        return (fitting == 1 && inComment == 0) || refuse("is ambiguous: it has two ends"_s);
    }

    bool readEnd(const std::size_t end) {
        if(!checkDisks(_bytes.two(end + 4), _bytes.two(end + 6), Full16)) return false;
        const std::uint64_t countHere = _bytes.two(end + 8);
        _count = _bytes.two(end + 10);
        std::uint64_t size = _bytes.four(end + 12);
        _begin = _bytes.four(end + 16);
        _end = end;
        if(countHere != _count) return refuse("is part of an archive in several files"_s);
        if(end >= Locator64Size && _bytes.four(end - Locator64Size) == Locator64Signature &&
            !readEnd64(end - Locator64Size, size))
            return false;
        if(_count > ArchiveDirectory::MaxEntries) return refuse("has more than 10000 entries"_s);
        return (_begin <= _end && size == _end - _begin) ||
            refuse("is damaged: its directory is not where it should be"_s);
    }

    bool checkDisks(const std::uint32_t disk, const std::uint32_t directoryDisk, const std::uint32_t full = 0) {
        return ((disk == 0 || disk == full) && (directoryDisk == 0 || directoryDisk == full)) ||
            refuse("is part of an archive in several files"_s);
    }

    bool readEnd64(const std::size_t locator, std::uint64_t& size) {
        const std::uint64_t place = _bytes.eight(locator + 8);
        if(!checkDisks(_bytes.four(locator + 4), 0)) return false;
        if(_bytes.four(locator + 16) > 1) return refuse("is part of an archive in several files"_s);
        if(place > locator || locator - place < End64Size || _bytes.four(std::size_t(place)) != End64Signature ||
            _bytes.eight(std::size_t(place) + 4) != locator - place - 12)
            return refuse("is damaged: its ZIP64 end is not where it should be"_s);
        const std::size_t end = std::size_t(place);
        if(!checkDisks(_bytes.four(end + 16), _bytes.four(end + 20))) return false;
        const std::uint64_t count = _bytes.eight(end + 32);
        if(_bytes.eight(end + 24) != count) return refuse("is part of an archive in several files"_s);
        if(!take64(_count, Full16, count) || !take64(size, Full32, _bytes.eight(end + 40)) ||
            !take64(_begin, Full32, _bytes.eight(end + 48)))
            return refuse("is damaged: its two ends contradict each other"_s);
        _end = end;
        return true;
    }

    /** @return whether the ZIP64 number may stand for the other one, which then becomes it */
    static bool take64(std::uint64_t& number, const std::uint64_t full, const std::uint64_t larger) {
        const bool fits = number == full || number == larger;
        number = larger;
        return fits;
    }

    bool readEntries() {
        std::size_t offset = std::size_t(_begin);
        for(std::size_t i = 0; i != _count; ++i) {
            _name = {};
            if(_end - offset < EntrySize || _bytes.four(offset) != EntrySignature)
                return refuse("is damaged: its directory is cut off"_s);
            const std::size_t nameSize = _bytes.two(offset + 28);
            const std::size_t extraSize = _bytes.two(offset + 30);
            const std::size_t size = EntrySize + nameSize + extraSize + _bytes.two(offset + 32);
            if(_end - offset < size) return refuse("is damaged: its directory is cut off"_s);
            _name = _bytes.text(offset + EntrySize, nameSize);
            if(!readEntry(offset, _bytes.text(offset + EntrySize + nameSize, extraSize))) return false;
            offset += size;
        }
        _name = {};
        return offset == _end || refuse("is damaged: its directory is longer than its entries"_s);
    }

    bool readEntry(const std::size_t offset, const Containers::StringView extra) {
        const unsigned flags = _bytes.two(offset + 8);
        if(flags & EncryptedFlags) return refuse("is encrypted"_s);
        const std::uint32_t attributes = _bytes.four(offset + 38);
        const unsigned type = attributes >> 16 & FileTypeMask;
        if((type != 0 && type != RegularFile && type != Folder) || attributes & ReparsePoint)
            return refuse("is a link or a device"_s);

        Sizes sizes{_bytes.four(offset + 24), _bytes.four(offset + 20), _bytes.four(offset + 42),
            std::uint32_t(_bytes.two(offset + 34))};
        if(!readZip64(extra, sizes)) return refuse("is damaged: its ZIP64 sizes are missing"_s);
        if(sizes.disk != 0) return refuse("lies in another file"_s);

        ArchiveDirectory::Entry entry{};
        entry.size = sizes.size;
        entry.checksum = _bytes.four(offset + 16);
        entry.method = _bytes.two(offset + 10);
        if(!readName(flags & Utf8Flag, extra, entry.name) || !readLocal(sizes, entry)) return false;
        Containers::arrayAppend(_directory.entries, std::move(entry));
        return true;
    }

    /** Takes the numbers of the extra field for it in place of those that are full. */
    static bool readZip64(const Containers::StringView extra, Sizes& sizes) {
        const ArchiveBytes field{ArchiveBytes::extraField(extra, Zip64Field)};
        std::size_t offset = 0;
        for(std::uint64_t* const number: {&sizes.size, &sizes.packedSize, &sizes.offset}) {
            if(*number != Full32) continue;
            if(!field.has(offset, 8)) return false;
            *number = field.eight(offset);
            offset += 8;
        }
        if(sizes.disk != Full16) return true;
        if(!field.has(offset, 4)) return false;
        sizes.disk = field.four(offset);
        return true;
    }

    bool readName(const bool isUtf8, const Containers::StringView extra, Containers::String& plain) {
        const Containers::StringView bytes = _name;
        Containers::String name;
        if(!ArchiveName::decode(bytes, isUtf8, extra, name)) return refuse("has a name that is not valid UTF-8"_s);
        _name = name;
        if(const Containers::StringView fault = ArchiveName::fault(name); !fault.isEmpty()) return refuse(fault);
        Containers::String place = ArchiveName::plain(name);
        if(!_names.insert(ArchiveName::folded(place)).second) return refuse("has the name of another entry"_s);
        if(!name.hasSuffix('/')) plain = std::move(place);
        _name = bytes;
        return true;
    }

    /** The header before the entry's own bytes says the same as the directory, and all lies before that. */
    bool readLocal(const Sizes& sizes, ArchiveDirectory::Entry& entry) {
        if(sizes.offset > _begin || _begin - sizes.offset < LocalSize ||
            _bytes.four(std::size_t(sizes.offset)) != LocalSignature)
            return refuse("is damaged: it is not where the directory says"_s);
        const std::size_t offset = std::size_t(sizes.offset);
        const std::size_t nameSize = _bytes.two(offset + 26);
        const std::size_t extraSize = _bytes.two(offset + 28);
        const std::size_t headerSize = LocalSize + nameSize + extraSize;
        if(_begin - offset < headerSize || _begin - offset - headerSize < sizes.packedSize)
            return refuse("shares bytes with the archive's directory"_s);
        entry.offset = offset + headerSize;
        entry.packedSize = std::size_t(sizes.packedSize);

        if(_bytes.text(offset + LocalSize, nameSize) != _name) return refuse("has two names"_s);
        const unsigned flags = _bytes.two(offset + 6);
        if(flags & EncryptedFlags) return refuse("is encrypted"_s);
        if(_bytes.two(offset + 8) != entry.method) return refuse("is packed in two ways"_s);
        std::size_t descriptorSize = 0;
        if(!checkLocal(offset, _bytes.text(offset + LocalSize + nameSize, extraSize), flags & DescriptorFlag, entry,
               descriptorSize))
            return false;
        _extents.push_back({offset, entry.offset + entry.packedSize + descriptorSize, _name});
        return true;
    }

    /** A writer that streams knows sizes and checksum only behind the bytes, and has zeros in the header. */
    bool checkLocal(const std::size_t offset, const Containers::StringView extra, const bool hasDescriptor,
        const ArchiveDirectory::Entry& entry, std::size_t& descriptorSize) {
        const std::uint32_t checksum = _bytes.four(offset + 14);
        std::uint64_t size = _bytes.four(offset + 22);
        std::uint64_t packedSize = _bytes.four(offset + 18);
        // Here both stand in the field where it is there.
        const ArchiveBytes field{ArchiveBytes::extraField(extra, Zip64Field)};
        const bool has64 = field.has(0, 16);
        if(!has64 && !hasDescriptor && (size == Full32 || packedSize == Full32))
            return refuse("is damaged: its ZIP64 sizes are missing"_s);
        if(has64 && size == Full32) size = field.eight(0);
        if(has64 && packedSize == Full32) packedSize = field.eight(8);
        const bool isComplete = checksum == entry.checksum && size == entry.size && packedSize == entry.packedSize;
        if(!hasDescriptor && checksum != entry.checksum) return refuse("has two checksums"_s);
        if(!hasDescriptor && !isComplete) return refuse("has two sizes"_s);
        if(!hasDescriptor) return true;

        const auto isOpen = [](const std::uint64_t number, const std::uint64_t known) {
            return number == 0 || number == Full32 || number == known;
        };
        if(!isOpen(checksum, entry.checksum)) return refuse("has two checksums"_s);
        if(!isOpen(size, entry.size) || !isOpen(packedSize, entry.packedSize)) return refuse("has two sizes"_s);
        descriptorSize = sizeOfDescriptor(entry);
        return isComplete || descriptorSize != 0 ||
            refuse("is damaged: its sizes do not stand behind it as in the directory"_s);
    }

    /** Of what says behind an entry's bytes what the directory says: with its signature or without, with numbers of 32 bits or of 64;
        0 where there is none. */
    std::size_t sizeOfDescriptor(const ArchiveDirectory::Entry& entry) const {
        const std::size_t begin = entry.offset + entry.packedSize;
        const std::size_t room = std::size_t(_begin) - begin;
        for(const std::size_t signature: {4, 0})
            for(const std::size_t number: {4, 8}) {
                const std::size_t size = signature + 4 + number * 2;
                if(room < size || (signature != 0 && _bytes.four(begin) != DescriptorSignature)) continue;
                const auto read = [&](const std::size_t place) {
                    return number == 8 ? _bytes.eight(place) : _bytes.four(place);
                };
                const std::size_t checksum = begin + signature;
                if(_bytes.four(checksum) == entry.checksum && read(checksum + 4) == entry.packedSize &&
                    read(checksum + 4 + number) == entry.size)
                    return size;
            }
        return 0;
    }

    bool checkOverlaps() {
        std::sort(_extents.begin(), _extents.end(), [](const Extent& a, const Extent& b) {
            return std::pair{a.begin, a.end} < std::pair{b.begin, b.end};
        });
        for(std::size_t i = 1; i < _extents.size(); ++i)
            if(_extents[i].begin < _extents[i - 1].end) {
                _name = _extents[i].name;
                return refuse("shares bytes with another entry"_s);
            }
        return true;
    }

    ArchiveBytes _bytes;
    ArchiveDirectory& _directory;
    ArchiveRefusal& _refusal;
    /** Of the entry that is looked at. */
    Containers::StringView _name;
    std::uint64_t _count = 0;
    /** Of the directory. */
    std::uint64_t _begin = 0;
    std::size_t _end = 0;
    std::unordered_set<std::string> _names;
    std::vector<Extent> _extents;
};

}

bool ArchiveDirectory::read(const Containers::StringView bytes, ArchiveDirectory& directory, ArchiveRefusal& refusal) {
    directory.entries = {};
    if(Reading{bytes, directory, refusal}.run()) return true;
    directory.entries = {};
    return false;
}

}
