#pragma once

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** What a change does in a few words that can follow a verb, from its path alone: "change of sourceText of menu.start", "removal of
    door in objects". Long keys end in an ellipsis, control characters are blanks. */
QUORVANE_API Containers::String changeName(const Change& change);

/** The same for changes that are undone as one: "4 changes of menu.start", "4 changes in terms", "4 changes". Of very many only
    their number is told.
    @param changes  at least one */
QUORVANE_API Containers::String changeName(Containers::ArrayView<const Change> changes);

}
