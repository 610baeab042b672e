#pragma once

#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/AllLanguages.h"

namespace QuorvaneEngine {

/** The index of the language with exactly this code (BCP 47) in @ref AllLanguages, -1 where the table has none. */
QUORVANE_API Int findLanguage(Containers::StringView code);

}
