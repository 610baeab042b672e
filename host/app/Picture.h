#pragma once

#include <algorithm>
#include <cmath>
#include <utility>

#include <Corrade/Containers/Array.h>
#include <Magnum/Image.h>
#include <Magnum/Math/Vector2.h>
#include <Magnum/Math/Vector4.h>
#include <Magnum/PixelFormat.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** The longer side of a resource's picture, in pixels, and so that of a thumbnail. */
constexpr Int PictureSize = 128;

/** Makes a picture of 8 bits a channel, bottom row first.
    @param color    the color, red, green, blue and alpha from 0 to 1, of the pixel in column x and row y from the bottom */
template <class F> Magnum::Image2D makePicture(const Magnum::Vector2i& size, F&& color) {
    Containers::Array<char> data{Corrade::NoInit, std::size_t(size.product()) * 4};
    char* out = data.data();
    for(Int y = 0; y != size.y(); ++y)
        for(Int x = 0; x != size.x(); ++x) {
            const Magnum::Vector4 value = color(x, y);
            for(std::size_t i = 0; i != 4; ++i)
                *out++ = char((unsigned char)(std::lround(std::clamp(value[i], 0.0f, 1.0f) * 255.0f)));
        }
    return Magnum::Image2D{Magnum::PixelFormat::RGBA8Unorm, size, std::move(data)};
}

}
