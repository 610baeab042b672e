#include "Corrade/PluginManager/AbstractPlugin.h"

#include <algorithm>

#include "Corrade/PluginManager/AbstractManager.h"
#include "Plugin.h"

namespace Corrade::PluginManager {

using namespace Containers::Literals;

struct AbstractPlugin::State {
    Containers::String name;
    Implementation::Plugin* plugin = nullptr;
};

Containers::StringView AbstractPlugin::pluginInterface() { return ""_s; }

Containers::Array<Containers::String> AbstractPlugin::pluginSearchPaths() { return {}; }

Containers::StringView AbstractPlugin::pluginSuffix() { return ".so"_s; }

Containers::StringView AbstractPlugin::pluginMetadataSuffix() { return ".conf"_s; }

void AbstractPlugin::initialize() {}

void AbstractPlugin::finalize() {}

AbstractPlugin::AbstractPlugin(): _state(InPlaceInit) {}

AbstractPlugin::AbstractPlugin(AbstractManager& manager, const Containers::StringView& plugin): AbstractPlugin() {
    _state->name = plugin;
    _state->plugin = manager.find(plugin);
    CORRADE_ASSERT(_state->plugin,
        "PluginManager::AbstractPlugin::AbstractPlugin(): attempt to register instance of plugin not known "
        "to given manager", );
    _state->plugin->instances.push_back(this);
}

AbstractPlugin::~AbstractPlugin() {
    if(_state->plugin) std::erase(_state->plugin->instances, this);
}

bool AbstractPlugin::canBeDeleted() { return false; }

Containers::StringView AbstractPlugin::plugin() const { return _state->name; }

const PluginMetadata* AbstractPlugin::metadata() const { return _state->plugin; }

} // namespace Corrade::PluginManager
