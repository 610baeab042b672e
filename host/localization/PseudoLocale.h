#pragma once

#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** A language that nobody speaks and everybody can read: it shows, before the first translation is there, which texts do not come
    from the terms, which do not fit, and which fonts lack letters.

    "Save {{name}}" becomes "[Šåṽé {{name}} ~]": letters have accents, the text is longer, and brackets show where it begins
    and ends. */
namespace PseudoLocale {

/** CLDR's code for accented English. It is a well-formed code by BCP 47, its region for private use, so that no language is ever
    called so; and libraries that know plural rules take those of English. */
constexpr const char* Code = "en-XA";

/** The text in the pseudo-locale; the same for the same text, empty for an empty one.

    What the application or its markup reads is left as it is: placeholders and nestings (see @ref Placeholders ), HTML tags,
    HTML entities, and escapes of a backslash and what belongs to it. In all the rest each letter from a to z gets an accent, unless
    it has a combining mark already, and any other character stays.

    Longer by 40 %: for every five characters, not counting what is left as it is, come two more, rounded up. They stand behind the
    text, tildes in words of five or six. The brackets are not counted. A character is a code point with the combining marks and
    joiners that follow it. */
QUORVANE_API Containers::String text(Containers::StringView source);

}

}
