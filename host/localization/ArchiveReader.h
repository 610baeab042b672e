#pragma once

#include <atomic>

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
    /** Above @ref MinRatioSize bytes, an entry may be no more than this many times as large as its packed bytes. */
    static constexpr std::size_t MaxRatio = 100;
    static constexpr std::size_t MinRatioSize = 100'000;

    /** Whether so many bytes come of so few that it takes a bomb. */
    static constexpr bool isPackedTooWell(const std::size_t packedSize, const std::size_t size) {
        return size > MinRatioSize && size > MaxRatio * packedSize;
    }

    /** Opens an archive; see @ref ArchiveDirectory::read() for what is refused.
        @param bytes    must outlive the reader
        @param refusal  set on failure */
    bool open(Containers::StringView bytes, ArchiveRefusal& refusal);

    /** The names of folders are empty. */
    Containers::ArrayView<const ArchiveDirectory::Entry> entries() const { return _directory.entries; }

    /** Reads an entry. Refused are entries that are damaged, packed in another way than by deflate, or beyond the limits. Several
        threads may read at once; which entry is one too many for @ref MaxTotalSize then depends on who comes first, unless
        @ref countWithin() says that none is.
        @param entry    index into @ref entries()
        @param bytes    receives the whole entry
        @param refusal  set on failure */
    bool read(std::size_t entry, Containers::String& bytes, ArchiveRefusal& refusal);

    /** How many of some entries, from the first on, are not too many for @ref MaxTotalSize by the sizes that the archive tells. An
        entry whose size is a lie is refused by itself, and takes no more of the limit than it said.
        @param entries  indices into @ref entries() */
    std::size_t countWithin(Containers::ArrayView<const std::size_t> entries) const;

    static constexpr const char* TotalReason = "makes more than 512 MiB with those before it";

private:
    Containers::StringView _bytes;
    ArchiveDirectory _directory;
    std::atomic<std::size_t> _totalSize = 0;
};

}
