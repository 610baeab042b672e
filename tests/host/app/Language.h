#pragma once

#include "localization/LanguageLookup.h"

namespace QuorvaneEngine::Test {

/** Index of a language in the table of all of them, by its code, which must be there. */
inline UnsignedInt language(const char* code) { return UnsignedInt(findLanguage(code)); }

}
