#include "Magnum/GL/Texture.h"

#include <algorithm>
#include <epoxy/gl.h>

#include "Magnum/GL/Context.h"
#include "Magnum/PixelFormat.h"

namespace Magnum::GL {

namespace {

// Binds a texture for as long as it lives, and then the one that was bound before.
class Bound {
public:
    explicit Bound(UnsignedInt id) {
        glGetIntegerv(GL_TEXTURE_BINDING_2D, &_before);
        glBindTexture(GL_TEXTURE_2D, id);
    }
    Bound(const Bound&) = delete;
    Bound& operator=(const Bound&) = delete;
    ~Bound() { glBindTexture(GL_TEXTURE_2D, GLuint(_before)); }

private:
    GLint _before = 0;
};

constexpr SamplerFilter Filters[]{SamplerFilter::Nearest, SamplerFilter::Linear};
constexpr SamplerMipmap Mipmaps[]{SamplerMipmap::Base, SamplerMipmap::Nearest, SamplerMipmap::Linear};
constexpr SamplerWrapping Wrappings[]{
    SamplerWrapping::Repeat, SamplerWrapping::MirroredRepeat, SamplerWrapping::ClampToEdge};

} // namespace

Vector2i Texture2D::maxSize() {
    static_cast<void>(Context::current());
    GLint out = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &out);
    return Vector2i(out);
}

Texture2D::Texture() {
    static_cast<void>(Context::current());
    glGenTextures(1, &_id);
    // Makes it a two-dimensional one.
    const Bound bound(_id);
}

Texture2D::Texture(Texture&& other) noexcept: _id(std::exchange(other._id, 0)) {}

Texture2D& Texture2D::operator=(Texture&& other) noexcept {
    std::swap(_id, other._id);
    return *this;
}

Texture2D::~Texture() {
    if(!_id) return;
    static_cast<void>(Context::current());
    glDeleteTextures(1, &_id);
}

Texture2D& Texture2D::setParameter(UnsignedInt name, Int value) {
    const Bound bound(_id);
    glTexParameteri(GL_TEXTURE_2D, name, value);
    return *this;
}

Texture2D& Texture2D::setMinificationFilter(SamplerFilter filter, SamplerMipmap mipmap) {
    return setParameter(GL_TEXTURE_MIN_FILTER, Int(filter) + Int(mipmap));
}

Texture2D& Texture2D::setMinificationFilter(Magnum::SamplerFilter filter, Magnum::SamplerMipmap mipmap) {
    return setMinificationFilter(Filters[UnsignedInt(filter)], Mipmaps[UnsignedInt(mipmap)]);
}

Texture2D& Texture2D::setMagnificationFilter(SamplerFilter filter) {
    return setParameter(GL_TEXTURE_MAG_FILTER, Int(filter));
}

Texture2D& Texture2D::setMagnificationFilter(Magnum::SamplerFilter filter) {
    return setMagnificationFilter(Filters[UnsignedInt(filter)]);
}

Texture2D& Texture2D::setWrapping(SamplerWrapping wrapping) {
    setParameter(GL_TEXTURE_WRAP_S, Int(wrapping));
    return setParameter(GL_TEXTURE_WRAP_T, Int(wrapping));
}

Texture2D& Texture2D::setWrapping(Magnum::SamplerWrapping wrapping) {
    return setWrapping(Wrappings[UnsignedInt(wrapping)]);
}

Texture2D& Texture2D::setStorage(Int levels, TextureFormat format, const Vector2i& size) {
    const Bound bound(_id);
    if(epoxy_gl_version() >= 42 || epoxy_has_gl_extension("GL_ARB_texture_storage")) {
        glTexStorage2D(GL_TEXTURE_2D, levels, GLenum(format), size.x(), size.y());
        return *this;
    }
    for(Int level = 0; level != levels; ++level)
        glTexImage2D(GL_TEXTURE_2D, level, GLint(format), std::max(size.x() >> level, 1),
            std::max(size.y() >> level, 1), 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
    return setParameter(GL_TEXTURE_MAX_LEVEL, levels - 1);
}

Vector2i Texture2D::imageSize(Int level) {
    const Bound bound(_id);
    Vector2i out;
    glGetTexLevelParameteriv(GL_TEXTURE_2D, level, GL_TEXTURE_WIDTH, &out.x());
    glGetTexLevelParameteriv(GL_TEXTURE_2D, level, GL_TEXTURE_HEIGHT, &out.y());
    return out;
}

Texture2D& Texture2D::setSubImage(Int level, const Vector2i& offset, const ImageView2D& image) {
    const Bound bound(_id);
    glBindBuffer(GL_PIXEL_UNPACK_BUFFER, 0);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    glTexSubImage2D(GL_TEXTURE_2D, level, offset.x(), offset.y(), image.size().x(), image.size().y(), GL_RGBA,
        GL_UNSIGNED_BYTE, image.data().data());
    return *this;
}

void Texture2D::image(Int level, Image2D& image) {
    const Vector2i size = imageSize(level);
    image = Image2D(image.format(), size, Containers::Array<char>(NoInit, std::size_t(size.product()) * 4));
    this->image(level, MutableImageView2D(image));
}

Image2D Texture2D::image(Int level, Image2D&& image) {
    this->image(level, image);
    return std::move(image);
}

void Texture2D::image(Int level, const MutableImageView2D& image) {
    const Vector2i size = imageSize(level);
    CORRADE_ASSERT(image.size() == size,
        "GL::AbstractTexture::image(): expected image view size" << size << "but got" << image.size(), );
    const Bound bound(_id);
    glBindBuffer(GL_PIXEL_PACK_BUFFER, 0);
    glPixelStorei(GL_PACK_ALIGNMENT, 4);
    glPixelStorei(GL_PACK_ROW_LENGTH, 0);
    glGetTexImage(GL_TEXTURE_2D, level, GL_RGBA, GL_UNSIGNED_BYTE, image.data().data());
}

Texture2D& Texture2D::generateMipmap() {
    const Bound bound(_id);
    glGenerateMipmap(GL_TEXTURE_2D);
    return *this;
}

} // namespace Magnum::GL
