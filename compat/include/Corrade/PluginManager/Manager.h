#pragma once

#include "Corrade/PluginManager/AbstractManager.h"

namespace Corrade::PluginManager {

/**
 * Finds, loads and instantiates plug-ins of one interface.
 *
 * @tparam T  base class of the plug-ins, derived from AbstractPlugin
 *
 * Must outlive all instances. Function bodies are in Manager.hpp; this header includes them.
 */
template <class T> class Manager: public AbstractManager {
public:
    /** Looks in the given folder or, where that is empty, in the first of `T::pluginSearchPaths()` that exists. */
    explicit Manager(Containers::StringView pluginDirectory);
    explicit Manager();

    /** Of a loaded plug-in alone: aborts otherwise. */
    Containers::Pointer<T> instantiate(Containers::StringView plugin);
    /** Null if it cannot be loaded. */
    Containers::Pointer<T> loadAndInstantiate(Containers::StringView plugin);
};

} // namespace Corrade::PluginManager

#include "Corrade/PluginManager/Manager.hpp"
