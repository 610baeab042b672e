#pragma once

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/String.h>

#include "FileNotice.h"
#include "LanguageMapping.h"
#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

class FileSystem;
struct Progress;

/** A file of terms, as it was found. */
struct TermFile {
    /** For people: the path, for one in an archive that of the archive, "/" and the entry's name. */
    Containers::String name;

    /** In the folder or archive, with forward slashes, as it is there. */
    Containers::String relativePath;

    /** Index into @ref AllLanguages . */
    UnsignedInt language;

    /** Its plain name: see @ref TermKey::namespaceName() . */
    Containers::String nameSpace;

    Containers::String bytes;
};

/** How files of terms are found. Views must outlive it. */
struct TermFileOptions {
    /** Codes that stand for others. */
    Containers::ArrayView<const LanguageMapping> map;

    /** Languages that the project has, indices into @ref AllLanguages : they are suggested rather than others. */
    Containers::ArrayView<const UnsignedInt> known;

    /** Indices into @ref AllLanguages of those whose files are read; empty for all. Those of others are only known to be there,
        whatever is wrong with them. */
    Containers::ArrayView<const UnsignedInt> languages = {};
};

/** What a folder or an archive holds. */
struct TermFiles {
    /** By languages in the order of the table, then by namespaces in byte order; none where all that is there is of languages that
        nobody asked for. */
    Containers::Array<TermFile> files;

    /** One for every code that is not known, with the nearest one that is, and one for files that lie deeper than right in a folder
        of a language: each names the first file. One without a file for every mapping of a code that no file has. */
    Containers::Array<FileNotice> notices;

    /** A sentence for everything that is refused: it begins with @ref TermFile::name , or with the path of all. */
    Containers::Array<Containers::String> refusals;

    /** Whether the system does not let read what is refused. */
    bool isInaccessible = false;

    /** Whether files were passed over whose code no language has, but one has a code much like it. */
    bool lacksLanguages = false;

    /** Whether there is a mapping of a code that no file has. */
    bool hasUnusedMappings = false;
};

/** Finds and reads the files of terms in a folder or in a ZIP archive: `<code>/<namespace>.json` and `<code>.json`, both side by
    side if need be; one folder may lie around them, on the disk where it is the only one and has nothing of them beside it.

    Refused are more than @ref ArchiveDirectory::MaxEntries files; files that are larger than @ref ArchiveReader::MaxFileSize , or all
    of them than @ref ArchiveReader::MaxTotalSize , cannot be read, lead out of the folder by a link, or hold a namespace of a language a second time; what holds no such file; the
    folder of one language, and that of a project's own translations; and a folder in which an export was cut short. A code that is not known is no reason to refuse: its files are passed over, with a
    notice that names the nearest one that is. So are files that lie deeper in a folder of a language.
    @param path     absolute
    @param found    must be empty
    @param progress may be null; where it is cancelled, nothing is read any more and nothing refused
    @return whether nothing was refused or cancelled */
QUORVANE_API bool readTermFiles(FileSystem& fileSystem, Containers::StringView path, const TermFileOptions& options,
    TermFiles& found, const Progress* progress = nullptr);

}
