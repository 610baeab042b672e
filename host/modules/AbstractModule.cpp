#include "QuorvaneEditor/AbstractModule.h"

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>

namespace QuorvaneEngine {

using namespace Containers::Literals;

Containers::StringView AbstractModule::pluginInterface() { return QUORVANE_MODULE_INTERFACE ""_s; }

Containers::Array<Containers::String> AbstractModule::pluginSearchPaths() { return {}; }

AbstractModule::AbstractModule(Corrade::PluginManager::AbstractManager& manager, const Containers::StringView& plugin)
    : Corrade::PluginManager::AbstractPlugin{manager, plugin} {}

AbstractModule::~AbstractModule() = default;

void AbstractModule::load() { load(Containers::ArrayView<char>{}); }

}
