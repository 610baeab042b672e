#pragma once

#include "Magnum/GL/GL.h"

namespace Magnum::GL {

/** How OpenGL keeps pixels; the values are OpenGL's. */
enum class TextureFormat : UnsignedInt { RGBA8 = 0x8058 };

} // namespace Magnum::GL
