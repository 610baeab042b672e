#pragma once

/** @file Output of `std::string` to Debug. */

#include <string>

#include "Corrade/Containers/StringView.h"
#include "Corrade/Utility/Debug.h"

namespace Corrade::Utility {

inline Debug& operator<<(Debug& debug, const std::string& value) {
    return debug << Containers::StringView(value.data(), value.size());
}

} // namespace Corrade::Utility
