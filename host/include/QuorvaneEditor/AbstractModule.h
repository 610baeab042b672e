#pragma once

#include <Corrade/PluginManager/AbstractPlugin.h>

#include "QuorvaneEditor/Host.h"

/** The whole interface string that module and host compare: reverse-domain prefix, interface name and version. */
#define QUORVANE_MODULE_INTERFACE "dev.quorvane.QuorvaneEditor.AbstractModule/1.1"

namespace QuorvaneEngine {

/** Base of everything that the editor loads through its plug-in manager.

    A module is started with @ref load() and stopped with @ref unload(). A module that is stopped to be loaded again hands its
    run-time state over as bytes, which are valid in the same process only. */
class QUORVANE_API AbstractModule: public Corrade::PluginManager::AbstractPlugin {
public:
    static Containers::StringView pluginInterface();

    /** None: the host names the folder of its modules itself. */
    static Containers::Array<Containers::String> pluginSearchPaths();

    /** @param manager  the manager that loaded the module; must outlive it
        @param plugin   the module's name, as its file is called without its suffix */
    explicit AbstractModule(Corrade::PluginManager::AbstractManager& manager, const Containers::StringView& plugin);

    ~AbstractModule() override;

    /** Starts the module from a state that @ref unload() returned; one whose data pointer is null means that
        there is none. */
    virtual void load(Containers::ArrayView<char> state) = 0;

    /** Starts the module without saved state. */
    virtual void load();

    /** Stops the module.
        @param final    true when the module will not be loaded again, so that no state is wanted
        @return the state for @ref load(), empty when there is none */
    virtual Containers::Array<char> unload(bool final) = 0;

    /** The kind of the module: 1 is a view. */
    virtual Int moduleType() = 0;
};

}
