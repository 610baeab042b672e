#pragma once

#include "Magnum/GL/GL.h"

namespace Magnum::GL {

// As those of Magnum/Sampler.h. The values are OpenGL's; of filters, those to which SamplerMipmap's are added.
enum class SamplerFilter : Int { Nearest = 0x2600, Linear = 0x2601 };
enum class SamplerMipmap : Int { Base = 0, Nearest = 0x100, Linear = 0x102 };
enum class SamplerWrapping : Int { Repeat = 0x2901, MirroredRepeat = 0x8370, ClampToEdge = 0x812F };

} // namespace Magnum::GL
