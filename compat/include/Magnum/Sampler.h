#pragma once

#include "Magnum/Magnum.h"

namespace Magnum {

/** Which texels make a pixel. */
enum class SamplerFilter : UnsignedInt { Nearest, Linear };

/** Which levels of a texture make a pixel; Base alone needs only the first. */
enum class SamplerMipmap : UnsignedInt { Base, Nearest, Linear };

/** What lies outside a texture. */
enum class SamplerWrapping : UnsignedInt { Repeat, MirroredRepeat, ClampToEdge };

} // namespace Magnum
