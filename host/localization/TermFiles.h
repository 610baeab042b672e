#pragma once

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

class FileSystem;

/** A file of terms, as it was found. */
struct TermFile {
    /** For people: the path, for one in an archive that of the archive, "/" and the entry's name. */
    Containers::String name;

    /** Index into @ref AllLanguages . */
    UnsignedInt language;

    Containers::String bytes;
};

/** Finds and reads the files of terms in a folder or in a ZIP archive: `<code>/<namespace>.json` and `<code>.json`; in an archive
    one folder may lie around them.

    Refused are files that are larger than @ref ArchiveReader::MaxFileSize , or all of them than @ref ArchiveReader::MaxTotalSize ,
    cannot be read, lead out of the folder by a link, or hold the texts of a language a second time; and what holds no such file.
    @param path         absolute
    @param files        receives the files, by languages in the order of the table
    @param passedOver   receives a sentence for every file that is not one of terms but could have been meant so
    @param refusals     receives a sentence for everything that is refused, beginning with its name
    @return whether nothing was refused */
QUORVANE_API bool readTermFiles(FileSystem& fileSystem, Containers::StringView path, Containers::Array<TermFile>& files,
    Containers::Array<Containers::String>& passedOver, Containers::Array<Containers::String>& refusals);

}
