#pragma once

#include <string>

#include <Corrade/Containers/ArrayView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

struct LanguageLetters;

/** Tells people which languages do not look as they should, and why. */
namespace FontWords {

/** A few words: "Arabic: letters are not joined", "Japanese, Thai: not drawn as written". Empty where everything is well. */
QUORVANE_API std::string summary(Containers::ArrayView<const LanguageLetters> languages);

/** A line for each language that does not look as it should, and what all of it means. Empty where everything is well. */
QUORVANE_API std::string details(Containers::ArrayView<const LanguageLetters> languages);

/** "U+706F". */
QUORVANE_API std::string codePoint(char32_t letter);

}

}
