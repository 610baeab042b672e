#pragma once

#include <cstdint>
#include <set>
#include <string>

#include <Corrade/Containers/Optional.h>
#include <Magnum/Image.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>

namespace QuorvaneEngine::Test {

/** What a picture is made of, from JSON text that must be valid. */
inline rapidjson::Document described(const std::string& json) {
    rapidjson::Document document;
    document.Parse<rapidjson::kParseFullPrecisionFlag>(json.data(), json.size());
    EXPECT_FALSE(document.HasParseError()) << json;
    return document;
}

/** One channel, 0 red to 3 alpha, of the pixel in column x and row y from the bottom. */
inline int channel(const Magnum::Image2D& picture, int x, int y, std::size_t channel) {
    return std::uint8_t(picture.data()[std::size_t(y * picture.size().x() + x) * 4 + channel]);
}

/** 0xrrggbbaa */
inline std::uint32_t pixelAt(const Magnum::Image2D& picture, int x, int y) {
    std::uint32_t pixel = 0;
    for(std::size_t i = 0; i != 4; ++i) pixel = pixel << 8 | std::uint32_t(channel(picture, x, y, i));
    return pixel;
}

/** How much of a picture is not transparent, from 0 to 1. */
inline double coverage(const Magnum::Image2D& picture) {
    int covered = 0;
    for(int y = 0; y != picture.size().y(); ++y)
        for(int x = 0; x != picture.size().x(); ++x) covered += channel(picture, x, y, 3) != 0;
    return double(covered) / picture.size().product();
}

/** The colors of all opaque pixels. */
inline std::set<std::uint32_t> opaqueColors(const Magnum::Image2D& picture) {
    std::set<std::uint32_t> colors;
    for(int y = 0; y != picture.size().y(); ++y)
        for(int x = 0; x != picture.size().x(); ++x)
            if(channel(picture, x, y, 3) == 255) colors.insert(pixelAt(picture, x, y));
    return colors;
}

/** Values of every type, as text. */
constexpr const char* ValuesOfEveryType[]{"null", "true", "17", "-1.5e300", "1e308", "\"text\"", "[]", "[1, 2]",
    "[[1, 2], [3, 4], [5, 6]]", "[0, 0, 0]", "[1e300, -1e300, 1e300]", "[\"a\", null, {}]", "{}", "{\"a\": [1]}"};

}
