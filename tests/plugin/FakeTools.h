#pragma once

#include <functional>
#include <string>
#include <vector>

#include <Corrade/Containers/Array.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine::Test {

/** Localization tools of a host that only remembers how it was called. Linked into a test program, they take the place of the
    host's own: the module finds the first ones in the process. */
struct FakeTools {
    struct Call {
        /** "gather", "import", "export" or "export compressed". */
        std::string function;
        QuorvaneEditor* editor;
        std::vector<UnsignedInt> languages;
        UnsignedInt defaultLanguage;
        std::string path;
        int format;
    };

    static std::vector<Call> calls;

    /** Called by an import, where set, with the list that the view handed over. */
    static std::function<void(Containers::Array<UnsignedInt>&)> onImport;
};

}
