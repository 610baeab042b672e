#pragma once

#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** A language that terms can be translated into. */
struct Language {
    /** English display name. */
    Containers::StringView name;

    /** Code by BCP 47: language, then script and region where they matter. */
    Containers::StringView code;
};

constexpr UnsignedInt LanguageCount = 411;

/** The language of projects that name none: English, `en`. */
constexpr UnsignedInt FallbackLanguage = 89;

/** Every language, ordered by name; names and codes are unique. A language is held everywhere by its index into this table. */
extern QUORVANE_API const Language AllLanguages[LanguageCount];

}
