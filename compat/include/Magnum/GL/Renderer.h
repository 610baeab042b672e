#pragma once

#include "Magnum/GL/GL.h"
#include "Magnum/Math/Color.h"

namespace Magnum::GL {

/** State of OpenGL that belongs to no object. */
class Renderer {
public:
    // The values are OpenGL's.
    enum class Feature : UnsignedInt {
        Blending = 0x0BE2,
        FaceCulling = 0x0B44,
        DepthTest = 0x0B71,
        ScissorTest = 0x0C11
    };

    Renderer() = delete;

    static void enable(Feature feature);
    static void disable(Feature feature);
    static void setFeature(Feature feature, bool enabled);
    /** What clear() fills the colors with. */
    static void setClearColor(const Color4& color);
};

} // namespace Magnum::GL
