#include "fonts/FontCoverage.h"

#include <rapidjson/document.h>
#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include "QuorvaneEditor/AllLanguages.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "localization/DocumentLookup.h"
#include "localization/TermSource.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

constexpr char32_t FirstNonAscii = 0x80;

/** Codes that are named before the rest is counted. */
constexpr std::size_t NamedLanguages = 5;

/** Whether a letter is a place for ink. */
bool isVisible(const char32_t letter) {
    const auto code = UChar32(letter);
    return u_isgraph(code) && !u_hasBinaryProperty(code, UCHAR_DEFAULT_IGNORABLE_CODE_POINT);
}

bool isShaped(const char32_t letter) {
    const auto code = UChar32(letter);
    const UCharDirection direction = u_charDirection(code);
    if(direction == U_RIGHT_TO_LEFT || direction == U_RIGHT_TO_LEFT_ARABIC) return true;
    const int joining = u_getIntPropertyValue(code, UCHAR_JOINING_TYPE);
    if(joining == U_JT_DUAL_JOINING || joining == U_JT_RIGHT_JOINING || joining == U_JT_LEFT_JOINING) return true;
    const int hangul = u_getIntPropertyValue(code, UCHAR_HANGUL_SYLLABLE_TYPE);
    if(hangul == U_HST_LEADING_JAMO || hangul == U_HST_VOWEL_JAMO || hangul == U_HST_TRAILING_JAMO) return true;
    return U_GET_GC_MASK(code) & U_GC_M_MASK;
}

Containers::StringView stringOf(const rapidjson::Value* const value) {
    if(!value || !value->IsString()) return {};
    return {value->GetString(), value->GetStringLength()};
}

bool isDefaultLanguage(const rapidjson::Value& root, const Containers::StringView code) {
    const rapidjson::Value* const mark = memberOf(memberOf(memberOf(&root, "languages"_s), code), "isDefault"_s);
    return mark && mark->IsTrue();
}

/** "ar, he", and how many more there are. */
template <class Condition>
std::string codesOf(const std::vector<LanguageLetters>& languages, std::size_t& count, Condition&& condition) {
    std::string codes;
    count = 0;
    for(const LanguageLetters& language: languages) {
        if(!condition(language)) continue;
        if(++count > NamedLanguages) continue;
        const Containers::StringView code = AllLanguages[language.language].code;
        codes.append(codes.empty() ? "" : ", ").append(code.data(), code.size());
    }
    if(count > NamedLanguages) codes += " and " + std::to_string(count - NamedLanguages) + " more";
    return codes;
}

}

void FontCoverage::restart(const Containers::ArrayView<const UnsignedInt> languages) {
    _running.clear();
    for(const UnsignedInt language: languages) _running.push_back({language, 0, 0, false});
    _language = _text = 0;
    _seen.clear();
    if(isFinished()) _found.clear();
}

void FontCoverage::look(const Containers::StringView text) {
    LanguageLetters& language = _running[_language];
    for(std::int32_t at = 0; std::size_t(at) < text.size();) {
        UChar32 code = 0;
        U8_NEXT_OR_FFFD(text.data(), at, std::int32_t(text.size()), code);
        const auto letter = char32_t(code);
        if(letter < FirstNonAscii || _seen.has(letter)) continue;
        _seen.add(letter);
        if(!isVisible(letter)) continue;
        language.needsShaping = language.needsShaping || isShaped(letter);
        if(_drawn->has(letter)) continue;
        if(!language.undrawn++) language.firstUndrawn = letter;
    }
}

bool FontCoverage::advanceLanguage(ProjectFile& project, std::size_t& texts) {
    const UnsignedInt language = _running[_language].language;
    const bool isDefault = isDefaultLanguage(project.document(), AllLanguages[language].code);
    const rapidjson::Value* const localization = memberOf(&project.document(), "localization"_s);
    const rapidjson::Value* const entries = isDefault
        ? memberOf(localization, "terms"_s)
        : memberOf(memberOf(localization, "translations"_s), AllLanguages[language].code);
    if(!entries || !entries->IsObject()) return true;
    for(; texts && _text < entries->MemberCount(); --texts, ++_text) {
        const rapidjson::Value& entry = (entries->MemberBegin() + std::ptrdiff_t(_text))->value;
        const Containers::StringView text = stringOf(memberOf(&entry, isDefault ? "sourceText"_s : "text"_s));
        look(isDefault ? stringOf(TermSource::value(project, text)) : text);
    }
    return _text == entries->MemberCount();
}

void FontCoverage::advance(ProjectFile& project, std::size_t texts) {
    if(isFinished()) return;
    while(texts && advanceLanguage(project, texts)) {
        _text = 0;
        _seen.clear();
        if(++_language == _running.size()) {
            _found = _running;
            return;
        }
    }
}

std::string FontCoverage::summary() const {
    std::size_t count = 0;
    std::string text = codesOf(_found, count, [](const LanguageLetters& language) { return language.undrawn != 0; });
    if(count) text += " cannot be drawn";
    const std::string shaped =
        codesOf(_found, count, [](const LanguageLetters& language) { return language.needsShaping; });
    if(!count) return text;
    return (text.empty() ? text : text + "; ") + shaped + (count == 1 ? " needs shaping" : " need shaping");
}

}
