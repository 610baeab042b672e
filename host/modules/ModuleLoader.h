#pragma once

#include <cstdint>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/Pointer.h>
#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"
#include "modules/LoadNote.h"

namespace QuorvaneEngine {

/** Loads modules from folders: a library `<name>.so` beside its metadata `<name>.conf`.

    A module that does not fit is refused, and the editor goes on without it: the message goes to Error and is kept in
    @ref messages() . One that was built with something else than this program is refused by its metadata (@ref stampProblem() ), and
    one whose library is not there as a whole by the file (@ref fileProblem() ), before anything of it is mapped. Belongs to the GUI thread. */
class QUORVANE_API ModuleLoader {
public:
    enum class Status : std::uint8_t {
        NotLoaded,
        Loaded,
        /** Told by its metadata that it does not fit; nothing of it was mapped. */
        Refused,
        /** It could not be mapped, or not be taken out of the process to be replaced. */
        Failed,
        /** Found, and not to be loaded before somebody asks for it by name. */
        LeftOut
    };

    struct Module {
        Containers::String name;

        /** Its library, with forward slashes. */
        Containers::String file;
        Status status = Status::NotLoaded;

        /** Why it is not loaded, of one that was refused, failed or is left out; as it was printed. */
        Containers::String reason;
    };

    /** Looks for modules; none is loaded yet.
        @param folders  at least one, with forward slashes, empty for the current one; a folder that does not exist or holds no modules is a
                        message. Of modules with one name that of the first folder counts, which is a message, too.
        @param note     tells the next start of the editor with which module this one died; null for none, else must outlive the loader */
    explicit ModuleLoader(Containers::ArrayView<const Containers::String> folders, LoadNote* note = nullptr);

    /** Looks for modules in one folder. */
    explicit ModuleLoader(Containers::StringView folder, LoadNote* note = nullptr);

    /** Stops and unloads every module. */
    ~ModuleLoader();

    ModuleLoader(const ModuleLoader&) = delete;
    ModuleLoader& operator=(const ModuleLoader&) = delete;

    /** The names of what lies in the folders, in byte order, loaded or not. */
    Containers::ArrayView<const Containers::String> names() const { return _names; }

    /** What lies in the folders, in the order of @ref names(), and what has become of it. */
    Containers::ArrayView<const Module> modules() const { return _modules; }

    /** Marks a module that is not loaded as left out, until it is loaded. A name that is unknown or loaded is left alone. */
    void leaveOut(Containers::StringView name, Containers::StringView reason);

    /** What is done with a module while the result lives is noted, if there is a note to do so. */
    LoadNote::Scope noted(Containers::StringView name) const;

    /** Maps a module into the process and constructs its object; one that is loaded already is returned as it is.
        @return owned by the loader, valid until the module is unloaded; null when it is refused */
    AbstractModule* load(Containers::StringView name);

    /** The module's object, null when it is not loaded. */
    AbstractModule* module(Containers::StringView name) const;

    /** What @ref moduleFramework() said of a module when it was loaded; 0 when it is not. */
    Int framework(Containers::StringView name) const;

    /** Stops a module for good, destroys its object and takes its library out of the process, with all state that it kept in
        variables of its own; a library that stays is a warning with the plug-in manager's state. A name that is not loaded is left
        alone.
        @return whether the library is gone */
    bool unload(Containers::StringView name);

    /** Replaces a module by what its file holds now. The new object takes over the run-time state of the old one.
        @return as for @ref load() ; the old object is gone in any case */
    AbstractModule* reload(Containers::StringView name);

    /** What was said of modules that were refused, one text each, in order. */
    Containers::ArrayView<const Containers::String> messages() const { return _messages; }

    /** Those that concern no module that was found, or that was not taken because of another of its name. */
    Containers::ArrayView<const Containers::String> folderMessages() const { return _messages.prefix(_folderMessages); }

private:
    struct Folder;
    struct Loaded;
    struct State;

    void look(Containers::StringView folder);
    void listModules();
    void note(Containers::StringView name, Status status, Containers::StringView reason = {});
    Folder& folderOf(Containers::StringView name) const;
    static Containers::String metadataFile(const Folder& folder, Containers::StringView name);
    bool fits(const Folder& folder, Containers::StringView name);
    Loaded* find(Containers::StringView name) const;
    bool discard(Loaded& loaded);
    void keep(Containers::String&& message);

    Containers::Array<Containers::String> _names;
    Containers::Array<Module> _modules;
    Containers::Array<Containers::String> _messages;

    /** How many messages there were before any module was loaded. */
    std::size_t _folderMessages = 0;
    LoadNote* _note;
    Containers::Pointer<State> _state;
};

}
