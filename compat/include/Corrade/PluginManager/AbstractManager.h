#pragma once

#include "Corrade/Containers/EnumSet.h"
#include "Corrade/Containers/Pointer.h"
#include "Corrade/PluginManager/PluginManager.h"
#include "Corrade/Utility/Utility.h"

namespace Corrade::PluginManager {

/** Where a plug-in stands. Loaded contains Static. */
enum class LoadState : unsigned short {
    NotFound = 1 << 0,
    WrongPluginVersion = 1 << 1,
    WrongInterfaceVersion = 1 << 2,
    WrongMetadataFile = 1 << 3,
    UnresolvedDependency = 1 << 4,
    LoadFailed = 1 << 5,
    /** Never in this subset, which has no static plug-ins. */
    Static = 1 << 6,
    Loaded = (1 << 7) | Static,
    NotLoaded = 1 << 8,
    UnloadFailed = 1 << 9,
    /** Other loaded plug-ins need it. */
    Required = 1 << 10,
    /** There are instances, or a loaded plug-in of the same name. */
    Used = 1 << 11
};
using LoadStates = Containers::EnumSet<LoadState>;
CORRADE_ENUMSET_OPERATORS(LoadStates)

Utility::Debug& operator<<(Utility::Debug& debug, LoadState value);

namespace Implementation {
struct Plugin;
}

/** The part of Manager that does not depend on the class of the plug-ins. */
class AbstractManager {
public:
    /** Version of the entry points, CORRADE_PLUGIN_VERSION. */
    static const int Version;

    AbstractManager(const AbstractManager&) = delete;
    AbstractManager& operator=(const AbstractManager&) = delete;

    Containers::StringView pluginInterface() const;
    Containers::StringView pluginDirectory() const;
    /** Forgets plug-ins that are not loaded, and looks for others in the folder, which need not exist. */
    void setPluginDirectory(Containers::StringView directory);
    void reloadPluginDirectory();
    /** Sorted; views live until the folder changes. */
    Containers::Array<Containers::StringView> pluginList() const;
    /** All names that can be loaded: of plug-ins, and what they provide. Sorted. */
    Containers::Array<Containers::StringView> aliasList() const;
    /** Null if there is no such plug-in. */
    const PluginMetadata* metadata(Containers::StringView plugin) const;
    LoadState loadState(Containers::StringView plugin) const;
    /**
     * Loads a plug-in and what it depends on; what is loaded stays so. A name with the suffix is the path of a file,
     * which then takes the place of a plug-in of that name that is not loaded.
     */
    LoadState load(Containers::StringView plugin);
    /** Unloads a plug-in that nobody needs, after deleting its instances, where all of them agree. */
    LoadState unload(Containers::StringView plugin);

protected:
    explicit AbstractManager(Containers::StringView pluginInterface,
        Containers::ArrayView<const Containers::String> pluginSearchPaths, Containers::StringView pluginSuffix,
        Containers::StringView pluginMetadataSuffix, Containers::StringView pluginDirectory);
    /** Unloads everything; a plug-in that cannot be unloaded aborts. */
    ~AbstractManager();

    Containers::Pointer<AbstractPlugin> instantiateInternal(Containers::StringView plugin);
    Containers::Pointer<AbstractPlugin> loadAndInstantiateInternal(Containers::StringView plugin);

private:
    friend AbstractPlugin;
    struct State;

    Implementation::Plugin* find(Containers::StringView alias) const;
    void add(Containers::Pointer<Implementation::Plugin>&& plugin);
    LoadState loadFile(Containers::StringView filename);
    LoadState load(Implementation::Plugin& plugin, Containers::StringView filename);
    LoadState unload(Implementation::Plugin& plugin);
    void unloadWithUsers(Implementation::Plugin& plugin);

    Containers::Pointer<State> _state;
};

} // namespace Corrade::PluginManager

#define CORRADE_PLUGIN_VERSION 7

/**
 * The five entry points of a plug-in library, as C symbols. Only where CORRADE_DYNAMIC_PLUGIN is defined; else nothing.
 *
 * @param name       as its file is called
 * @param className  the plug-in's class, with a constructor of manager and name
 * @param interface_ the string that pluginInterface() of the base class gives
 */
#ifdef CORRADE_DYNAMIC_PLUGIN
#define CORRADE_PLUGIN_REGISTER(name, className, interface_)                                                           \
    extern "C" {                                                                                                       \
    CORRADE_PLUGIN_EXPORT int pluginVersion();                                                                         \
    CORRADE_PLUGIN_EXPORT const char* pluginInterface();                                                               \
    CORRADE_PLUGIN_EXPORT void* pluginInstancer(                                                                       \
        Corrade::PluginManager::AbstractManager&, const Corrade::Containers::StringView&);                             \
    CORRADE_PLUGIN_EXPORT void pluginInitializer();                                                                    \
    CORRADE_PLUGIN_EXPORT void pluginFinalizer();                                                                      \
    }                                                                                                                  \
    int pluginVersion() { return CORRADE_PLUGIN_VERSION; }                                                             \
    const char* pluginInterface() { return interface_; }                                                               \
    void* pluginInstancer(                                                                                             \
        Corrade::PluginManager::AbstractManager& manager, const Corrade::Containers::StringView& plugin) {             \
        return new className(manager, plugin);                                                                         \
    }                                                                                                                  \
    void pluginInitializer() { className::initialize(); }                                                              \
    void pluginFinalizer() { className::finalize(); }
#else
#define CORRADE_PLUGIN_REGISTER(name, className, interface_)
#endif
