#pragma once

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

class FileSystem;
class LocalizationReport;
struct FileError;
struct Progress;

/** How terms are exported. */
struct ExportOptions {
    /** Only report: nothing is written, and no folder made. */
    bool isDryRun = false;

    /** Also a made-up language, of the texts of the default one; see @ref PseudoLocale . */
    bool isPseudo = false;
};

/** Writes the terms of a project as i18next JSON v4: for each language a file for each namespace.

    Exported are the terms that are translatable and have a text, plural forms that only the language itself needs, and what an import
    brought that is no text. They are in the order of the file that is already there; else as the project noted it, see
    @ref OrderNote ; else in the project's order. A language without any text is an empty object. A file whose bytes would be the same
    is not written; if one cannot be written, none is, nor where one that is there already is no catalogue, as with the marks of a merge
    in it: its texts would be lost. An empty one counts as none. Nothing is deleted; the report tells of what stays there and is none of the
    project's: see @ref OtherFiles . A file that is a link, or lies behind one, is written where that leads, and fails the export where
    that is not in the folder. Into a folder one export at a time writes; another one fails. */
struct QUORVANE_API Export {
    ProjectFile& project;
    FileSystem& fileSystem;

    /** Indices into @ref AllLanguages . */
    Containers::ArrayView<const UnsignedInt> languages;

    /** Of which the terms' own texts are. */
    UnsignedInt defaultLanguage;

    ExportOptions options = {};

    /** May be null. Where it is cancelled, nothing is written, and the run fails with an error that has no path. */
    Progress* progress = nullptr;

    /** Files in a folder.
        @param folder   absolute; made where it is missing
        @param report   compares with the files that were there
        @param error    set on failure */
    bool toFolder(Containers::StringView folder, LocalizationReport& report, FileError& error) const;

    /** The same files in a ZIP archive.
        @param path     absolute; the archive, or a folder, in which it is made as "localization.zip". A path that ends with "/" or
            "/." is that of a folder. What else an archive holds stays in it, at
            its place. One that cannot be read as a whole is not replaced, nor is a file that is none. */
    bool toArchive(Containers::StringView path, LocalizationReport& report, FileError& error) const;
};

}
