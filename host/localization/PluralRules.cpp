#include "PluralRules.h"

#include <bit>
#include <cstring>
#include <memory>

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

}

std::size_t pluralCategoryIndex(const PluralCategory category) {
    return std::size_t(std::countr_zero(static_cast<unsigned char>(category)));
}

Containers::StringView pluralCategoryName(const PluralCategory category) {
    return Names[pluralCategoryIndex(category)];
}

PluralCategories pluralCategories(const Containers::StringView code, const PluralKind kind) {
    UErrorCode error = U_ZERO_ERROR;
    icu::Locale locale = icu::Locale::forLanguageTag({code.data(), int(code.size())}, error);
    // Some codes are other names of a language whose rules they share.
    locale.canonicalize(error);
    if(U_FAILURE(error) || !hasPluralRules(locale.getLanguage())) return {};

    const icu::LocalUPluralRulesPointer rules{uplrules_openForType(
        locale.getName(), kind == PluralKind::Ordinal ? UPLURAL_TYPE_ORDINAL : UPLURAL_TYPE_CARDINAL, &error)};
    if(U_FAILURE(error)) return {};
    const icu::LocalUEnumerationPointer keywords{uplrules_getKeywords(rules.getAlias(), &error)};
    PluralCategories categories;
    while(const char* const keyword = uenum_next(keywords.getAlias(), nullptr, &error))
        for(const PluralCategory category: AllPluralCategories)
            if(pluralCategoryName(category) == keyword) categories |= category;
    return categories;
}

}
