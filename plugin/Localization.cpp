#include <Corrade/PluginManager/AbstractManager.h>

#include "LocalizationView.h"

/* The five entry points of the module. The linker's version script keeps everything else inside. */
CORRADE_PLUGIN_REGISTER(Localization, QuorvaneEngine::LocalizationView, QUORVANE_MODULE_INTERFACE)
