#pragma once

#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"
#include "app/Theme.h"
#include "app/UserFile.h"

namespace QuorvaneEngine {

/** What the user has chosen for the editor in all projects, in the file `settings.json` of a folder for the program's own settings: a JSON
    object with the members `version` (1), `theme` ("dark" or "light") and `scale` (percent, 75 to 300, beside the display's own).

    What is missing has its first value. A file that cannot be read, that is no such object or of another version is one
    warning, and has the first values; so has a member that holds something else. */
class QUORVANE_API Settings {
public:
    static constexpr Int Version = 1;
    static constexpr Int SmallestScale = 75;
    static constexpr Int LargestScale = 300;

    /** Reads the file; one that is not there is none yet.
        @param folder   made when something is changed; empty to keep nothing */
    explicit Settings(Containers::StringView folder);

    Theme::Scheme scheme() const { return _scheme; }

    /** Percent of the size that the display asks for. */
    Int scale() const { return _scale; }

    /** Both write the file where the value is another than before, and in it this one value: what else another editor has put there is kept, as is what
        this program does not know. A file that cannot be written is a warning, as is one of a later version, which stays as it is. */
    void setScheme(Theme::Scheme scheme);
    void setScale(Int percent);

    /** The next of the scales that the user goes through, 75 % to 300 %.
        @param direction    1 for larger, -1 for smaller; at the end it stays */
    static Int nextScale(Int percent, int direction);

private:
    void read();
    /** @return why not all of it can be taken; null where it can */
    const char* take(const rapidjson::Document& document);
    void write(const char* name, rapidjson::Value value) const;

    UserFile _file;
    Theme::Scheme _scheme = Theme::Scheme::Dark;
    Int _scale = 100;
};

}
