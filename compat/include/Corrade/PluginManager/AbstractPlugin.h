#pragma once

#include "Corrade/Containers/Pointer.h"
#include "Corrade/PluginManager/PluginManager.h"
#include "Corrade/Utility/Utility.h"

namespace Corrade::PluginManager {

/**
 * Base of all plug-in classes. The static functions are hidden by those of a derived class where it wants others.
 *
 * Instances made by a manager are known to it: a plug-in is unloaded only when none is left, or all the rest may be
 * deleted.
 */
class CORRADE_VISIBILITY_EXPORT AbstractPlugin {
public:
    /** Must equal what the library itself says, to the letter. Global. */
    static Containers::StringView pluginInterface();
    /** Where to look without an explicit folder; relative to the program. */
    static Containers::Array<Containers::String> pluginSearchPaths();
    /** ".so" on this system. Global. */
    static Containers::StringView pluginSuffix();
    /** ".conf"; empty for plug-ins without a metadata file. Global. */
    static Containers::StringView pluginMetadataSuffix();
    /** Called after loading and before unloading; do nothing. */
    static void initialize();
    static void finalize();

    /** An instance that no manager knows. */
    explicit AbstractPlugin();
    /** @param plugin  name or alias by which it was asked for */
    explicit AbstractPlugin(AbstractManager& manager, const Containers::StringView& plugin);
    AbstractPlugin(const AbstractPlugin&) = delete;
    AbstractPlugin& operator=(const AbstractPlugin&) = delete;
    virtual ~AbstractPlugin() = 0;

    /** Whether the manager may delete this instance in order to unload; by default it may not. */
    virtual bool canBeDeleted();

    /** Name or alias by which it was asked for; empty without a manager. */
    Containers::StringView plugin() const;
    /** Null without a manager. */
    const PluginMetadata* metadata() const;

private:
    struct State;
    Containers::Pointer<State> _state;
};

} // namespace Corrade::PluginManager
