#pragma once

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** The name that was most likely meant by one that is not among @p names : the only one that it begins, else the nearest by at most
    two letters that are missing, superfluous or wrong, or swapped neighbours. Empty where none comes near. */
QUORVANE_API Containers::StringView nearestName(
    Containers::StringView name, Containers::ArrayView<const Containers::StringView> names);

}
