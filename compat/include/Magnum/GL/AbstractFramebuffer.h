#pragma once

#include "Magnum/GL/GL.h"
#include "Magnum/Image.h"
#include "Magnum/Math/Range.h"

namespace Magnum::GL {

// The values are OpenGL's.
enum class FramebufferClear : UnsignedInt { Color = 0x4000, Depth = 0x100, Stencil = 0x400 };
using FramebufferClearMask = Containers::EnumSet<FramebufferClear>;
CORRADE_ENUMSET_OPERATORS(FramebufferClearMask)

enum class FramebufferBlit : UnsignedInt { Color = 0x4000, Depth = 0x100, Stencil = 0x400 };
using FramebufferBlitMask = Containers::EnumSet<FramebufferBlit>;
CORRADE_ENUMSET_OPERATORS(FramebufferBlitMask)

enum class FramebufferBlitFilter : UnsignedInt { Nearest = 0x2600, Linear = 0x2601 };

/** What can be drawn to and read from. Rectangles are in pixels, from the lower left corner. */
class AbstractFramebuffer {
public:
    /** Copies a rectangle, stretching it where the sizes differ. */
    static void blit(AbstractFramebuffer& source, AbstractFramebuffer& destination, const Range2Di& sourceRectangle,
        const Range2Di& destinationRectangle, FramebufferBlitMask mask, FramebufferBlitFilter filter);
    static void blit(AbstractFramebuffer& source, AbstractFramebuffer& destination, const Range2Di& rectangle,
        FramebufferBlitMask mask);

    AbstractFramebuffer(const AbstractFramebuffer&) = delete;
    AbstractFramebuffer& operator=(const AbstractFramebuffer&) = delete;

    UnsignedInt id() const { return _id; }
    /** Draws to it from now on, into its viewport. */
    void bind();
    Range2Di viewport() const { return _viewport; }
    AbstractFramebuffer& setViewport(const Range2Di& rectangle);
    /** All of it, whatever the viewport. Binds it. */
    AbstractFramebuffer& clear(FramebufferClearMask mask);
    /** Reads pixels. The image is resized; a view must have the rectangle's size: aborts otherwise. */
    void read(const Range2Di& rectangle, Image2D& image);
    Image2D read(const Range2Di& rectangle, Image2D&& image);
    void read(const Range2Di& rectangle, const MutableImageView2D& image);

protected:
    constexpr explicit AbstractFramebuffer() = default;
    AbstractFramebuffer(AbstractFramebuffer&& other) noexcept
        : _id(std::exchange(other._id, 0)), _viewport(other._viewport) {}
    AbstractFramebuffer& operator=(AbstractFramebuffer&& other) noexcept {
        std::swap(_id, other._id);
        std::swap(_viewport, other._viewport);
        return *this;
    }
    ~AbstractFramebuffer() = default;

    UnsignedInt _id = 0;
    Range2Di _viewport;

private:
    friend Context;
};

} // namespace Magnum::GL
