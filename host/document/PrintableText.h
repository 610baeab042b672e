#pragma once

#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** A name that may come from anyone, such as that of a file, as it can stand in a message: on one line, in well-formed UTF-8, and
    without what a terminal obeys. Control characters, separators of lines and paragraphs, characters that turn the direction of
    writing, and bytes that are not UTF-8 are shown as `\n`, `\x1b` or `\u202e`. All else stays, backslashes too. */
QUORVANE_API Containers::String printable(Containers::StringView text);

}
