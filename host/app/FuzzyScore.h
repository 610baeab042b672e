#pragma once

#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** The score of a text in which nothing was found. */
constexpr Int NoFuzzyMatch = -1;

/** How well a text fits what was typed of it: all characters of the search, blanks aside, stand in it in this order, without regard
    to case. Characters that follow each other or begin a word count more. A text has the score of its best match.
    @return at least 0, the higher the better; @ref NoFuzzyMatch where characters are missing */
QUORVANE_API Int fuzzyScore(Containers::StringView text, Containers::StringView search);

}
