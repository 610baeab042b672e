#pragma once

#include <cstddef>

namespace QuorvaneEngine {

/** Steps over what a JSON string holds as it is: well-formed UTF-8 (Unicode 15, table 3-7) but for quotation marks, backslashes and
    control characters below U+0020.
    @return the first byte of anything else, which is 0x80 or more where it is not well-formed; @p end where there is nothing else */
const char* skipPlainText(const char* at, const char* end);

/** The size of the well-formed UTF-8 sequence that begins at @p at, 0 where none does.
    @param at   before @p end */
std::size_t utf8SequenceSize(const char* at, const char* end);

}
