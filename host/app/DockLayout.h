#pragma once

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine::DockLayout {

/** Title of the host's own panel that goes below the views. */
constexpr const char* Bottom = "Messages";

/** Draws the dock space over what bars leave of the main window. Where there is no layout yet, arranges the views: all as tabs of
    one large panel, the messages below. */
QUORVANE_API void draw(const EditorState& state);

}
