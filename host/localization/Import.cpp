#include "Import.h"

#include <algorithm>
#include <utility>

#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Containers/Optional.h>
#include <rapidjson/document.h>

#include "DocumentLookup.h"
#include "ImportComparison.h"
#include "LanguageLookup.h"
#include "LocalizationReport.h"
#include "ProjectEdit.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "QuorvaneEditor/QuorvaneEditor.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

struct Import::Data {
    QuorvaneEditor& editor;
    UnsignedInt defaultLanguage;
    ImportOptions options;
    Progress* progress;
    /** Of the project, when the import was made. */
    Containers::Array<UnsignedInt> known = {};
    ImportedFiles imported = {};
    /** The default language first. */
    Containers::Array<UnsignedInt> languages = {};
    Containers::Pointer<ImportComparison> comparison = {};
};

Import::Import(
    QuorvaneEditor& editor, const UnsignedInt defaultLanguage, const ImportOptions& options, Progress* const progress)
    : _data{new Data{editor, defaultLanguage, options, progress}} {
    const rapidjson::Value* const languages = memberOf(&editor.project().document(), "languages"_s);
    if(languages && languages->IsObject())
        for(const auto& member: languages->GetObject())
            if(const Int language = findLanguage({member.name.GetString(), member.name.GetStringLength()});
                language != -1)
                Containers::arrayAppend(_data->known, UnsignedInt(language));
    _data->options.known = _data->known;
}

Import::~Import() = default;

Containers::ArrayView<const UnsignedInt> Import::languages() const { return _data->languages; }

Containers::ArrayView<const Containers::String> Import::refusals() const { return _data->imported.refusals; }

bool Import::isInaccessible() const { return _data->imported.isInaccessible; }

bool Import::lacksLanguages() const { return _data->imported.lacksLanguages; }

bool Import::hasUnusedMappings() const { return _data->imported.hasUnusedMappings; }

bool Import::read(FileSystem& fileSystem, const Containers::StringView path) {
    if(!readImportFiles(fileSystem, path, _data->options, _data->imported, _data->progress)) return false;
    Containers::Array<UnsignedInt>& languages = _data->languages;
    for(const ImportedFile& file: _data->imported.files)
        if(languages.isEmpty() || languages.back() != file.language) Containers::arrayAppend(languages, file.language);
    std::stable_partition(languages.begin(), languages.end(),
        [this](const UnsignedInt language) { return language == _data->defaultLanguage; });
    return true;
}

bool Import::compare(LocalizationReport& report) {
    for(const FileNotice& notice: _data->imported.notices)
        report.add(LocalizationReport::NoLanguage, TermOutcome::Notice, {}, notice.reason, notice.file);
    _data->comparison.emplace(_data->editor.project().document(), _data->defaultLanguage,
        Containers::ArrayView<const ImportedFile>{_data->imported.files.data(), _data->imported.files.size()},
        _data->options.isConfirming);
    if(!_data->comparison->run(report, _data->imported.refusals, _data->progress)) return false;
    _data->comparison->noticeNewLanguages(_data->options.map, report);
    return true;
}

bool Import::isEmpty() const { return _data->comparison->isEmpty(); }

TextDigest Import::replaced() const { return _data->comparison->replaced(); }

Int Import::apply(Containers::Array<UnsignedInt>& languages) {
    ProjectEdit edit{_data->editor};
    // What has come into the project is not needed twice.
    _data->comparison->collect(edit, [this](const UnsignedInt language) {
        for(ImportedFile& file: _data->imported.files)
            if(file.language == language) file.catalogue = Catalogue{};
    });
    const Int group = edit.push();
    for(const UnsignedInt language: _data->languages)
        if(std::find(languages.begin(), languages.end(), language) == languages.end())
            Containers::arrayAppend(languages, language);
    return group;
}

}
