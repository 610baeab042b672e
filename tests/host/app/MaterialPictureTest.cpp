#include "app/MaterialPicture.h"

#include <gtest/gtest.h>

#include "PictureProbe.h"
#include "app/Picture.h"

namespace QuorvaneEngine {
namespace {

using Magnum::Image2D;
using Magnum::Vector2i;
using Test::channel;
using Test::coverage;
using Test::described;
using Test::pixelAt;
using Test::ValuesOfEveryType;

Image2D picture(const std::string& json) {
    Containers::Optional<Image2D> image = materialPicture(described(json));
    EXPECT_TRUE(image) << json;
    return image ? std::move(*image) : Image2D{Magnum::PixelFormat::RGBA8Unorm};
}

TEST(MaterialPicture, IsABallInFrontOfNothing) {
    const Image2D image = picture(R"({"baseColor": [0.5, 0.5, 0.5]})");
    EXPECT_EQ(image.size(), (Vector2i{PictureSize, PictureSize}));
    for(const int x: {0, 127})
        for(const int y: {0, 127}) EXPECT_EQ(pixelAt(image, x, y), 0u);
    EXPECT_EQ(channel(image, 64, 64, 3), 255);
    // A disc with a radius of 60 pixels, and its rim.
    EXPECT_NEAR(coverage(image), 3.14159 * 60.0 * 60.0 / (128.0 * 128.0), 0.02);
}

TEST(MaterialPicture, IsLitFromTheUpperLeft) {
    const Image2D image = picture(R"({"baseColor": [0.5, 0.5, 0.5], "specularColor": [0, 0, 0]})");
    EXPECT_GT(channel(image, 44, 88, 0), channel(image, 64, 64, 0));
    EXPECT_GT(channel(image, 64, 64, 0), channel(image, 84, 40, 0));
    // Away from the light a quarter of the color is left.
    EXPECT_EQ(channel(image, 102, 22, 0), 32);
}

TEST(MaterialPicture, HasTheHueOfItsBaseColor) {
    const Image2D image = picture(R"({"baseColor": [0.8, 0.4, 0.1, 1.0], "specularColor": [0, 0, 0]})");
    EXPECT_NEAR(channel(image, 64, 64, 0), 2 * channel(image, 64, 64, 1), 1);
    EXPECT_NEAR(channel(image, 64, 64, 0), 8 * channel(image, 64, 64, 2), 8);
}

TEST(MaterialPicture, AShinierMaterialHasASmallerHighlight) {
    const auto lightPixels = [](const char* shininess) {
        const Image2D image = picture(std::string{R"({"baseColor": [0, 0, 0], "shininess": )"} + shininess + "}");
        int count = 0;
        for(int y = 0; y != 128; ++y)
            for(int x = 0; x != 128; ++x) count += channel(image, x, y, 0) > 50;
        return count;
    };
    EXPECT_GT(lightPixels("20"), lightPixels("100"));
    EXPECT_GT(lightPixels("100"), lightPixels("500"));
    EXPECT_GT(lightPixels("500"), 0);
    EXPECT_EQ(lightPixels("1"), 0);
}

TEST(MaterialPicture, GlowsInItsEmissiveColor) {
    const Image2D image =
        picture(R"({"baseColor": [0, 0, 0], "specularColor": [0, 0, 0], "emissiveColor": [0, 1, 0]})");
    EXPECT_EQ(pixelAt(image, 90, 40), 0x008000ffu);
}

TEST(MaterialPicture, TransparencyIsThatOfTheBaseColorOutsideOfTheHighlight) {
    const Image2D image = picture(R"({"baseColor": [0.8, 0.9, 0.92, 0.25], "shininess": 128})");
    EXPECT_EQ(channel(image, 90, 30, 3), 64);
    // At its rim, too, it is of its own color, and not darker.
    for(int x = 0; x != 128; ++x) {
        if(channel(image, x, 64, 3) != 0) {
            EXPECT_GT(channel(image, x, 64, 0), 40) << x;
        }
    }
}

TEST(MaterialPicture, WithoutABaseColorThereIsNone) {
    for(const char* json: {"null", "[]", "{}", R"({"baseColor": "red"})", R"({"baseColor": [1, 1]})"})
        EXPECT_FALSE(materialPicture(described(json))) << json;
}

TEST(MaterialPicture, BearsAnyTypeInAnyField) {
    for(const char* field: {"baseColor", "specularColor", "emissiveColor", "shininess"})
        for(const char* value: ValuesOfEveryType) {
            rapidjson::Document material = described(
                R"({"baseColor": [1, 1, 1], "specularColor": [1, 1, 1], "emissiveColor": [0, 0, 0], "shininess": 4})");
            rapidjson::Document replacement{&material.GetAllocator()};
            replacement.Parse(value);
            material[field].Swap(replacement);
            const Containers::Optional<Image2D> made = materialPicture(material);
            EXPECT_TRUE(made || std::string{field} == "baseColor") << field << " " << value;
        }
}

}
}
