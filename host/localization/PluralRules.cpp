#include "PluralRules.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <memory>
#include <utility>

#include <Corrade/Containers/String.h>
#include <unicode/locid.h>
#include <unicode/plurrule.h>
#include <unicode/strenum.h>
#include <unicode/uenum.h>
#include <unicode/upluralrules.h>

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

constexpr Containers::StringView Names[PluralCategoryCount]{"zero"_s, "one"_s, "two"_s, "few"_s, "many"_s, "other"_s};

/** ICU answers for a language without rules with those of the root, as if it had no plurals. */
bool hasPluralRules(const char* const language) {
    UErrorCode error = U_ZERO_ERROR;
    const std::unique_ptr<icu::StringEnumeration> known{icu::PluralRules::getAvailableLocales(error)};
    if(U_FAILURE(error) || !known) return false;
    while(const char* const name = known->next(nullptr, error))
        if(std::strcmp(name, language) == 0) return true;
    return false;
}

icu::LocalUPluralRulesPointer openRules(const Containers::StringView code, const PluralKind kind) {
    UErrorCode error = U_ZERO_ERROR;
    icu::Locale locale = icu::Locale::forLanguageTag({code.data(), int(code.size())}, error);
    // Some codes are other names of a language whose rules they share.
    locale.canonicalize(error);
    if(U_FAILURE(error) || !hasPluralRules(locale.getLanguage())) return icu::LocalUPluralRulesPointer{};

    icu::LocalUPluralRulesPointer rules{uplrules_openForType(
        locale.getName(), kind == PluralKind::Ordinal ? UPLURAL_TYPE_ORDINAL : UPLURAL_TYPE_CARDINAL, &error)};
    return U_FAILURE(error) ? icu::LocalUPluralRulesPointer{} : std::move(rules);
}

/** The category of a number, by its place; -1 where there is none. */
int categoryOf(const UPluralRules& rules, const int number) {
    constexpr int32_t KeywordLength = 16;
    UChar keyword[KeywordLength];
    UErrorCode error = U_ZERO_ERROR;
    const int32_t length = uplrules_select(&rules, number, keyword, KeywordLength, &error);
    if(U_FAILURE(error)) return -1;
    for(std::size_t i = 0; i != PluralCategoryCount; ++i)
        if(std::equal(Names[i].begin(), Names[i].end(), keyword, keyword + length)) return int(i);
    return -1;
}

}

std::size_t pluralCategoryIndex(const PluralCategory category) {
    return std::size_t(std::countr_zero(static_cast<unsigned char>(category)));
}

Containers::StringView pluralCategoryName(const PluralCategory category) {
    return Names[pluralCategoryIndex(category)];
}

PluralCategories pluralCategories(const Containers::StringView code, const PluralKind kind) {
    const icu::LocalUPluralRulesPointer rules = openRules(code, kind);
    if(rules.isNull()) return {};
    UErrorCode error = U_ZERO_ERROR;
    const icu::LocalUEnumerationPointer keywords{uplrules_getKeywords(rules.getAlias(), &error)};
    PluralCategories categories;
    while(const char* const keyword = uenum_next(keywords.getAlias(), nullptr, &error))
        for(const PluralCategory category: AllPluralCategories)
            if(pluralCategoryName(category) == keyword) categories |= category;
    return categories;
}

PluralCategories singleNumberCategories(const Containers::StringView code, const PluralKind kind) {
    const icu::LocalUPluralRulesPointer rules = openRules(code, kind);
    if(rules.isNull()) return {};
    // Rules look at the last two digits of a number, and at whole millions.
    constexpr int LastNumber = 200;
    constexpr int Millions[]{1000000, 2000000};
    int counts[PluralCategoryCount]{};
    const auto count = [&](const int number) {
        const int category = categoryOf(*rules, number);
        if(category != -1) ++counts[category];
    };
    for(int number = 0; number <= LastNumber; ++number) count(number);
    for(const int number: Millions) count(number);
    PluralCategories categories;
    for(std::size_t i = 0; i != PluralCategoryCount; ++i)
        if(counts[i] == 1) categories |= AllPluralCategories[i];
    return categories;
}

}
