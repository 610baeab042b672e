#pragma once

#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>

#include "FileSystem.h"
#include "Journal.h"

namespace QuorvaneEngine {

/** Puts several files of a project's folder in place, all or none, whatever fails and whenever the power goes.

    The files are staged in `.editor/save/`, with second names for those that they replace; once all of it has reached the disk,
    so does a journal: from here on @ref recover() leads to the new files, before it to the old ones. Each file is then renamed
    into place, so that a reader finds it whole at any time. A step that fails turns the journal around, and leads back. The set is
    in place when the journal is gone. */
class QUORVANE_API FileSet {
public:
    /** @param files    must outlive the set
        @param folder   the project's; absolute */
    explicit FileSet(FileSystem& files, Containers::StringView folder);

    /** Adds a file to put in place.
        @param path     relative to the folder, at most one folder deep, which is made where it is missing */
    void write(Containers::StringView path, Containers::StringView bytes);

    /** Adds a file to remove. */
    void remove(Containers::StringView path);

    /** Does it. What an earlier set left behind is recovered first.
        @param error    set on failure, when all files are as they were; where even the way back failed, its reason says so, and
            the journal stays for the next recovery */
    bool commit(FileError& error);

    /** Completes or rolls back what was cut short in a folder. Changes nothing where nothing was.
        @param error    set on failure, when nothing was changed or a further recovery can go on */
    static bool recover(FileSystem& files, Containers::StringView folder, FileError& error);

    /** Makes the folder for what version control is to ignore, and tells it so. */
    static bool makeEditorFolder(FileSystem& files, Containers::StringView folder, FileError& error);

private:
    bool stage(FileError& error);

    FileSystem* _files;
    Containers::String _folder;
    Journal _journal;
    Containers::Array<Containers::String> _contents;
};

}
