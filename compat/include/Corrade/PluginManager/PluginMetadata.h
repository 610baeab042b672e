#pragma once

#include "Corrade/Containers/Containers.h"
#include "Corrade/PluginManager/PluginManager.h"
#include "Corrade/Utility/Utility.h"

namespace Corrade::PluginManager {

namespace Implementation {
struct Plugin;
}

/** What a plug-in's metadata file says. Lives as long as the manager knows the plug-in. */
class PluginMetadata {
public:
    PluginMetadata(const PluginMetadata&) = delete;
    PluginMetadata& operator=(const PluginMetadata&) = delete;

    /** The plug-in's own name, also where it was asked for by an alias. */
    Containers::StringView name() const;
    /** Plug-ins that it needs: all `depends` of the file. */
    Containers::StringIterable depends() const;
    /** Loaded plug-ins that need it. */
    Containers::StringIterable usedBy() const;
    /** Its aliases: all `provides` of the file. */
    Containers::StringIterable provides() const;
    /** The group `[data]`; empty if there is none. */
    const Utility::ConfigurationGroup& data() const;

private:
    friend Implementation::Plugin;
    PluginMetadata() = default;
};

} // namespace Corrade::PluginManager
