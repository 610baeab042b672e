#pragma once

#include <vector>

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/String.h>

#include "../document/FileSystem.h"
#include "ExportFiles.h"
#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

class LocalizationReport;

/** Tells of what an export leaves as it is beside the files that it writes, and what an import would read, or nobody expects there. */
class QUORVANE_API OtherFiles {
public:
    /** @param root     the project's document
        @param files    of the export; both must outlive this object */
    explicit OtherFiles(const rapidjson::Value& root, const std::vector<ExportFile>& files)
        : _root{root}, _files{files} {}

    /** Adds a notice for each file of terms in a folder, of a language or a namespace that the project does not have, or at another
        place than the export has it.
        @param folder   absolute; need not be there */
    void notice(FileSystem& fileSystem, Containers::StringView folder, LocalizationReport& report) const;

    /** Adds the same for the entries of an archive, and one notice for what else stays in it.
        @param entries  names; empty ones are passed over */
    void notice(Containers::ArrayView<const Containers::String> entries, LocalizationReport& report) const;

private:
    bool isWritten(Containers::StringView path) const;
    bool hasLanguage(Containers::StringView code) const;
    bool noticeFile(Containers::StringView path, bool isEnclosed, LocalizationReport& report) const;

    const rapidjson::Value& _root;
    const std::vector<ExportFile>& _files;
};

}
