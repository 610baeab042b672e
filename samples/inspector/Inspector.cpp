#include <Corrade/PluginManager/AbstractManager.h>

#include "InspectorView.h"

CORRADE_PLUGIN_REGISTER(Inspector, InspectorPlugin::InspectorView, QUORVANE_MODULE_INTERFACE)
