#include "Corrade/PluginManager/PluginMetadata.h"

#include "Corrade/Containers/GrowableArray.h"
#include "Corrade/Containers/StringIterable.h"
#include "Corrade/Utility/Path.h"
#include "Plugin.h"

namespace Corrade::PluginManager {

namespace {

using Implementation::Plugin;

Containers::Array<Containers::String> strings(const Utility::ConfigurationGroup& group, const char* key) {
    Containers::Array<Containers::String> out;
    for(const std::string& value: group.values(key)) Containers::arrayAppend(out, Containers::String(value));
    return out;
}

} // namespace

Implementation::Plugin::Plugin(Containers::StringView name, Containers::StringView metadataFile)
    : name(name),
      metadata(metadataFile, Utility::Configuration::Flag::ReadOnly),
      depends(strings(metadata, "depends")),
      provides(strings(metadata, "provides")) {
    if(metadataFile.isEmpty()) return;
    if(metadata.isValid() && !Utility::Path::exists(metadataFile))
        Utility::Error{} << "PluginManager::Manager:" << metadataFile << "was not found";
    else if(metadata.isValid()) return;
    state = LoadState::WrongMetadataFile;
}

Containers::StringView PluginMetadata::name() const { return static_cast<const Plugin*>(this)->name; }

Containers::StringIterable PluginMetadata::depends() const { return static_cast<const Plugin*>(this)->depends; }

Containers::StringIterable PluginMetadata::usedBy() const { return static_cast<const Plugin*>(this)->usedBy; }

Containers::StringIterable PluginMetadata::provides() const { return static_cast<const Plugin*>(this)->provides; }

const Utility::ConfigurationGroup& PluginMetadata::data() const {
    static const Utility::ConfigurationGroup empty;
    const Utility::ConfigurationGroup* data = static_cast<const Plugin*>(this)->metadata.group("data");
    return data ? *data : empty;
}

} // namespace Corrade::PluginManager
