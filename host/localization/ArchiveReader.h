#pragma once

#include <Corrade/Containers/Pointer.h>
#include <Corrade/Containers/String.h>

#include "ArchiveDirectory.h"
#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Reads a ZIP archive that may come from anyone, entry by entry and in memory alone. */
class QUORVANE_API ArchiveReader {
public:
    /** Limits on what comes out, counted in the bytes that really do. */
    static constexpr std::size_t MaxFileSize = std::size_t{64} << 20;
    static constexpr std::size_t MaxTotalSize = std::size_t{512} << 20;
    /** From @ref MinRatioSize bytes on, an entry may be no more than this many times as large as its packed bytes. */
    static constexpr std::size_t MaxRatio = 100;
    static constexpr std::size_t MinRatioSize = 100'000;

    ArchiveReader();
    ~ArchiveReader();
    ArchiveReader(const ArchiveReader&) = delete;
    ArchiveReader& operator=(const ArchiveReader&) = delete;

    /** Opens an archive; see @ref ArchiveDirectory::read() for what is refused.
        @param bytes    must outlive the reader
        @param refusal  set on failure */
    bool open(Containers::StringView bytes, ArchiveRefusal& refusal);

    /** The names of folders are empty. */
    Containers::ArrayView<const ArchiveDirectory::Entry> entries() const { return _directory.entries; }

    /** Reads an entry. Refused are entries that are damaged, packed in a way that is not read, or beyond the limits.
        @param entry    index into @ref entries()
        @param bytes    receives the whole entry
        @param refusal  set on failure */
    bool read(std::size_t entry, Containers::String& bytes, ArchiveRefusal& refusal);

private:
    struct Archive;

    ArchiveDirectory _directory;
    Containers::Pointer<Archive> _archive;
    std::size_t _totalSize = 0;
};

}
