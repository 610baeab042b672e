#include "ProjectTranslations.h"

#include <rapidjson/document.h>

#include "DocumentLookup.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

Containers::StringView ProjectTranslation::text() const {
    const rapidjson::Value* const text = memberOf(value, "text"_s);
    return text && text->IsString() ? Containers::StringView{text->GetString(), text->GetStringLength()}
                                    : Containers::StringView{};
}

ProjectTranslations::ProjectTranslations(
    const rapidjson::Value& root, const ProjectTerms& terms, const Containers::StringView code) {
    const rapidjson::Value* const translations =
        memberOf(memberOf(memberOf(&root, "localization"_s), "translations"_s), code);
    if(!translations || !translations->IsObject()) return;
    _byTerm.resize(terms.terms().size());
    Int last = -1;
    Int position = 0;
    for(const auto& member: translations->GetObject()) {
        const Containers::StringView key{member.name.GetString(), member.name.GetStringLength()};
        const ProjectTranslation translation{&member.value, position++};
        const Int term = terms.findKey(key, last);
        if(term != -1) {
            _byTerm[std::size_t(term)] = translation;
            continue;
        }
        const TermPlace place = terms.place(key, _memory);
        if(place.nameSpace == -1) continue;
        _otherKeys.add(key);
        _others.push_back({key, place, translation});
    }
}

ProjectTranslations::~ProjectTranslations() = default;
ProjectTranslations::ProjectTranslations(ProjectTranslations&&) noexcept = default;
ProjectTranslations& ProjectTranslations::operator=(ProjectTranslations&&) noexcept = default;

void ProjectTranslations::clear() {
    _byTerm = std::vector<ProjectTranslation>{};
    _others = std::vector<Other>{};
    _otherKeys = TextIndex{};
    _memory = TextArena{};
}

Int ProjectTranslations::findOther(const Containers::StringView key) const { return _otherKeys.find(key); }

}
