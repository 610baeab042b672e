#pragma once

#include "Magnum/Magnum.h"

namespace Magnum {

/** How one pixel lies in memory. */
enum class PixelFormat : UnsignedInt {
    /** Four bytes: red, green, blue, alpha. */
    RGBA8Unorm = 1
};

/** Bytes of one pixel. */
UnsignedInt pixelFormatSize(PixelFormat format);

} // namespace Magnum
