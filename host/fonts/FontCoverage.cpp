#include "fonts/FontCoverage.h"

#include <algorithm>
#include <string>
#include <utility>

#include <rapidjson/document.h>

#include "QuorvaneEditor/AllLanguages.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "localization/DocumentLookup.h"
#include "localization/Parallel.h"
#include "localization/TermSource.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

/* What it takes to find a text, in bytes that are looked at meanwhile. */
constexpr std::size_t BytesPerText = 64;

Containers::StringView stringOf(const rapidjson::Value* const value) {
    if(!value || !value->IsString()) return {};
    return {value->GetString(), value->GetStringLength()};
}

bool isDefaultLanguage(const rapidjson::Value& root, const Containers::StringView code) {
    const rapidjson::Value* const mark = memberOf(memberOf(memberOf(&root, "languages"_s), code), "isDefault"_s);
    return mark && mark->IsTrue();
}

const rapidjson::Value* entriesOf(const rapidjson::Value& root, const UnsignedInt language, const bool isDefault) {
    const rapidjson::Value* const localization = memberOf(&root, "localization"_s);
    const rapidjson::Value* const entries = isDefault
        ? memberOf(localization, "terms"_s)
        : memberOf(memberOf(localization, "translations"_s), AllLanguages[language].code);
    return entries && entries->IsObject() ? entries : nullptr;
}

/** The member of the root that a source is below; empty where it names none. */
std::string firstToken(const Containers::StringView sourceText) {
    std::string name;
    if(!sourceText.hasPrefix('/')) return name.append(sourceText.data(), sourceText.size());
    for(std::size_t i = 1; i < sourceText.size() && sourceText[i] != '/'; ++i) {
        if(sourceText[i] != '~') name += sourceText[i];
        else if(++i != sourceText.size()) name += sourceText[i] == '1' ? '/' : '~';
    }
    return name;
}

/** Goes through terms or translations.
    @param name     "sourceText" or "text"
    @param use      is given the value of the name, and returns the size of the text that was looked at
    @return whether the end was reached */
template <class Use>
bool walk(const rapidjson::Value* const entries, const Containers::StringView name, std::size_t& position,
    std::size_t& bytes, Use&& use) {
    if(!entries) return true;
    for(; bytes && position < entries->MemberCount(); ++position) {
        const rapidjson::Value& entry = (entries->MemberBegin() + std::ptrdiff_t(position))->value;
        bytes -= std::min(bytes, BytesPerText + use(stringOf(memberOf(&entry, name))));
    }
    return position >= entries->MemberCount();
}

}

std::size_t FontCoverage::find(const UnsignedInt language) const {
    const auto found = std::find_if(_found.begin(), _found.end(),
        [language](const LanguageLetters& letters) { return letters.language == language; });
    return std::size_t(found - _found.begin());
}

void FontCoverage::restart(const Containers::ArrayView<const UnsignedInt> languages) {
    std::vector<LanguageLetters> found;
    for(const UnsignedInt language: languages) {
        const std::size_t known = find(language);
        found.push_back(known == _found.size() ? LanguageLetters{} : _found[known]);
        found.back().language = language;
    }
    _found = std::move(found);
    _touched.assign(_found.size(), true);
    _touchedCount = _found.size();
    _isRunning = false;
    ++_revision;
}

void FontCoverage::touch(const UnsignedInt language) {
    const std::size_t place = find(language);
    if(place == _found.size() || _touched[place]) return;
    _touched[place] = true;
    ++_touchedCount;
}

void FontCoverage::touchSources(ProjectFile& project) {
    for(const LanguageLetters& letters: _found)
        if(isDefaultLanguage(project.document(), AllLanguages[letters.language].code)) touch(letters.language);
}

bool FontCoverage::add(const UnsignedInt language, const Containers::StringView text) {
    const std::size_t place = find(language);
    if(place == _found.size()) return true;
    LanguageLetters& letters = _found[place];
    const bool wasWell = letters.isWell();
    letters.add(text, *_drawn);
    if(!letters.isWell()) ++_revision;
    // Its position may be past this text already.
    if(_isRunning && _place == place) _running.add(text, *_drawn);
    return wasWell;
}

bool FontCoverage::beginNext() {
    if(_isRunning) return true;
    if(!_touchedCount) return false;
    _place = std::size_t(std::find(_touched.begin(), _touched.end(), true) - _touched.begin());
    _touched[_place] = false;
    --_touchedCount;
    _running = {};
    _running.language = _found[_place].language;
    _text = 0;
    return _isRunning = true;
}

void FontCoverage::learnSourceMember(const Containers::StringView sourceText) {
    // Most terms have theirs below the same member, written in the same way.
    for(const Containers::String& member: _sourceMembers)
        if(sourceText.size() > member.size() + 1 && sourceText[member.size() + 1] == '/' &&
            sourceText.slice(1, member.size() + 1) == member)
            return;
    const std::string member = firstToken(sourceText);
    if(member.empty()) return;
    const Containers::StringView viewed{member.data(), member.size()};
    if(std::find(_sourceMembers.begin(), _sourceMembers.end(), viewed) == _sourceMembers.end())
        _sourceMembers.emplace_back(viewed);
}

void FontCoverage::advance(ProjectFile& project, std::size_t bytes) {
    while(bytes && beginNext()) {
        const bool isDefault = isDefaultLanguage(project.document(), AllLanguages[_running.language].code);
        const bool isAtEnd = walk(entriesOf(project.document(), _running.language, isDefault),
            isDefault ? "sourceText"_s : "text"_s, _text, bytes, [&](Containers::StringView text) {
                if(isDefault) {
                    learnSourceMember(text);
                    text = stringOf(TermSource::value(project, text));
                }
                _running.add(text, *_drawn);
                return text.size();
            });
        if(!isAtEnd) return;
        _found[_place] = std::move(_running);
        _isRunning = false;
        ++_revision;
    }
}

Containers::Array<LanguageLetters> lettersOf(const rapidjson::Value& root,
    const Containers::ArrayView<const UnsignedInt> languages, const UnsignedInt defaultLanguage,
    const LetterSet& drawn) {
    Containers::Array<LanguageLetters> all{Corrade::ValueInit, languages.size()};
    forEachInParallel(languages.size(), [&](const std::size_t i) {
        all[i].language = languages[i];
        const bool isDefault = languages[i] == defaultLanguage;
        DocumentLookup sources{root};
        std::size_t position = 0;
        std::size_t bytes = ~std::size_t{};
        walk(entriesOf(root, languages[i], isDefault), isDefault ? "sourceText"_s : "text"_s, position, bytes,
            [&](Containers::StringView text) {
                if(isDefault && !text.isEmpty()) text = stringOf(sources.find(TermSource::path(text)));
                all[i].add(text, drawn);
                return text.size();
            });
    });
    return all;
}

}
