#pragma once

#include <vector>

#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>
#include <rapidjson/fwd.h>

#include "QuorvaneEditor/Host.h"
#include "app/UserFile.h"
#include "modules/LoadNote.h"

namespace QuorvaneEngine {

class ModuleLoader;

/** The modules that the user wants to be left out because an editor died while it was loading them, and those that he is still to be asked about, in
    the file `left-out-modules.json` of a folder for the program's own settings: a JSON object with the members `version` (1) and `modules`, an array
    of objects with `file`, `size` in bytes, `changed` in nanoseconds since 1970, and `answered`, a boolean.

    One whose file is another one by now, or is gone, is forgotten. A file that cannot be read or is no such object is a warning, and holds none; one
    of another version is not written either. Belongs to the GUI thread, between two frames. */
class QUORVANE_API LeftOutModules {
public:
    static constexpr Int Version = 1;

    /** Reads the file and the notes of editors that died, and marks what the loader has found as left out. Each that the user is to be asked about is
        a warning.
        @param folder   made when something is left out; empty where nothing is kept
        @param modules  with nothing loaded yet; must outlive this object */
    explicit LeftOutModules(Containers::StringView folder, ModuleLoader& modules);

    /** The first module that the user is to be asked about; empty for none. */
    Containers::StringView suspect() const;

    /** Its library; empty where the loader knows no such module. */
    Containers::StringView fileOf(Containers::StringView module) const;

    /** Leaves a module out from now on, that is from the next start on where it is loaded. Written at once. */
    void leaveOut(Containers::StringView module);

    /** Leaves the user's answer to the next start, which asks again. */
    void putOff(Containers::StringView module);

    /** Leaves a module out no longer: to be called before it is loaded. Written at once. */
    void forget(Containers::StringView module);

private:
    struct Entry {
        LoadNote::Library library;
        bool isAnswered = false;

        bool operator==(const Entry&) const = default;
    };

    static void take(const rapidjson::Value& value, std::vector<Entry>& entries);
    static void put(std::vector<Entry>& entries, const LoadNote::Library& library, bool isAnswered);
    static void remove(std::vector<Entry>& entries, const LoadNote::Library& library);

    std::vector<Entry> read();
    void write(const std::vector<Entry>& entries) const;
    void change(Containers::StringView module, void (*how)(std::vector<Entry>&, const LoadNote::Library&));

    UserFile _file;
    ModuleLoader* _modules;

    /** Names of those that the user is to be asked about. */
    std::vector<Containers::String> _suspects;

    /** Whether the file belongs to another version. */
    bool _isForeign = false;
};

}
