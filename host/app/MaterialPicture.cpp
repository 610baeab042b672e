#include "app/MaterialPicture.h"

#include <Magnum/Math/Vector3.h>

#include <rapidjson/document.h>

#include "app/Picture.h"
#include "app/PictureFields.h"

namespace QuorvaneEngine {

using Magnum::Vector2;
using Magnum::Vector3;
using Magnum::Vector4;

namespace {

/** Of the ball, in pixels. */
constexpr float Radius = 60.0f;

constexpr float Ambient = 0.25f;
constexpr float Highlight = 0.6f;

/** Samples along each side of a pixel of the rim. */
constexpr Int Samples = 4;

struct Material {
    Vector4 base;
    Vector4 specular;
    Vector4 emissive;
    float shininess;
};

const Vector3 Light = Vector3{-0.5f, 0.6f, 0.7f}.normalized();

/** Between the light and the eye. */
const Vector3 Half = (Light + Vector3{0.0f, 0.0f, 1.0f}).normalized();

/** The light that a point of the ball sends to the eye, which looks along -z.
    @param point    from the middle of the ball, in radii; beyond its rim like the rim */
Vector4 lit(const Material& material, const Vector2& point) {
    const Vector3 normal = Vector3{point, std::sqrt(std::max(0.0f, 1.0f - point.dot()))}.normalized();
    const float diffuse = Ambient + (1.0f - Ambient) * std::max(0.0f, dot(normal, Light));
    // The wider a highlight, the weaker it is.
    const float strength = Highlight * material.shininess / (material.shininess + 16.0f);
    const float specular = strength * std::pow(std::max(0.0f, dot(normal, Half)), material.shininess);
    Vector4 color = material.base * diffuse + material.specular * specular + material.emissive * 0.5f;
    // A highlight is seen on glass, too.
    color.w() = std::max(material.base.w(), specular);
    return color;
}

/** How much of a pixel the ball covers, from 0 to 1.
    @param middle   of the pixel, from the middle of the ball, in pixels */
float coverage(const Vector2& middle) {
    const float distance = middle.length();
    if(std::abs(distance - Radius) > 1.0f) return distance < Radius ? 1.0f : 0.0f;
    Int hits = 0;
    for(Int row = 0; row != Samples; ++row)
        for(Int column = 0; column != Samples; ++column) {
            const Vector2 offset = (Vector2{float(column) + 0.5f, float(row) + 0.5f} / float(Samples)) - Vector2{0.5f};
            hits += (middle + offset).length() < Radius;
        }
    return float(hits) / float(Samples * Samples);
}

Vector4 colorField(const rapidjson::Value& material, const char* name, const Vector4& fallback) {
    const rapidjson::Value* const value = fieldOf(material, name);
    const Containers::Optional<Vector4> color = value ? colorOf(*value, 1.0f) : Containers::NullOpt;
    return color ? *color : fallback;
}

}

Containers::Optional<Magnum::Image2D> materialPicture(const rapidjson::Value& material) {
    const rapidjson::Value* const base = fieldOf(material, "baseColor");
    const Containers::Optional<Vector4> color = base ? colorOf(*base, 1.0f) : Containers::NullOpt;
    if(!color) return {};
    const Material look{*color, colorField(material, "specularColor", Vector4{1.0f}),
        colorField(material, "emissiveColor", Vector4{0.0f}), numberField(material, "shininess", 16.0f, 1.0f, 1000.0f)};
    return makePicture({PictureSize, PictureSize}, [&](Int x, Int y) {
        const Vector2 middle = Vector2{float(x), float(y)} + Vector2{0.5f - float(PictureSize) * 0.5f};
        const float covered = coverage(middle);
        if(covered == 0.0f) return Vector4{0.0f};
        Vector4 pixel = lit(look, middle / Radius);
        pixel.w() *= covered;
        return pixel;
    });
}

}
