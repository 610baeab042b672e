#include "ProjectTranslations.h"

#include <cstring>

#include <rapidjson/document.h>

#include "DocumentLookup.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

ProjectTranslation::Parts ProjectTranslation::parts() const {
    if(!value || !value->IsObject()) return {};
    // Every export and import asks for every text, so the members are looked at once.
    const rapidjson::Value* text = nullptr;
    const rapidjson::Value* source = nullptr;
    for(auto member = value->MemberBegin(), end = value->MemberEnd(); member != end; ++member) {
        const char* const name = member->name.GetString();
        const rapidjson::SizeType size = member->name.GetStringLength();
        if(!text && size == 4 && std::memcmp(name, "text", 4) == 0) text = &member->value;
        else if(!source && size == 6 && std::memcmp(name, "source", 6) == 0) source = &member->value;
        if(text && source) break;
    }
    const auto viewed = [](const rapidjson::Value* const one) {
        return one && one->IsString() ? Containers::StringView{one->GetString(), one->GetStringLength()}
                                      : Containers::StringView{};
    };
    return {viewed(text), viewed(source)};
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
