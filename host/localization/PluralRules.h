#pragma once

#include <Corrade/Containers/EnumSet.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** What numbers a text is for, by CLDR; a language says which numbers fall into which category. Ordered as plural forms are
    written. */
enum class PluralCategory : unsigned char {
    Zero = 1 << 0,
    One = 1 << 1,
    Two = 1 << 2,
    Few = 1 << 3,
    Many = 1 << 4,
    Other = 1 << 5
};

using PluralCategories = Containers::EnumSet<PluralCategory, 0x3f>;

CORRADE_ENUMSET_OPERATORS(PluralCategories)

/** Whether things are counted ("3 doors") or numbered ("the 3rd door"). */
enum class PluralKind { Cardinal, Ordinal };

constexpr std::size_t PluralCategoryCount = 6;

/** Every category in its order. */
constexpr PluralCategory AllPluralCategories[PluralCategoryCount]{PluralCategory::Zero, PluralCategory::One,
    PluralCategory::Two, PluralCategory::Few, PluralCategory::Many, PluralCategory::Other};

/** The place of a category in @ref AllPluralCategories . */
QUORVANE_API std::size_t pluralCategoryIndex(PluralCategory category);

/** `zero`, `one`, `two`, `few`, `many`, `other`. */
QUORVANE_API Containers::StringView pluralCategoryName(PluralCategory category);

/** The categories that a language tells apart, by the CLDR data of the ICU library: those of the code itself, or of the language
    that the code belongs to. Always with `other`, but for a language that CLDR gives no rules (Latin, Tatar, Klingon) or a code that
    is none: then the set is empty, because what such a language needs is not known. The i18next library takes the rules of the
    language that its program runs in then.

    Looks them up each time: to be asked once for each language, not for each text.
    @param code     BCP 47 */
QUORVANE_API PluralCategories pluralCategories(Containers::StringView code, PluralKind kind);

/** Of the categories that a language tells apart, those that a single whole number falls into, as `many` in Welsh, which is 6
    alone. Decimal fractions do not count. Takes some hundred times as long as @ref pluralCategories() .
    @param code     BCP 47 */
QUORVANE_API PluralCategories singleNumberCategories(Containers::StringView code, PluralKind kind);

}
