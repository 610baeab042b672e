#include "Import.h"

#include <initializer_list>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Utility/Format.h>
#include <rapidjson/document.h>

#include "../document/JsonReader.h"
#include "Catalogue.h"
#include "Fingerprint.h"
#include "I18NextReader.h"
#include "JsonPath.h"
#include "LocalizationReport.h"
#include "ProjectEdit.h"
#include "ProjectTerms.h"
#include "ProjectTranslations.h"
#include "QuorvaneEditor/AllLanguages.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "QuorvaneEditor/QuorvaneEditor.h"
#include "QuorvaneEditor/ValueAccess.h"
#include "TermConflicts.h"
#include "TermFiles.h"
#include "TermSource.h"
#include "TextArena.h"
#include "Utils/StrHash.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;
using Corrade::Utility::format;

namespace {

struct LanguageTexts {
    UnsignedInt language;
    Catalogue catalogue;
};

/** What stands in the place of a text. */
Containers::StringView reasonOf(const rapidjson::Value& value) {
    return value.IsNumber() ? "is a number and no text"_s
        : value.IsBool()    ? "is true or false and no text"_s
        : value.IsArray()   ? "is an empty array"_s
                            : "is an empty object"_s;
}

/** Sets a text member of an object, in its place where there is one. */
void setMember(rapidjson::Value& object, const char* const name, rapidjson::Value&& text,
    rapidjson::MemoryPoolAllocator<>& memory) {
    for(rapidjson::SizeType i = 0; i != object.MemberCount(); ++i)
        if(rapidjson::Value::Member& member = object.MemberBegin()[i]; member.name == name) {
            member.value = std::move(text);
            return;
        }
    object.AddMember(rapidjson::StringRef(name), std::move(text), memory);
}

/** Compares the texts of all files with the project and collects what is to be changed. */
class Comparison {
public:
    Comparison(QuorvaneEditor& editor, ProjectEdit& edit, LocalizationReport& report)
        : _project{editor.project()}, _edit{edit}, _report{report}, _terms{_project} {}

    void compareSources(const LanguageTexts& texts) {
        for(const CatalogueEntry& entry: texts.catalogue.entries()) {
            if(entry.value) continue;
            const Int index = _terms.find(0, entry.key);
            if(entry.text.isEmpty()) _report.add(texts.language, TermOutcome::Empty, entry.key);
            else if(index == -1) makeTerm(texts.language, entry);
            else changeSource(texts.language, _terms.terms()[std::size_t(index)], entry);
        }
    }

    void compareTranslations(const LanguageTexts& texts) {
        const Containers::StringView code = AllLanguages[texts.language].code;
        const ProjectTranslations translations{_project.document(), _terms, code};
        for(const CatalogueEntry& entry: texts.catalogue.entries()) {
            if(entry.value) continue;
            if(entry.text.isEmpty()) {
                _report.add(texts.language, TermOutcome::Empty, entry.key);
                continue;
            }
            const Int index = _terms.find(0, entry.key);
            const auto made = index == -1 ? _made.find(entry.key) : _made.end();
            const Int form = index == -1 && made == _made.end() ? translations.findOther(projectKey(entry.key)) : -1;
            if(form != -1) {
                const ProjectTranslations::Other& other = translations.others()[std::size_t(form)];
                translate(texts.language, other.translation, other.key, {}, entry.text);
                continue;
            }
            if(index == -1 && made == _made.end()) {
                _report.add(texts.language, TermOutcome::Skipped, entry.key, "no term has this key"_s);
                continue;
            }
            if(index == -1) {
                translate(texts.language, {}, projectKey(entry.key), made->second, entry.text);
                continue;
            }
            const ProjectTerm& term = _terms.terms()[std::size_t(index)];
            if(term.isTranslatable)
                translate(texts.language, translations[std::size_t(index)], term.key, sourceOf(term), entry.text);
            else _report.add(texts.language, TermOutcome::Skipped, term.key, "is not translatable"_s);
        }
    }

private:
    void makeTerm(const UnsignedInt language, const CatalogueEntry& entry) {
        if(!_tree) {
            _tree.emplace();
            Int other = -1;
            for(std::size_t i = 0; i != _terms.terms().size(); ++i)
                if(_terms.terms()[i].nameSpace == 0) _tree->insert(_terms.terms()[i].fileKey, Int(i), other);
        }
        Int other = -1;
        const TermConflict conflict = _tree->insert(entry.key, Int(_terms.terms().size()), other);
        if(conflict != TermConflict::None) {
            const bool isOld = other >= 0 && std::size_t(other) < _terms.terms().size();
            _report.add(language, TermOutcome::Skipped, entry.key,
                describe(conflict, isOld ? _terms.terms()[std::size_t(other)].key : "a new term"_s));
            return;
        }
        const Containers::StringView key = projectKey(entry.key);
        rapidjson::Value term{rapidjson::kObjectType};
        term.AddMember("sourceText", _edit.text(TermSource::stringsPath(key)), _edit.allocator());
        term.AddMember("translatable", rapidjson::Value{true}, _edit.allocator());
        _edit.set({"localization"_s, "terms"_s, key}, std::move(term));
        _edit.setText({"localization"_s, "strings"_s, key}, entry.text);
        _made.emplace(entry.key, entry.text);
        _report.add(language, TermOutcome::Added, entry.key);
    }

    void changeSource(const UnsignedInt language, const ProjectTerm& term, const CatalogueEntry& entry) {
        const auto skip = [&](const Containers::StringView reason) {
            _report.add(language, TermOutcome::Skipped, term.key, reason);
        };
        if(!term.isTranslatable) return skip("is not translatable"_s);
        if(!term.source.data())
            return skip(term.sourceText.isEmpty() ? Containers::String{"has no source"_s}
                                                  : format("its source {} is gone", term.sourceText));
        const auto [place, isNew] = _sources.emplace(TermSource::path(term.sourceText), entry.text);
        if(!isNew && place->second != entry.text)
            return skip(format("shares its source {} with another term, which has another text", term.sourceText));
        if(term.source == entry.text) {
            _report.add(language, TermOutcome::Unchanged, term.key);
            return;
        }
        if(isNew) _edit.replace(place->first, _edit.text(entry.text));
        _report.add(language, TermOutcome::Changed, term.key);
    }

    /** The text of a term in the default language, as it will be. */
    Containers::StringView sourceOf(const ProjectTerm& term) const {
        if(_sources.empty() || !term.source.data()) return term.source;
        const auto found = _sources.find(TermSource::path(term.sourceText));
        return found == _sources.end() ? term.source : Containers::StringView{found->second};
    }

    void translate(const UnsignedInt language, const ProjectTranslation& translation, const Containers::StringView key,
        const Containers::StringView source, const Containers::StringView text) {
        const Containers::StringView before = translation.text();
        if(before == text) {
            _report.add(language, TermOutcome::Unchanged, key);
            return;
        }
        const rapidjson::Value* const existing = translation.value;
        rapidjson::Value entry{rapidjson::kObjectType};
        if(existing && existing->IsObject()) entry.CopyFrom(*existing, _edit.allocator());
        setMember(entry, "text", _edit.text(text), _edit.allocator());
        if(source.data()) setMember(entry, "source", _edit.text(fingerprint(source)), _edit.allocator());
        else entry.RemoveMember("source");
        _edit.set({"localization"_s, "translations"_s, AllLanguages[language].code, key}, std::move(entry));
        _report.add(language, before.isEmpty() ? TermOutcome::Added : TermOutcome::Changed, key);
    }

    /** The key that a new term has in the project. */
    Containers::StringView projectKey(const Containers::StringView fileKey) {
        return _terms.projectKey(0, fileKey, _memory);
    }

    ProjectFile& _project;
    ProjectEdit& _edit;
    LocalizationReport& _report;
    ProjectTerms _terms;
    TextArena _memory;
    /** All keys as files nest them; only asked where there are new ones. */
    Containers::Pointer<TermTree> _tree;
    /** New terms with their texts. */
    std::unordered_map<Containers::String, Containers::StringView, StrHash, StrEq> _made;
    /** Texts that the file of the default language has, by the paths of their sources. */
    std::unordered_map<Containers::String, Containers::String, StrHash, StrEq> _sources;
};

}

struct Import::Data {
    Data(QuorvaneEditor& editor, const UnsignedInt defaultLanguage)
        : editor{editor}, defaultLanguage{defaultLanguage}, edit{editor} {}

    bool refuse(Containers::String&& reason) {
        Containers::arrayAppend(refusals, std::move(reason));
        return false;
    }

    /** Containers that texts are put into are objects, where they are there. */
    bool checkContainers() {
        checkContainer({"languages"_s});
        if(!checkContainer({"localization"_s})) return false;
        checkContainer({"localization"_s, "terms"_s});
        checkContainer({"localization"_s, "strings"_s});
        if(checkContainer({"localization"_s, "translations"_s}))
            for(const LanguageTexts& one: texts)
                checkContainer({"localization"_s, "translations"_s, AllLanguages[one.language].code});
        return refusals.isEmpty();
    }

    bool checkContainer(const std::initializer_list<Containers::StringView> names) {
        const Containers::String path = jsonPath(names);
        const rapidjson::Value* const value = editor.project().getValue(path, false);
        return !value || value->IsObject() || refuse(format("the project's {}: is no object", path));
    }

    void addLanguages() {
        const rapidjson::Value* const known = editor.project().root()["languages"_s].value();
        if(!known || known->ObjectEmpty()) {
            rapidjson::Value marked{rapidjson::kObjectType};
            marked.AddMember("isDefault", rapidjson::Value{true}, edit.allocator());
            edit.set({"languages"_s, AllLanguages[defaultLanguage].code}, std::move(marked));
        }
        for(const LanguageTexts& one: texts) {
            const Containers::StringView code = AllLanguages[one.language].code;
            const bool isKnown = known && !known->ObjectEmpty()
                ? editor.project().root()["languages"_s].member(code).existsInProject()
                : one.language == defaultLanguage;
            if(!isKnown) edit.set({"languages"_s, code}, rapidjson::Value{rapidjson::kObjectType});
        }
    }

    QuorvaneEditor& editor;
    UnsignedInt defaultLanguage;
    ProjectEdit edit;
    /** The default language first. */
    std::vector<LanguageTexts> texts;
    Containers::Array<Containers::String> passedOver;
    Containers::Array<Containers::String> refusals;
};

Import::Import(QuorvaneEditor& editor, const UnsignedInt defaultLanguage)
    : _data{Corrade::InPlaceInit, editor, defaultLanguage} {}

Import::~Import() = default;

Containers::ArrayView<const Containers::String> Import::refusals() const { return _data->refusals; }

bool Import::read(FileSystem& fileSystem, const Containers::StringView path) {
    Containers::Array<TermFile> files;
    if(!readTermFiles(fileSystem, path, files, _data->passedOver, _data->refusals)) return false;
    for(TermFile& file: files) {
        LanguageTexts one{file.language, {}};
        JsonError error;
        if(!readI18Next(std::move(file.bytes), one.catalogue, error)) {
            _data->refuse(format("{}:{}:{}: {}", file.name, error.line, error.column, error.reason));
            continue;
        }
        const auto place = one.language == _data->defaultLanguage ? _data->texts.begin() : _data->texts.end();
        _data->texts.insert(place, std::move(one));
    }
    return _data->refusals.isEmpty();
}

bool Import::compare(LocalizationReport& report) {
    if(!_data->checkContainers()) return false;
    for(const Containers::String& reason: _data->passedOver)
        report.add(LocalizationReport::NoLanguage, TermOutcome::Skipped, {}, reason);

    _data->addLanguages();
    Comparison comparison{_data->editor, _data->edit, report};
    for(const LanguageTexts& texts: _data->texts) {
        report.addLanguage(texts.language);
        if(texts.language == _data->defaultLanguage) comparison.compareSources(texts);
        else comparison.compareTranslations(texts);
        for(const CatalogueEntry& entry: texts.catalogue.entries())
            if(entry.value) report.add(texts.language, TermOutcome::Skipped, entry.key, reasonOf(*entry.value));
        for(const CatalogueNotice& notice: texts.catalogue.notices())
            report.add(texts.language, TermOutcome::Notice, notice.key, notice.reason);
    }
    return true;
}

Int Import::apply(Containers::Array<UnsignedInt>& languages) {
    const Int group = _data->edit.push();
    for(const LanguageTexts& one: _data->texts) {
        bool isKnown = false;
        for(const UnsignedInt language: languages) isKnown = isKnown || language == one.language;
        if(!isKnown) Containers::arrayAppend(languages, one.language);
    }
    return group;
}

}
