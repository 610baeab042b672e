#pragma once

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <utility>

#include <Corrade/Containers/Array.h>
#include <Magnum/GL/Framebuffer.h>
#include <Magnum/GL/Texture.h>
#include <Magnum/GL/TextureFormat.h>
#include <Magnum/Image.h>
#include <Magnum/ImageView.h>
#include <Magnum/Math/Range.h>
#include <Magnum/PixelFormat.h>
#include <gtest/gtest.h>

#include "GlWindow.h"
#include "ThumbnailManager.h"

namespace QuorvaneEngine::Test {

namespace GL = Magnum::GL;

using Magnum::Image2D;
using Magnum::ImageView2D;
using Magnum::Range2Di;
using Magnum::Vector2i;
using Magnum::Vector3i;

inline const GL::Framebuffer::ColorAttachment Color{0};

/** One pixel, as eight hexadecimal digits: red, green, blue, alpha. */
using Pixel = std::uint32_t;

inline constexpr Pixel Red = 0xff0000ff;
inline constexpr Pixel Green = 0x00ff00ff;
inline constexpr Pixel Blue = 0x0000ffff;
inline constexpr Pixel White = 0xffffffff;

/** A picture whose pixels, bottom row first, a function of x and y tells. */
template <class F> Image2D image(const Vector2i& size, F&& pixel) {
    Containers::Array<char> data{Corrade::ValueInit, std::size_t(size.product()) * 4};
    std::size_t i = 0;
    for(Int y = 0; y != size.y(); ++y)
        for(Int x = 0; x != size.x(); ++x)
            for(const int shift: {24, 16, 8, 0}) data[i++] = char(Pixel(pixel(x, y)) >> shift);
    return Image2D{Magnum::PixelFormat::RGBA8Unorm, size, std::move(data)};
}

inline Image2D plain(const Vector2i& size, Pixel color) {
    return image(size, [&](Int, Int) { return color; });
}

/** Every pixel another one, the same in every run. */
inline Image2D noise(const Vector2i& size) {
    std::mt19937 random{unsigned(size.x() * 20000 + size.y())};
    return image(size, [&](Int, Int) { return Pixel(random()); });
}

inline Pixel pixelOf(const Image2D& picture, Int x, Int y) {
    Pixel pixel = 0;
    for(std::size_t i = 0; i != 4; ++i)
        pixel = pixel << 8 | std::uint8_t(picture.data()[(std::size_t(y * picture.size().x() + x)) * 4 + i]);
    return pixel;
}

inline bool samePixels(const Image2D& a, const Image2D& b) {
    return a.size() == b.size() && std::equal(a.data().begin(), a.data().end(), b.data().begin(), b.data().end());
}

inline GL::Texture2D textureOf(const ImageView2D& picture) {
    GL::Texture2D texture;
    texture.setStorage(1, GL::TextureFormat::RGBA8, picture.size()).setSubImage(0, {}, picture);
    return texture;
}

/** The pixels of a rectangle of a texture. */
inline Image2D read(GL::Texture2D& texture, const Range2Di& rectangle) {
    GL::Framebuffer framebuffer{rectangle};
    framebuffer.attachTexture(Color, texture, 0);
    return framebuffer.read(rectangle, Image2D{Magnum::PixelFormat::RGBA8Unorm});
}

inline Range2Di cellRectangle(const Vector3i& position) { return Range2Di::fromSize(position.xy() * 128, {128, 128}); }

template <class Function> Function function(const char* name) {
    return reinterpret_cast<Function>(glfwGetProcAddress(name));
}

/** A window to draw in, and what is drawn there. */
class ThumbnailManagerTest: public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(window.isReady()) << GlWindow::reason(); }

    /** The pixels of a name's cell. */
    static Image2D cell(ThumbnailManager& manager, Containers::StringView name) {
        EXPECT_TRUE(manager.hasThumbnail(name));
        const Vector3i position = manager.thumbnailPos(name);
        return read(manager.atlasSlice(position.z()), cellRectangle(position));
    }

    /** Makes a name's cell blue all over. */
    static void clear(ThumbnailManager& manager, Containers::StringView name) {
        manager.setThumbnail(name, plain({128, 128}, Blue));
    }

    /** Expects that a cell shows one color in a rectangle, in pixels of the cell, and another around it. */
    static void expectRectangle(const Image2D& picture, const Range2Di& rectangle, Pixel inside, Pixel outside) {
        for(Int y = 0; y != 128; ++y)
            for(Int x = 0; x != 128; ++x) {
                const bool within =
                    x >= rectangle.left() && x < rectangle.right() && y >= rectangle.bottom() && y < rectangle.top();
                ASSERT_EQ(pixelOf(picture, x, y), within ? inside : outside) << x << " " << y;
            }
    }

    static std::string nameOf(int i) { return "name " + std::to_string(i); }

    /** Hands out cells to so many names, without pictures. */
    static void name(ThumbnailManager& manager, int count) {
        for(int i = 0; i != count; ++i) manager.thumbnailPos(nameOf(i).c_str());
    }

    GlWindow window;
};

}
