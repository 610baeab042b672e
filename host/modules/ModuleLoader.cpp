#include "modules/ModuleLoader.h"

#include <algorithm>
#include <memory>
#include <sstream>
#include <vector>

#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/PluginManager/Manager.hpp>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/Path.h>

#include "QuorvaneEditor/AbstractModule.h"

namespace QuorvaneEngine {

namespace PluginManager = Corrade::PluginManager;
namespace Utility = Corrade::Utility;

struct ModuleLoader::Loaded {
    Containers::String name;
    Containers::Pointer<AbstractModule> module;
};

struct ModuleLoader::State {
    explicit State(Containers::StringView folder): manager{folder} {}

    PluginManager::Manager<AbstractModule> manager;
    std::vector<std::unique_ptr<Loaded>> loaded;
};

namespace {

/** Keeps what the plug-in manager says while this object lives, to be told to the user as a whole. */
class Listener {
public:
    Containers::String text() const {
        std::string text = _stream.str();
        while(!text.empty() && text.back() == '\n') text.pop_back();
        return Containers::String{text};
    }

private:
    std::ostringstream _stream;
    Utility::Error _error{&_stream};
    Utility::Warning _warning{&_stream};
};

}

ModuleLoader::ModuleLoader(Containers::StringView folder)
    : _folder{folder.isEmpty() ? Containers::StringView{"."} : folder} {
    Containers::String text;
    if(!Utility::Path::isDirectory(_folder)) {
        arrayAppend(_messages, "ModuleLoader::ModuleLoader(): no folder of modules at " + _folder);
        Utility::Warning{} << _messages.back();
    }
    {
        // Metadata that is missing or broken is found here.
        Listener listener;
        _state.emplace(_folder);
        text = listener.text();
    }
    keep(std::move(text));
    for(Containers::StringView name: _state->manager.pluginList()) arrayAppend(_names, Containers::String{name});
    std::sort(_names.begin(), _names.end(), [](const Containers::String& a, const Containers::String& b) {
        return Containers::StringView{a} < Containers::StringView{b};
    });
}

ModuleLoader::~ModuleLoader() {
    while(!_state->loaded.empty()) discard(*_state->loaded.back());
}

AbstractModule* ModuleLoader::load(Containers::StringView name) {
    if(Loaded* loaded = find(name)) return loaded->module.get();
    Containers::Pointer<AbstractModule> module;
    Containers::String message;
    {
        Listener listener;
        module = _state->manager.loadAndInstantiate(name);
        message = listener.text();
    }
    keep(std::move(message));
    if(!module) return nullptr;
    _state->loaded.push_back(std::make_unique<Loaded>(Loaded{Containers::String{name}, std::move(module)}));
    return _state->loaded.back()->module.get();
}

void ModuleLoader::keep(Containers::String&& message) {
    if(message.isEmpty()) return;
    Utility::Error{} << message;
    arrayAppend(_messages, std::move(message));
}

AbstractModule* ModuleLoader::module(Containers::StringView name) const {
    Loaded* const loaded = find(name);
    return loaded ? loaded->module.get() : nullptr;
}

bool ModuleLoader::unload(Containers::StringView name) {
    Loaded* const loaded = find(name);
    if(!loaded) return true;
    loaded->module->unload(true);
    return discard(*loaded);
}

AbstractModule* ModuleLoader::reload(Containers::StringView name) {
    Loaded* const loaded = find(name);
    if(!loaded) return load(name);
    // The name may view the entry that goes away.
    const Containers::String kept{name};
    Containers::Array<char> state = loaded->module->unload(false);
    if(!discard(*loaded)) return nullptr;
    AbstractModule* const module = load(kept);
    if(module) module->load(state);
    return module;
}

ModuleLoader::Loaded* ModuleLoader::find(Containers::StringView name) const {
    for(const std::unique_ptr<Loaded>& loaded: _state->loaded)
        if(loaded->name == name) return loaded.get();
    return nullptr;
}

bool ModuleLoader::discard(Loaded& loaded) {
    const Containers::String name = std::move(loaded.name);
    std::erase_if(_state->loaded, [&loaded](const std::unique_ptr<Loaded>& other) { return other.get() == &loaded; });
    const PluginManager::LoadState state = _state->manager.unload(name);
    if(state == PluginManager::LoadState::NotLoaded) return true;
    Utility::Warning{} << "ModuleLoader::unload():" << name << "is still in the process, with what it knows:" << state;
    return false;
}

}
