#pragma once

#include <cstdint>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Why an archive is not read. */
struct ArchiveRefusal {
    /** Name of the entry, with "?" in place of control characters; empty for the archive as a whole. */
    Containers::String entry;

    /** The end of a sentence: no capital letter, no full stop. */
    Containers::String reason;
};

/** What a ZIP archive says about itself, checked before anything of it is believed (PKWARE's APPNOTE.TXT 6.3.10, without ZIP64,
    which no archive within the limits needs). */
struct QUORVANE_API ArchiveDirectory {
    static constexpr std::size_t MaxEntries = 10'000;

    struct Entry {
        /** With forward slashes, relative, without parts that are empty, "." or ".."; empty for a folder. Names differ from each other
            even without regard to case. */
        Containers::String name;

        /** In bytes, as the directory has it, true of no more than what lies in the archive. */
        std::uint32_t packedSize;
        /** In bytes, as the directory has it: it may be a lie. */
        std::uint32_t size;
    };

    /** Reads and checks. Refused are archives that are damaged, in several parts, larger than their entries account for, or with too
        many entries, and such with an entry that is encrypted or a link, has a name that leads out of the folder, that is not
        portable or that another entry has, or shares bytes with another one.
        @param bytes    the whole archive
        @param refusal  set on failure */
    static bool read(Containers::StringView bytes, ArchiveDirectory& directory, ArchiveRefusal& refusal);

    /** In the order of the archive's directory. */
    Containers::Array<Entry> entries;
};

}
