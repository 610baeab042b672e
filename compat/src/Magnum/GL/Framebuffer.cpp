#include "Magnum/GL/Framebuffer.h"

#include <epoxy/gl.h>

#include "Magnum/GL/Context.h"
#include "Magnum/GL/DefaultFramebuffer.h"
#include "Magnum/GL/Renderbuffer.h"
#include "Magnum/GL/Renderer.h"
#include "Magnum/GL/Texture.h"
#include "Magnum/Math/Color.h"

namespace Magnum::GL {

constinit DefaultFramebuffer defaultFramebuffer;

namespace {

// Always: whoever drew into the same context may have bound anything.
void bindTo(GLenum target, UnsignedInt id) {
    static_cast<void>(Context::current());
    glBindFramebuffer(target, id);
}

} // namespace

void AbstractFramebuffer::bind() {
    bindTo(GL_FRAMEBUFFER, _id);
    glViewport(_viewport.left(), _viewport.bottom(), _viewport.sizeX(), _viewport.sizeY());
}

AbstractFramebuffer& AbstractFramebuffer::setViewport(const Range2Di& rectangle) {
    static_cast<void>(Context::current());
    _viewport = rectangle;
    GLint bound = 0;
    glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &bound);
    if(UnsignedInt(bound) == _id)
        glViewport(rectangle.left(), rectangle.bottom(), rectangle.sizeX(), rectangle.sizeY());
    return *this;
}

AbstractFramebuffer& AbstractFramebuffer::clear(FramebufferClearMask mask) {
    bind();
    glClear(UnsignedInt(mask));
    return *this;
}

void AbstractFramebuffer::read(const Range2Di& rectangle, Image2D& image) {
    image = Image2D(
        image.format(), rectangle.size(), Containers::Array<char>(NoInit, std::size_t(rectangle.size().product()) * 4));
    read(rectangle, MutableImageView2D(image));
}

Image2D AbstractFramebuffer::read(const Range2Di& rectangle, Image2D&& image) {
    read(rectangle, image);
    return std::move(image);
}

void AbstractFramebuffer::read(const Range2Di& rectangle, const MutableImageView2D& image) {
    CORRADE_ASSERT(image.size() == rectangle.size(),
        "GL::AbstractFramebuffer::read(): expected image view size" << rectangle.size() << "but got" << image.size(), );
    bindTo(GL_READ_FRAMEBUFFER, _id);
    glBindBuffer(GL_PIXEL_PACK_BUFFER, 0);
    glPixelStorei(GL_PACK_ALIGNMENT, 4);
    glPixelStorei(GL_PACK_ROW_LENGTH, 0);
    glReadPixels(rectangle.left(), rectangle.bottom(), rectangle.sizeX(), rectangle.sizeY(), GL_RGBA, GL_UNSIGNED_BYTE,
        image.data().data());
}

void AbstractFramebuffer::blit(AbstractFramebuffer& source, AbstractFramebuffer& destination,
    const Range2Di& sourceRectangle, const Range2Di& destinationRectangle, FramebufferBlitMask mask,
    FramebufferBlitFilter filter) {
    bindTo(GL_READ_FRAMEBUFFER, source._id);
    bindTo(GL_DRAW_FRAMEBUFFER, destination._id);
    glBlitFramebuffer(sourceRectangle.left(), sourceRectangle.bottom(), sourceRectangle.right(), sourceRectangle.top(),
        destinationRectangle.left(), destinationRectangle.bottom(), destinationRectangle.right(),
        destinationRectangle.top(), UnsignedInt(mask), GLenum(filter));
}

void AbstractFramebuffer::blit(AbstractFramebuffer& source, AbstractFramebuffer& destination, const Range2Di& rectangle,
    FramebufferBlitMask mask) {
    blit(source, destination, rectangle, rectangle, mask, FramebufferBlitFilter::Nearest);
}

DefaultFramebuffer& DefaultFramebuffer::clearColor(const Color4& color) {
    bind();
    glClearBufferfv(GL_COLOR, 0, color.data());
    return *this;
}

Framebuffer::Framebuffer(const Range2Di& viewport) {
    static_cast<void>(Context::current());
    _viewport = viewport;
    glGenFramebuffers(1, &_id);
}

Framebuffer::~Framebuffer() {
    if(!_id) return;
    static_cast<void>(Context::current());
    glDeleteFramebuffers(1, &_id);
}

Framebuffer& Framebuffer::clearColor(Int attachment, const Color4& color) {
    bind();
    glClearBufferfv(GL_COLOR, attachment, color.data());
    return *this;
}

Framebuffer& Framebuffer::attachTexture(BufferAttachment attachment, Texture2D& texture, Int level) {
    bind();
    glFramebufferTexture2D(GL_FRAMEBUFFER, GLenum(attachment), GL_TEXTURE_2D, texture.id(), level);
    return *this;
}

Framebuffer& Framebuffer::detach(BufferAttachment attachment) {
    bind();
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GLenum(attachment), GL_RENDERBUFFER, 0);
    return *this;
}

Renderbuffer::Renderbuffer() {
    static_cast<void>(Context::current());
    glGenRenderbuffers(1, &_id);
}

Renderbuffer::~Renderbuffer() {
    if(!_id) return;
    static_cast<void>(Context::current());
    glDeleteRenderbuffers(1, &_id);
}

void Renderer::enable(Feature feature) { glEnable(GLenum(feature)); }

void Renderer::disable(Feature feature) { glDisable(GLenum(feature)); }

void Renderer::setFeature(Feature feature, bool enabled) { enabled ? enable(feature) : disable(feature); }

void Renderer::setClearColor(const Color4& color) { glClearColor(color.r(), color.g(), color.b(), color.a()); }

} // namespace Magnum::GL
