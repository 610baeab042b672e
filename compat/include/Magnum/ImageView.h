#pragma once

#include "Corrade/Containers/ArrayView.h"
#include "Magnum/Magnum.h"
#include "Magnum/Math/Vector2.h"

namespace Magnum {

/**
 * A picture owned by somebody else: rows from bottom to top, one after the other, each padded to a multiple of 4 bytes.
 *
 * @tparam T  `const char`, or `char` where the pixels may be written
 */
template <class T> class ImageView<2, T> {
    using Erased = std::conditional_t<std::is_const_v<T>, const void, void>;

public:
    using Type = T;

    /** @param data  at least as many bytes as the size needs: aborts otherwise */
    explicit ImageView(PixelFormat format, const Vector2i& size, Containers::ArrayView<Erased> data) noexcept;
    template <class U>
    requires(std::is_const_v<T> && !std::is_const_v<U>) ImageView(const ImageView<2, U>& other)
    noexcept: ImageView(other.format(), other.size(), other.data()) {}

    PixelFormat format() const { return _format; }
    const Vector2i& size() const { return _size; }
    Containers::ArrayView<T> data() const { return _data; }

private:
    PixelFormat _format;
    Vector2i _size;
    Containers::ArrayView<T> _data;
};

} // namespace Magnum
