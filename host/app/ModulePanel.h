#pragma once

#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

class ModuleLoader;

namespace ModulePanel {

/** Draws the window that lists the modules, each with its file, whether it is loaded, and if not, why.
    @param open     cleared by the close button
    @return the name of the module that the user wants to be loaded, or loaded anew, which the loader owns; empty for none */
QUORVANE_API Containers::StringView draw(const ModuleLoader& modules, bool* open);

}

}
