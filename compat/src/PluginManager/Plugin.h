#pragma once

#include <vector>

#include "Corrade/Containers/Array.h"
#include "Corrade/Containers/String.h"
#include "Corrade/PluginManager/AbstractManager.h"
#include "Corrade/PluginManager/PluginMetadata.h"
#include "Corrade/Utility/Configuration.h"

namespace Corrade::PluginManager::Implementation {

/** The five entry points of a loaded library. */
struct EntryPoints {
    int (*version)() = nullptr;
    const char* (*interface)() = nullptr;
    void (*initializer)() = nullptr;
    void (*finalizer)() = nullptr;
    void* (*instancer)(AbstractManager&, const Containers::StringView&) = nullptr;
};

/** All that a manager knows of one plug-in. */
struct Plugin: PluginMetadata {
    /** @param metadataFile  empty for plug-ins without one */
    explicit Plugin(Containers::StringView name, Containers::StringView metadataFile);

    Containers::String name;
    Utility::Configuration metadata;
    LoadState state = LoadState::NotLoaded;
    Containers::Array<Containers::String> depends, provides;
    /** Names of loaded plug-ins, each owned by its Plugin. */
    Containers::Array<Containers::StringView> usedBy;
    std::vector<AbstractPlugin*> instances;
    void* handle = nullptr;
    EntryPoints entryPoints;
};

} // namespace Corrade::PluginManager::Implementation
