#include <set>
#include <string>
#include <utility>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/GrowableArray.h>

#include "ArchiveName.h"
#include "ArchiveReader.h"
#include "ArchiveWriter.h"
#include "Fuzzer.h"
#include "JsonReader.h"

namespace QuorvaneEngine::Fuzz {

namespace {

void requireRefusal(const ArchiveRefusal& refusal) {
    require(!refusal.reason.isEmpty(), "a refusal has a reason");
    require(JsonReader::isUtf8(refusal.entry) && JsonReader::isUtf8(refusal.reason), "a refusal is text");
    for(const char c: refusal.entry)
        require(static_cast<unsigned char>(c) >= 0x20 && c != 0x7f, "a refusal has no control characters");
}

void checkEntries(const Containers::StringView bytes, const ArchiveReader& archive) {
    std::set<std::string> names;
    std::set<std::pair<std::size_t, std::size_t>> places;
    std::size_t total = 0;
    require(archive.entries().size() <= ArchiveDirectory::MaxEntries, "there are not too many entries");
    for(const ArchiveDirectory::Entry& entry: archive.entries()) {
        require(entry.offset <= bytes.size() && entry.packedSize <= bytes.size() - entry.offset,
            "an entry lies in the archive");
        total += entry.packedSize;
        if(entry.name.isEmpty()) continue;
        require(JsonReader::isUtf8(entry.name), "names are UTF-8");
        require(ArchiveName::fault(entry.name).isEmpty(), "names stay in their folder");
        require(ArchiveName::plain(entry.name) == entry.name, "names are plain");
        require(names.insert(ArchiveName::folded(entry.name)).second, "names differ");
    }
    require(total <= bytes.size(), "entries share no bytes");
}

}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* const data, const std::size_t size) {
    using namespace QuorvaneEngine;
    using namespace QuorvaneEngine::Fuzz;
    const Containers::StringView bytes{reinterpret_cast<const char*>(data), size};
    ArchiveReader archive;
    ArchiveRefusal refusal;
    if(!archive.open(bytes, refusal)) {
        requireRefusal(refusal);
        require(archive.entries().isEmpty(), "a refused archive has no entries");
        return 0;
    }
    checkEntries(bytes, archive);

    Containers::Array<StagedFile> files;
    for(std::size_t i = 0; i != archive.entries().size(); ++i) {
        const ArchiveDirectory::Entry& entry = archive.entries()[i];
        Containers::String content, again;
        if(!archive.read(i, content, refusal)) {
            requireRefusal(refusal);
            continue;
        }
        require(content.size() == entry.size, "an entry has the size that the directory says");
        require(!ArchiveReader::isPackedTooWell(entry.packedSize, content.size()), "no bomb is read");
        require(archive.read(i, again, refusal) && again == content, "an entry is read twice as the same");
        if(!entry.name.isEmpty()) Containers::arrayAppend(files, StagedFile{entry.name, std::move(content)});
    }

    Containers::String written, reason;
    if(files.isEmpty()) return 0;
    require(writeArchive(files, written, reason), "what was read can be written");
    ArchiveReader own;
    require(own.open(written, refusal), "what was written is read");
    require(own.entries().size() == files.size(), "what was written has all entries");
    for(std::size_t i = 0; i != files.size(); ++i) {
        Containers::String content;
        require(own.read(i, content, refusal) && content == files[i].bytes, "what was written is read as the same");
        require(own.entries()[i].name == files[i].path, "what was written has the same names");
    }
    return 0;
}
