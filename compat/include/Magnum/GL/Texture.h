#pragma once

#include "Magnum/GL/Sampler.h"
#include "Magnum/GL/TextureFormat.h"
#include "Magnum/Image.h"
#include "Magnum/Sampler.h"

namespace Magnum::GL {

/** A texture in OpenGL's memory; movable. */
template <> class Texture<2> {
public:
    /** In pixels. */
    static Vector2i maxSize();

    explicit Texture();
    /** Without an OpenGL object. */
    explicit Texture(NoCreateT) noexcept {}
    Texture(const Texture&) = delete;
    Texture(Texture&& other) noexcept;
    Texture& operator=(const Texture&) = delete;
    /** Swaps. */
    Texture& operator=(Texture&& other) noexcept;
    ~Texture();

    /** OpenGL's name of it, or 0. */
    UnsignedInt id() const { return _id; }

    Texture& setMinificationFilter(SamplerFilter filter, SamplerMipmap mipmap = SamplerMipmap::Base);
    Texture& setMinificationFilter(
        Magnum::SamplerFilter filter, Magnum::SamplerMipmap mipmap = Magnum::SamplerMipmap::Base);
    Texture& setMagnificationFilter(SamplerFilter filter);
    Texture& setMagnificationFilter(Magnum::SamplerFilter filter);
    Texture& setWrapping(SamplerWrapping wrapping);
    Texture& setWrapping(Magnum::SamplerWrapping wrapping);

    /** Makes all levels, with pixels of any value. Once for each texture. */
    Texture& setStorage(Int levels, TextureFormat format, const Vector2i& size);
    /** Of a level, in pixels. */
    Vector2i imageSize(Int level);
    /** Replaces the pixels of a rectangle. */
    Texture& setSubImage(Int level, const Vector2i& offset, const ImageView2D& image);
    /** Reads a level. The image is resized; a view must have its size. */
    void image(Int level, Image2D& image);
    Image2D image(Int level, Image2D&& image);
    void image(Int level, const MutableImageView2D& image);
    Texture& generateMipmap();

private:
    Texture& setParameter(UnsignedInt name, Int value);

    UnsignedInt _id = 0;
};

} // namespace Magnum::GL
