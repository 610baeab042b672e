#include "ProjectTerms.h"

#include <Corrade/Containers/GrowableArray.h>
#include <rapidjson/document.h>

#include "QuorvaneEditor/ProjectFile.h"
#include "QuorvaneEditor/ValueAccess.h"
#include "TermKey.h"
#include "TermSource.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

Containers::StringView viewOf(const rapidjson::Value& text) { return {text.GetString(), text.GetStringLength()}; }

}

ProjectTerms::ProjectTerms(ProjectFile& project) {
    const rapidjson::Value* const terms = project.root()["localization"_s]["terms"_s].value();
    if(!terms || !terms->IsObject()) return;
    Containers::arrayReserve(_terms, terms->MemberCount());
    _indices.reserve(terms->MemberCount());
    for(const auto& member: terms->GetObject()) {
        ProjectTerm term;
        term.key = viewOf(member.name);
        // A term has few members: these look-ups cost nothing.
        if(member.value.IsObject()) {
            const auto source = member.value.FindMember("sourceText");
            if(source != member.value.MemberEnd() && source->value.IsString()) term.sourceText = viewOf(source->value);
            const auto translatable = member.value.FindMember("translatable");
            term.isTranslatable = translatable != member.value.MemberEnd() && translatable->value.IsTrue();
        }
        if(const rapidjson::Value* const text = TermSource::value(project, term.sourceText))
            term.source = viewOf(*text);

        const std::size_t index = _terms.size();
        Containers::arrayAppend(_terms, term);
        Containers::StringView key = term.key;
        if(!TermKey::isCanonical(key)) key = _canonicalKeys.emplace(index, TermKey::canonical(key)).first->second;
        // Of two that would have the same place in a file, one that is not exchanged at all gives way.
        const auto [place, isNew] = _indices.emplace(key, Int(index));
        if(!isNew && !_terms[std::size_t(place->second)].isTranslatable) place->second = Int(index);
    }
}

ProjectTerms::~ProjectTerms() = default;

Containers::StringView ProjectTerms::canonicalKey(const std::size_t term) const {
    const auto found = _canonicalKeys.find(term);
    return found == _canonicalKeys.end() ? _terms[term].key : Containers::StringView{found->second};
}

Int ProjectTerms::find(const Containers::StringView canonicalKey) const {
    const auto found = _indices.find(canonicalKey);
    return found == _indices.end() ? -1 : found->second;
}

rapidjson::Value* translationsOf(ProjectFile& project, const Containers::StringView code) {
    return project.root()["localization"_s]["translations"_s].member(code).value();
}

Containers::StringView translatedText(
    ProjectFile& project, rapidjson::Value* const translations, const Containers::StringView term) {
    if(!translations || !translations->IsObject()) return {};
    const rapidjson::Value* const entry = project.member(*translations, term);
    if(!entry || !entry->IsObject()) return {};
    const auto text = entry->FindMember("text");
    return text != entry->MemberEnd() && text->value.IsString() ? viewOf(text->value) : Containers::StringView{};
}

}
