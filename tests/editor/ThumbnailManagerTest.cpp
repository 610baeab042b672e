#include "ThumbnailManager.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <Magnum/GL/TextureFormat.h>
#include <Magnum/Image.h>
#include <Magnum/ImageView.h>
#include <Magnum/Math/Color.h>
#include <Magnum/Math/Range.h>
#include <Magnum/PixelFormat.h>
#include <gtest/gtest.h>

#include "AttachmentLog.h"
#include "GlWindow.h"
#include "ImGuiGuards.h"
#include "support/Abort.h"
#include "support/Allocations.h"
#include "support/GuiTest.h"

namespace QuorvaneEngine {
namespace {

namespace GL = Magnum::GL;

using Magnum::Color4;
using Magnum::Image2D;
using Magnum::ImageView2D;
using Magnum::Range2Di;
using Magnum::Vector2;
using Magnum::Vector2i;
using Magnum::Vector3i;
using Test::Allocations;
using Test::Attachment;
using Test::attachmentLog;
using Test::GlWindow;
using Test::GuiTest;

// As numbers, since the enumerators of OpenGL's headers are macros.
constexpr unsigned TextureTarget = 0x0DE1;
constexpr unsigned TextureBinding = 0x8069;
constexpr unsigned MinificationFilter = 0x2801;
constexpr unsigned MagnificationFilter = 0x2800;
constexpr unsigned InternalFormat = 0x1003;
constexpr int Linear = 0x2601;
constexpr int Rgba8 = 0x8058;

const GL::Framebuffer::ColorAttachment Color{0};

/** One pixel, as eight hexadecimal digits: red, green, blue, alpha. */
using Pixel = std::uint32_t;

constexpr Pixel Red = 0xff0000ff;
constexpr Pixel Green = 0x00ff00ff;
constexpr Pixel Blue = 0x0000ffff;
constexpr Pixel White = 0xffffffff;

/** A picture whose pixels, bottom row first, a function of x and y tells. */
template <class F> Image2D image(const Vector2i& size, F&& pixel) {
    Containers::Array<char> data{Corrade::ValueInit, std::size_t(size.product()) * 4};
    std::size_t i = 0;
    for(Int y = 0; y != size.y(); ++y)
        for(Int x = 0; x != size.x(); ++x)
            for(const int shift: {24, 16, 8, 0}) data[i++] = char(Pixel(pixel(x, y)) >> shift);
    return Image2D{Magnum::PixelFormat::RGBA8Unorm, size, std::move(data)};
}

Image2D plain(const Vector2i& size, Pixel color) {
    return image(size, [&](Int, Int) { return color; });
}

/** Every pixel another one, the same in every run. */
Image2D noise(const Vector2i& size) {
    std::mt19937 random{unsigned(size.x() * 20000 + size.y())};
    return image(size, [&](Int, Int) { return Pixel(random()); });
}

Pixel pixelOf(const Image2D& picture, Int x, Int y) {
    Pixel pixel = 0;
    for(std::size_t i = 0; i != 4; ++i)
        pixel = pixel << 8 | std::uint8_t(picture.data()[(std::size_t(y * picture.size().x() + x)) * 4 + i]);
    return pixel;
}

bool samePixels(const Image2D& a, const Image2D& b) {
    return a.size() == b.size() && std::equal(a.data().begin(), a.data().end(), b.data().begin(), b.data().end());
}

GL::Texture2D textureOf(const ImageView2D& picture) {
    GL::Texture2D texture;
    texture.setStorage(1, GL::TextureFormat::RGBA8, picture.size()).setSubImage(0, {}, picture);
    return texture;
}

/** The pixels of a rectangle of a texture. */
Image2D read(GL::Texture2D& texture, const Range2Di& rectangle) {
    GL::Framebuffer framebuffer{rectangle};
    framebuffer.attachTexture(Color, texture, 0);
    return framebuffer.read(rectangle, Image2D{Magnum::PixelFormat::RGBA8Unorm});
}

Range2Di cellRectangle(const Vector3i& position) { return Range2Di::fromSize(position.xy() * 128, {128, 128}); }

template <class Function> Function function(const char* name) {
    return reinterpret_cast<Function>(glfwGetProcAddress(name));
}

class ThumbnailManagerTest: public testing::Test {
protected:
    void SetUp() override {
        if(!window.isReady()) GTEST_SKIP() << "no OpenGL 3.3 here: " << GlWindow::reason();
    }

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

// Cells

TEST_F(ThumbnailManagerTest, BeginsWithOneSliceAndNoNames) {
    ThumbnailManager manager;
    EXPECT_FALSE(manager.hasThumbnail("a"));
    EXPECT_FALSE(manager.hasThumbnail(""));
    EXPECT_EQ(manager.atlasSlice(0).imageSize(0), (Vector2i{4096, 4096}));
    EXPECT_EQ(manager.atlasSlice(0).imageSize(1), (Vector2i{0, 0}));
}

TEST_F(ThumbnailManagerTest, SlicesAreOfEightBitsAndFilterLinearly) {
    ThumbnailManager manager;
    for(const Int slice: {0, 1}) {
        const unsigned texture = manager.atlasSlice(slice).id();
        int before = 0;
        function<void (*)(unsigned, int*)>("glGetIntegerv")(TextureBinding, &before);
        const auto bind = function<void (*)(unsigned, unsigned)>("glBindTexture");
        bind(TextureTarget, texture);
        int minification = 0, magnification = 0, format = 0;
        const auto parameter = function<void (*)(unsigned, unsigned, int*)>("glGetTexParameteriv");
        parameter(TextureTarget, MinificationFilter, &minification);
        parameter(TextureTarget, MagnificationFilter, &magnification);
        function<void (*)(unsigned, int, unsigned, int*)>("glGetTexLevelParameteriv")(
            TextureTarget, 0, InternalFormat, &format);
        bind(TextureTarget, unsigned(before));
        EXPECT_EQ(minification, Linear);
        EXPECT_EQ(magnification, Linear);
        EXPECT_EQ(format, Rgba8);
    }
}

TEST_F(ThumbnailManagerTest, NewNamesGetCellsInOrderAndKeepThem) {
    ThumbnailManager manager;
    EXPECT_EQ(manager.thumbnailPos("a"), (Vector3i{0, 0, 0}));
    EXPECT_EQ(manager.thumbnailPos("b"), (Vector3i{1, 0, 0}));
    EXPECT_EQ(manager.thumbnailPos("a"), (Vector3i{0, 0, 0}));
    EXPECT_EQ(manager.thumbnailPos("c"), (Vector3i{2, 0, 0}));
}

TEST_F(ThumbnailManagerTest, The1024thNameEndsTheFirstSliceAndThe1025thBeginsTheSecond) {
    ThumbnailManager manager;
    name(manager, 1023);
    EXPECT_EQ(manager.thumbnailPos("1024th"), (Vector3i{31, 31, 0}));
    EXPECT_EQ(manager.thumbnailPos("1025th"), (Vector3i{0, 0, 1}));
}

TEST_F(ThumbnailManagerTest, ANameHasAThumbnailAsSoonAsItHasACell) {
    ThumbnailManager manager;
    manager.thumbnailPos("a");
    EXPECT_TRUE(manager.hasThumbnail("a"));
    EXPECT_FALSE(manager.hasThumbnail("b"));
}

TEST_F(ThumbnailManagerTest, NamesAreBytesOfAnyKind) {
    ThumbnailManager manager;
    using namespace Corrade::Containers::Literals;
    const Containers::StringView names[]{
        ""_s, "\0"_s, "\0\0"_s, "a\0b"_s, "a\0c"_s, "a"_s, "\xff\xfe"_s, "%s"_s, "/~0"_s};
    Int i = 0;
    for(const Containers::StringView name: names) EXPECT_EQ(manager.thumbnailPos(name), (Vector3i{i++, 0, 0}));
    const Containers::String large{Corrade::ValueInit, 1 << 20};
    EXPECT_EQ(manager.thumbnailPos(large), (Vector3i{i, 0, 0}));
    i = 0;
    for(const Containers::StringView name: names) EXPECT_EQ(manager.thumbnailPos(name), (Vector3i{i++, 0, 0}));
}

TEST_F(ThumbnailManagerTest, NamesAreCopied) {
    ThumbnailManager manager;
    std::string name = "abcdefghijklmnopqrstuvwxyz";
    manager.thumbnailPos(name.c_str());
    name[0] = 'A';
    EXPECT_TRUE(manager.hasThumbnail("abcdefghijklmnopqrstuvwxyz"));
    EXPECT_FALSE(manager.hasThumbnail(name.c_str()));
}

TEST_F(ThumbnailManagerTest, ResetForgetsNamesAndKeepsSlicesAndPixels) {
    ThumbnailManager manager;
    name(manager, 1024);
    manager.setThumbnail("a", plain({128, 128}, Red));
    manager.setThumbnail(nameOf(0).c_str(), plain({128, 128}, Green));
    const unsigned slices[]{manager.atlasSlice(0).id(), manager.atlasSlice(1).id()};
    manager.reset();
    for(int i = 0; i != 1024; ++i) EXPECT_FALSE(manager.hasThumbnail(nameOf(i).c_str()));
    EXPECT_FALSE(manager.hasThumbnail("a"));
    EXPECT_EQ(manager.atlasSlice(0).id(), slices[0]);
    EXPECT_EQ(manager.atlasSlice(1).id(), slices[1]);
    EXPECT_EQ(pixelOf(read(manager.atlasSlice(1), {{}, {1, 1}}), 0, 0), Red);

    EXPECT_EQ(manager.thumbnailPos("next"), (Vector3i{0, 0, 0}));
    expectRectangle(cell(manager, "next"), {{}, {128, 128}}, Green, Green);
    manager.setThumbnail("next", plain({128, 128}, White));
    expectRectangle(cell(manager, "next"), {{}, {128, 128}}, White, White);
}

// Slices

TEST_F(ThumbnailManagerTest, AskingForTheSliceBehindTheLastMakesIt) {
    ThumbnailManager manager;
    const unsigned first = manager.atlasSlice(0).id();
    const unsigned second = manager.atlasSlice(1).id();
    EXPECT_NE(first, second);
    EXPECT_EQ(manager.atlasSlice(1).id(), second);
    EXPECT_EQ(manager.atlasSlice(0).id(), first);
    EXPECT_EQ(manager.atlasSlice(1).imageSize(0), (Vector2i{4096, 4096}));
}

TEST_F(ThumbnailManagerTest, ASliceThatCannotBeMadeYetIsABrokenPrecondition) {
    ThumbnailManager manager;
    QUORVANE_EXPECT_ABORT(manager.atlasSlice(2), "ThumbnailManager::atlasSlice(): slice 2 out of range, there are 1");
    QUORVANE_EXPECT_ABORT(manager.atlasSlice(-1), "ThumbnailManager::atlasSlice(): slice -1 out of range, there are 1");
}

TEST_F(ThumbnailManagerTest, SlicesStayWhereTheyAre) {
    ThumbnailManager manager;
    std::vector<const GL::Texture2D*> addresses;
    for(Int slice = 0; slice != 6; ++slice) addresses.push_back(&manager.atlasSlice(slice));
    for(Int slice = 0; slice != 6; ++slice) EXPECT_EQ(&manager.atlasSlice(slice), addresses[std::size_t(slice)]);
}

TEST_F(ThumbnailManagerTest, The1025thNameMakesTheSecondSliceWhenItsPictureIsSet) {
    ThumbnailManager manager;
    name(manager, 1025);
    GuiTest gui;
    const std::string last = nameOf(1024);
    gui.frames([&] {
        const WindowGuard guard{ImGui::Begin("Window")};
        EXPECT_FALSE(manager.thumbnail(last.c_str()));
    });
    manager.setThumbnail(last.c_str(), plain({128, 128}, Red));
    expectRectangle(cell(manager, last.c_str()), {{}, {128, 128}}, Red, Red);
    gui.frames([&] {
        const WindowGuard guard{ImGui::Begin("Window")};
        EXPECT_TRUE(manager.thumbnail(last.c_str()));
    });
}

TEST_F(ThumbnailManagerTest, CellsMayBeFilledInAnyOrder) {
    ThumbnailManager manager;
    name(manager, 2049);
    // A CPU image of a cell's size, and a texture, take different ways to the slice.
    manager.setThumbnail(nameOf(2048).c_str(), plain({128, 128}, Red));
    expectRectangle(cell(manager, nameOf(2048).c_str()), {{}, {128, 128}}, Red, Red);

    ThumbnailManager other;
    name(other, 2049);
    GL::Texture2D texture = textureOf(plain({128, 128}, Green));
    other.setThumbnail(nameOf(2048).c_str(), texture);
    expectRectangle(cell(other, nameOf(2048).c_str()), {{}, {128, 128}}, Green, Green);
    other.setThumbnail(nameOf(1024).c_str(), texture);
    expectRectangle(cell(other, nameOf(1024).c_str()), {{}, {128, 128}}, Green, Green);
}

// Pictures

TEST_F(ThumbnailManagerTest, AnImageOfACellsSizeKeepsItsPixels) {
    ThumbnailManager manager;
    const Image2D picture = noise({128, 128});
    manager.setThumbnail("before", plain({128, 128}, Blue));
    manager.setThumbnail("a", picture);
    manager.setThumbnail("behind", plain({128, 128}, Blue));
    EXPECT_TRUE(samePixels(cell(manager, "a"), picture));
    expectRectangle(cell(manager, "before"), {}, Red, Blue);
    expectRectangle(cell(manager, "behind"), {}, Red, Blue);
}

TEST_F(ThumbnailManagerTest, AnImageOfACellsSizeIsWrittenTwiceWithTheSamePixels) {
    ThumbnailManager manager;
    manager.setThumbnail("a", plain({128, 128}, Blue));
    GL::Framebuffer& atlas = *attachmentLog().front().framebuffer;
    ASSERT_EQ(attachmentLog().front().texture, manager.atlasSlice(0).id());

    // What is drawn into the slice goes elsewhere, what is uploaded does not.
    GL::Texture2D elsewhere;
    elsewhere.setStorage(1, GL::TextureFormat::RGBA8, {4096, 4096});
    atlas.attachTexture(Color, elsewhere, 0);
    const Image2D picture = noise({128, 128});
    manager.setThumbnail("a", picture);
    EXPECT_TRUE(samePixels(cell(manager, "a"), picture));
    EXPECT_TRUE(samePixels(read(elsewhere, {{}, {128, 128}}), picture));

    // Any other size is only drawn.
    manager.setThumbnail("a", plain({128, 127}, Red));
    EXPECT_TRUE(samePixels(cell(manager, "a"), picture));
    EXPECT_EQ(pixelOf(read(elsewhere, {{}, {128, 128}}), 64, 64), Red);
}

TEST_F(ThumbnailManagerTest, ATextureOfACellsSizeKeepsItsPixels) {
    ThumbnailManager manager;
    const Image2D picture = noise({128, 128});
    GL::Texture2D texture = textureOf(picture);
    manager.setThumbnail("a", texture);
    EXPECT_TRUE(samePixels(cell(manager, "a"), picture));
}

TEST_F(ThumbnailManagerTest, PicturesAreCentredAndTheMarginKeepsItsPixels) {
    const struct {
        Vector2i size;
        Range2Di rectangle;
    } cases[]{
        {{256, 128}, {{0, 32}, {128, 96}}},
        {{64, 256}, {{48, 0}, {80, 128}}},
        {{1, 1}, {{0, 0}, {128, 128}}},
        {{512, 512}, {{0, 0}, {128, 128}}},
        {{3, 2}, {{0, 21}, {128, 106}}},
        {{100, 300}, {{43, 0}, {85, 128}}},
        {{128, 1}, {{0, 63}, {128, 64}}},
    };
    ThumbnailManager manager;
    manager.thumbnailPos("another");
    for(const auto& [size, rectangle]: cases) {
        SCOPED_TRACE(std::to_string(size.x()) + " x " + std::to_string(size.y()));
        clear(manager, "image");
        manager.setThumbnail("image", plain(size, Red));
        expectRectangle(cell(manager, "image"), rectangle, Red, Blue);

        clear(manager, "texture");
        GL::Texture2D texture = textureOf(plain(size, Green));
        manager.setThumbnail("texture", texture);
        expectRectangle(cell(manager, "texture"), rectangle, Green, Blue);
    }
}

TEST_F(ThumbnailManagerTest, PicturesAreScaledLinearly) {
    ThumbnailManager manager;
    // Black on the left, white on the right, and between the two centres every shade: a pixel is 1/64 of the way.
    manager.setThumbnail("a", image({2, 1}, [](Int x, Int) { return x ? White : Pixel{0x000000ff}; }));
    const Image2D picture = cell(manager, "a");
    for(Int x = 0; x != 128; ++x) {
        const double shade = std::clamp((x + 0.5) / 64.0 - 0.5, 0.0, 1.0) * 255.0;
        EXPECT_NEAR(pixelOf(picture, x, 64) >> 24, shade, 3.0) << x;
    }
}

TEST_F(ThumbnailManagerTest, TheBottomRowOfAPictureIsTheBottomRowOfItsCell) {
    ThumbnailManager manager;
    manager.setThumbnail("a", image({16, 16}, [](Int, Int y) { return y < 8 ? Red : Green; }));
    const Image2D picture = cell(manager, "a");
    EXPECT_EQ(pixelOf(picture, 64, 10), Red);
    EXPECT_EQ(pixelOf(picture, 64, 117), Green);
}

TEST_F(ThumbnailManagerTest, AFramebuffersViewportIsWhatIsCopied) {
    ThumbnailManager manager;
    // Red around a green rectangle of 20 x 10 pixels, each of which becomes 6.4 pixels wide and high.
    GL::Texture2D texture =
        textureOf(image({64, 64}, [](Int x, Int y) { return x >= 10 && x < 30 && y >= 40 && y < 50 ? Green : Red; }));
    GL::Framebuffer framebuffer{{{10, 40}, {30, 50}}};
    framebuffer.attachTexture(Color, texture, 0);
    clear(manager, "a");
    manager.setThumbnail("a", framebuffer);
    const Image2D picture = cell(manager, "a");
    for(Int y = 0; y != 128; ++y)
        for(Int x = 0; x != 128; ++x) {
            const bool within = y >= 32 && y < 96;
            // Along the edge of the viewport the linear filter may see half a pixel of what lies outside.
            if(within && (x < 4 || x >= 124 || y < 36 || y >= 92)) continue;
            ASSERT_EQ(pixelOf(picture, x, y), within ? Green : Blue) << x << " " << y;
        }
    EXPECT_EQ(framebuffer.viewport(), (Range2Di{{10, 40}, {30, 50}}));
    EXPECT_EQ(pixelOf(framebuffer.read({{10, 40}, {11, 41}}, Image2D{Magnum::PixelFormat::RGBA8Unorm}), 0, 0), Green);
}

TEST_F(ThumbnailManagerTest, OnlyLevel0OfATextureIsCopied) {
    ThumbnailManager manager;
    GL::Texture2D texture;
    texture.setStorage(2, GL::TextureFormat::RGBA8, {16, 16})
        .setSubImage(0, {}, plain({16, 16}, Red))
        .setSubImage(1, {}, plain({8, 8}, Green));
    manager.setThumbnail("a", texture);
    expectRectangle(cell(manager, "a"), {{}, {128, 128}}, Red, Red);
}

TEST_F(ThumbnailManagerTest, APictureTakesThePlaceOfAnother) {
    ThumbnailManager manager;
    manager.setThumbnail("a", plain({128, 128}, Red));
    manager.setThumbnail("a", plain({256, 128}, Green));
    EXPECT_EQ(manager.thumbnailPos("a"), (Vector3i{0, 0, 0}));
    expectRectangle(cell(manager, "a"), {{0, 32}, {128, 96}}, Green, Red);
}

TEST_F(ThumbnailManagerTest, EveryCellIsItsOwn) {
    ThumbnailManager manager;
    for(int i = 0; i != 70; ++i) manager.setThumbnail(nameOf(i).c_str(), plain({4, 4}, Pixel(i) << 24 | 0xff));
    for(int i = 0; i != 70; ++i) expectRectangle(cell(manager, nameOf(i).c_str()), {}, White, Pixel(i) << 24 | 0xff);
}

TEST_F(ThumbnailManagerTest, APictureWithoutPixelsGetsACellAndLeavesItAsItIs) {
    ThumbnailManager manager;
    Int cells = 0;
    for(const Vector2i size: {Vector2i{0, 0}, {0, 7}, {7, 0}}) {
        const std::string image = "image " + std::to_string(cells), texture = "texture " + std::to_string(cells);
        clear(manager, image.c_str());
        manager.setThumbnail(image.c_str(), ImageView2D{Magnum::PixelFormat::RGBA8Unorm, size, {}});
        expectRectangle(cell(manager, image.c_str()), {}, Red, Blue);

        GL::Texture2D empty;
        clear(manager, texture.c_str());
        manager.setThumbnail(texture.c_str(), empty);
        expectRectangle(cell(manager, texture.c_str()), {}, Red, Blue);

        GL::Framebuffer framebuffer{{{}, size}};
        manager.setThumbnail(texture.c_str(), framebuffer);
        expectRectangle(cell(manager, texture.c_str()), {}, Red, Blue);
        cells += 2;
    }
    EXPECT_EQ(manager.thumbnailPos("next"), (Vector3i{cells, 0, 0}));
    manager.setThumbnail("new", ImageView2D{Magnum::PixelFormat::RGBA8Unorm, {0, 3}, {}});
    EXPECT_TRUE(manager.hasThumbnail("new"));
    EXPECT_EQ(function<unsigned (*)()>("glGetError")(), 0u);
}

TEST_F(ThumbnailManagerTest, AnImageThatIsTooLargeForOpenGLLeavesTheCellAsItIs) {
    ThumbnailManager manager;
    const Int limit = GL::Texture2D::maxSize().x();
    clear(manager, "a");
    manager.setThumbnail("a", plain({limit + 1, 1}, Red));
    manager.setThumbnail("a", plain({1, limit + 1}, Red));
    expectRectangle(cell(manager, "a"), {}, Red, Blue);
    EXPECT_EQ(function<unsigned (*)()>("glGetError")(), 0u);
}

TEST_F(ThumbnailManagerTest, APictureTooNarrowForAPixelLeavesTheCellAsItIs) {
    ThumbnailManager manager;
    clear(manager, "a");
    manager.setThumbnail("a", plain({16384, 1}, Red));
    manager.setThumbnail("a", plain({1, 16384}, Red));
    GL::Texture2D texture = textureOf(plain({129, 1}, Red));
    manager.setThumbnail("a", texture);
    expectRectangle(cell(manager, "a"), {}, Red, Blue);
    EXPECT_EQ(function<unsigned (*)()>("glGetError")(), 0u);
}

// Attachments

TEST_F(ThumbnailManagerTest, TheSliceIsAttachedOnceWhileCellsAreInIt) {
    ThumbnailManager manager;
    ASSERT_EQ(attachmentLog().size(), 1u);
    GL::Framebuffer* const atlas = attachmentLog()[0].framebuffer;
    EXPECT_EQ(attachmentLog()[0].texture, manager.atlasSlice(0).id());

    GL::Texture2D texture = textureOf(plain({4, 4}, Red));
    for(int i = 0; i != 100; ++i) {
        manager.setThumbnail(nameOf(i).c_str(), plain({128, 128}, Red));
        manager.setThumbnail(nameOf(i).c_str(), plain({2, 2}, Red));
        manager.setThumbnail(nameOf(i).c_str(), texture);
    }
    for(std::size_t i = 1; i != attachmentLog().size(); ++i) EXPECT_NE(attachmentLog()[i].framebuffer, atlas);
}

TEST_F(ThumbnailManagerTest, AChangeOfSliceIsOneChangeOfAttachment) {
    ThumbnailManager manager;
    GL::Framebuffer* const atlas = attachmentLog()[0].framebuffer;
    name(manager, 1025);
    GL::Texture2D source = textureOf(plain({4, 4}, Red));
    GL::Framebuffer framebuffer{{{}, {4, 4}}};
    framebuffer.attachTexture(Color, source, 0);

    const auto changes = [&](int i) {
        attachmentLog().clear();
        manager.setThumbnail(nameOf(i).c_str(), framebuffer);
        std::vector<unsigned> textures;
        for(const Attachment& attachment: attachmentLog()) {
            EXPECT_EQ(attachment.framebuffer, atlas);
            textures.push_back(attachment.texture);
        }
        return textures;
    };
    EXPECT_EQ(changes(0), (std::vector<unsigned>{}));
    const std::vector<unsigned> toSecond = changes(1024);
    EXPECT_EQ(toSecond, (std::vector<unsigned>{0, manager.atlasSlice(1).id()}));
    EXPECT_EQ(changes(1024), (std::vector<unsigned>{}));
    EXPECT_EQ(changes(1023), (std::vector<unsigned>{0, manager.atlasSlice(0).id()}));
    EXPECT_EQ(changes(1), (std::vector<unsigned>{}));
    manager.reset();
    EXPECT_EQ(changes(2), (std::vector<unsigned>{}));
}

TEST_F(ThumbnailManagerTest, ASourceTextureIsAttachedWhileItIsCopied) {
    ThumbnailManager manager;
    const GL::Framebuffer* const atlas = attachmentLog()[0].framebuffer;
    GL::Texture2D texture = textureOf(plain({4, 4}, Red));
    attachmentLog().clear();
    manager.setThumbnail("a", texture);
    ASSERT_EQ(attachmentLog().size(), 2u);
    EXPECT_EQ(attachmentLog()[0].texture, texture.id());
    EXPECT_EQ(attachmentLog()[1].texture, 0u);
    EXPECT_EQ(attachmentLog()[0].framebuffer, attachmentLog()[1].framebuffer);
    EXPECT_NE(attachmentLog()[0].framebuffer, atlas);
}

TEST_F(ThumbnailManagerTest, LeavesNothingBehindInOpenGL) {
    const auto isTexture = function<unsigned char (*)(unsigned)>("glIsTexture");
    const auto isFramebuffer = function<unsigned char (*)(unsigned)>("glIsFramebuffer");
    const auto isRenderbuffer = function<unsigned char (*)(unsigned)>("glIsRenderbuffer");
    const auto objects = [&] {
        int count = 0;
        for(unsigned id = 1; id != 1000; ++id) count += isTexture(id) + isFramebuffer(id) + isRenderbuffer(id);
        return count;
    };
    const int before = objects();
    {
        ThumbnailManager manager;
        for(int i = 0; i != 20; ++i) manager.setThumbnail(nameOf(i).c_str(), plain({8, 4}, Red));
        manager.atlasSlice(1);
        // Two slices, and what is read from and drawn to; no renderbuffer.
        EXPECT_EQ(objects(), before + 4);
    }
    EXPECT_EQ(objects(), before);
    EXPECT_EQ(function<unsigned (*)()>("glGetError")(), 0u);
}

// Look-ups

TEST_F(ThumbnailManagerTest, LookUpsByViewAllocateNothing) {
    ThumbnailManager manager;
    name(manager, 1024);
    // Longer than what a string keeps without memory of its own, and not NUL-terminated.
    const std::string text = "a name that is longer than any small string, and then some";
    const Containers::StringView view{text.data(), text.size() - 5};
    manager.thumbnailPos(view);
    const Allocations allocations;
    const Vector3i position = manager.thumbnailPos(view);
    const bool has = manager.hasThumbnail(view);
    const bool hasNot = manager.hasThumbnail({text.data(), text.size()});
    const std::uint64_t count = allocations.count();
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(position, (Vector3i{0, 0, 1}));
    EXPECT_TRUE(has);
    EXPECT_FALSE(hasNot);
}

TEST_F(ThumbnailManagerTest, NamesOfOneSliceNeedNoLargerTable) {
    ThumbnailManager manager;
    // A name that fits into its string: one piece of memory for each, and none for the table.
    manager.thumbnailPos("first");
    const Allocations allocations;
    for(int i = 1; i != 1024; ++i) {
        char name[8];
        std::snprintf(name, sizeof(name), "%d", i);
        manager.thumbnailPos(name);
    }
    EXPECT_EQ(allocations.count(), 1023u);
}

// Drawing

/** What the last frame drew with a texture of the atlas. */
struct Drawn {
    const void* texture = nullptr;
    int commands = 0;
    std::vector<ImDrawVert> vertices;
};

class ThumbnailDrawing: public ThumbnailManagerTest {
protected:
    /** Draws a window of 400 x 300 pixels at (20, 10), with an inner size of its own, and returns what was drawn of @p atlas . */
    template <class F> Drawn draw(ThumbnailManager& manager, F&& what, int flags = 0, int frames = 3) {
        gui.frames(
            [&] {
                ImGui::SetNextWindowPos({20.0f, 10.0f});
                ImGui::SetNextWindowSize({400.0f, 300.0f});
                const WindowGuard guard{ImGui::Begin("Window", nullptr, flags)};
                what();
            },
            frames);
        Drawn drawn;
        for(const ImDrawList* const list: ImGui::GetDrawData()->CmdLists)
            for(const ImDrawCmd& command: list->CmdBuffer) {
                if(command.TexRef._TexData) continue;
                const auto* const texture = reinterpret_cast<const void*>(command.TexRef._TexID);
                if(texture != &manager.atlasSlice(0) && texture != &manager.atlasSlice(1)) continue;
                drawn.texture = texture;
                ++drawn.commands;
                for(unsigned i = 0; i != command.ElemCount; ++i)
                    drawn.vertices.push_back(
                        list->VtxBuffer[int(command.VtxOffset + list->IdxBuffer[int(command.IdxOffset + i)])]);
            }
        return drawn;
    }

    GuiTest gui;
};

TEST_F(ThumbnailDrawing, AThumbnailIsAnItemAtTheCursorWithTheAddressOfItsSlice) {
    ThumbnailManager manager;
    name(manager, 34);
    ImVec2 cursor, min, max, behind;
    const Drawn drawn = draw(manager, [&] {
        ImGui::GetStyle().FrameRounding = 0.0f;
        cursor = ImGui::GetCursorScreenPos();
        EXPECT_TRUE(manager.thumbnail(nameOf(33).c_str(), {60.0f, 40.0f}));
        min = ImGui::GetItemRectMin();
        max = ImGui::GetItemRectMax();
        EXPECT_EQ(ImGui::GetItemID(), 0u);
        behind = ImGui::GetCursorScreenPos();
    });
    EXPECT_EQ(min.x, cursor.x);
    EXPECT_EQ(min.y, cursor.y);
    EXPECT_EQ(max.x, cursor.x + 60.0f);
    EXPECT_EQ(max.y, cursor.y + 40.0f);
    EXPECT_EQ(behind.x, cursor.x);
    EXPECT_EQ(behind.y, cursor.y + 40.0f + ImGui::GetStyle().ItemSpacing.y);

    EXPECT_EQ(drawn.texture, &manager.atlasSlice(0));
    EXPECT_EQ(drawn.commands, 1);
    ASSERT_EQ(drawn.vertices.size(), 6u);
    for(const ImDrawVert& vertex: drawn.vertices) {
        EXPECT_EQ(vertex.col, IM_COL32(255, 255, 255, 255));
        // Column 1, row 1; the upper edge of the item shows the upper edge of the cell, which is the larger V.
        const bool left = vertex.pos.x == cursor.x, upper = vertex.pos.y == cursor.y;
        EXPECT_EQ(vertex.pos.x, left ? cursor.x : cursor.x + 60.0f);
        EXPECT_EQ(vertex.pos.y, upper ? cursor.y : cursor.y + 40.0f);
        EXPECT_EQ(vertex.uv.x, left ? 1.0f / 32.0f : 2.0f / 32.0f);
        EXPECT_EQ(vertex.uv.y, upper ? 2.0f / 32.0f : 1.0f / 32.0f);
    }
}

TEST_F(ThumbnailDrawing, AThumbnailOfAnotherSliceHasItsAddress) {
    ThumbnailManager manager;
    name(manager, 1025);
    manager.atlasSlice(1);
    const Drawn drawn = draw(manager, [&] { EXPECT_TRUE(manager.thumbnail(nameOf(1024).c_str(), {64.0f, 64.0f})); });
    EXPECT_EQ(drawn.texture, &manager.atlasSlice(1));
    EXPECT_EQ(drawn.commands, 1);
}

TEST_F(ThumbnailDrawing, ItsCornersAreAllRoundedAsThoseOfFramesAre) {
    ThumbnailManager manager;
    manager.thumbnailPos("a");
    ImVec2 cursor;
    const Drawn drawn = draw(manager, [&] {
        ImGui::GetStyle().FrameRounding = 12.0f;
        cursor = ImGui::GetCursorScreenPos();
        EXPECT_TRUE(manager.thumbnail("a", {64.0f, 64.0f}));
    });
    ASSERT_GT(drawn.vertices.size(), 6u);
    for(const ImDrawVert& vertex: drawn.vertices) {
        // Edges are smoothed by a fringe of one pixel.
        const float x = std::abs(vertex.pos.x - cursor.x - 32.0f), y = std::abs(vertex.pos.y - cursor.y - 32.0f);
        EXPECT_TRUE(x <= 33.0f && y <= 33.0f) << x << " " << y;
        if(x > 20.0f && y > 20.0f) {
            EXPECT_LE(std::hypot(x - 20.0f, y - 20.0f), 13.0f);
        }
        EXPECT_TRUE(vertex.uv.x >= 0.0f && vertex.uv.x <= 1.0f / 32.0f) << vertex.uv.x;
        EXPECT_TRUE(vertex.uv.y >= 0.0f && vertex.uv.y <= 1.0f / 32.0f) << vertex.uv.y;
    }
}

TEST_F(ThumbnailDrawing, WithoutASizeAThumbnailIsAsLargeAsACell) {
    ThumbnailManager manager;
    manager.thumbnailPos("a");
    draw(manager, [&] {
        EXPECT_TRUE(manager.thumbnail("a"));
        EXPECT_EQ(ImGui::GetItemRectSize().x, 128.0f);
        EXPECT_EQ(ImGui::GetItemRectSize().y, 128.0f);
    });
}

TEST_F(ThumbnailDrawing, AnUnknownNameDrawsNothingAndIsNoItem) {
    ThumbnailManager manager;
    manager.thumbnailPos("a");
    const Drawn drawn = draw(manager, [&] {
        const ImVec2 cursor = ImGui::GetCursorScreenPos();
        EXPECT_FALSE(manager.thumbnail("b", {64.0f, 64.0f}));
        EXPECT_FALSE(manager.thumbnail("b"));
        EXPECT_EQ(ImGui::GetCursorScreenPos().y, cursor.y);
    });
    EXPECT_FALSE(manager.hasThumbnail("b"));
    EXPECT_EQ(drawn.commands, 0);
}

TEST_F(ThumbnailDrawing, ACellInASliceThatIsNotThereYetDrawsNothing) {
    ThumbnailManager manager;
    name(manager, 1025);
    const Drawn drawn = draw(manager, [&] { EXPECT_FALSE(manager.thumbnail(nameOf(1024).c_str(), {64.0f, 64.0f})); });
    EXPECT_EQ(drawn.commands, 0);
}

TEST_F(ThumbnailDrawing, AnswersWithoutDrawingInACollapsedWindow) {
    ThumbnailManager manager;
    manager.thumbnailPos("a");
    const Drawn drawn = draw(manager, [&] {
        ImGui::SetWindowCollapsed(true);
        EXPECT_TRUE(manager.thumbnail("a", {64.0f, 64.0f}));
        EXPECT_FALSE(manager.thumbnail("b", {64.0f, 64.0f}));
    });
    EXPECT_EQ(drawn.commands, 0);
}

TEST_F(ThumbnailDrawing, IsAnItemThatIsNotDrawnWhereTheWindowIsClipped) {
    ThumbnailManager manager;
    manager.thumbnailPos("a");
    const Drawn drawn = draw(manager, [&] {
        ImGui::SetCursorPosY(1000.0f);
        const ImVec2 cursor = ImGui::GetCursorScreenPos();
        EXPECT_TRUE(manager.thumbnail("a", {64.0f, 64.0f}));
        EXPECT_EQ(ImGui::GetCursorScreenPos().y, cursor.y + 64.0f + ImGui::GetStyle().ItemSpacing.y);
    });
    EXPECT_EQ(drawn.commands, 0);
}

TEST_F(ThumbnailDrawing, MarksItsWindowAsWrittenTo) {
    ThumbnailManager manager;
    manager.thumbnailPos("a");
    draw(manager, [&] {
        ImGuiWindow* const current = ImGui::GetCurrentWindowRead();
        current->WriteAccessed = false;
        EXPECT_FALSE(manager.thumbnail("b"));
        EXPECT_FALSE(current->WriteAccessed);
        EXPECT_TRUE(manager.thumbnail("a"));
        EXPECT_TRUE(current->WriteAccessed);
    });
}

TEST_F(ThumbnailDrawing, LinesUpWithWhatFollowsOnTheSameLine) {
    ThumbnailManager manager;
    manager.thumbnailPos("a");
    draw(manager, [&] {
        const ImVec2 cursor = ImGui::GetCursorScreenPos();
        manager.thumbnail("a", {64.0f, 64.0f});
        ImGui::SameLine();
        ImGui::TextUnformatted("text");
        EXPECT_EQ(ImGui::GetItemRectMin().x, cursor.x + 64.0f + ImGui::GetStyle().ItemSpacing.x);
        EXPECT_EQ(ImGui::GetItemRectMin().y, cursor.y);
    });
}

TEST_F(ThumbnailDrawing, ASettledFrameAllocatesNothing) {
    ThumbnailManager manager;
    name(manager, 40);
    std::vector<std::string> names;
    for(int i = 0; i != 40; ++i) names.push_back(nameOf(i));
    std::uint64_t count = 1;
    draw(
        manager,
        [&] {
            const Allocations allocations;
            for(const std::string& each: names) manager.thumbnail({each.data(), each.size()}, {8.0f, 4.0f});
            count = allocations.count();
        },
        0, 5);
    EXPECT_EQ(count, 0u);
}

}
}
