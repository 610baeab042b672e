#pragma once

/** @file Forward declarations of everything in `Corrade::PluginManager`. */

#include "Corrade/Utility/VisibilityMacros.h"

namespace Corrade::PluginManager {

enum class LoadState : unsigned short;
class AbstractManager;
class AbstractPlugin;
template <class> class Manager;
class PluginMetadata;

} // namespace Corrade::PluginManager

#define CORRADE_PLUGIN_EXPORT CORRADE_VISIBILITY_EXPORT
