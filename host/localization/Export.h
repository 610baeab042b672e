#pragma once

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

class FileSystem;
class LocalizationReport;
struct FileError;

/** Writes the terms of a project, a file of i18next JSON v4 for each language.

    Exported are the terms that are translatable and have a text, in the project's order, or in that of the file that is already
    there. A file whose bytes would be the same is not written; if one cannot be written, none is. */
struct QUORVANE_API Export {
    ProjectFile& project;
    FileSystem& fileSystem;

    /** Indices into @ref AllLanguages . */
    Containers::ArrayView<const UnsignedInt> languages;

    /** Of which the terms' own texts are. */
    UnsignedInt defaultLanguage;

    /** Files in a folder.
        @param path     absolute; made where it is missing
        @param report   compares with the files that were there
        @param error    set on failure */
    bool toFolder(Containers::StringView path, LocalizationReport& report, FileError& error) const;

    /** The same files in a ZIP archive.
        @param path     absolute; the archive, or a folder, in which it is made as "localization.zip". A path that ends with "/" is
            that of a folder. Another file than an archive is not replaced. */
    bool toArchive(Containers::StringView path, LocalizationReport& report, FileError& error) const;
};

}
