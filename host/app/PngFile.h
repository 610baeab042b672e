#pragma once

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Writes a picture as a PNG file without transparency. On failure prints a warning with file and reason.
    @param width    in pixels, at least 1
    @param height   in pixels, at least 1
    @param pixels   red, green, blue and an ignored byte for each pixel, rows from bottom to top as OpenGL reads them
    @return whether the file was written */
QUORVANE_API bool writePng(Containers::StringView path, UnsignedInt width, UnsignedInt height,
    Containers::ArrayView<const unsigned char> pixels);

}
