#include "ProjectTerms.h"

#include <Corrade/Containers/String.h>
#include <rapidjson/document.h>

#include "DocumentLookup.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "TermKey.h"
#include "TermSource.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

Containers::StringView viewOf(const rapidjson::Value& text) { return {text.GetString(), text.GetStringLength()}; }

bool isObject(const rapidjson::Value* const value) { return value && value->IsObject(); }

}

ProjectTerms::ProjectTerms(ProjectFile& project): ProjectTerms{project.document()} {}

ProjectTerms::ProjectTerms(const rapidjson::Value& root) {
    const rapidjson::Value* const localization = memberOf(&root, "localization"_s);
    addNamespace(DefaultNamespace, false);
    readNamespaces(localization);
    readTerms(root, localization);
}

ProjectTerms::~ProjectTerms() = default;

void ProjectTerms::readNamespaces(const rapidjson::Value* const localization) {
    // Whether one is flat has to be known before its first term is read; that the order is the one of the terms comes after.
    const rapidjson::Value* const terms = memberOf(localization, "terms"_s);
    if(isObject(terms))
        for(const auto& member: terms->GetObject()) noteNamespace(viewOf(member.name));

    const rapidjson::Value* const notes = memberOf(localization, "namespaces"_s);
    if(isObject(notes))
        for(const auto& member: notes->GetObject()) {
            const Containers::StringView name = viewOf(member.name);
            if(!TermKey::canTakeNamespace(name)) continue;
            TermNamespace& noted = _namespaces[addNamespace(name, false)];
            const rapidjson::Value* const flat = memberOf(&member.value, "flat"_s);
            noted.isFlat = flat && flat->IsTrue();
            noted.order = memberOf(&member.value, "order"_s);
            noted.isNoted = true;
        }

    const rapidjson::Value* const values = memberOf(localization, "values"_s);
    if(isObject(values))
        for(const auto& language: values->GetObject())
            if(language.value.IsObject())
                for(const auto& member: language.value.GetObject()) noteNamespace(viewOf(member.name));
}

void ProjectTerms::noteNamespace(const Containers::StringView key) {
    Containers::StringView path;
    const Containers::StringView written = TermKey::takeNamespace(key, path);
    if(!written.data()) return;
    // Plain names are written as they are.
    if(_namespaceNames.find(written) == -1) addNamespace(TermKey::namespaceName(written), false);
}

void ProjectTerms::readTerms(const rapidjson::Value& root, const rapidjson::Value* const localization) {
    const rapidjson::Value* const terms = memberOf(localization, "terms"_s);
    if(!isObject(terms)) return;
    _terms.reserve(terms->MemberCount());
    _keys.reserve(terms->MemberCount());
    DocumentLookup lookup{root};
    for(const auto& member: terms->GetObject()) {
        ProjectTerm term;
        term.key = viewOf(member.name);
        const TermPlace place = this->place(term.key, _memory);
        term.nameSpace = UnsignedInt(place.nameSpace);
        term.fileKey = place.fileKey;
        const rapidjson::Value* const source = memberOf(&member.value, "sourceText"_s);
        if(source && source->IsString()) term.sourceText = viewOf(*source);
        const rapidjson::Value* const translatable = memberOf(&member.value, "translatable"_s);
        term.isTranslatable = translatable && translatable->IsTrue();
        if(!term.sourceText.isEmpty()) {
            const rapidjson::Value* const text = term.sourceText.hasPrefix('/')
                ? lookup.find(term.sourceText)
                : lookup.find(TermSource::path(term.sourceText));
            if(text && text->IsString()) term.source = viewOf(*text);
        }
        add(term);
    }
}

void ProjectTerms::add(const ProjectTerm& term) {
    const UnsignedInt number = UnsignedInt(_terms.size());
    _terms.push_back(term);
    _keys.add(term.key);
    Index& index = _indices[term.nameSpace];
    const UnsignedInt place = index.fileKeys.add(term.fileKey);
    if(place == index.terms.size()) index.terms.push_back(number);
    // Of two that would have the same place in a file, one that is not exchanged at all gives way.
    else if(term.isTranslatable && !_terms[index.terms[place]].isTranslatable) index.terms[place] = number;
}

Int ProjectTerms::find(const UnsignedInt nameSpace, const Containers::StringView fileKey, Int& last) const {
    const Index& index = _indices[nameSpace];
    const Int place = index.fileKeys.find(fileKey, last);
    return place == -1 ? -1 : Int(index.terms[std::size_t(place)]);
}

Int ProjectTerms::find(const UnsignedInt nameSpace, const Containers::StringView fileKey) const {
    Int last = -1;
    return find(nameSpace, fileKey, last);
}

TermPlace ProjectTerms::place(const Containers::StringView key, TextArena& memory) const {
    Containers::StringView path;
    const Containers::StringView written = TermKey::takeNamespace(key, path);
    Int nameSpace = 0;
    if(written.data()) {
        nameSpace = _namespaceNames.find(written);
        if(nameSpace == -1) nameSpace = _namespaceNames.find(TermKey::namespaceName(written));
    }
    if(nameSpace == -1) return {-1, {}};
    if(_namespaces[std::size_t(nameSpace)].isFlat) return {nameSpace, memory.add(TermKey::flatPath(path))};
    return {nameSpace, TermKey::isCanonical(path) ? path : memory.add(TermKey::canonical(path))};
}

Containers::StringView ProjectTerms::projectKey(
    const UnsignedInt nameSpace, const Containers::StringView fileKey, TextArena& memory) const {
    const TermNamespace& in = _namespaces[nameSpace];
    if(in.isFlat) return memory.add(TermKey::withNamespace(in.name, TermKey::flatKey(fileKey)));
    // The default namespace is not written.
    return nameSpace == 0 ? fileKey : memory.add(TermKey::withNamespace(in.name, fileKey));
}

UnsignedInt ProjectTerms::addNamespace(const Containers::StringView name, const bool isFlat) {
    const Int known = _namespaceNames.find(name);
    if(known != -1) return UnsignedInt(known);
    TermNamespace added;
    added.name = _memory.add(name);
    added.isFlat = isFlat;
    _namespaces.push_back(added);
    _indices.emplace_back();
    return _namespaceNames.add(added.name);
}

UnsignedInt ProjectTerms::addTerm(
    const UnsignedInt nameSpace, const Containers::StringView fileKey, const Containers::StringView source) {
    ProjectTerm term;
    term.key = projectKey(nameSpace, fileKey, _memory);
    term.nameSpace = nameSpace;
    term.fileKey = fileKey;
    term.source = source;
    term.isTranslatable = true;
    add(term);
    return UnsignedInt(_terms.size() - 1);
}

}
