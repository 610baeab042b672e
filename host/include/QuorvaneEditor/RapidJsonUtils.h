#pragma once

#include <Corrade/Containers/StringIterable.h>
#include <Corrade/Containers/StringView.h>
#include <Corrade/Utility/Utility.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine::RapidJsonUtils {

/** The index of @p text among @p values, -1 where it is none of them. */
QUORVANE_API Int enumStringToValue(Containers::StringView text, const Containers::StringIterable& values);

}

namespace rapidjson {

/** Prints a value as compact JSON text, on one line, with characters as they are. Any value is printed, however deep; numbers
    are printed so that reading them back gives the same ones. */
QUORVANE_API Corrade::Utility::Debug& operator<<(Corrade::Utility::Debug& debug, const Value& value);

}
