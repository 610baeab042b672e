#include "Corrade/PluginManager/AbstractManager.h"

#include <algorithm>
#include <dlfcn.h>
#include <map>

#include "Corrade/Containers/GrowableArray.h"
#include "Corrade/Containers/Optional.h"
#include "Corrade/PluginManager/AbstractPlugin.h"
#include "Corrade/Utility/Path.h"
#include "Plugin.h"

namespace Corrade::PluginManager {

using Containers::Array;
using Containers::Pointer;
using Containers::String;
using Containers::StringView;
using Implementation::Plugin;
using Utility::Debug;
using Utility::Error;

namespace Path = Utility::Path;

struct AbstractManager::State {
    StringView interface, suffix, metadataSuffix;
    String directory{};
    std::map<String, Pointer<Plugin>> plugins{};
    // Every name that can be asked for; those of plug-ins themselves win over what others provide.
    std::map<String, Plugin*> aliases{};

    String metadataFile(StringView folder, StringView name) const {
        return metadataSuffix.isEmpty() ? String() : Path::join(folder, name + metadataSuffix);
    }
};

namespace {

using Implementation::EntryPoints;

constexpr struct {
    LoadState state;
    const char* name;
} StateNames[]{{LoadState::NotFound, "NotFound"}, {LoadState::WrongPluginVersion, "WrongPluginVersion"},
    {LoadState::WrongInterfaceVersion, "WrongInterfaceVersion"}, {LoadState::WrongMetadataFile, "WrongMetadataFile"},
    {LoadState::UnresolvedDependency, "UnresolvedDependency"}, {LoadState::LoadFailed, "LoadFailed"},
    {LoadState::Static, "Static"}, {LoadState::Loaded, "Loaded"}, {LoadState::NotLoaded, "NotLoaded"},
    {LoadState::UnloadFailed, "UnloadFailed"}, {LoadState::Required, "Required"}, {LoadState::Used, "Used"}};

constexpr LoadStates Forgettable = LoadState::NotLoaded | LoadState::WrongMetadataFile;

// What message names for each entry point, in the order in which they are asked for.
template <class F> bool resolve(F*& function, void* handle, const char* symbol, const char* what, StringView plugin) {
    function = reinterpret_cast<F*>(dlsym(handle, symbol));
    if(!function)
        Error{} << "PluginManager::Manager::load(): cannot get" << what << "of plugin" << plugin << Debug::nospace
                << ":" << dlerror();
    return function;
}

// Entry points of a library, or why there are none.
LoadState resolveAll(EntryPoints& out, void* handle, StringView plugin, StringView interface) {
    if(!resolve(out.version, handle, "pluginVersion", "version", plugin)) return LoadState::LoadFailed;
    if(out.version() != AbstractManager::Version) {
        Error{} << "PluginManager::Manager::load(): wrong version of plugin" << plugin << Debug::nospace << ", expected"
                << AbstractManager::Version << "but got" << out.version();
        return LoadState::WrongPluginVersion;
    }
    if(!resolve(out.interface, handle, "pluginInterface", "interface string", plugin)) return LoadState::LoadFailed;
    if(out.interface() != interface) {
        Error{} << "PluginManager::Manager::load(): wrong interface string of plugin" << plugin << Debug::nospace
                << ", expected" << interface << "but got" << out.interface();
        return LoadState::WrongInterfaceVersion;
    }
    return resolve(out.initializer, handle, "pluginInitializer", "initializer", plugin) &&
            resolve(out.finalizer, handle, "pluginFinalizer", "finalizer", plugin) &&
            resolve(out.instancer, handle, "pluginInstancer", "instancer", plugin)
        ? LoadState::Loaded
        : LoadState::LoadFailed;
}

template <class V> Array<StringView> keys(const std::map<String, V>& map) {
    Array<StringView> out;
    Containers::arrayReserve(out, map.size());
    for(const auto& item: map) Containers::arrayAppend(out, StringView(item.first));
    return out;
}

} // namespace

Debug& operator<<(Debug& debug, LoadState value) {
    for(const auto& known: StateNames) {
        if(known.state == value) return debug << "PluginManager::LoadState::" << Debug::nospace << known.name;
    }
    return debug << "PluginManager::LoadState(" << Debug::nospace << Debug::hex << unsigned(value) << Debug::nospace
                 << ")";
}

const int AbstractManager::Version = CORRADE_PLUGIN_VERSION;

AbstractManager::AbstractManager(StringView pluginInterface, Containers::ArrayView<const String> pluginSearchPaths,
    StringView pluginSuffix, StringView pluginMetadataSuffix, StringView pluginDirectory)
    : _state(InPlaceInit, pluginInterface, pluginSuffix, pluginMetadataSuffix) {
    const auto checkGlobal = [](StringView view, const char* function) {
        CORRADE_ASSERT(view.flags() & Containers::StringViewFlag::Global,
            "PluginManager::AbstractPlugin::" << Debug::nospace << function << Debug::nospace
                                              << "(): returned view is not global:" << view, );
    };
    checkGlobal(pluginInterface, "pluginInterface");
    checkGlobal(pluginSuffix, "pluginSuffix");
    checkGlobal(pluginMetadataSuffix, "pluginMetadataSuffix");

    if(!pluginDirectory.isEmpty()) {
        setPluginDirectory(pluginDirectory);
        return;
    }
    CORRADE_ASSERT(!pluginSearchPaths.isEmpty(),
        "PluginManager::Manager: either pluginDirectory has to be set or T::pluginSearchPaths() is expected "
        "to have at least one entry", );
    const auto program = Path::executableLocation();
    for(StringView path: pluginSearchPaths) {
        const String folder = Path::join(Path::path(*program), path);
        if(Path::exists(folder)) {
            setPluginDirectory(folder);
            return;
        }
    }
    Utility::Warning{} << "PluginManager::Manager: none of the plugin search paths in" << pluginSearchPaths
                       << "exists and pluginDirectory was not set, skipping plugin discovery";
}

AbstractManager::~AbstractManager() {
    for(auto& item: _state->plugins) unloadWithUsers(*item.second);
}

void AbstractManager::unloadWithUsers(Plugin& plugin) {
    while(!plugin.usedBy.isEmpty()) unloadWithUsers(*find(plugin.usedBy.front()));
    const LoadState state = unload(plugin);
    CORRADE_ASSERT(state & Forgettable,
        "PluginManager::Manager: cannot unload plugin" << plugin.name << "on manager destruction:" << state, );
}

StringView AbstractManager::pluginInterface() const { return _state->interface; }

StringView AbstractManager::pluginDirectory() const { return _state->directory; }

void AbstractManager::setPluginDirectory(StringView directory) {
    _state->directory = String(directory);
    std::erase_if(_state->aliases, [](const auto& item) { return bool(item.second->state & Forgettable); });
    std::erase_if(_state->plugins, [](const auto& item) { return bool(item.second->state & Forgettable); });

    if(Path::exists(_state->directory)) {
        if(const auto names = Path::list(_state->directory,
               Path::ListFlag::SkipDirectories | Path::ListFlag::SkipDotAndDotDot | Path::ListFlag::SortAscending)) {
            for(StringView filename: *names) {
                if(!filename.hasSuffix(_state->suffix)) continue;
                const StringView name = filename.exceptSuffix(_state->suffix);
                if(!_state->plugins.count(name))
                    add(Pointer<Plugin>(InPlaceInit, name, _state->metadataFile(_state->directory, name)));
            }
        }
    }
    // Aliases that a forgotten plug-in had may now belong to one that stayed.
    for(auto& item: _state->plugins) {
        for(const String& alias: item.second->provides) _state->aliases.insert({alias, item.second.get()});
    }
}

void AbstractManager::reloadPluginDirectory() { setPluginDirectory(String(pluginDirectory())); }

void AbstractManager::add(Pointer<Plugin>&& plugin) {
    Plugin* const added = plugin.get();
    _state->plugins[added->name] = std::move(plugin);
    _state->aliases[added->name] = added;
    for(const String& alias: added->provides) _state->aliases.insert({alias, added});
}

Array<StringView> AbstractManager::pluginList() const { return keys(_state->plugins); }

Array<StringView> AbstractManager::aliasList() const { return keys(_state->aliases); }

Plugin* AbstractManager::find(StringView alias) const {
    const auto found = _state->aliases.find(String::nullTerminatedView(alias));
    return found == _state->aliases.end() ? nullptr : found->second;
}

const PluginMetadata* AbstractManager::metadata(StringView plugin) const { return find(plugin); }

LoadState AbstractManager::loadState(StringView plugin) const {
    const Plugin* found = find(plugin);
    return found ? found->state : LoadState::NotFound;
}

LoadState AbstractManager::load(StringView plugin) {
    if(plugin.hasSuffix(_state->suffix)) return loadFile(plugin);
    if(Plugin* found = find(plugin)) return load(*found, Path::join(_state->directory, found->name + _state->suffix));
    Error{} << "PluginManager::Manager::load(): plugin" << plugin << "is not static and was not found in"
            << _state->directory;
    return LoadState::NotFound;
}

LoadState AbstractManager::loadFile(StringView path) {
    const StringView filename = Path::filename(path);
    const String name = filename.exceptSuffix(_state->suffix);
    const auto old = _state->plugins.find(name);
    if(old != _state->plugins.end() && old->second->state & LoadState::Loaded) {
        Error{} << "PluginManager::load():" << filename << "conflicts with currently loaded plugin of the same name";
        return LoadState::Used;
    }
    Pointer<Plugin> plugin(InPlaceInit, name, _state->metadataFile(Path::path(path), name));
    const LoadState state = load(*plugin, Path::join(*Path::currentDirectory(), path));
    if(!(state & LoadState::Loaded)) return state;
    if(old != _state->plugins.end()) {
        std::erase_if(_state->aliases, [&](const auto& item) { return item.second == old->second.get(); });
        _state->plugins.erase(old);
    }
    add(std::move(plugin));
    return state;
}

LoadState AbstractManager::load(Plugin& plugin, StringView filename) {
    if(plugin.state != LoadState::NotLoaded) {
        if(!(plugin.state & LoadState::Loaded))
            Error{} << "PluginManager::Manager::load(): plugin" << plugin.name
                    << "is not ready to load:" << plugin.state;
        return plugin.state;
    }

    for(const String& name: plugin.depends) {
        const auto dependency = _state->plugins.find(name);
        if(dependency == _state->plugins.end() ||
            !(load(*dependency->second, Path::join(_state->directory, name + _state->suffix)) & LoadState::Loaded)) {
            Error{} << "PluginManager::Manager::load(): unresolved dependency" << name << "of plugin" << plugin.name;
            return LoadState::UnresolvedDependency;
        }
    }

    // Global, so that plug-ins see the symbols of those that they depend on.
    void* const handle = dlopen(String::nullTerminatedView(filename).data(), RTLD_NOW | RTLD_GLOBAL);
    if(!handle) {
        Error{} << "PluginManager::Manager::load(): cannot load plugin" << plugin.name << "from \"" << Debug::nospace
                << filename << Debug::nospace << "\":" << dlerror();
        return LoadState::LoadFailed;
    }
    EntryPoints entryPoints;
    const LoadState state = resolveAll(entryPoints, handle, plugin.name, pluginInterface());
    if(state != LoadState::Loaded) {
        dlclose(handle);
        return state;
    }

    entryPoints.initializer();
    for(const String& name: plugin.depends)
        Containers::arrayAppend(_state->plugins.find(name)->second->usedBy, StringView(plugin.name));
    plugin.state = state;
    plugin.handle = handle;
    plugin.entryPoints = entryPoints;
    return state;
}

LoadState AbstractManager::unload(StringView plugin) {
    if(Plugin* found = find(plugin)) return unload(*found);
    Error{} << "PluginManager::Manager::unload(): plugin" << plugin << "was not found";
    return LoadState::NotFound;
}

LoadState AbstractManager::unload(Plugin& plugin) {
    if(plugin.state != LoadState::Loaded) return plugin.state;
    if(!plugin.usedBy.isEmpty()) {
        Error{} << "PluginManager::Manager::unload(): plugin" << plugin.name
                << "is required by other plugins:" << plugin.usedBy;
        return LoadState::Required;
    }
    if(!std::all_of(plugin.instances.begin(), plugin.instances.end(), [](auto* i) { return i->canBeDeleted(); })) {
        Error{} << "PluginManager::Manager::unload(): plugin" << plugin.name
                << "has a live instance which cannot be automatically deleted";
        return LoadState::Used;
    }
    // Each takes itself out of the list.
    while(!plugin.instances.empty()) delete plugin.instances.back();

    for(const String& name: plugin.depends) {
        auto& usedBy = _state->plugins.find(name)->second->usedBy;
        const StringView* self = std::find(usedBy.begin(), usedBy.end(), StringView(plugin.name));
        Containers::arrayRemove(usedBy, std::size_t(self - usedBy.begin()));
    }

    plugin.entryPoints.finalizer();
    plugin.state = LoadState::NotLoaded;
    plugin.entryPoints = {};
    if(dlclose(std::exchange(plugin.handle, nullptr)) == 0) return LoadState::NotLoaded;
    Error{} << "PluginManager::Manager::unload(): cannot unload plugin" << plugin.name << Debug::nospace << ":"
            << dlerror();
    return LoadState::UnloadFailed;
}

Pointer<AbstractPlugin> AbstractManager::instantiateInternal(StringView plugin) {
    Plugin* const found = find(plugin);
    CORRADE_ASSERT(found && found->state & LoadState::Loaded,
        "PluginManager::Manager::instantiate(): plugin" << plugin << "is not loaded", nullptr);
    return Pointer<AbstractPlugin>(static_cast<AbstractPlugin*>(found->entryPoints.instancer(*this, plugin)));
}

Pointer<AbstractPlugin> AbstractManager::loadAndInstantiateInternal(StringView plugin) {
    if(!(load(plugin) & LoadState::Loaded)) return nullptr;
    if(plugin.hasSuffix(_state->suffix)) plugin = Path::filename(plugin).exceptSuffix(_state->suffix);
    return instantiateInternal(plugin);
}

} // namespace Corrade::PluginManager
