#pragma once

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>
#include <Corrade/PluginManager/AbstractPlugin.h>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/VisibilityMacros.h>

/** The interface of the plug-ins that the tests load. */
class CORRADE_VISIBILITY_EXPORT AbstractAnimal: public Corrade::PluginManager::AbstractPlugin {
public:
    static Corrade::Containers::StringView pluginInterface() {
        using namespace Corrade::Containers::Literals;
        return "compat.test.AbstractAnimal/1.0"_s;
    }

    using AbstractPlugin::AbstractPlugin;

    virtual int legs() const = 0;
    /** What canBeDeleted() answers. */
    bool deletable = false;

private:
    bool canBeDeleted() override { return deletable; }
};
