#pragma once

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

class LetterSet;

/** A face of a font file on this machine. */
struct FontFile {
    Containers::String path;

    /** Position of the face in a collection, such as a `.ttc` file. */
    UnsignedInt face;

    /** From the highest ascender to the lowest descender, in ems. */
    float height;
};

/** Finds fonts through fontconfig: first the text font, then for each major language whose letters (as fontconfig lists them) no
    font so far has all of, the one that the machine thinks best for it. Empty when the machine has no font.
    @param letters  null, or where the letters that the fonts have are added */
QUORVANE_API Containers::Array<FontFile> findTextFonts(LetterSet* letters = nullptr);

}
