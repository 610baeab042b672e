#pragma once

#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

class MessageLog;

namespace StatusBar {

/** What the bar tells beside the last message. */
struct Facts {
    /** Of the project; empty for none. */
    Containers::StringView folder;

    bool isUnsaved = false;

    /** Which languages cannot be shown as they should be, in a few words and in many; empty for none. */
    Containers::StringView fonts;
    Containers::StringView fontDetails;

    /** Why the project cannot be saved; empty where it can. */
    Containers::StringView obstacle;
};

/** Draws the bar at the lower edge of the main window: the project's folder, whether it is saved, and the last message. What has no
    room is cut, and can be read in whole under the mouse.
    @return whether the message was clicked */
QUORVANE_API bool draw(const Facts& facts, const MessageLog& log);

}

}
