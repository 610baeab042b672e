#pragma once

#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** What stands above the window: "* lighthouse (read-only) - Quorvane", with a star for unsaved changes. */
class QUORVANE_API WindowTitle {
public:
    /** Allocates only where something is different.
        @param folder   of the open project; empty for none
        @return whether the title is another one */
    bool update(Containers::StringView folder, bool isUnsaved, bool isReadOnly);

    /** NUL-terminated. */
    Containers::StringView text() const { return _text; }

private:
    Containers::String _folder;
    bool _isUnsaved = false;
    bool _isReadOnly = false;
    Containers::String _text = "Quorvane";
};

}
