#pragma once

#include <vector>

#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"
#include "app/UserFile.h"

namespace QuorvaneEngine {

/** The projects that the user opened last, in the file `recent-projects.json` of a folder for the program's own settings: a JSON array
    of folders, the last one first. */
class QUORVANE_API RecentProjects {
public:
    /** Older ones are forgotten. */
    static constexpr std::size_t MaxCount = 8;

    /** Reads the file. One that is not there is none yet; what cannot be read or is no array is a warning, and none, too.
        @param folder   made by the first @ref add() ; empty to keep nothing */
    explicit RecentProjects(Containers::StringView folder);

    /** Puts a project first, and writes the file. What other editors have opened meanwhile is kept. So are the file's rights, but who
        opens projects may read it from then on; what could not be read is replaced.
        @param project  its folder, absolute; a name that is not UTF-8 is left out, for JSON cannot hold it */
    void add(Containers::StringView project);

    const std::vector<Containers::String>& folders() const { return _projects; }

private:
    void read();
    void write() const;

    UserFile _file;
    std::vector<Containers::String> _projects;
};

}
