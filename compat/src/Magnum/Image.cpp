#include "Magnum/Image.h"

#include <algorithm>

#include "Corrade/Utility/Assert.h"
#include "Magnum/PixelFormat.h"

namespace Magnum {

namespace {

// Rows are padded to 4 bytes, except for the last one.
std::size_t bytes(PixelFormat format, const Vector2i& size) {
    const std::size_t row = std::size_t(size.x()) * pixelFormatSize(format);
    return size.product() ? (row + 3) / 4 * 4 * std::size_t(size.y()) : 0;
}

} // namespace

UnsignedInt pixelFormatSize(PixelFormat) { return 4; }

template <class T>
ImageView<2, T>::ImageView(PixelFormat format, const Vector2i& size, Containers::ArrayView<Erased> data) noexcept
    : _format(format), _size(size), _data(static_cast<T*>(data.data()), data.size()) {
    CORRADE_ASSERT(bytes(format, size) <= data.size(),
        "ImageView: data too small, got" << data.size() << "but expected at least" << bytes(format, size) << "bytes", );
}

template class ImageView<2, char>;
template class ImageView<2, const char>;

Image2D::Image(PixelFormat format, const Vector2i& size, Containers::Array<char>&& data) noexcept
    : _format(format), _size(size), _data(std::move(data)) {
    CORRADE_ASSERT(bytes(format, size) <= _data.size(),
        "Image: data too small, got" << _data.size() << "but expected at least" << bytes(format, size) << "bytes", );
}

Containers::Array<char> Image2D::release() {
    _size = {};
    return std::move(_data);
}

} // namespace Magnum
