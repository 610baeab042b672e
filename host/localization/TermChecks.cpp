#include "TermChecks.h"

#include <deque>
#include <unordered_map>
#include <vector>

#include <Corrade/Utility/Format.h>
#include <rapidjson/document.h>

#include "../document/PrintableText.h"
#include "DocumentLookup.h"
#include "JsonPath.h"
#include "NameSearch.h"
#include "Placeholders.h"
#include "ReservedNames.h"
#include "TermConflicts.h"
#include "TermKey.h"
#include "TermSource.h"
#include "TextComparison.h"
#include "Utils/StrHash.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;
using Corrade::Utility::format;

namespace {

/** What is wrong with the first name in a key that programs lose, empty where there is none. */
Containers::String reservedMember(const Containers::StringView fileKey) {
    Containers::StringView rest = fileKey;
    do {
        const Containers::StringView segment = TermKey::takeSegment(rest, rest);
        const Containers::StringView reason = ReservedNames::memberReason(segment);
        if(!reason.isEmpty()) return format("the member {} {}", segment, reason);
    } while(rest.data());
    return {};
}

Containers::String unknownCheck(const Containers::StringView name) {
    std::vector<Containers::StringView> names;
    for(const LocalizationCheck& check: localizationChecks()) names.push_back(check.name);
    const Containers::StringView nearest = nearestName(name, Containers::arrayView(names.data(), names.size()));
    const Containers::String message = format("silences nothing, as there is no check {}", TextComparison::shown(name));
    return nearest.isEmpty() ? message : format("{}; did you mean {}?", message, nearest);
}

class TermChecks {
public:
    explicit TermChecks(const CheckedProject& project, LocalizationFindings& findings)
        : _project{project},
          _findings{findings},
          _lookup{project.root()},
          _categories{pluralCategories(project.defaultCode(), PluralKind::Cardinal),
              pluralCategories(project.defaultCode(), PluralKind::Ordinal)} {}

    void run() {
        const rapidjson::Value* const terms = memberOf(memberOf(&_project.root(), "localization"_s), "terms"_s);
        auto silencing = _project.voidSilencings().begin();
        for(; isAt(silencing, CheckedProject::NoTerm); ++silencing) checkSilencing(*silencing);
        auto conflict = _project.conflicts().begin();
        for(UnsignedInt i = 0; i != _project.terms().terms().size(); ++i) {
            for(; isAt(silencing, i); ++silencing) checkSilencing(*silencing);
            for(; conflict != _project.conflicts().end() && conflict->term == i; ++conflict) checkConflict(*conflict);
            checkKey(i);
            checkSource(i);
            checkTranslatable(i, terms->MemberBegin()[std::ptrdiff_t(i)].value);
            checkNestings(i);
            checkPlural(i);
        }
    }

private:
    using VoidSilencings = std::vector<CheckedProject::VoidSilencing>;

    bool isAt(const VoidSilencings::const_iterator silencing, const UnsignedInt term) const {
        return silencing != _project.voidSilencings().end() && silencing->term == term;
    }

    void add(const CheckKind kind, const UnsignedInt term, const Containers::StringView message) {
        const Containers::StringView key = _project.term(term).key;
        add(kind, term, jsonPath({"localization"_s, "terms"_s, key}), message);
    }

    void add(const CheckKind kind, const UnsignedInt term, const Containers::StringView path,
        const Containers::StringView message) {
        LocalizationFinding place;
        place.file = "project.json"_s;
        place.path = _findings.texts().add(path);
        place.term = term == CheckedProject::NoTerm ? ""_s : _findings.texts().add(_project.term(term).key);
        place.language = ""_s;
        _project.add(_findings, kind, place, message, term);
    }

    void checkSilencing(const CheckedProject::VoidSilencing& silencing) {
        const Containers::String path = silencing.term == CheckedProject::NoTerm
            ? jsonPath({"localization"_s, "checks"_s, silencing.name})
            : jsonPath({"localization"_s, "terms"_s, _project.term(silencing.term).key, "silenced"_s, silencing.name});
        add(silencing.kind, silencing.term, path,
            silencing.kind == CheckKind::UnknownCheck
                ? unknownCheck(silencing.name)
                : format("silences nothing, as {} is given no reason", silencing.name));
    }

    void checkConflict(const CheckedProject::Conflict& conflict) {
        const Containers::StringView other = conflict.other < 0 ? ""_s : _project.term(std::size_t(conflict.other)).key;
        add(CheckKind::LeafAndBranch, conflict.term, describe(conflict.conflict, printable(other)));
    }

    void checkKey(const UnsignedInt term) {
        const Containers::String member = reservedMember(_project.term(term).fileKey);
        if(!member.isEmpty()) add(CheckKind::ReservedKey, term, member);
        const Containers::StringView nameSpace = _project.terms().namespaces()[_project.term(term).nameSpace].name;
        const Containers::StringView reason = ReservedNames::namespaceReason(nameSpace);
        if(!reason.isEmpty()) add(CheckKind::ReservedKey, term, format("{} {}", nameSpace, reason));
    }

    void checkSource(const UnsignedInt index) {
        const ProjectTerm& term = _project.term(index);
        if(term.sourceText.isEmpty()) {
            add(CheckKind::SourceGone, index, "names no source text"_s);
            return;
        }
        Containers::StringView path = term.sourceText;
        if(!path.hasPrefix('/')) path = _plainPaths.emplace_back(TermSource::path(path));
        if(!term.source.data())
            add(CheckKind::SourceGone, index, TermSource::fault(term.sourceText, _lookup.find(path)));
        const auto [first, isFirst] = _terms.emplace(path, index);
        if(!isFirst)
            add(CheckKind::SameSource, index,
                format("has the same source text as {}: {}", printable(_project.term(first->second).key),
                    TextComparison::shown(term.sourceText)));
    }

    /** @param value    of the term in the document, which has them in the same order */
    void checkTranslatable(const UnsignedInt index, const rapidjson::Value& value) {
        if(!_project.term(index).source.isEmpty() && !memberOf(&value, "translatable"_s))
            add(CheckKind::TranslatableMissing, index, "does not say whether it is translatable, so it is not"_s);
    }

    void checkNestings(const UnsignedInt index) {
        const ProjectTerm& term = _project.term(index);
        if(!_project.isTranslated(term)) return;
        _places.read(term.source);
        const Containers::String message = TextComparison::unknownNestings(_places, nullptr,
            [&](const Containers::StringView key) { return _project.isNestingTarget(key, term.nameSpace); });
        if(!message.isEmpty()) add(CheckKind::NestingUnknown, index, message);
    }

    void checkPlural(const UnsignedInt index) {
        const CheckedPlural* const plural = _project.pluralOf(index);
        if(!plural || plural->otherTerm() != index || !_project.term(index).isTranslatable) return;
        PluralCategories missing = _categories[std::size_t(plural->kind)];
        for(const PluralCategory category: AllPluralCategories)
            if(plural->terms[pluralCategoryIndex(category)] != -1) missing &= ~PluralCategories{category};
        if(missing)
            add(CheckKind::PluralMissing, index,
                TextComparison::missingForms(missing, languageNameOf(_project.defaultCode())));
    }

    const CheckedProject& _project;
    LocalizationFindings& _findings;
    DocumentLookup _lookup;
    /** What the default language needs, by kind. */
    PluralCategories _categories[2];
    Placeholders _places;
    /** Of sources that are plain members of the root; stay where they are. */
    std::deque<Containers::String> _plainPaths;
    /** By the path of their source. */
    std::unordered_map<Containers::StringView, UnsignedInt, StrHash, StrEq> _terms;
};

}

void checkTerms(const CheckedProject& project, LocalizationFindings& findings) { TermChecks{project, findings}.run(); }

}
