#pragma once

#include "Corrade/Containers/Array.h"
#include "Magnum/ImageView.h"
#include "Magnum/Magnum.h"

namespace Magnum {

/** A picture that owns its pixels; laid out as an ImageView. */
template <> class Image<2> {
public:
    /** @param data  at least as many bytes as the size needs: aborts otherwise */
    explicit Image(PixelFormat format, const Vector2i& size, Containers::Array<char>&& data) noexcept;
    /** Without pixels, for functions that fill it. */
    Image(PixelFormat format) noexcept: _format(format) {}

    operator ImageView2D() const { return ImageView2D(_format, _size, _data); }
    operator MutableImageView2D() { return MutableImageView2D(_format, _size, _data); }

    PixelFormat format() const { return _format; }
    const Vector2i& size() const { return _size; }
    Containers::ArrayView<char> data() & { return _data; }
    Containers::ArrayView<const char> data() const& { return _data; }
    /** Hands the pixels to the caller; the size is zero then. */
    Containers::Array<char> release();

private:
    PixelFormat _format;
    Vector2i _size;
    Containers::Array<char> _data;
};

} // namespace Magnum
