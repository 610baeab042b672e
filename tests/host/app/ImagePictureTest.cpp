#include "app/ImagePicture.h"

#include <gtest/gtest.h>

#include "PictureProbe.h"
#include "app/Picture.h"

namespace QuorvaneEngine {
namespace {

using Magnum::Image2D;
using Magnum::Vector2i;
using Test::channel;
using Test::described;
using Test::pixelAt;
using Test::ValuesOfEveryType;

Image2D picture(const std::string& json) {
    Containers::Optional<Image2D> image = imagePicture(described(json));
    EXPECT_TRUE(image) << json;
    return image ? std::move(*image) : Image2D{Magnum::PixelFormat::RGBA8Unorm};
}

TEST(ImagePicture, AConstantIsOfItsColor) {
    const Image2D image = picture(R"({"generator": "constant", "size": [4, 3], "colors": [[10, 20, 30, 40]]})");
    EXPECT_EQ(image.size(), (Vector2i{4, 3}));
    for(int y = 0; y != 3; ++y)
        for(int x = 0; x != 4; ++x) EXPECT_EQ(pixelAt(image, x, y), 0x0a141e28u) << x << " " << y;
}

TEST(ImagePicture, ACheckerboardBeginsInTheUpperLeftCorner) {
    const Image2D image =
        picture(R"({"generator": "checkerboard", "size": [6, 4], "cell": 2, "colors": [[255, 0, 0], [0, 0, 255]]})");
    ASSERT_EQ(image.size(), (Vector2i{6, 4}));
    for(int y = 0; y != 4; ++y)
        for(int x = 0; x != 6; ++x) {
            const bool even = (x / 2 + (3 - y) / 2) % 2 == 0;
            EXPECT_EQ(pixelAt(image, x, y), even ? 0xff0000ffu : 0x0000ffffu) << x << " " << y;
        }
}

TEST(ImagePicture, AGradientRunsFromTopToBottomThroughAllColors) {
    const Image2D image =
        picture(R"({"generator": "gradient", "size": [2, 101], "colors": [[0, 0, 0], [100, 0, 0], [100, 200, 0]]})");
    // The middle of row 50 is that of the image, where the second color is; half way to it is the edge between two rows.
    EXPECT_EQ(pixelAt(image, 0, 50), 0x640000ffu);
    EXPECT_EQ(pixelAt(image, 1, 75), 0x320000ffu);
    EXPECT_EQ(pixelAt(image, 0, 25), 0x646300ffu);
    EXPECT_EQ(pixelAt(image, 0, 100), 0x010000ffu);
    EXPECT_EQ(pixelAt(image, 0, 0), 0x64c600ffu);
}

TEST(ImagePicture, NoiseLiesBetweenItsColorsAndFollowsItsSeed) {
    const auto noise = [](int seed) {
        return picture(
            R"({"generator": "noise", "size": [64, 64], "colors": [[50, 0, 0], [150, 0, 0]], "octaves": 4, "seed": )" +
            std::to_string(seed) + "}");
    };
    const Image2D image = noise(1);
    std::set<int> shades;
    for(int y = 0; y != 64; ++y)
        for(int x = 0; x != 64; ++x) {
            const int shade = channel(image, x, y, 0);
            EXPECT_TRUE(shade >= 50 && shade <= 150) << shade;
            shades.insert(shade);
        }
    EXPECT_GT(shades.size(), 30u);
    const Image2D same = noise(1), other = noise(2);
    EXPECT_TRUE(std::equal(image.data().begin(), image.data().end(), same.data().begin()));
    EXPECT_FALSE(std::equal(image.data().begin(), image.data().end(), other.data().begin()));
}

TEST(ImagePicture, LargeImagesAreMadeSmallWithTheirAspectRatioKept) {
    const struct {
        const char* size;
        Vector2i picture;
    } cases[]{
        {"[128, 128]", {128, 128}},
        {"[256, 64]", {128, 32}},
        {"[16, 256]", {8, 128}},
        {"[16384, 1]", {128, 1}},
        {"[1, 1]", {1, 1}},
        {"[1.9, 2.9]", {1, 2}},
        {"[1e300, 1e300]", {128, 128}},
    };
    for(const auto& [size, expected]: cases)
        for(const char* generator: {"constant", "checkerboard", "gradient", "noise"})
            EXPECT_EQ(picture(std::string{R"({"colors": [[1, 2, 3], [4, 5, 6]], "generator": ")"} + generator +
                          R"(", "size": )" + size + "}")
                          .size(),
                expected)
                << generator << " " << size;
}

TEST(ImagePicture, WhatIsNotDescribedHasNoPicture) {
    for(const char* json: {
            "null",
            "[]",
            "{}",
            R"({"generator": "fractal", "size": [4, 4], "colors": [[1, 2, 3]]})",
            R"({"generator": "constant", "size": [4, 4], "colors": []})",
            R"({"generator": "constant", "size": [4, 4], "colors": [[1, 2]]})",
            R"({"generator": "constant", "size": [4], "colors": [[1, 2, 3]]})",
            R"({"generator": "constant", "size": [4, 4, 4], "colors": [[1, 2, 3]]})",
            R"({"generator": "constant", "size": [0, 4], "colors": [[1, 2, 3]]})",
            R"({"generator": "constant", "size": [4, -4], "colors": [[1, 2, 3]]})",
            R"({"generator": "constant", "size": [4, 4]})",
        })
        EXPECT_FALSE(imagePicture(described(json))) << json;
}

TEST(ImagePicture, BearsAnyTypeInAnyField) {
    for(const char* generator: {"constant", "checkerboard", "gradient", "noise"})
        for(const char* field: {"size", "colors", "cell", "octaves", "seed", "generator"})
            for(const char* value: ValuesOfEveryType) {
                rapidjson::Document image = described(
                    R"({"size": [8, 8], "colors": [[1, 2, 3], [4, 5, 6]], "cell": 2, "octaves": 2, "seed": 1, "generator": ")" +
                    std::string{generator} + "\"}");
                rapidjson::Document replacement{&image.GetAllocator()};
                replacement.Parse(value);
                image[field].Swap(replacement);
                const Containers::Optional<Image2D> made = imagePicture(image);
                if(made) {
                    EXPECT_LE(made->size().x(), PictureSize) << field << " " << value;
                    EXPECT_LE(made->size().y(), PictureSize) << field << " " << value;
                }
            }
}

}
}
