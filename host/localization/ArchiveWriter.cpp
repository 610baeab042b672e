#include "ArchiveWriter.h"

#include <vector>

#include <Corrade/Utility/Format.h>

#include <zip.h>

#include "ArchiveReader.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

/** 1980-01-01, the first date that the format has. */
constexpr zip_uint16_t FirstDate = (1 << 5) | 1;
constexpr zip_uint32_t Permissions = 0100644u << 16;
constexpr zip_uint32_t Level = 6;

bool add(zip_t* const archive, const StagedFile& file, const bool isStored) {
    zip_source_t* const source = zip_source_buffer(archive, file.bytes.data(), file.bytes.size(), 0);
    if(!source) return false;
    const zip_int64_t index = zip_file_add(archive, file.path.data(), source, ZIP_FL_ENC_UTF_8);
    if(index < 0) {
        zip_source_free(source);
        return false;
    }
    const zip_uint64_t entry = zip_uint64_t(index);
    return zip_file_set_dostime(archive, entry, 0, FirstDate, 0) == 0 &&
        zip_file_set_external_attributes(archive, entry, 0, ZIP_OPSYS_UNIX, Permissions) == 0 &&
        zip_set_file_compression(archive, entry, isStored ? ZIP_CM_STORE : ZIP_CM_DEFLATE, Level) == 0;
}

bool readBack(zip_source_t* const source, Containers::String& bytes) {
    zip_stat_t status;
    if(zip_source_stat(source, &status) != 0 || zip_source_open(source) != 0) return false;
    bytes = Containers::String{Corrade::NoInit, std::size_t(status.size)};
    const zip_int64_t size = zip_source_read(source, bytes.data(), status.size);
    zip_source_close(source);
    return size >= 0 && zip_uint64_t(size) == status.size;
}

bool make(const Containers::ArrayView<const StagedFile> files, const std::vector<bool>& isStored,
    Containers::String& bytes, Containers::String& reason) {
    zip_error_t error;
    zip_error_init(&error);
    const auto fail = [&](zip_error_t& why) {
        reason = Containers::String{zip_error_strerror(&why)};
        zip_error_fini(&error);
        return false;
    };

    zip_source_t* const source = zip_source_buffer_create(nullptr, 0, 0, &error);
    if(!source) return fail(error);
    // Closing the archive would free what it was written into.
    zip_source_keep(source);
    zip_t* const archive = zip_open_from_source(source, ZIP_TRUNCATE, &error);
    if(!archive) {
        zip_source_free(source);
        zip_source_free(source);
        return fail(error);
    }
    bool isDone = true;
    for(std::size_t i = 0; i != files.size(); ++i) isDone = isDone && add(archive, files[i], isStored[i]);
    if(!isDone || zip_close(archive) != 0) {
        fail(*zip_get_error(archive));
        zip_discard(archive);
        zip_source_free(source);
        return false;
    }
    isDone = readBack(source, bytes);
    if(!isDone) reason = Containers::String{zip_error_strerror(zip_source_error(source))};
    zip_source_free(source);
    zip_error_fini(&error);
    return isDone;
}

}

bool writeArchive(
    const Containers::ArrayView<const StagedFile> files, Containers::String& bytes, Containers::String& reason) {
    if(files.isEmpty()) {
        reason = "there is nothing to put into the archive"_s;
        return false;
    }
    std::vector<bool> isStored(files.size());
    if(!make(files, isStored, bytes, reason)) return false;

    ArchiveDirectory directory;
    ArchiveRefusal refusal;
    if(!ArchiveDirectory::read(bytes, directory, refusal)) {
        reason = Corrade::Utility::format("{}: {}", refusal.entry, refusal.reason);
        return false;
    }
    bool isAgain = false;
    for(std::size_t i = 0; i != files.size(); ++i) {
        isStored[i] = ArchiveReader::isPackedTooWell(directory.entries[i].packedSize, files[i].bytes.size());
        isAgain = isAgain || isStored[i];
    }
    return !isAgain || make(files, isStored, bytes, reason);
}

}
