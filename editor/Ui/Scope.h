#pragma once

#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Opens a scope of the widget toolkit and closes it again. When it closes, and the last item is hovered while the key for it is
    held, the whole scope path is shown as a tooltip. */
class Scope {
public:
    /** @param ui       must outlive the guard
        @param name     as for `Ui::pushScope()`: a part of a pointer, or several, and no key as it is. `escaped()` of `PathParts.h` makes
            one of it: `Scope{&ui, escaped(id)}`. */
    explicit Scope(Ui* ui, Containers::StringView name);
    ~Scope();

    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

    Ui* ui;

    /** GUI id of the last part of the name. */
    unsigned id = 0;

    /** The number of levels that the scope opened. */
    unsigned depth = 0;
};

}
