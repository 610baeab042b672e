#pragma once

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine::Theme {

/** Gives the current GUI context the editor's colours, paddings and roundings.
    @param scale    pixels per pixel at scale 1; fonts follow through the style's font scale */
QUORVANE_API void apply(float scale);

}
