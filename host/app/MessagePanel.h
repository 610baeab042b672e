#pragma once

#include "QuorvaneEditor/Host.h"
#include "app/MessageLog.h"

struct ImVec4;

namespace QuorvaneEngine::MessagePanel {

/** Draws the window with everything that was printed so far. Costs what its visible lines cost.
    @param open     cleared by the close button */
QUORVANE_API void draw(const MessageLog& log, bool* open);

/** The sign of a severity, as the icon font's text. */
const char* icon(MessageLog::Severity severity);

ImVec4 color(MessageLog::Severity severity);

}
