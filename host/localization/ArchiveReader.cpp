#include "ArchiveReader.h"

#include <string>

#include <zip.h>

namespace QuorvaneEngine {

using namespace Containers::Literals;

struct ArchiveReader::Archive {
    explicit Archive(zip_t* archive): archive{archive} {}
    ~Archive() { zip_discard(archive); }
    Archive(const Archive&) = delete;
    Archive& operator=(const Archive&) = delete;

    zip_t* archive;
};

namespace {

bool refuse(ArchiveRefusal& refusal, const Containers::StringView entry, const Containers::StringView reason) {
    refusal.entry = entry;
    refusal.reason = reason;
    return false;
}

struct File {
    explicit File(zip_file_t* file): file{file} {}
    ~File() {
        if(file) zip_fclose(file);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    zip_file_t* file;
};

Containers::String damaged(zip_error_t& error) {
    return "is damaged: "_s + Containers::StringView{zip_error_strerror(&error)};
}

}

ArchiveReader::ArchiveReader() = default;
ArchiveReader::~ArchiveReader() = default;

bool ArchiveReader::open(const Containers::StringView bytes, ArchiveRefusal& refusal) {
    if(!ArchiveDirectory::read(bytes, _directory, refusal)) return false;
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* const source = zip_source_buffer_create(bytes.data(), bytes.size(), 0, &error);
    zip_t* const archive = source ? zip_open_from_source(source, ZIP_RDONLY, &error) : nullptr;
    if(!archive) {
        zip_source_free(source);
        refuse(refusal, {}, damaged(error));
        zip_error_fini(&error);
        return false;
    }
    zip_error_fini(&error);
    _archive = Containers::pointer<Archive>(archive);
    return zip_get_num_entries(archive, 0) == zip_int64_t(_directory.entries.size()) ||
        refuse(refusal, {}, "is damaged: its directory is ambiguous"_s);
}

bool ArchiveReader::read(const std::size_t index, Containers::String& bytes, ArchiveRefusal& refusal) {
    const ArchiveDirectory::Entry& entry = _directory.entries[index];
    const File file{zip_fopen_index(_archive->archive, index, 0)};
    if(!file.file) return refuse(refusal, entry.name, damaged(*zip_get_error(_archive->archive)));

    // Sizes that an archive tells may be lies: what comes out is counted.
    std::string read;
    char chunk[65536];
    for(;;) {
        const zip_int64_t size = zip_fread(file.file, chunk, sizeof(chunk));
        if(size < 0) return refuse(refusal, entry.name, damaged(*zip_file_get_error(file.file)));
        if(size == 0) break;
        read.append(chunk, std::size_t(size));
        if(read.size() > MaxFileSize) return refuse(refusal, entry.name, "is larger than 64 MiB"_s);
        if(_totalSize + read.size() > MaxTotalSize)
            return refuse(refusal, entry.name, "makes more than 512 MiB with those before it"_s);
        if(read.size() > MinRatioSize && read.size() / MaxRatio > entry.packedSize)
            return refuse(refusal, entry.name, "is packed more than 100 times smaller than it is"_s);
    }
    if(read.size() != entry.size)
        return refuse(refusal, entry.name, "is damaged: it has another size than the directory says"_s);
    _totalSize += read.size();
    bytes = Containers::String{read.data(), read.size()};
    return true;
}

}
