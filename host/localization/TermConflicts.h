#pragma once

#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"
#include "TermTree.h"

namespace QuorvaneEngine {

/** Why a key has no place, for people: the end of a sentence.
    @param other    the key that it is in conflict with */
QUORVANE_API Containers::String describe(TermConflict conflict, Containers::StringView other);

}
