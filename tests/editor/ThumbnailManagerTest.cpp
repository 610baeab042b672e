#include "ThumbnailManager.h"

#include <string>
#include <vector>

#include <Corrade/Containers/ArrayView.h>
#include <Magnum/GL/Framebuffer.h>
#include <Magnum/GL/TextureFormat.h>
#include <Magnum/Image.h>
#include <Magnum/ImageView.h>
#include <Magnum/PixelFormat.h>
#include <gtest/gtest.h>
#include <imgui.h>

#include "AttachmentLog.h"
#include "ImGuiGuards.h"
#include "ThumbnailPictures.h"
#include "support/Abort.h"
#include "support/GuiTest.h"

namespace QuorvaneEngine::Test {
namespace {

// As numbers, since the enumerators of OpenGL's headers are macros.
constexpr unsigned TextureTarget = 0x0DE1;
constexpr unsigned TextureBinding = 0x8069;
constexpr unsigned MinificationFilter = 0x2801;
constexpr unsigned MagnificationFilter = 0x2800;
constexpr unsigned InternalFormat = 0x1003;
constexpr int Linear = 0x2601;
constexpr int Rgba8 = 0x8058;

constexpr Containers::ArrayView<const void> NoPixels;

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
        manager.setThumbnail(image.c_str(), ImageView2D{Magnum::PixelFormat::RGBA8Unorm, size, NoPixels});
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
    manager.setThumbnail("new", ImageView2D{Magnum::PixelFormat::RGBA8Unorm, {0, 3}, NoPixels});
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
    ASSERT_GE(GL::Texture2D::maxSize().x(), 16384);
    for(const Vector2i size: {Vector2i{16384, 1}, {1, 16384}, {129, 1}}) {
        const Image2D picture = plain(size, Red);
        manager.setThumbnail("a", picture);
        expectRectangle(cell(manager, "a"), {}, Red, Blue);
        GL::Texture2D texture = textureOf(picture);
        ASSERT_EQ(texture.imageSize(0), size);
        manager.setThumbnail("a", texture);
        expectRectangle(cell(manager, "a"), {}, Red, Blue);
    }
    EXPECT_EQ(function<unsigned (*)()>("glGetError")(), 0u);
}

}
}
