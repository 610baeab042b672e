#pragma once

#include <initializer_list>

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** The JSON Pointer (RFC 6901) to a value, of the names that lead there, which may hold any characters. */
QUORVANE_API Containers::String jsonPath(Containers::ArrayView<const Containers::StringView> names);
QUORVANE_API Containers::String jsonPath(std::initializer_list<Containers::StringView> names);

}
