#pragma once

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

class LetterSet;

}

namespace QuorvaneEngine::Fonts {

/** Height of a line of the text font in pixels at scale 1. */
constexpr float Size = 20.0f;

/** Gives the current GUI context its one font: a text font of this machine, the icon font, and fallback fonts that together draw
    the letters of all major languages. Where the machine has no font, the GUI's own is taken, which is a warning.

    Glyphs are drawn when they are first used, so many fonts cost little.
    @param iconFont     the icon font's file, NUL-terminated; one that cannot be read is a warning
    @param letters      null, or becomes the letters beyond ASCII that can be drawn now */
QUORVANE_API void load(Containers::StringView iconFont, LetterSet* letters = nullptr);

}
