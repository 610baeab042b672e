#pragma once

/** @file Forward declarations of everything in `Corrade::Utility`. */

#include <cstddef>

#include "Corrade/Containers/Containers.h"

namespace Corrade::Utility {

class Configuration;
class ConfigurationGroup;
class Debug;
class Warning;
class Error;
class Fatal;
template <std::size_t> class HashDigest;
class MurmurHash2;

} // namespace Corrade::Utility
