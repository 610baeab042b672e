#pragma once

#include "Magnum/GL/AbstractFramebuffer.h"

namespace Magnum::GL {

/** Draws into textures, and reads from them; movable. */
class Framebuffer: public AbstractFramebuffer {
public:
    class ColorAttachment {
    public:
        constexpr explicit ColorAttachment(UnsignedInt id): _attachment(0x8CE0 + id) {}
        constexpr explicit operator UnsignedInt() const { return _attachment; }

    private:
        UnsignedInt _attachment;
    };
    class BufferAttachment {
    public:
        constexpr BufferAttachment(ColorAttachment attachment): _attachment(UnsignedInt(attachment)) {}
        constexpr explicit operator UnsignedInt() const { return _attachment; }

    private:
        UnsignedInt _attachment;
    };

    explicit Framebuffer(const Range2Di& viewport);
    /** Without an OpenGL object. */
    explicit Framebuffer(NoCreateT) noexcept {}
    Framebuffer(Framebuffer&&) noexcept = default;
    Framebuffer& operator=(Framebuffer&&) noexcept = default;
    ~Framebuffer();

    Framebuffer& setViewport(const Range2Di& rectangle) {
        AbstractFramebuffer::setViewport(rectangle);
        return *this;
    }
    Framebuffer& clear(FramebufferClearMask mask) {
        AbstractFramebuffer::clear(mask);
        return *this;
    }
    /** @param attachment  number of the color attachment */
    Framebuffer& clearColor(Int attachment, const Color4& color);
    /** The texture must outlive the attachment. */
    Framebuffer& attachTexture(BufferAttachment attachment, Texture2D& texture, Int level);
    Framebuffer& detach(BufferAttachment attachment);
};

} // namespace Magnum::GL
