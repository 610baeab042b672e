#pragma once

#include "Magnum/GL/AbstractFramebuffer.h"

namespace Magnum::GL {

/** The window. */
class DefaultFramebuffer: public AbstractFramebuffer {
public:
    constexpr explicit DefaultFramebuffer() = default;

    DefaultFramebuffer& setViewport(const Range2Di& rectangle) {
        AbstractFramebuffer::setViewport(rectangle);
        return *this;
    }
    DefaultFramebuffer& clear(FramebufferClearMask mask) {
        AbstractFramebuffer::clear(mask);
        return *this;
    }
    DefaultFramebuffer& clearColor(const Color4& color);
};

/** Its viewport is the window as it was when the context was created. */
extern CORRADE_VISIBILITY_EXPORT DefaultFramebuffer defaultFramebuffer;

} // namespace Magnum::GL
