#include "CheckedProject.h"

#include <algorithm>

#include <rapidjson/document.h>

#include "../document/PrintableText.h"
#include "DocumentLookup.h"
#include "Fingerprint.h"
#include "LanguageLookup.h"
#include "Placeholders.h"
#include "TermConflicts.h"
#include "TermKey.h"
#include "TextBlanks.h"
#include "TextComparison.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

/** A plural of an ordinal has two, and a context may have several words. */
constexpr int MaxSuffixes = 8;

Containers::StringView viewOf(const rapidjson::Value& text) { return {text.GetString(), text.GetStringLength()}; }

std::string stringOf(const Containers::StringView text) { return {text.data(), text.size()}; }

/** The index of a check, -1 where there is none of this name. */
Int findCheck(const Containers::StringView name) {
    const auto checks = localizationChecks();
    for(std::size_t i = 0; i != checks.size(); ++i)
        if(checks[i].name == name) return Int(i);
    return -1;
}

}

Containers::StringView languageNameOf(const Containers::StringView code) {
    const Int language = findLanguage(code);
    return language == -1 ? code : AllLanguages[language].name;
}

CheckedProject::CheckedProject(const rapidjson::Value& root, const Containers::StringView defaultCode)
    : _root{root},
      _defaultCode{defaultCode},
      _terms{root},
      _values{root, _terms, defaultCode},
      _trees(_terms.namespaces().size()) {
    _fingerprints.reserve(_terms.terms().size());
    for(const ProjectTerm& term: _terms.terms())
        _fingerprints.push_back(isTranslated(term) ? QuorvaneEngine::fingerprint(term.source) : Containers::String{});
    readSilencings();
    findConflicts();
    findPlurals();
}

CheckedProject::~CheckedProject() = default;

void CheckedProject::readSilencings() {
    const rapidjson::Value* const localization = memberOf(&_root, "localization"_s);
    readSilencings(memberOf(localization, "checks"_s), NoTerm);
    const rapidjson::Value* const terms = memberOf(localization, "terms"_s);
    if(!terms || !terms->IsObject()) return;
    UnsignedInt term = 0;
    for(const auto& member: terms->GetObject()) readSilencings(memberOf(&member.value, "silenced"_s), term++);
}

void CheckedProject::readSilencings(const rapidjson::Value* const silenced, const UnsignedInt term) {
    if(!silenced || !silenced->IsObject()) return;
    for(const auto& member: silenced->GetObject()) {
        const Containers::StringView name = viewOf(member.name);
        const Int check = findCheck(name);
        const bool hasReason = member.value.IsString() && !TextBlanks::trimmed(viewOf(member.value)).isEmpty();
        if(check == -1) _voidSilencings.push_back({term, name, CheckKind::UnknownCheck});
        else if(!hasReason) _voidSilencings.push_back({term, name, CheckKind::SilencedWithoutReason});
        else _silencings.push_back({term, CheckKind(check), viewOf(member.value)});
    }
}

void CheckedProject::findConflicts() {
    Int other = -1;
    for(UnsignedInt i = 0; i != _terms.terms().size(); ++i) {
        const ProjectTerm& term = this->term(i);
        if(!term.isTranslatable) continue;
        const TermConflict conflict = _trees[term.nameSpace].insert(term.fileKey, Int(i), other);
        if(conflict != TermConflict::None) _conflicts.push_back({i, conflict, other});
    }
    // As in files: they come last, and give way to terms, also to those that are in no file.
    for(std::size_t i = 0; i != _values.entries().size(); ++i) {
        const KeptValues::Entry& value = _values.entries()[i];
        const UnsignedInt nameSpace = UnsignedInt(value.place.nameSpace);
        if(_terms.find(nameSpace, value.place.fileKey) != -1) continue;
        const TermConflict conflict =
            _trees[nameSpace].insert(value.place.fileKey, Int(_terms.terms().size() + i), other);
        if(conflict != TermConflict::None && conflict != TermConflict::SamePath)
            _valueConflicts.push_back({value.key, conflict, keyAt(other)});
    }
}

Containers::StringView CheckedProject::keyAt(const Int number) const {
    if(number == -1) return {};
    const std::size_t count = _terms.terms().size();
    return std::size_t(number) < count ? term(std::size_t(number)).key
                                       : _values.entries()[std::size_t(number) - count].key;
}

Containers::String CheckedProject::formConflict(const Containers::StringView key) const {
    TextArena memory;
    const TermPlace place = _terms.place(key, memory);
    Int other = -1;
    const TermConflict conflict =
        place.nameSpace == -1 ? TermConflict::None : _trees[std::size_t(place.nameSpace)].check(place.fileKey, other);
    if(conflict == TermConflict::None || conflict == TermConflict::SamePath) return {};
    return describe(conflict, printable(keyAt(other)));
}

void CheckedProject::findPlurals() {
    const std::size_t namespaces = _terms.namespaces().size();
    _pluralsOfTerms.assign(_terms.terms().size(), -1);
    for(UnsignedInt i = 0; i != namespaces; ++i) {
        _firstPlurals.push_back(_plurals.size());
        // As an import and an export do: a form that is not translated proves the others.
        _pluralSets.emplace_back(_terms.fileKeys(i), _defaultCode);
        for(const PluralSet& set: _pluralSets[i].sets()) {
            CheckedPlural plural{set.kind, {}, {}, {}};
            for(std::size_t form = 0; form != PluralCategoryCount; ++form) {
                plural.terms[form] = set.forms[form] == -1 ? -1 : Int(_terms.termAt(i, std::size_t(set.forms[form])));
                if(plural.terms[form] == -1) continue;
                const std::size_t term = std::size_t(plural.terms[form]);
                if(!this->term(term).isTranslatable) plural.untranslated |= AllPluralCategories[form];
                _pluralsOfTerms[term] = Int(_plurals.size());
                const Placeholders places{this->term(term).source};
                if(!places.placeholders().isEmpty()) TextComparison::addNames(places, plural.names);
            }
            _plurals.push_back(std::move(plural));
        }
    }
}

const CheckedPlural* CheckedProject::pluralOf(const std::size_t term) const {
    const Int plural = _pluralsOfTerms[term];
    return plural == -1 ? nullptr : &_plurals[std::size_t(plural)];
}

const CheckedPlural* CheckedProject::pluralOf(const Containers::StringView key, PluralCategory& category) const {
    TextArena memory;
    const TermPlace place = _terms.place(key, memory);
    PluralForm form;
    if(place.nameSpace == -1 || !parsePluralForm(place.fileKey, form)) return nullptr;
    const std::size_t nameSpace = std::size_t(place.nameSpace);
    const Int set = _pluralSets[nameSpace].find(form);
    if(set == -1) return nullptr;
    category = form.category;
    return &_plurals[_firstPlurals[nameSpace] + std::size_t(set)];
}

bool CheckedProject::isNestingTarget(const Containers::StringView key, const UnsignedInt nameSpace) const {
    std::call_once(_haveNestingTargets, [this] { findNestingTargets(); });
    const auto isTarget = [&](const Containers::StringView in, const Containers::StringView path) {
        return _nestingTargets.contains(stringOf(in) + ':' + stringOf(path));
    };
    // A namespace that an application asks for is the one of its nestings, too; otherwise they are in the default one.
    if(isTarget(_terms.namespaces()[nameSpace].name, key) || isTarget(DefaultNamespace, key)) return true;
    const Containers::StringView colon = key.find(':');
    if(colon.isEmpty()) return false;
    std::string path = stringOf(key.suffix(colon.end()));
    std::replace(path.begin(), path.end(), ':', '.');
    return isTarget(key.prefix(colon.begin()), {path.data(), path.size()});
}

void CheckedProject::findNestingTargets() const {
    for(const ProjectTerm& term: _terms.terms())
        if(term.isTranslatable) addNestingTarget(term.nameSpace, term.fileKey);
    for(const KeptValues::Entry& value: _values.entries())
        addNestingTarget(UnsignedInt(value.place.nameSpace), value.place.fileKey);
}

void CheckedProject::addNestingTarget(const UnsignedInt nameSpace, const Containers::StringView fileKey) const {
    std::string path = stringOf(_terms.namespaces()[nameSpace].name) + ':';
    std::size_t name;
    Containers::StringView rest = fileKey;
    do {
        const Containers::StringView segment = TermKey::takeSegment(rest, rest);
        const Int element = TermKey::elementIndex(segment);
        name = path.size();
        path += element >= 0 ? std::to_string(element) : stringOf(TermKey::memberName(segment));
        if(rest.data()) path += '.';
    } while(rest.data());
    // With a number or a context the library finds "apples_one" and "friend_male" for "apples" and "friend".
    std::size_t end = path.size();
    for(int i = 0; i != MaxSuffixes && end > name; ++i) {
        end = path.rfind('_', end - 1);
        if(end == std::string::npos || end <= name) break;
        _nestingTargets.insert(path.substr(0, end));
    }
    _nestingTargets.insert(std::move(path));
}

Containers::StringView CheckedProject::silenced(const CheckKind kind, const UnsignedInt term) const {
    // The project's come first, each term's are together.
    const auto isBefore = [](const UnsignedInt a, const UnsignedInt b) { return a + 1 < b + 1; };
    const auto find = [&](const UnsignedInt of) -> Containers::StringView {
        const auto first = std::lower_bound(_silencings.begin(), _silencings.end(), of,
            [&](const Silencing& one, const UnsignedInt wanted) { return isBefore(one.term, wanted); });
        for(auto one = first; one != _silencings.end() && one->term == of; ++one)
            if(one->kind == kind) return one->reason;
        return {};
    };
    const Containers::StringView reason = term == NoTerm ? Containers::StringView{} : find(term);
    return reason.isEmpty() ? find(NoTerm) : reason;
}

void CheckedProject::add(LocalizationFindings& findings, const CheckKind kind, LocalizationFinding place,
    const Containers::StringView message, const UnsignedInt term) const {
    place.check = localizationChecks()[std::size_t(kind)].name;
    place.severity = localizationChecks()[std::size_t(kind)].severity;
    place.message = findings.texts().add(message);
    place.silenced = findings.texts().add(silenced(kind, term));
    findings.add(place);
}

}
