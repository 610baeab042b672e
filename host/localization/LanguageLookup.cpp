#include "LanguageLookup.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include <Corrade/Containers/GrowableArray.h>
#include <rapidjson/document.h>
#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/uscript.h>

#include "QuorvaneEditor/ProjectFile.h"
#include "QuorvaneEditor/ValueAccess.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

/** Nothing that names a language is longer. */
constexpr std::size_t LongestName = 64;

/** Countries that are named for another language than the one that most people there read, or whose code CLDR reads otherwise. */
constexpr std::pair<std::string_view, const char*> NamedForALanguage[]{{"kz", "kk"}, {"tw", "zh"}};

/** Other codes of three letters (ISO 639-2/B) for a language. More are other names by CLDR, but look like words (`src`). */
constexpr std::string_view BibliographicCodes =
    "alb arm baq bur chi cze dut fre geo ger gre ice mac mao may per rum slo tib wel";

std::string_view viewOf(const Containers::StringView text) { return {text.data(), text.size()}; }

bool isUpper(const char c) { return c >= 'A' && c <= 'Z'; }
bool isLower(const char c) { return c >= 'a' && c <= 'z'; }
bool isLetter(const char c) { return isUpper(c) || isLower(c); }
bool isDigit(const char c) { return c >= '0' && c <= '9'; }
char lower(const char c) { return isUpper(c) ? char(c - 'A' + 'a') : c; }
char upper(const char c) { return isLower(c) ? char(c - 'a' + 'A') : c; }

bool areLetters(const std::string_view text) { return std::all_of(text.begin(), text.end(), isLetter); }

std::string lowerLetters(const std::string_view text) {
    std::string letters;
    for(const char c: text)
        if(isLetter(c)) letters += lower(c);
    return letters;
}

/** The four letters of a script that goes by these or by its English name; empty where none does. */
std::string scriptNamed(const std::string_view name) {
    if(name.size() < 4) return {};
    const Int script = u_getPropertyValueEnum(UCHAR_SCRIPT, std::string{name}.c_str());
    if(script < 0 || script == USCRIPT_COMMON || script == USCRIPT_INHERITED || script == USCRIPT_UNKNOWN) return {};
    const char* const code = u_getPropertyValueName(UCHAR_SCRIPT, script, U_SHORT_PROPERTY_NAME);
    return code ? code : std::string{};
}

struct Subtags {
    std::string language, script, region;
    /** The region was concluded from a country that stands in the language's place. */
    bool isRegionConcluded = false;

    std::string tag() const {
        return language + (script.empty() ? "" : "-" + script) + (region.empty() ? "" : "-" + region);
    }
};

Int find(const std::string& code) { return findLanguage({code.data(), code.size()}); }

bool isLanguage(const std::string& code) { return *icu::Locale{code.c_str()}.getISO3Language() != '\0'; }
bool isCountry(const std::string& code) { return *icu::Locale{"", code.c_str()}.getISO3Country() != '\0'; }

/** A hyphen where one is missing: `enGB`, `zhHansCN`, `ptbr`. */
std::string withHyphens(const std::string_view text) {
    if(text.size() == 4 && areLetters(text)) {
        Subtags subtags;
        for(const std::size_t i: {0, 1}) {
            subtags.language += lower(text[i]);
            subtags.region += upper(text[i + 2]);
        }
        if(find(subtags.tag()) != -1) return subtags.tag();
    }
    std::string out;
    for(std::size_t i = 0; i != text.size(); ++i) {
        const bool isStart = i != 0 && isLower(text[i - 1]) && isUpper(text[i]) && i + 1 != text.size() &&
            (isUpper(text[i + 1]) || !scriptNamed(text.substr(i, 4)).empty());
        if(isStart) out += '-';
        out += text[i] == '_' ? '-' : text[i];
    }
    return out;
}

bool addSubtag(Subtags& subtags, const std::string_view subtag) {
    if(const std::string script = scriptNamed(subtag); !script.empty()) {
        if(!subtags.script.empty() || !subtags.region.empty()) return false;
        subtags.script = script;
        return true;
    }
    if(!subtags.region.empty()) return false;
    if(subtag.size() == 3 && std::all_of(subtag.begin(), subtag.end(), isDigit)) subtags.region = subtag;
    else if(subtag.size() == 2 && areLetters(subtag)) subtags.region = {upper(subtag[0]), upper(subtag[1])};
    return !subtags.region.empty();
}

bool readSubtags(const std::string_view name, Subtags& subtags) {
    // POSIX puts a script, and other things that tell no language, behind "@".
    const std::size_t at = std::min(name.find('@'), name.size());
    const std::string code = withHyphens(name.substr(0, at));
    std::size_t begin = 0;
    for(std::size_t end = 0; end != code.size(); begin = end + 1) {
        end = std::min(code.find('-', begin), code.size());
        const std::string_view subtag = std::string_view{code}.substr(begin, end - begin);
        if(begin != 0) {
            if(!addSubtag(subtags, subtag)) return false;
            continue;
        }
        if(subtag.size() < 2 || subtag.size() > 3 || !areLetters(subtag)) return false;
        subtags.language = lowerLetters(subtag);
    }
    if(at != name.size() && subtags.script.empty()) subtags.script = scriptNamed(name.substr(at + 1));
    return !subtags.language.empty();
}

icu::Locale localeOf(const std::string& tag) {
    UErrorCode error = U_ZERO_ERROR;
    icu::Locale locale = icu::Locale::forLanguageTag(tag, error);
    locale.canonicalize(error);
    return U_SUCCESS(error) ? locale : icu::Locale::getRoot();
}

/** The same with its script and region, where CLDR knows them. */
icu::Locale completed(icu::Locale locale) {
    UErrorCode error = U_ZERO_ERROR;
    locale.addLikelySubtags(error);
    return locale;
}

/** Puts a language into the place of a country. */
void takeCountryForItsLanguage(Subtags& subtags) {
    const auto* const named = std::find_if(std::begin(NamedForALanguage), std::end(NamedForALanguage),
        [&](const auto& country) { return country.first == subtags.language; });
    const bool isNamed = named != std::end(NamedForALanguage);
    if(!isNamed && (isLanguage(subtags.language) || !isCountry(subtags.language))) return;
    const std::string country{upper(subtags.language[0]), upper(subtags.language[1])};
    subtags.language = isNamed ? named->second : completed(localeOf("und-" + country)).getLanguage();
    if(!subtags.region.empty()) return;
    subtags.region = country;
    subtags.isRegionConcluded = true;
}

/** The language in the same script that has nothing more than what is wanted, and most of that. */
Int nearestTo(const Subtags& subtags) {
    const icu::Locale wanted = localeOf(subtags.tag());
    const icu::Locale whole = completed(wanted);
    const std::string_view language = wanted.getLanguage();
    if(language.empty()) return -1;
    Int nearest = -1, best = 0;
    for(UnsignedInt i = 0; i != LanguageCount; ++i) {
        const std::string_view code = viewOf(AllLanguages[i].code);
        if(code.substr(0, code.find('-')) != language) continue;
        const icu::Locale given = localeOf(std::string{code});
        const icu::Locale givenWhole = completed(given);
        if(std::strcmp(givenWhole.getScript(), whole.getScript()) != 0) continue;
        const bool isThere = std::strcmp(givenWhole.getCountry(), whole.getCountry()) == 0;
        if(!isThere && (*given.getCountry() || subtags.isRegionConcluded)) continue;
        Int score = isThere ? 4 : 0;
        if(*given.getCountry()) score += subtags.region.empty() || subtags.isRegionConcluded ? -1 : 1;
        if(*given.getScript()) score += subtags.script.empty() ? -1 : 1;
        if(nearest != -1 && score <= best) continue;
        nearest = Int(i);
        best = score;
    }
    return nearest;
}

Int findName(const std::string_view name) {
    const std::string letters = lowerLetters(name);
    if(letters.empty() || name.find('@') != name.npos) return -1;
    for(UnsignedInt i = 0; i != LanguageCount; ++i) {
        const std::string_view known = viewOf(AllLanguages[i].name);
        // Without its other letters a name would be a different word.
        if(std::all_of(known.begin(), known.end(), [](const char c) { return static_cast<unsigned char>(c) < 0x80; }) &&
            lowerLetters(known) == letters)
            return Int(i);
    }
    return -1;
}

}

Int findLanguage(const Containers::StringView code) {
    static const std::array<UnsignedShort, LanguageCount> sorted = [] {
        std::array<UnsignedShort, LanguageCount> indices;
        for(UnsignedInt i = 0; i != LanguageCount; ++i) indices[i] = UnsignedShort(i);
        std::sort(indices.begin(), indices.end(), [](const UnsignedShort a, const UnsignedShort b) {
            return viewOf(AllLanguages[a].code) < viewOf(AllLanguages[b].code);
        });
        return indices;
    }();
    const std::string_view text = viewOf(code);
    const auto* const found = std::lower_bound(
        sorted.begin(), sorted.end(), text, [](const UnsignedShort index, const std::string_view wanted) {
            return viewOf(AllLanguages[index].code) < wanted;
        });
    return found != sorted.end() && viewOf(AllLanguages[*found].code) == text ? Int(*found) : -1;
}

Containers::Array<UnsignedInt> languagesOf(ProjectFile& project) {
    Containers::Array<UnsignedInt> languages;
    for(const Containers::StringView code: project.root()["languages"_s])
        if(const Int language = findLanguage(code); language != -1)
            Containers::arrayAppend(languages, UnsignedInt(language));
    return languages;
}

Int nearestLanguage(const Containers::StringView name) {
    if(const Int exact = findLanguage(name); exact != -1) return exact;
    const std::string_view text = viewOf(name);
    const bool isPlain = std::all_of(
        text.begin(), text.end(), [](const char c) { return isLetter(c) || isDigit(c) || std::strchr("-_@ (,)", c); });
    if(text.size() > LongestName || !isPlain || text.find('\0') != text.npos) return -1;
    if(const Int named = findName(text); named != -1) return named;

    Subtags subtags;
    if(!readSubtags(text, subtags)) return -1;
    if(const Int other = find(subtags.tag()); other != -1) return other;
    if(subtags.language.size() == 2) takeCountryForItsLanguage(subtags);
    const bool hasMore = !subtags.script.empty() || !subtags.region.empty();
    if(!subtags.region.empty() && !isCountry(localeOf("und-" + subtags.region).getCountry())) return -1;
    if(subtags.language.size() == 3 && !hasMore &&
        BibliographicCodes.find(subtags.language) == std::string_view::npos &&
        localeOf(subtags.language).getISO3Language() != subtags.language)
        return -1;
    return nearestTo(subtags);
}

Int sameLanguage(const UnsignedInt language, const Containers::ArrayView<const UnsignedInt> some) {
    if(std::find(some.begin(), some.end(), language) != some.end()) return Int(language);
    const icu::Locale given = localeOf(std::string{viewOf(AllLanguages[language].code)});
    const icu::Locale whole = completed(given);
    Int same = -1;
    for(const UnsignedInt one: some) {
        const icu::Locale other = completed(localeOf(std::string{viewOf(AllLanguages[one].code)}));
        if(std::strcmp(other.getName(), whole.getName()) == 0) return Int(one);
        const bool isSame = std::strcmp(other.getLanguage(), whole.getLanguage()) == 0 &&
            std::strcmp(other.getScript(), whole.getScript()) == 0;
        if(same == -1 && isSame && !*given.getCountry()) same = Int(one);
    }
    return same;
}

}
