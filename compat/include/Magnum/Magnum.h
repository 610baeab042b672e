#pragma once

/** @file Basic types, the names of math types, and forward declarations of everything in `Magnum`. */

#include <cstddef>

#include "Corrade/Tags.h"
#include "Corrade/Utility/Utility.h"
#include "Magnum/Types.h"

namespace Magnum {

using namespace Corrade;
using Corrade::Utility::Debug;
using Corrade::Utility::Error;
using Corrade::Utility::Fatal;
using Corrade::Utility::Warning;

namespace Math {

using namespace Corrade;

template <class> class Deg;
template <class> class Rad;
template <std::size_t, class> class Vector;
template <class> class Vector2;
template <class> class Vector3;
template <class> class Vector4;
template <class> class Color3;
template <class> class Color4;
template <std::size_t, class> class Matrix;
template <class T> using Matrix3x3 = Matrix<3, T>;
template <class T> using Matrix4x4 = Matrix<4, T>;
template <class> class Matrix4;
template <class> class Quaternion;
template <class> class Range2D;

} // namespace Math

using Deg = Math::Deg<Float>;
using Rad = Math::Rad<Float>;
using Vector2 = Math::Vector2<Float>;
using Vector3 = Math::Vector3<Float>;
using Vector4 = Math::Vector4<Float>;
using Vector2i = Math::Vector2<Int>;
using Vector3i = Math::Vector3<Int>;
using Vector4i = Math::Vector4<Int>;
using Color3 = Math::Color3<Float>;
using Color4 = Math::Color4<Float>;
using Matrix3x3 = Math::Matrix3x3<Float>;
using Matrix4x4 = Math::Matrix4x4<Float>;
using Matrix4 = Math::Matrix4<Float>;
using Quaternion = Math::Quaternion<Float>;
using Range2D = Math::Range2D<Float>;
using Range2Di = Math::Range2D<Int>;

enum class PixelFormat : UnsignedInt;
enum class SamplerFilter : UnsignedInt;
enum class SamplerMipmap : UnsignedInt;
enum class SamplerWrapping : UnsignedInt;
template <UnsignedInt dimensions> class Image;
template <UnsignedInt dimensions, class T> class ImageView;
using Image2D = Image<2>;
using ImageView2D = ImageView<2, const char>;
using MutableImageView2D = ImageView<2, char>;

} // namespace Magnum
