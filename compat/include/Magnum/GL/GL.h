#pragma once

/** @file
 * Forward declarations of everything in `Magnum::GL`.
 *
 * All of it needs a current OpenGL context and a Platform::GLContext that has been created with it. This subset
 * remembers no state of OpenGL: it asks, or sets what it needs, and binds textures only for as long as a call lasts.
 */

#include "Corrade/Containers/EnumSet.h"
#include "Corrade/Utility/VisibilityMacros.h"
#include "Magnum/Magnum.h"

namespace Magnum::GL {

class Context;
class AbstractFramebuffer;
class AbstractTexture;
class DefaultFramebuffer;
class Framebuffer;
class Renderbuffer;
class Renderer;
template <UnsignedInt dimensions> class Texture;
using Texture2D = Texture<2>;
enum class TextureFormat : UnsignedInt;
enum class SamplerFilter : Int;
enum class SamplerMipmap : Int;
enum class SamplerWrapping : Int;

} // namespace Magnum::GL
