#include "app/MeshPicture.h"

#include <limits>
#include <vector>

#include <Magnum/Math/Vector3.h>

#include "app/MeshShape.h"
#include "app/Picture.h"

namespace QuorvaneEngine {

using Magnum::Vector2;
using Magnum::Vector3;
using Magnum::Vector4;

namespace {

/** Samples along each side of a pixel. */
constexpr Int Samples = 2;
constexpr Int Side = PictureSize * Samples;

/** Around the mesh, in pixels. */
constexpr float Margin = 6.0f;

const Vector3 Material{0.72f, 0.76f, 0.82f};

/** What the eye sees of every sample: how light it is, less than 0 where there is nothing, and how near. */
struct Canvas {
    static std::size_t at(Int x, Int y) { return std::size_t(y) * Side + std::size_t(x); }

    std::vector<float> light = std::vector<float>(std::size_t(Side) * Side, -1.0f);
    std::vector<float> depth = std::vector<float>(std::size_t(Side) * Side, -std::numeric_limits<float>::max());
};

/** Turned so that the eye looks along -z, from the right and from above. */
Vector3 turned(const Vector3& point) {
    const float yaw = 0.6f;
    const float pitch = 0.5f;
    const Vector3 turned{point.x() * std::cos(yaw) - point.z() * std::sin(yaw), point.y(),
        point.x() * std::sin(yaw) + point.z() * std::cos(yaw)};
    return {turned.x(), turned.y() * std::cos(pitch) - turned.z() * std::sin(pitch),
        turned.y() * std::sin(pitch) + turned.z() * std::cos(pitch)};
}

/** Moves and scales all triangles so that they fill the canvas. Returns whether they have any extent. */
bool fit(std::vector<Triangle>& triangles) {
    Vector3 min{std::numeric_limits<float>::max()};
    Vector3 max{-std::numeric_limits<float>::max()};
    for(Triangle& triangle: triangles)
        for(Vector3& corner: triangle.corners) {
            corner = turned(corner);
            for(std::size_t i = 0; i != 3; ++i) {
                min[i] = std::min(min[i], corner[i]);
                max[i] = std::max(max[i], corner[i]);
            }
        }
    if(triangles.empty()) return false;
    const Vector3 extent = max - min;
    const float longest = std::max(extent.x(), extent.y());
    if(!(longest > 1.0e-6f)) return false;
    const float scale = (float(PictureSize) - 2.0f * Margin) * float(Samples) / longest;
    const Vector3 centre = (min + max) * 0.5f;
    for(Triangle& triangle: triangles)
        for(Vector3& corner: triangle.corners)
            corner = (corner - centre) * scale + Vector3{float(Side) * 0.5f, float(Side) * 0.5f, 0.0f};
    return true;
}

/** Twice the area of a triangle in the plane of the picture, negative where it turns clockwise. */
float area(const Vector3& a, const Vector3& b, const Vector3& c) {
    return (b.x() - a.x()) * (c.y() - a.y()) - (b.y() - a.y()) * (c.x() - a.x());
}

void draw(Canvas& canvas, const Triangle& triangle) {
    const Vector3& a = triangle.corners[0];
    const Vector3& b = triangle.corners[1];
    const Vector3& c = triangle.corners[2];
    const Vector3 normal = cross(b - a, c - a);
    const float whole = area(a, b, c);
    if(std::abs(whole) < 1.0e-6f) return;
    // Both sides are lit alike, so that it does not matter which way a triangle turns.
    const Vector3 front = normal * ((normal.z() < 0.0f ? -1.0f : 1.0f) / normal.length());
    const float light = 0.3f + 0.7f * std::max(0.0f, dot(front, Vector3{-0.45f, 0.7f, 0.55f}.normalized()));

    const auto bounds = [&](std::size_t axis) {
        const auto [low, high] = std::minmax({a[axis], b[axis], c[axis]});
        return std::pair{std::max(0, Int(low)), std::min(Side - 1, Int(high))};
    };
    const auto [left, right] = bounds(0);
    const auto [bottom, top] = bounds(1);
    for(Int y = bottom; y <= top; ++y)
        for(Int x = left; x <= right; ++x) {
            const Vector3 point{float(x) + 0.5f, float(y) + 0.5f, 0.0f};
            const float ofA = area(point, b, c) / whole;
            const float ofB = area(a, point, c) / whole;
            const float ofC = 1.0f - ofA - ofB;
            if(ofA < 0.0f || ofB < 0.0f || ofC < 0.0f) continue;
            const float depth = a.z() * ofA + b.z() * ofB + c.z() * ofC;
            const std::size_t i = Canvas::at(x, y);
            if(depth <= canvas.depth[i]) continue;
            canvas.depth[i] = depth;
            canvas.light[i] = light;
        }
}

}

Containers::Optional<Magnum::Image2D> meshPicture(const rapidjson::Value& mesh) {
    std::vector<Triangle> triangles = meshShape(mesh);
    if(!fit(triangles)) return {};
    Canvas canvas;
    for(const Triangle& triangle: triangles) draw(canvas, triangle);
    // A mesh may be too thin to be seen.
    if(std::none_of(canvas.light.begin(), canvas.light.end(), [](float light) { return light >= 0.0f; })) return {};
    return makePicture({PictureSize, PictureSize}, [&](Int x, Int y) {
        float light = 0.0f;
        Int hits = 0;
        for(Int i = 0; i != Samples * Samples; ++i) {
            const float sample = canvas.light[Canvas::at(x * Samples + i % Samples, y * Samples + i / Samples)];
            if(sample < 0.0f) continue;
            light += sample;
            ++hits;
        }
        if(!hits) return Vector4{0.0f};
        return Vector4{Material * (light / float(hits)), float(hits) / float(Samples * Samples)};
    });
}

}
