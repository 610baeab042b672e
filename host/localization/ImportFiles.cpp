#include "ImportFiles.h"

#include <utility>

#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Utility/Format.h>

#include "../document/JsonReader.h"
#include "I18NextReader.h"
#include "Parallel.h"
#include "ReservedNames.h"
#include "TermFiles.h"

namespace QuorvaneEngine {

bool readImportFiles(FileSystem& fileSystem, const Containers::StringView path, const ImportOptions& options,
    ImportedFiles& imported, Progress* const progress) {
    TermFiles found;
    const bool isFound =
        readTermFiles(fileSystem, path, {options.map, options.known, options.languages}, found, progress);
    imported.notices = std::move(found.notices);
    imported.refusals = std::move(found.refusals);
    imported.isInaccessible = found.isInaccessible;
    imported.lacksLanguages = found.lacksLanguages && options.languages.isEmpty();
    imported.hasUnusedMappings = found.hasUnusedMappings;
    if(!isFound) return false;

    const std::size_t count = found.files.size();
    imported.files.resize(count);
    std::vector<JsonError> errors(count);
    const bool isDone = forEachInParallel(
        count,
        [&](const std::size_t i) {
            ImportedFile& file = imported.files[i];
            file.language = found.files[i].language;
            file.nameSpace = std::move(found.files[i].nameSpace);
            file.path = std::move(found.files[i].relativePath);
            readI18Next(std::move(found.files[i].bytes), file.catalogue, errors[i]);
            const Containers::StringView reason = ReservedNames::namespaceReason(file.nameSpace);
            if(!reason.isEmpty()) file.catalogue.addNotice({}, reason);
        },
        progress);
    if(!isDone) return false;
    for(std::size_t i = 0; i != count; ++i)
        if(const JsonError& error = errors[i]; error.line)
            Containers::arrayAppend(imported.refusals,
                Corrade::Utility::format("{}:{}:{}: {}", found.files[i].name, error.line, error.column, error.reason));
    return imported.refusals.isEmpty();
}

}
