#pragma once

#include <functional>
#include <vector>

#include <Corrade/Containers/String.h>

#include "Placeholders.h"
#include "PluralRules.h"
#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** What is different in a translation and should not be. Each answer is the end of a sentence about the translation, empty where all
    is well. Values are shown on one line, and long ones in part. */
namespace TextComparison {

/** Names of placeholders that only one of two texts has. Order does not matter, nor how often a text has one: languages repeat
    names where others do not.
    @param forms        of a form of a plural, the names that all forms of the source have, see @ref addNames() : a translated form
        may have them, too, and `count`, which is always there. Null for any other text.
    @param isOneNumber  whether the form stands for one number: "one apple" does without `count` */
QUORVANE_API Containers::String placeholders(const Placeholders& source, const Placeholders& translation,
    const std::vector<Containers::StringView>* forms = nullptr, bool isOneNumber = false);

/** Names in single braces, or in other than two on both sides, where the translation does not have the placeholder itself:
    `{name}` is plain text to the library.
    @param forms    as above */
QUORVANE_API Containers::String wrongBraces(Containers::StringView sourceText, const Placeholders& source,
    Containers::StringView text, const Placeholders& translation,
    const std::vector<Containers::StringView>* forms = nullptr);

/** Placeholders that both texts have, but with other formats, or escaped (`{{name}}`) in one of them alone. Blanks in formats do not
    matter. */
QUORVANE_API Containers::String formats(const Placeholders& source, const Placeholders& translation);

/** Keys of nestings that only one of two texts has. */
QUORVANE_API Containers::String nestings(const Placeholders& source, const Placeholders& translation);

/** Nestings that lead nowhere.
    @param source       of a translation: its nestings are not asked for again; null for a source
    @param isTarget     whether a key leads to a text */
QUORVANE_API Containers::String unknownNestings(const Placeholders& places, const Placeholders* source,
    const std::function<bool(Containers::StringView key)>& isTarget);

/** Forms that a plural lacks in a language.
    @param missing  at least one
    @param language its name */
QUORVANE_API Containers::String missingForms(PluralCategories missing, Containers::StringView language);

/** Blanks that a text begins or ends with, and the other does not, or with others. */
QUORVANE_API Containers::String outerBlanks(Containers::StringView source, Containers::StringView translation);

/** Whether a text has letters of any script for readers, not counting markup; see @ref TextMarkup . */
QUORVANE_API bool hasLetters(Containers::StringView text);

/** A value as messages have it: on one line, of a long one the beginning. */
QUORVANE_API Containers::String shown(Containers::StringView value);

/** Adds the names of placeholders to some, all in byte order, each once. */
QUORVANE_API void addNames(const Placeholders& places, std::vector<Containers::StringView>& names);

}

}
