#pragma once

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** How far one text is translated. The first one that holds counts. */
enum class TranslationState {
    /** There is no text, or it is empty. */
    Missing,
    /** The text translates another source text than today's, or does not say which: its fingerprint is not that of the source. */
    Stale,
    /** Its `state` is "draft". */
    Draft,
    /** Its `state` is "review". */
    Review,
    /** Whatever else its `state` is. */
    Done
};

constexpr std::size_t TranslationStateCount = 5;

/** `missing`, `stale`, `draft`, `review`, `done`. */
QUORVANE_API Containers::StringView translationStateName(TranslationState state);

/** The state of one entry of `/localization/translations/<code>`.
    @param translation      of any type, null for none
    @param fingerprint      of today's source text; see @ref fingerprint() */
QUORVANE_API TranslationState translationState(const rapidjson::Value* translation, Containers::StringView fingerprint);

/** How far one language is translated. */
struct LanguageStatus {
    /** Index into @ref AllLanguages . */
    UnsignedInt language = 0;

    /** Texts that the language needs, in the order of @ref TranslationState . */
    UnsignedInt counts[TranslationStateCount]{};

    UnsignedInt count(const TranslationState state) const { return counts[std::size_t(state)]; }

    /** All texts that the language needs. */
    UnsignedInt total() const { return counts[0] + counts[1] + counts[2] + counts[3] + counts[4]; }
};

/** Counts the texts that languages need, by how far they are translated. A language needs

    -   a text for every term that is translatable and has a source text that is not empty, unless the term is a form of a plural (see
        @ref PluralSets ) for numbers that the language does not tell apart: Japanese needs no `door_one`. The form `zero` is needed
        wherever there is such a term;
    -   a text for each form of a plural that the language tells apart and no term has (Polish needs `door_few`), where the term of
        the form `other` is one of those above. Its source text is that of `other`.

    A language that CLDR gives no rules needs the forms that there are terms for. The default language needs its terms alone, and they
    are done.

    Reads the document and no index of the project: may run on any thread while nobody changes the project. Takes time in
    proportion to the project's terms and translations, languages on all cores.
    @param root             the project's document, of any content
    @param languages        indices into @ref AllLanguages
    @param defaultLanguage  index into @ref AllLanguages
    @return for each of @p languages its own, in their order */
QUORVANE_API Containers::Array<LanguageStatus> localizationStatus(
    const rapidjson::Value& root, Containers::ArrayView<const UnsignedInt> languages, UnsignedInt defaultLanguage);

}
