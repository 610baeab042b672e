#pragma once

#include <future>

#include <Corrade/Containers/Array.h>

#include "QuorvaneEditor/Host.h"
#include "fonts/FontFinder.h"
#include "fonts/LetterSet.h"

namespace QuorvaneEngine::Fonts {

/** Height of a line of the text font in pixels at scale 1. */
constexpr float Size = 20.0f;

/** The fonts of this machine, which are looked for on a thread of their own from the time on that this object is made: that takes as long as
    to draw a frame. Destruction waits for it. */
class QUORVANE_API Search {
public:
    struct Found {
        Containers::Array<FontFile> files;
        LetterSet letters;
    };

    Search();

    /** Waits for what is found. Once. */
    Found take() { return _found.get(); }

private:
    std::future<Found> _found;
};

/** Gives the current GUI context its one font: a text font of this machine, the icon font, and fallback fonts that together draw
    the letters of all major languages. Where the machine has no font, the GUI's own is taken, which is a warning.

    Glyphs are drawn when they are first used, so many fonts cost little.
    @param search       the text fonts, which are taken from it
    @param iconFont     the icon font's file, NUL-terminated; one that cannot be read is a warning
    @param letters      null, or becomes the letters beyond ASCII that can be drawn now */
QUORVANE_API void load(Search& search, Containers::StringView iconFont, LetterSet* letters = nullptr);

/** The same without having looked for fonts before. */
QUORVANE_API void load(Containers::StringView iconFont, LetterSet* letters = nullptr);

}
