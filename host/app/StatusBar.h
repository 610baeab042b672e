#pragma once

#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

class MessageLog;

namespace StatusBar {

/** Draws the bar at the lower edge of the main window: the project's folder, whether it is saved, and the last message.
    @param folder   empty for no project
    @param fonts    which languages cannot be shown as they should be; empty for none
    @param obstacle why the project cannot be saved; empty where it can
    @return whether the message was clicked */
QUORVANE_API bool draw(Containers::StringView folder, bool unsaved, const MessageLog& log,
    Containers::StringView fonts = {}, Containers::StringView obstacle = {});

}

}
