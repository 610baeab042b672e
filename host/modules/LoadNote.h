#pragma once

#include <cstdint>
#include <vector>

#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Tells the next start of the editor which module it died with: while code of a module runs for the first time, a file `loading-<process>` with
    the name of its library lies in a folder for the program's own settings. It is locked by its program, so that nobody takes it for one that was
    left by a program that is gone, whatever the numbers of processes are by then.

    The file has a line for each of: the format's name and version, the size of the library in bytes, when it was changed last in nanoseconds since
    1970, and its path. Belongs to the GUI thread. */
class QUORVANE_API LoadNote {
public:
    /** A library, as it was. */
    struct Library {
        /** Absolute, without "." and "..". */
        Containers::String file;

        /** In bytes; and when it was changed, in nanoseconds since 1970. Both 0 where it is not there. */
        std::uint64_t size = 0;
        std::int64_t changed = 0;

        /** As it is on the disk now. */
        static Library of(Containers::StringView file);

        bool operator==(const Library& other) const {
            return file == other.file && size == other.size && changed == other.changed;
        }
    };

    /** The file lies as long as the object lives. */
    class Scope {
    public:
        /** @param note     null for none; must outlive the object, as must all that lie within it
            @param file     of the library. Within the scope of another one, that one counts. */
        explicit Scope(LoadNote* note, Containers::StringView file): _note{note} {
            if(_note) _note->begin(file);
        }
        ~Scope() {
            if(_note) _note->end();
        }
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

    private:
        LoadNote* _note;
    };

    /** @param folder   made where it is missing; empty to keep nothing. That nothing can be written there is a warning, once. */
    explicit LoadNote(Containers::StringView folder): _folder{folder} {}

    LoadNote(const LoadNote&) = delete;
    LoadNote& operator=(const LoadNote&) = delete;

    /** Takes away what programs that are gone have left in a folder. A file that is none of these goes as well, which is a warning.
        @param folder   may be missing */
    static std::vector<Library> takeLeft(Containers::StringView folder);

private:
    void begin(Containers::StringView file);
    void end();

    Containers::String _folder;

    /** Descriptor of the file that lies there; -1 for none. */
    int _lock = -1;
    int _depth = 0;
    bool _hasFailed = false;
};

}
