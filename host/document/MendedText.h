#pragma once

#include <string>
#include <string_view>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** A text with a replacement character (U+FFFD) in place of each sequence of bytes that is not well-formed UTF-8, for who would rather lose a letter
    than all of it. */
QUORVANE_API std::string mendedText(std::string_view text);

}
