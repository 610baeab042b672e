#pragma once

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Hears about changes whose path contains the handler's key as a component. It may read the document, and must neither push
    changes nor reset the manager that calls it. */
class ChangeHandler {
public:
    /** @param change           the change that was applied, or of a group that was committed
        @param pathComponents   all pieces of its path, split at "/", empty ones kept; they view the path */
    virtual void handle(const Change& change, Containers::ArrayView<Containers::StringView> pathComponents) = 0;

    virtual ~ChangeHandler();
};

}
