#pragma once

#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** What a view takes for granted about the project. While it does not hold, the view is not drawn. */
struct ViewCondition {
    /** Title of the view. */
    Containers::StringView view;

    /** Why it does not hold, as sentences for the user; empty when it holds. */
    Containers::String (*reason)(QuorvaneEditor& editor);

    /** Makes it hold, as one undo step. */
    void (*repair)(QuorvaneEditor& editor);
};

}
