#pragma once

#include <cstddef>

#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine::Utils {

/** Searches without regard to case, by Unicode's simple case folding (CaseFolding.txt, status C and S).
    @return the byte position of the first occurrence in @p haystack as it stands, -1 where there is none; 0 for an empty
        @p needle. Bytes that are not valid UTF-8 match themselves. */
QUORVANE_API std::ptrdiff_t caseInsensitiveSearch(Containers::StringView haystack, Containers::StringView needle);

}
