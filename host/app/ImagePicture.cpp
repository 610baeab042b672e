#include "app/ImagePicture.h"

#include <string_view>
#include <vector>

#include <rapidjson/document.h>

#include "app/Picture.h"
#include "app/PictureFields.h"
#include "app/ValueNoise.h"

namespace QuorvaneEngine {

using Magnum::Vector2;
using Magnum::Vector2i;
using Magnum::Vector4;

namespace {

constexpr std::size_t MaxColors = 64;
constexpr Int MaxOctaves = 8;

/** Cells of the noise along the longer side of an image. */
constexpr float NoiseCells = 8.0f;

struct Description {
    std::vector<Vector4> colors;
    Vector2 size;
    float cell;
    Int octaves;
    UnsignedInt seed;

    /** Between the colors, evenly spread from 0 to 1. */
    Vector4 mixed(float position) const {
        const float place = std::clamp(position, 0.0f, 1.0f) * float(colors.size() - 1);
        const std::size_t first = std::size_t(place);
        const std::size_t second = std::min(first + 1, colors.size() - 1);
        return colors[first] + (colors[second] - colors[first]) * (place - float(first));
    }
};

/** Points are in pixels of the image, from the lower left corner. */
using Generator = Vector4 (*)(const Description& image, const Vector2& point);

Vector4 constant(const Description& image, const Vector2&) { return image.colors[0]; }

Vector4 checkerboard(const Description& image, const Vector2& point) {
    // The first square lies in the upper left corner.
    const Int column = Int(point.x() / image.cell);
    const Int row = Int((image.size.y() - point.y()) / image.cell);
    return image.colors[std::size_t(column + row) % image.colors.size()];
}

Vector4 gradient(const Description& image, const Vector2& point) {
    return image.mixed(1.0f - point.y() / image.size.y());
}

Vector4 noise(const Description& image, const Vector2& point) {
    const Vector2 place = point * (NoiseCells / std::max(image.size.x(), image.size.y()));
    return image.mixed(valueNoise(image.seed, image.octaves, place.x(), place.y()));
}

constexpr struct {
    std::string_view name;
    Generator generator;
} Generators[]{
    {"constant", constant},
    {"checkerboard", checkerboard},
    {"gradient", gradient},
    {"noise", noise},
};

Generator generatorOf(const rapidjson::Value& image) {
    const rapidjson::Value* const name = fieldOf(image, "generator");
    if(!name || !name->IsString()) return nullptr;
    for(const auto& each: Generators)
        if(each.name == std::string_view{name->GetString(), name->GetStringLength()}) return each.generator;
    return nullptr;
}

std::vector<Vector4> colorsOf(const rapidjson::Value& image) {
    std::vector<Vector4> colors;
    const rapidjson::Value* const list = fieldOf(image, "colors");
    if(!list || !list->IsArray()) return colors;
    for(rapidjson::SizeType i = 0; i != list->Size() && i != MaxColors; ++i) {
        const Containers::Optional<Vector4> color = colorOf((*list)[i], 255.0f);
        if(!color) return {};
        colors.push_back(*color);
    }
    return colors;
}

}

Containers::Optional<Magnum::Image2D> imagePicture(const rapidjson::Value& image) {
    const Generator generator = generatorOf(image);
    const std::vector<float> sides = numbersField(image, "size", 3);
    Description description{colorsOf(image), {}, numberField(image, "cell", 8.0f, 1.0f, LargestNumber),
        integerField(image, "octaves", 1, 1, MaxOctaves), UnsignedInt(integerField(image, "seed", 0, 0, 1000000))};
    if(!generator || description.colors.empty() || sides.size() != 2 || sides[0] < 1.0f || sides[1] < 1.0f) return {};
    description.size = {std::floor(sides[0]), std::floor(sides[1])};

    const float scale = std::min(1.0f, float(PictureSize) / std::max(description.size.x(), description.size.y()));
    const Vector2i size{std::max(1, Int(description.size.x() * scale)), std::max(1, Int(description.size.y() * scale))};
    const Vector2 step = description.size / Vector2{size};
    return makePicture(size, [&](Int x, Int y) {
        return generator(description, Vector2{float(x) + 0.5f, float(y) + 0.5f} * step);
    });
}

}
