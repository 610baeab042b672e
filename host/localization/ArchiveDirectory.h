#pragma once

#include <cstdint>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Why an archive is not read. */
struct ArchiveRefusal {
    /** Name of the entry, as @ref printable() shows it; empty for the archive as a whole. */
    Containers::String entry;

    /** The end of a sentence: no capital letter, no full stop. */
    Containers::String reason;
};

/** What a ZIP archive says about itself, checked before anything of it is believed (PKWARE's APPNOTE.TXT 6.3.10). */
struct QUORVANE_API ArchiveDirectory {
    static constexpr std::size_t MaxEntries = 10'000;

    struct Entry {
        /** In UTF-8, with forward slashes, relative, without parts that are empty, "." or ".."; empty for a folder. Names differ from
            each other even where neither cases nor compositions of characters are told apart. */
        Containers::String name;

        /** Where the packed bytes are in the archive. */
        std::size_t offset;
        std::size_t packedSize;

        /** In bytes, as the archive has it: it may be a lie. */
        std::uint64_t size;

        /** CRC-32 of the bytes, as the archive has it. */
        std::uint32_t checksum;

        /** How it is packed: @ref Stored , @ref Deflated , or another number of the format's. */
        UnsignedInt method;
    };

    static constexpr UnsignedInt Stored = 0;
    static constexpr UnsignedInt Deflated = 8;

    /** Reads and checks. What lies before the first entry is passed over, as are zeros behind the end and extra fields that are not
        known.

        Refused are archives that are damaged, in several parts, larger than their entries account for, followed by anything,
        with two ends or with too many entries, and such with an entry that is encrypted or a link, has a name that leads out of the
        folder, that is not portable or that another entry has, shares bytes with another one or with the directory, or has a header
        or ZIP64 sizes that contradict the directory.
        @param bytes    the whole archive
        @param refusal  set on failure */
    static bool read(Containers::StringView bytes, ArchiveDirectory& directory, ArchiveRefusal& refusal);

    /** In the order of the archive's directory. */
    Containers::Array<Entry> entries;
};

}
