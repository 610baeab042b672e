#include "modules/ModuleLoader.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <sstream>
#include <vector>

#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Containers/StringIterable.h>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/PluginManager/Manager.hpp>
#include <Corrade/PluginManager/PluginMetadata.h>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/Path.h>

#include "QuorvaneEditor/AbstractModule.h"
#include "modules/ModuleFile.h"
#include "modules/ModuleStamp.h"

namespace QuorvaneEngine {

namespace PluginManager = Corrade::PluginManager;
namespace Utility = Corrade::Utility;

struct ModuleLoader::Folder {
    explicit Folder(Containers::StringView path): path{path}, manager{path} {}

    Containers::String path;
    PluginManager::Manager<AbstractModule> manager;
};

struct ModuleLoader::Loaded {
    Containers::String name;
    Folder* folder;
    Containers::Pointer<AbstractModule> module;
    Int framework;
};

struct ModuleLoader::State {
    std::vector<std::unique_ptr<Folder>> folders;
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

ModuleLoader::ModuleLoader(const Containers::ArrayView<const Containers::String> folders, LoadNote* const note)
    : _note{note}, _state{Corrade::InPlaceInit} {
    if(folders.isEmpty()) {
        Utility::Error{} << "ModuleLoader::ModuleLoader(): there are no folders";
        std::abort();
    }
    for(const Containers::StringView folder: folders) look(folder);
    listModules();
}

ModuleLoader::ModuleLoader(const Containers::StringView folder, LoadNote* const note)
    : _note{note}, _state{Corrade::InPlaceInit} {
    look(folder);
    listModules();
}

void ModuleLoader::listModules() {
    for(const Containers::StringView name: _names)
        arrayAppend(_modules, Module{name, Utility::Path::join(folderOf(name).path, name + ".so"), {}, {}});
    _folderMessages = _messages.size();
}

void ModuleLoader::note(const Containers::StringView name, const Status status, const Containers::StringView reason) {
    for(Module& module: _modules) {
        if(module.name != name) continue;
        module.status = status;
        module.reason = Containers::String{reason};
    }
}

void ModuleLoader::leaveOut(const Containers::StringView name, const Containers::StringView reason) {
    if(!find(name)) note(name, Status::LeftOut, reason);
}

LoadNote::Scope ModuleLoader::noted(const Containers::StringView name) const {
    for(const Module& module: _modules)
        if(module.name == name) return LoadNote::Scope{_note, module.file};
    return LoadNote::Scope{nullptr, {}};
}

void ModuleLoader::look(const Containers::StringView folder) {
    const Containers::StringView path = folder.isEmpty() ? Containers::StringView{"."} : folder;
    if(!Utility::Path::isDirectory(path)) {
        arrayAppend(_messages, "ModuleLoader::ModuleLoader(): no folder of modules at " + path);
        Utility::Warning{} << _messages.back();
    }
    Containers::String text;
    {
        // Metadata that is missing or broken is found here.
        Listener listener;
        _state->folders.push_back(std::make_unique<Folder>(path));
        text = listener.text();
    }
    keep(std::move(text));
    const auto names = _state->folders.back()->manager.pluginList();
    if(names.isEmpty() && Utility::Path::isDirectory(path)) {
        // What a build of a view makes lies one folder deeper than the build.
        const Containers::String deeper = Utility::Path::join(path, "modules");
        arrayAppend(_messages,
            "ModuleLoader::ModuleLoader(): there are no modules in " + path +
                (Utility::Path::isDirectory(deeper) ? ", but perhaps in " + deeper : Containers::String{}));
        Utility::Warning{} << _messages.back();
    }
    for(const Containers::StringView name: names) {
        const Folder& first = folderOf(name);
        if(&first == _state->folders.back().get()) {
            arrayAppend(_names, Containers::String{name});
            continue;
        }
        arrayAppend(_messages,
            "ModuleLoader::ModuleLoader(): " + name + " is loaded from " + first.path + " and not from " + path);
        Utility::Warning{} << _messages.back();
    }
    std::sort(_names.begin(), _names.end(), [](const Containers::String& a, const Containers::String& b) {
        return Containers::StringView{a} < Containers::StringView{b};
    });
}

ModuleLoader::Folder& ModuleLoader::folderOf(const Containers::StringView name) const {
    for(const std::unique_ptr<Folder>& folder: _state->folders)
        if(folder->manager.loadState(name) != PluginManager::LoadState::NotFound) return *folder;
    // Its manager will say that there is no such module.
    return *_state->folders.back();
}

Containers::String ModuleLoader::metadataFile(const Folder& folder, const Containers::StringView name) {
    return Utility::Path::join(folder.path, name + ".conf");
}

bool ModuleLoader::fits(const Folder& folder, const Containers::StringView name) {
    // What a module needs is mapped with it. The list grows while it is walked.
    std::vector<Containers::String> needed{Containers::String{name}};
    for(std::size_t i = 0; i != needed.size(); ++i) {
        // Of what the manager refuses without the library it says so itself.
        if(folder.manager.loadState(needed[i]) != PluginManager::LoadState::NotLoaded) continue;
        const PluginManager::PluginMetadata& metadata = *folder.manager.metadata(needed[i]);
        Containers::String problem = stampProblem(metadataFile(folder, metadata.name()));
        if(problem.isEmpty()) problem = fileProblem(Utility::Path::join(folder.path, metadata.name() + ".so"));
        if(!problem.isEmpty()) {
            keep("ModuleLoader::load(): " + needed[i] + " is not loaded: " + problem + ".");
            note(name, Status::Refused, _messages.back());
            return false;
        }
        for(const Containers::StringView next: metadata.depends())
            if(std::find(needed.begin(), needed.end(), next) == needed.end()) needed.emplace_back(next);
    }
    return true;
}

ModuleLoader::~ModuleLoader() {
    while(!_state->loaded.empty()) discard(*_state->loaded.back());
}

AbstractModule* ModuleLoader::load(Containers::StringView name) {
    if(Loaded* loaded = find(name)) return loaded->module.get();
    Folder& folder = folderOf(name);
    if(!fits(folder, name)) return nullptr;
    Containers::Pointer<AbstractModule> module;
    Containers::String message;
    {
        Listener listener;
        module = folder.manager.loadAndInstantiate(name);
        message = withReadableSymbols(listener.text());
    }
    note(name, module ? Status::Loaded : Status::Failed,
        module ? Containers::StringView{} : Containers::StringView{message});
    keep(std::move(message));
    if(!module) return nullptr;
    const Int framework = moduleFramework(metadataFile(folder, name));
    _state->loaded.push_back(
        std::make_unique<Loaded>(Loaded{Containers::String{name}, &folder, std::move(module), framework}));
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

Int ModuleLoader::framework(const Containers::StringView name) const {
    const Loaded* const loaded = find(name);
    return loaded ? loaded->framework : 0;
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
    PluginManager::Manager<AbstractModule>& manager = loaded.folder->manager;
    std::erase_if(_state->loaded, [&loaded](const std::unique_ptr<Loaded>& other) { return other.get() == &loaded; });
    const PluginManager::LoadState state = manager.unload(name);
    if(state == PluginManager::LoadState::NotLoaded) {
        note(name, Status::NotLoaded);
        return true;
    }
    note(name, Status::Failed, "its library is still in the process");
    Utility::Warning{} << "ModuleLoader::unload():" << name << "is still in the process, with what it knows:" << state;
    return false;
}

}
