#pragma once

#include <cstddef>

#include "LastRun.h"
#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Makes a term for every text of an object that has none: each non-empty string member, at any depth of an entry of "objects",
    that is called `text`, `title`, `label`, `description` or `hint`, or whose name ends in `Text`. One undo step; terms that exist
    stay as they are.

    The key tells the place, so that it stays when the text changes: the object's ID and the names below it, in lower case, joined
    by "_" and made of `[a-z0-9_]`, never digits alone. Where that is taken, "_2", "_3", ... follows.
    @param run      receives the group of the changes, and a line of the report for every term; where the project's own containers are
        no objects, a refusal, and no term is made
    @param isDryRun whether to report only, and change nothing
    @return how many terms were made, or would be */
QUORVANE_API std::size_t gatherTerms(QuorvaneEditor& editor, LocalizationRun& run, bool isDryRun = false);

}
