#include "ArchiveDirectory.h"

#include <algorithm>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include <Corrade/Containers/GrowableArray.h>
#include <unicode/uchar.h>
#include <unicode/utf8.h>

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

constexpr std::size_t EndSize = 22;
constexpr std::size_t EntrySize = 46;
constexpr std::size_t LocalSize = 30;
constexpr std::uint32_t EndSignature = 0x06054b50;
constexpr std::uint32_t EntrySignature = 0x02014b50;
constexpr std::uint32_t LocalSignature = 0x04034b50;
constexpr std::uint32_t Locator64Signature = 0x07064b50;
constexpr std::size_t Locator64Size = 20;
/** Encrypted, encrypted strongly, with a masked directory. */
constexpr unsigned EncryptedFlags = 1 << 0 | 1 << 6 | 1 << 13;
constexpr unsigned Unix = 3;
constexpr unsigned FileTypeMask = 0170000;
constexpr unsigned RegularFile = 0100000;
constexpr unsigned Folder = 0040000;

/** Little-endian numbers at offsets that were checked. */
class Bytes {
public:
    explicit Bytes(const Containers::StringView bytes): _bytes{bytes} {}

    std::size_t size() const { return _bytes.size(); }
    bool has(const std::size_t offset, const std::size_t count) const {
        return offset <= size() && count <= size() - offset;
    }
    unsigned byte(const std::size_t offset) const { return static_cast<unsigned char>(_bytes[offset]); }
    unsigned two(const std::size_t offset) const { return byte(offset) | byte(offset + 1) << 8; }
    std::uint32_t four(const std::size_t offset) const { return two(offset) | std::uint32_t(two(offset + 2)) << 16; }
    Containers::StringView text(const std::size_t offset, const std::size_t count) const {
        return Containers::StringView{_bytes.data() + offset, count};
    }

private:
    Containers::StringView _bytes;
};

Containers::String printable(const Containers::StringView name) {
    Containers::String out{name};
    for(char& c: out)
        if(static_cast<unsigned char>(c) < 0x20 || c == 0x7f) c = '?';
    return out;
}

/** A name as systems without regard to case see it. */
std::string folded(const Containers::StringView name) {
    std::string out;
    for(std::int32_t i = 0, size = std::int32_t(name.size()); i < size;) {
        UChar32 c = 0;
        const std::int32_t begin = i;
        U8_NEXT(name.data(), i, size, c);
        if(c < 0) {
            out.append(name.data() + begin, std::size_t(i - begin));
            continue;
        }
        char encoded[U8_MAX_LENGTH];
        std::int32_t length = 0;
        const UChar32 plain = u_foldCase(c, U_FOLD_CASE_DEFAULT);
        U8_APPEND_UNSAFE(encoded, length, plain);
        out.append(encoded, std::size_t(length));
    }
    return out;
}

class Reading {
public:
    Reading(const Containers::StringView bytes, ArchiveDirectory& directory, ArchiveRefusal& refusal)
        : _bytes{bytes}, _directory{directory}, _refusal{refusal} {}

    bool run() { return readEnd() && readEntries() && checkOverlaps(); }

private:
    struct Extent {
        std::size_t begin;
        std::size_t end;
        std::size_t entry;
    };

    bool refuse(const Containers::StringView reason) {
        _refusal.entry = printable(_name);
        _refusal.reason = reason;
        return false;
    }

    bool readEnd() {
        if(_bytes.size() < EndSize) return refuse("is no ZIP archive, or is cut off"_s);
        // A comment of up to 64 KB may follow.
        const std::size_t last = _bytes.size() - EndSize;
        for(std::size_t back = 0; back <= last && back <= 0xffff; ++back) {
            const std::size_t end = last - back;
            if(_bytes.four(end) == EndSignature && _bytes.two(end + 20) == back) return readEnd(end);
        }
        return refuse("is no ZIP archive, or is cut off"_s);
    }

    bool readEnd(const std::size_t end) {
        _count = _bytes.two(end + 10);
        _begin = _bytes.four(end + 16);
        const std::size_t size = _bytes.four(end + 12);
        const bool has64 = end >= Locator64Size && _bytes.four(end - Locator64Size) == Locator64Signature;
        if(has64 || _count == 0xffff || _begin == 0xffffffff || size == 0xffffffff)
            return refuse("is a ZIP64 archive"_s);
        if(_bytes.two(end + 4) != 0 || _bytes.two(end + 6) != 0 || _bytes.two(end + 8) != _count)
            return refuse("is part of an archive in several files"_s);
        if(_count > ArchiveDirectory::MaxEntries) return refuse("has more than 10000 entries"_s);
        if(_begin > end || size != end - _begin) return refuse("is damaged: its directory is not where it should be"_s);
        _end = end;
        return true;
    }

    bool readEntries() {
        std::size_t offset = _begin;
        for(std::size_t i = 0; i != _count; ++i) {
            _name = {};
            if(_end - offset < EntrySize || _bytes.four(offset) != EntrySignature)
                return refuse("is damaged: its directory is cut off"_s);
            const std::size_t nameSize = _bytes.two(offset + 28);
            const std::size_t size = EntrySize + nameSize + _bytes.two(offset + 30) + _bytes.two(offset + 32);
            if(_end - offset < size) return refuse("is damaged: its directory is cut off"_s);
            _name = _bytes.text(offset + EntrySize, nameSize);
            if(!readEntry(offset, i)) return false;
            offset += size;
        }
        _name = {};
        return offset == _end || refuse("is damaged: its directory is longer than its entries"_s);
    }

    bool readEntry(const std::size_t offset, const std::size_t index) {
        if(_bytes.two(offset + 8) & EncryptedFlags) return refuse("is encrypted"_s);
        const unsigned type = _bytes.four(offset + 38) >> 16 & FileTypeMask;
        if(_bytes.two(offset + 4) >> 8 == Unix && type != 0 && type != RegularFile && type != Folder)
            return refuse("is a link or a device"_s);

        ArchiveDirectory::Entry entry;
        entry.packedSize = _bytes.four(offset + 20);
        entry.size = _bytes.four(offset + 24);
        const std::uint32_t local = _bytes.four(offset + 42);
        if(entry.packedSize == 0xffffffff || entry.size == 0xffffffff || local == 0xffffffff)
            return refuse("needs ZIP64"_s);
        if(_bytes.two(offset + 34) != 0) return refuse("lies in another file"_s);
        if(!readName(entry.name) || !readLocal(local, entry.packedSize, index)) return false;
        Containers::arrayAppend(_directory.entries, std::move(entry));
        return true;
    }

    bool readName(Containers::String& name) {
        if(_name.isEmpty()) return refuse("has an entry without a name"_s);
        if(_name.contains('\0')) return refuse("has a zero byte in its name"_s);
        if(_name.contains('\\')) return refuse("has a backslash in its name"_s);
        if(_name.hasPrefix('/')) return refuse("has an absolute path"_s);
        if(_name.size() >= 2 && _name[1] == ':') return refuse("begins with a drive letter"_s);

        std::string plain;
        for(const Containers::StringView part: _name.split('/')) {
            if(part == ".."_s) return refuse("leads out of its folder"_s);
            if(part.isEmpty() || part == "."_s) continue;
            if(!plain.empty()) plain += '/';
            plain.append(part.data(), part.size());
        }
        if(!_names.insert(folded({plain.data(), plain.size()})).second)
            return refuse("has the name of another entry"_s);
        if(!_name.hasSuffix('/')) name = Containers::String{plain.data(), plain.size()};
        return true;
    }

    /** The header before the entry's own bytes says the same, and all lies before the directory. */
    bool readLocal(const std::size_t offset, const std::size_t packedSize, const std::size_t index) {
        if(offset > _begin || _begin - offset < LocalSize || _bytes.four(offset) != LocalSignature)
            return refuse("is damaged: it is not where the directory says"_s);
        const std::size_t nameSize = _bytes.two(offset + 26);
        const std::size_t headerSize = LocalSize + nameSize + _bytes.two(offset + 28);
        if(_begin - offset < headerSize || _begin - offset - headerSize < packedSize)
            return refuse("is damaged: it is cut off"_s);
        if(_bytes.text(offset + LocalSize, nameSize) != _name) return refuse("has two names"_s);
        _extents.push_back({offset, offset + headerSize + packedSize, index});
        return true;
    }

    bool checkOverlaps() {
        std::sort(_extents.begin(), _extents.end(), [](const Extent& a, const Extent& b) {
            return std::pair{a.begin, a.end} < std::pair{b.begin, b.end};
        });
        for(std::size_t i = 1; i < _extents.size(); ++i)
            if(_extents[i].begin < _extents[i - 1].end) {
                _name = _directory.entries[_extents[i].entry].name;
                return refuse("shares bytes with another entry"_s);
            }
        return true;
    }

    Bytes _bytes;
    ArchiveDirectory& _directory;
    ArchiveRefusal& _refusal;
    Containers::StringView _name;
    std::size_t _count = 0;
    std::size_t _begin = 0;
    std::size_t _end = 0;
    std::unordered_set<std::string> _names;
    std::vector<Extent> _extents;
};

}

bool ArchiveDirectory::read(const Containers::StringView bytes, ArchiveDirectory& directory, ArchiveRefusal& refusal) {
    directory.entries = {};
    return Reading{bytes, directory, refusal}.run();
}

}
