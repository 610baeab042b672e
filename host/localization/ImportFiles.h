#pragma once

#include <vector>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>

#include "Catalogue.h"
#include "FileNotice.h"
#include "LanguageMapping.h"
#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

class FileSystem;
struct Progress;

/** What is to be read of an import. Views must outlive it. */
struct ImportOptions {
    /** Names of folders and files that the table of languages does not have. */
    Containers::ArrayView<const LanguageMapping> map;

    /** Indices into @ref AllLanguages of those that are read; empty for all. */
    Containers::ArrayView<const UnsignedInt> languages;

    /** Languages of the project, which are suggested rather than others; an @ref Import asks its project itself. */
    Containers::ArrayView<const UnsignedInt> known = {};

    /** Whether a translation that comes back as it is, but is stale, is right for today's source text, too: it takes its fingerprint. */
    bool isConfirming = false;
};

/** A file of terms that was read. */
struct ImportedFile {
    /** Index into @ref AllLanguages . */
    UnsignedInt language = 0;

    /** Its plain name; see @ref TermKey::namespaceName() . */
    Containers::String nameSpace;

    /** Relative to the folder or archive. */
    Containers::String path;

    Catalogue catalogue;
};

/** Files of terms that were read together, all or none. */
struct ImportedFiles {
    /** By languages in the order of the table, then by namespaces in byte order. */
    std::vector<ImportedFile> files;

    /** On what was passed over. */
    Containers::Array<FileNotice> notices;

    /** Why nothing is imported: each begins with the file, then line and column where they are known, with ": " between. */
    Containers::Array<Containers::String> refusals;

    /** See @ref TermFiles::isInaccessible . */
    bool isInaccessible = false;

    /** See @ref TermFiles::lacksLanguages ; never where it was said which languages are read. */
    bool lacksLanguages = false;

    /** See @ref TermFiles::hasUnusedMappings . */
    bool hasUnusedMappings = false;
};

/** Reads a folder or an archive; see @ref readTermFiles() . Files are parsed on all cores.
    @param path     absolute
    @param imported must be empty; of no use on failure, but for its refusals
    @param progress may be null
    @return whether all was read; false without refusals where @p progress was cancelled */
QUORVANE_API bool readImportFiles(FileSystem& fileSystem, Containers::StringView path, const ImportOptions& options,
    ImportedFiles& imported, Progress* progress = nullptr);

}
