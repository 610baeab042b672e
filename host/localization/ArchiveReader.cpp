#include "ArchiveReader.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <string>
#include <utility>

#include <zip.h>

#include "../document/LargeText.h"
#include "../document/PrintableText.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

/** How much is unpacked between two looks at the limits. */
constexpr std::size_t ChunkSize = std::size_t{1} << 20;

void append(std::string& out, const std::size_t size, const std::initializer_list<std::uint64_t> numbers) {
    for(const std::uint64_t number: numbers)
        for(std::size_t i = 0; i != size; ++i) out += char(number >> i * 8 & 255);
}

/** A size beyond this one is a lie, or that of an entry that is refused long before; the next number would ask for ZIP64. */
constexpr std::uint64_t MaxSize = 0xfffffffe;

/** One entry as an archive of its own, whose entry "e" has no extra fields: all that the library comes to see was checked before,
    and there are no two opinions on where the bytes lie and how many they are. */
class Unpacking {
public:
    Unpacking(const Containers::StringView archive, const ArchiveDirectory::Entry& entry) {
        zip_error_init(&_error);
        const auto appendEntry = [&](std::string& out) {
            append(out, 2, {20, 0, entry.method, 0, 33});
            append(out, 4, {entry.checksum, entry.packedSize, std::min(entry.size, MaxSize)});
            append(out, 2, {1, 0});
        };
        append(_head, 4, {0x04034b50});
        appendEntry(_head);
        _head += 'e';
        append(_tail, 4, {0x02014b50});
        append(_tail, 2, {20});
        appendEntry(_tail);
        append(_tail, 2, {0, 0, 0});
        append(_tail, 4, {0, 0});
        _tail += 'e';
        const std::size_t directorySize = _tail.size();
        append(_tail, 4, {0x06054b50});
        append(_tail, 2, {0, 0, 1, 1});
        append(_tail, 4, {directorySize, _head.size() + entry.packedSize});
        append(_tail, 2, {0});
        open(archive.slice(entry.offset, entry.offset + entry.packedSize));
    }
    ~Unpacking() {
        if(_file) zip_fclose(_file);
        if(_archive) zip_discard(_archive);
        zip_error_fini(&_error);
    }
    Unpacking(const Unpacking&) = delete;
    Unpacking& operator=(const Unpacking&) = delete;

    /** @return how many bytes came, 0 at the end, -1 where @ref reason() says why none do */
    std::ptrdiff_t read(char* const to, const std::size_t size) {
        return _file ? std::ptrdiff_t(zip_fread(_file, to, size)) : -1;
    }

    Containers::String reason() {
        zip_error_t* const error = _file ? zip_file_get_error(_file) : _archive ? zip_get_error(_archive) : &_error;
        return "is damaged: "_s + Containers::StringView{zip_error_strerror(error)};
    }

private:
    void open(const Containers::StringView packed) {
        // The library takes the bytes as changeable, and does not change them.
        const auto fragment = [](const Containers::StringView bytes) {
            return zip_buffer_fragment_t{reinterpret_cast<zip_uint8_t*>(const_cast<char*>(bytes.data())), bytes.size()};
        };
        // It does not read past a fragment without bytes.
        zip_buffer_fragment_t fragments[3];
        std::size_t count = 0;
        for(const Containers::StringView bytes: {Containers::StringView{_head.data(), _head.size()}, packed,
                Containers::StringView{_tail.data(), _tail.size()}})
            if(!bytes.isEmpty()) fragments[count++] = fragment(bytes);
        zip_source_t* const source = zip_source_buffer_fragment_create(fragments, count, 0, &_error);
        _archive = source ? zip_open_from_source(source, ZIP_RDONLY, &_error) : nullptr;
        if(_archive) _file = zip_fopen_index(_archive, 0, 0);
        else zip_source_free(source);
    }

    std::string _head;
    std::string _tail;
    zip_error_t _error{};
    zip_t* _archive = nullptr;
    zip_file_t* _file = nullptr;
};

}

bool ArchiveReader::open(const Containers::StringView bytes, ArchiveRefusal& refusal) {
    _bytes = bytes;
    _totalSize = 0;
    return ArchiveDirectory::read(bytes, _directory, refusal);
}

bool ArchiveReader::read(const std::size_t index, Containers::String& bytes, ArchiveRefusal& refusal) {
    const ArchiveDirectory::Entry& entry = _directory.entries[index];
    std::size_t counted = 0;
    const auto refuse = [&](const Containers::StringView reason) {
        _totalSize -= counted;
        refusal.entry = printable(entry.name);
        refusal.reason = reason;
        return false;
    };
    if(entry.method != ArchiveDirectory::Stored && entry.method != ArchiveDirectory::Deflated)
        return refuse("is packed in another way than by deflate"_s);
    // Sizes that an archive tells may be lies: what comes out is counted.
    const std::size_t size = std::size_t(std::min<std::uint64_t>(entry.size, MaxFileSize));
    Containers::String read = largeText(size, false);
    Unpacking unpacking{_bytes, entry};
    std::size_t done = 0;
    for(;;) {
        char more = 0;
        const bool isFull = done == size;
        const std::ptrdiff_t count =
            unpacking.read(isFull ? &more : read.data() + done, isFull ? 1 : std::min(ChunkSize, size - done));
        if(count < 0) return refuse(unpacking.reason());
        if(count == 0) break;
        done += std::size_t(count);
        if(done > MaxFileSize) return refuse("is larger than 64 MiB"_s);
        if(isPackedTooWell(entry.packedSize, done)) return refuse("is packed more than 100 times smaller than it is"_s);
        if(done > size) break;
        counted += std::size_t(count);
        if((_totalSize += std::size_t(count)) > MaxTotalSize) return refuse(TotalReason);
    }
    if(done != entry.size) return refuse("is damaged: it has another size than the directory says"_s);
    bytes = std::move(read);
    return true;
}

std::size_t ArchiveReader::countWithin(const Containers::ArrayView<const std::size_t> entries) const {
    std::size_t total = 0;
    for(std::size_t i = 0; i != entries.size(); ++i) {
        total += std::size_t(std::min<std::uint64_t>(_directory.entries[entries[i]].size, MaxFileSize));
        if(total > MaxTotalSize) return i;
    }
    return entries.size();
}

}
