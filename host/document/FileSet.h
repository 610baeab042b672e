#pragma once

#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>

#include "FileSystem.h"
#include "Journal.h"

namespace QuorvaneEngine {

/** Puts several files of a project's folder in place, all or none, whatever fails and whenever the power goes.

    The files are staged in a folder of their own, with second names for those that they replace; once all of it has reached the
    disk, so does a journal: from here on @ref recover() leads to the new files, before it to the old ones. Each file is then
    renamed into place, so that a reader finds it whole at any time. A step that fails turns the journal around, and leads back.
    The set is in place when the journal is gone. Two sets in one folder at once destroy each other: who may meet another one takes
    a @ref FolderLock before. */
class QUORVANE_API FileSet {
public:
    /** Where the files of a set are staged. */
    struct Stage {
        /** Relative to the set's folder; belongs to the sets alone. */
        const char* folder;

        /** What puts a set in order that was cut short: the end of a sentence. */
        const char* remedy;
    };

    static constexpr Stage ProjectStage{".editor/save", "when the project is saved or opened next"};

    /** @param files    must outlive the set
        @param folder   the project's, or another one that is there; absolute */
    explicit FileSet(FileSystem& files, Containers::StringView folder, const Stage& stage = ProjectStage);

    /** Adds a file to put in place.
        @param path     relative to the folder, at most one folder deep, which is made where it is missing
        @param bytes    must outlive the set */
    void write(Containers::StringView path, Containers::StringView bytes);

    /** Adds a file to remove. */
    void remove(Containers::StringView path);

    /** Whether nothing was added. */
    bool isEmpty() const { return _contents.isEmpty(); }

    /** Does it. What an earlier set left behind is recovered first.
        @param error    set on failure, when all files are as they were; where even the way back failed, its reason says so, and
            the journal stays for the next recovery */
    bool commit(FileError& error);

    /** Completes or rolls back what was cut short in a folder. Changes nothing where nothing was. A folder may come from a stranger:
        nothing is removed or put in place through a link.
        @param error    set on failure, when nothing was changed or a further recovery can go on */
    static bool recover(
        FileSystem& files, Containers::StringView folder, FileError& error, const Stage& stage = ProjectStage);

    /** The journal of a set that was cut short in a folder.
        @param isFound  whether there is one
        @param error    set where there may be one that cannot be read
        @return whether it could be told */
    static bool findJournal(FileSystem& files, Containers::StringView folder, const Stage& stage, bool& isFound,
        Journal& journal, FileError& error);

    /** Makes the folder for what version control is to ignore, and tells it so; not through a link. */
    static bool makeEditorFolder(FileSystem& files, Containers::StringView folder, FileError& error);

private:
    bool stage(FileError& error);

    FileSystem* _files;
    Containers::String _folder;
    Stage _stage;
    Journal _journal;
    Containers::Array<Containers::StringView> _contents;
};

}
