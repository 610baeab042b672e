#pragma once

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine::DockLayout {

/** Titles of the host's own panels, which go below the views. */
constexpr const char* Messages = "Messages";
constexpr const char* Report = "Localization Report";

/** Draws the dock space over what bars leave of the main window. Where there is no layout yet, arranges the views: all as tabs of
    one large panel, the host's own panels below. */
QUORVANE_API void draw(const EditorState& state);

}
