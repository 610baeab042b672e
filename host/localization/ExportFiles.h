#pragma once

#include <functional>
#include <vector>

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/String.h>

#include "../document/FileSystem.h"
#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

class LocalizationReport;
struct Progress;

/** A file of an export, before it is written. */
struct ExportFile {
    /** Relative, with forward slashes. */
    Containers::String path;

    Containers::String bytes;

    /** Whether the file that is already there has other bytes. */
    bool isChanged = false;

    /** Set where the file that is already there cannot be understood; the path ends with line and column. As its texts are not
        known, it must not be replaced. */
    FileError refusal;
};

/** The file as it is now, empty where there is none.
    @return false where it is there and cannot be read */
using ReadExportFile = std::function<bool(Containers::StringView path, Containers::String& bytes)>;

/** Makes all files of an export in memory, and compares them with those that are already there. Runs on all cores.
    @param root         the project's document
    @param languages    indices into @ref AllLanguages ; those that are not in the table or stand twice are passed over
    @param read         called on this thread alone, for one file after the other
    @param files        by languages in their order, then by namespaces
    @param progress     may be null
    @return false where @p read said so, or @p progress was cancelled */
QUORVANE_API bool makeExportFiles(const rapidjson::Value& root, UnsignedInt defaultLanguage,
    Containers::ArrayView<const UnsignedInt> languages, bool isPseudo, const ReadExportFile& read,
    std::vector<ExportFile>& files, LocalizationReport& report, Progress* progress);

}
