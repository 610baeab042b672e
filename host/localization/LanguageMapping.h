#pragma once

#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** What the name of a folder or file stands for that is no code of a language. */
struct LanguageMapping {
    /** As the folder or file is called, "enGB" for one. */
    Containers::StringView code;

    /** Index into @ref AllLanguages . */
    UnsignedInt language;
};

}
