#pragma once

#include <utility>

namespace Corrade::Utility {

using std::forward;
using std::move;
using std::swap;

} // namespace Corrade::Utility
