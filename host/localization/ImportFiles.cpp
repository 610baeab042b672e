#include "ImportFiles.h"

#include <algorithm>
#include <utility>

#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Utility/Format.h>

#include "../document/JsonReader.h"
#include "I18NextReader.h"
#include "Parallel.h"
#include "ReservedNames.h"
#include "TermFiles.h"

namespace QuorvaneEngine {

namespace {

bool contains(const Containers::ArrayView<const UnsignedInt> languages, const UnsignedInt language) {
    return languages.isEmpty() || std::find(languages.begin(), languages.end(), language) != languages.end();
}

}

bool readImportFiles(FileSystem& fileSystem, const Containers::StringView path, const ImportOptions& options,
    ImportedFiles& imported, Progress* const progress) {
    TermFiles found;
    const bool isFound = readTermFiles(fileSystem, path, {options.map, options.known}, found, progress);
    imported.notices = std::move(found.notices);
    imported.refusals = std::move(found.refusals);
    imported.isInaccessible = found.isInaccessible;
    imported.lacksLanguages = found.lacksLanguages && options.languages.isEmpty();
    imported.hasUnusedMappings = found.hasUnusedMappings;
    if(!isFound) return false;

    std::vector<TermFile*> wanted;
    for(TermFile& file: found.files)
        if(contains(options.languages, file.language)) wanted.push_back(&file);
        else file.bytes = {};

    imported.files.resize(wanted.size());
    std::vector<JsonError> errors(wanted.size());
    const bool isDone = forEachInParallel(
        wanted.size(),
        [&](const std::size_t i) {
            ImportedFile& file = imported.files[i];
            file.language = wanted[i]->language;
            file.nameSpace = std::move(wanted[i]->nameSpace);
            file.path = std::move(wanted[i]->relativePath);
            readI18Next(std::move(wanted[i]->bytes), file.catalogue, errors[i]);
            const Containers::StringView reason = ReservedNames::namespaceReason(file.nameSpace);
            if(!reason.isEmpty()) file.catalogue.addNotice({}, reason);
        },
        progress);
    if(!isDone) return false;
    for(std::size_t i = 0; i != wanted.size(); ++i)
        if(const JsonError& error = errors[i]; error.line)
            Containers::arrayAppend(imported.refusals,
                Corrade::Utility::format("{}:{}:{}: {}", wanted[i]->name, error.line, error.column, error.reason));
    return imported.refusals.isEmpty();
}

}
