#include "ImportTerms.h"

#include <mutex>
#include <string>

#include <Corrade/Containers/Optional.h>
#include <rapidjson/document.h>

#include "DocumentLookup.h"
#include "Fingerprint.h"
#include "KeptValues.h"
#include "PluralSets.h"
#include "ProjectEdit.h"
#include "ProjectTranslations.h"
#include "QuorvaneEditor/AllLanguages.h"
#include "TermConflicts.h"
#include "TermKey.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

struct ImportTerms::Namespace {
    std::once_flag hasTree, hasPlurals;
    /** All keys as files nest them: terms that the project has, what is added, and at the end other values of the default language. */
    TermTree tree;
    /** Keys in the project by their numbers in the tree. */
    std::vector<Containers::StringView> keys;
    /** How many of these are of terms that the project has. */
    std::size_t knownCount = 0;
    bool isBuilt = false;
    Containers::Optional<PluralSets> plurals;
};

namespace {

/** The key of the other shape that the i18next library takes for the same, empty where there is none: "a%2Eb" and "a.b". */
Containers::String otherShape(const Containers::StringView fileKey, const bool isFlat) {
    const std::string key{fileKey.data(), fileKey.size()};
    const std::string from = isFlat ? "." : "%2E";
    const std::string to = isFlat ? "%2E" : ".";
    if(!isFlat && key.find('.') != std::string::npos) return {};
    std::string other;
    std::size_t begin = 0;
    for(std::size_t at; (at = key.find(from, begin)) != std::string::npos; begin = at + from.size())
        other.append(key, begin, at - begin).append(to);
    if(begin == 0) return {};
    other.append(key, begin);
    return {other.data(), other.size()};
}

}

ImportTerms::ImportTerms(const rapidjson::Value& root, const UnsignedInt defaultLanguage)
    : _root{root}, _defaultLanguage{defaultLanguage}, _terms{root}, _knownCount{_terms.terms().size()} {
    const KeptValues values{root, _terms, AllLanguages[defaultLanguage].code};
    for(const KeptValues::Entry& entry: values.entries()) {
        const UnsignedInt nameSpace = UnsignedInt(entry.place.nameSpace);
        addValueKey(nameSpace, _memory.add(key(nameSpace, entry.place.fileKey)), _memory.add(entry.place.fileKey));
    }
}

ImportTerms::~ImportTerms() = default;

bool ImportTerms::addTerm(const UnsignedInt nameSpace, const Containers::StringView fileKey,
    const Containers::StringView source, Containers::String& reason) {
    const Containers::StringView key = _terms.projectKey(nameSpace, fileKey, _memory);
    if(!insert(nameSpace, key, fileKey, reason)) return false;
    _terms.addTerm(nameSpace, fileKey, source);
    return true;
}

bool ImportTerms::addValue(
    const UnsignedInt nameSpace, const Containers::StringView fileKey, Containers::String& reason) {
    const Containers::StringView key = _terms.projectKey(nameSpace, fileKey, _memory);
    if(!insert(nameSpace, key, fileKey, reason)) return false;
    addValueKey(nameSpace, key, fileKey);
    return true;
}

void ImportTerms::addValueKey(
    const UnsignedInt nameSpace, const Containers::StringView key, const Containers::StringView fileKey) {
    const std::size_t count = _valueKeys.size();
    const UnsignedInt number = _valueKeys.add(key);
    if(number != count) return;
    if(_values.size() <= nameSpace) _values.resize(nameSpace + 1);
    _values[nameSpace].push_back({number, fileKey});
}

bool ImportTerms::hasValue(const Containers::StringView key) const {
    return _valueKeys.find(key) != -1 && !isDropped(key);
}

bool ImportTerms::isDropped(const Containers::StringView key) const {
    const Int value = _isValueDropped.empty() ? -1 : _valueKeys.find(key);
    return value != -1 && std::size_t(value) < _isValueDropped.size() && _isValueDropped[std::size_t(value)];
}

bool ImportTerms::givesPlace(const UnsignedInt nameSpace, const Containers::StringView fileKey) const {
    // Where nothing was added there is no tree.
    if(nameSpace >= _namespaces.size() || !_namespaces[nameSpace]->isBuilt) return false;
    const Namespace& in = *_namespaces[nameSpace];
    Int other = -1;
    return in.tree.check(fileKey, other) != TermConflict::None && other >= Int(in.knownCount);
}

void ImportTerms::dropValue(const Containers::StringView key) {
    const Int value = _valueKeys.find(key);
    if(value == -1) return;
    _isValueDropped.resize(_valueKeys.size());
    _isValueDropped[std::size_t(value)] = true;
}

bool ImportTerms::insert(const UnsignedInt nameSpace, const Containers::StringView key,
    const Containers::StringView fileKey, Containers::String& reason) {
    if(_terms.namespaces()[nameSpace].isFlat && TermKey::segmentCount(fileKey) != 1) {
        reason = "lies in an object, and the namespace is flat"_s;
        return false;
    }
    const Containers::StringView form = formAbove(nameSpace, fileKey);
    if(!form.isEmpty()) {
        reason = describe(TermConflict::LeafAndBranch, this->key(nameSpace, form));
        return false;
    }
    Namespace& in = withTree(nameSpace);
    Int other = -1;
    const TermConflict conflict = in.tree.insert(fileKey, Int(in.keys.size()), other);
    if(conflict != TermConflict::None) {
        reason = describe(conflict, other == -1 ? ""_s : in.keys[std::size_t(other)]);
        return false;
    }
    in.keys.push_back(key);
    return true;
}

/** The form of a plural that a language beside the default one has alone, and that a key lies below; empty for none. */
Containers::StringView ImportTerms::formAbove(const UnsignedInt nameSpace, const Containers::StringView fileKey) {
    for(std::size_t size = 1; size < fileKey.size(); ++size) {
        const Containers::StringView above = fileKey.prefix(size);
        PluralForm form;
        if(fileKey[size] != '.' || !parsePluralForm(above, form)) continue;
        if(_others.empty()) readOthers();
        if(nameSpace >= _others.size() || _others[nameSpace].fileKeys.find(above) == -1) continue;
        Containers::Optional<PluralSets>& plurals = _others[nameSpace].plurals;
        if(!plurals) plurals.emplace(PluralSets{_terms.fileKeys(nameSpace), AllLanguages[_defaultLanguage].code});
        const Int set = plurals->find(form);
        if(set == -1 || _terms.find(nameSpace, above) != -1) continue;
        const Int other = plurals->sets()[std::size_t(set)].form(PluralCategory::Other);
        if(_terms.terms()[_terms.termAt(nameSpace, std::size_t(other))].isTranslatable) return above;
    }
    return {};
}

void ImportTerms::readOthers() {
    _others.resize(_terms.namespaces().size());
    const rapidjson::Value* const all = memberOf(memberOf(&_root, "localization"_s), "translations"_s);
    if(!all || !all->IsObject()) return;
    for(const auto& language: all->GetObject()) {
        const Containers::StringView code{language.name.GetString(), language.name.GetStringLength()};
        const ProjectTranslations known{_root, _terms, code};
        for(const ProjectTranslations::Other& other: known.others())
            if(!other.translation.text().isEmpty())
                _others[std::size_t(other.place.nameSpace)].fileKeys.add(_memory.add(other.place.fileKey));
    }
}

void ImportTerms::finish() {
    _isFinished = true;
    for(UnsignedInt i = 0; i != _namespaces.size(); ++i)
        if(_namespaces[i]->isBuilt) insertValues(i, *_namespaces[i]);
    _fingerprints.reserve(_terms.terms().size());
    for(const ProjectTerm& term: _terms.terms())
        _fingerprints.push_back(
            term.source.data() ? _memory.add(QuorvaneEngine::fingerprint(term.source)) : Containers::StringView{});
    while(_namespaces.size() < _terms.namespaces().size()) _namespaces.push_back(std::make_unique<Namespace>());
}

void ImportTerms::keep(const std::size_t term, ProjectEdit& edit) {
    _kept.resize(_terms.terms().size());
    Kept& kept = _kept[term];
    if(!kept.key.data()) kept = {edit.keep(_terms.terms()[term].key), edit.keep(_fingerprints[term])};
}

Int ImportTerms::find(const UnsignedInt nameSpace, const Containers::StringView fileKey, Int& last) const {
    const Int found = _terms.find(nameSpace, fileKey, last);
    if(found != -1) return found;
    const Containers::String other = otherShape(nameSpace, fileKey);
    const Int term = other.isEmpty() ? -1 : _terms.find(nameSpace, other);
    return term != -1 && !hasValue(key(nameSpace, fileKey)) ? term : -1;
}

Containers::String ImportTerms::otherShape(const UnsignedInt nameSpace, const Containers::StringView fileKey) const {
    return QuorvaneEngine::otherShape(fileKey, _terms.namespaces()[nameSpace].isFlat);
}

Containers::String ImportTerms::key(const UnsignedInt nameSpace, const Containers::StringView fileKey) const {
    TextArena memory;
    return _terms.projectKey(nameSpace, fileKey, memory);
}

bool ImportTerms::hasPlace(const UnsignedInt nameSpace, const Containers::StringView fileKey) const {
    Int other = -1;
    const TermConflict conflict = withTree(nameSpace).tree.check(fileKey, other);
    return conflict == TermConflict::None || conflict == TermConflict::SamePath;
}

Containers::String ImportTerms::reasonForNone(
    const UnsignedInt nameSpace, const Containers::StringView fileKey, bool& isConflict) const {
    const Namespace& in = withTree(nameSpace);
    Int other = -1;
    const TermConflict conflict = in.tree.check(fileKey, other);
    // An array whose elements are all new, or a member beside others, is no conflict.
    isConflict = conflict == TermConflict::LeafAndBranch || conflict == TermConflict::MemberAndElement;
    if(!isConflict) return "no term has this key"_s;
    return "no term has this key, and it "_s + describe(conflict, in.keys[std::size_t(other)]);
}

const PluralSets& ImportTerms::plurals(const UnsignedInt nameSpace) const {
    Namespace& in = *_namespaces[nameSpace];
    std::call_once(in.hasPlurals, [&] {
        in.plurals.emplace(PluralSets{_terms.fileKeys(nameSpace), AllLanguages[_defaultLanguage].code});
    });
    return *in.plurals;
}

ImportTerms::Namespace& ImportTerms::withTree(const UnsignedInt nameSpace) const {
    while(_namespaces.size() <= nameSpace) _namespaces.push_back(std::make_unique<Namespace>());
    Namespace& in = *_namespaces[nameSpace];
    std::call_once(in.hasTree, [&] {
        for(const ProjectTerm& term: _terms.terms()) {
            if(term.nameSpace != nameSpace) continue;
            Int other = -1;
            if(in.tree.insert(term.fileKey, Int(in.keys.size()), other) == TermConflict::None)
                in.keys.push_back(term.key);
        }
        in.knownCount = in.keys.size();
        in.isBuilt = true;
        if(_isFinished) insertValues(nameSpace, in);
    });
    return in;
}

void ImportTerms::insertValues(const UnsignedInt nameSpace, Namespace& in) const {
    if(nameSpace >= _values.size()) return;
    for(const Value& value: _values[nameSpace]) {
        const Containers::StringView key = _valueKeys[value.number];
        Int other = -1;
        if(!isDropped(key) && in.tree.insert(value.fileKey, Int(in.keys.size()), other) == TermConflict::None)
            in.keys.push_back(key);
    }
}

}
