#include "ProjectChecks.h"

#include <vector>

#include <Corrade/Utility/Format.h>
#include <rapidjson/document.h>

#include "../document/PrintableText.h"
#include "../document/ProjectStorage.h"
#include "DocumentLookup.h"
#include "JsonPath.h"
#include "LanguageLookup.h"
#include "ProjectTypes.h"
#include "TermConflicts.h"
#include "TextComparison.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;
using Corrade::Utility::format;

namespace {

using Names = std::vector<Containers::StringView>;

Containers::StringView viewOf(const rapidjson::Value& text) { return {text.GetString(), text.GetStringLength()}; }

/** That no language has a code, with the nearest one. */
Containers::String unknownLanguage(const Containers::StringView code) {
    const Containers::String message = format("no language has the code {}", TextComparison::shown(code));
    const Int nearest = nearestLanguage(code);
    return nearest == -1 ? message : format("{}; did you mean {}?", message, AllLanguages[nearest].code);
}

/** Whether a value is looked at with the silencings themselves. */
bool isReasonOfSilencing(const Names& names) {
    return (names.size() == 3 && names[1] == "checks"_s) || (names.size() == 5 && names[3] == "silenced"_s);
}

class ProjectChecks {
public:
    explicit ProjectChecks(const CheckedProject& project, LocalizationFindings& findings)
        : _project{project}, _findings{findings} {}

    void run() {
        const rapidjson::Value* const languages = memberOf(&_project.root(), "languages"_s);
        if(languages && languages->IsObject() && !languages->ObjectEmpty()) {
            checkLanguages(*languages);
            checkTranslated(*languages);
        }
        checkTypes();
        checkValues();
    }

private:
    void add(const CheckKind kind, const Containers::StringView file, const Names& names,
        const Containers::StringView language, const Containers::StringView message,
        const UnsignedInt term = CheckedProject::NoTerm) {
        LocalizationFinding place;
        place.file = _findings.texts().add(file);
        place.path = _findings.texts().add(jsonPath(Containers::arrayView(names.data(), names.size())));
        place.term = term == CheckedProject::NoTerm ? ""_s : _findings.texts().add(_project.term(term).key);
        place.language = _findings.texts().add(language);
        _project.add(_findings, kind, place, message, term);
    }

    void checkLanguages(const rapidjson::Value& languages) {
        Containers::StringView marked;
        for(const auto& member: languages.GetObject()) {
            const Containers::StringView code = viewOf(member.name);
            if(findLanguage(code) == -1) {
                add(CheckKind::LanguageUnknown, "project.json"_s, {"languages"_s, code}, code, unknownLanguage(code));
                continue;
            }
            const rapidjson::Value* const isDefault = memberOf(&member.value, "isDefault"_s);
            if(!isDefault || !isDefault->IsTrue()) continue;
            if(marked.isEmpty()) marked = code;
            else
                add(CheckKind::DefaultTwice, "project.json"_s, {"languages"_s, code, "isDefault"_s}, code,
                    format("{} is marked as default after {}, which is the one that counts", languageNameOf(code),
                        languageNameOf(marked)));
        }
    }

    /** Looks for languages that have translations alone. */
    void checkTranslated(const rapidjson::Value& languages) {
        const rapidjson::Value* const all = memberOf(memberOf(&_project.root(), "localization"_s), "translations"_s);
        if(!all || !all->IsObject()) return;
        for(const auto& member: all->GetObject()) {
            const Containers::StringView code = viewOf(member.name);
            if(memberOf(&languages, code)) continue;
            const Containers::String message = findLanguage(code) == -1
                ? unknownLanguage(code)
                : format("{} has texts, but is not among /languages of project.json", languageNameOf(code));
            if(ProjectStorage::isLanguageCode(code) && member.value.IsObject())
                add(CheckKind::LanguageUnlisted, format("localization/{}.json", code), {}, code, message);
            else
                add(CheckKind::LanguageUnlisted, "project.json"_s, {"localization"_s, "translations"_s, code}, code,
                    message);
        }
    }

    void checkTypes() {
        Int last = -1;
        ProjectTypes::checkLocalization(
            _project.root(), [&](const Names& names, const char* const is, const char* const mustBe) {
                if(isReasonOfSilencing(names)) return;
                constexpr std::size_t TermPlace = 2;
                const bool isOfTerm = names.size() > TermPlace && names[1] == "terms"_s;
                const Int term = isOfTerm ? _project.terms().findKey(names[TermPlace], last) : -1;
                const bool isOfLanguage = names.size() > 1 && names[0] == "languages"_s;
                // A line has the term in front.
                const std::size_t told = isOfTerm ? TermPlace + 1 : 0;
                const Containers::String path =
                    jsonPath(Containers::arrayView(names.data() + told, names.size() - told));
                add(CheckKind::WrongType, "project.json"_s, names, isOfLanguage ? names[1] : ""_s,
                    ProjectTypes::wrongType(path, is, mustBe), term == -1 ? CheckedProject::NoTerm : UnsignedInt(term));
            });
    }

    /** Looks for kept values that are in no file. */
    void checkValues() {
        for(const CheckedProject::ValueConflict& conflict: _project.valueConflicts())
            addValue(CheckKind::LeafAndBranch, _project.defaultCode(), conflict.key,
                describe(conflict.conflict, printable(conflict.other)));
        const rapidjson::Value* const all = memberOf(memberOf(&_project.root(), "localization"_s), "values"_s);
        if(!all || !all->IsObject()) return;
        for(const auto& language: all->GetObject()) {
            const Containers::StringView code = viewOf(language.name);
            if(code == _project.defaultCode()) continue;
            const KeptValues values{_project.root(), _project.terms(), code};
            for(const KeptValues::Entry& value: values.entries())
                if(!_project.hasValue(value.key) &&
                    _project.terms().find(UnsignedInt(value.place.nameSpace), value.place.fileKey) == -1)
                    addValue(CheckKind::ValueUnknown, code, value.key,
                        "the default language has neither a text nor a value here"_s);
        }
    }

    void addValue(const CheckKind kind, const Containers::StringView code, const Containers::StringView key,
        const Containers::StringView message) {
        LocalizationFinding place;
        place.file = "project.json"_s;
        place.path = _findings.texts().add(jsonPath({"localization"_s, "values"_s, code, key}));
        place.term = _findings.texts().add(key);
        place.language = _findings.texts().add(code);
        _project.add(_findings, kind, place, message, CheckedProject::NoTerm);
    }

    const CheckedProject& _project;
    LocalizationFindings& _findings;
};

}

void checkProject(const CheckedProject& project, LocalizationFindings& findings) {
    ProjectChecks{project, findings}.run();
}

}
