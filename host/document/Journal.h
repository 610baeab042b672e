#pragma once

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/Optional.h>
#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** What a save of several files was about to do, as it is kept on the disk while it does.

    The text has one line for each file, behind a line with the format's name and version and one with the direction, and ends
    with the line "end":

        quorvane-journal 1
        complete
        replace project.json
        create localization/fr.json
        remove localization/de.json
        end
*/
struct QUORVANE_API Journal {
    /** Where the files are on their way to. */
    enum class Direction : Int { Complete, Restore };

    enum class Action : Int {
        Replace, /**< an existing file by another one */
        Create,
        Remove
    };

    struct Entry {
        Action action{};

        /** Relative to the project's folder, with forward slashes. */
        Containers::String path;
    };

    /** Reads the text of a journal. None for anything else, also for one whose paths lead out of the folder: a project may come
        from a stranger. */
    static Containers::Optional<Journal> fromText(Containers::StringView text);

    /** Whether a path is relative, stays in its folder and fits on a line. */
    static bool isPath(Containers::StringView path);

    Containers::String text() const;

    Direction direction = Direction::Complete;
    Containers::Array<Entry> entries;
};

}
