#include "app/MeshShape.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string_view>

#include <rapidjson/document.h>

#include "app/PictureFields.h"
#include "app/ValueNoise.h"

namespace QuorvaneEngine {

using Magnum::Vector2;
using Magnum::Vector3;

namespace {

constexpr float Pi = std::numbers::pi_v<float>;

/** More of anything would not be seen in a picture of this size. */
constexpr Int MaxSegments = 64;
constexpr Int MaxSteps = 256;
constexpr std::size_t MaxPoints = 256;
constexpr Int MaxCells = 48;

using Shape = std::vector<Triangle>;

void addQuad(Shape& shape, const Vector3& a, const Vector3& b, const Vector3& c, const Vector3& d) {
    shape.push_back({{a, b, c}});
    shape.push_back({{a, c, d}});
}

/** A surface of @p columns x @p rows quadrilaterals; @p point maps 0 to 1 along both to space. */
template <class F> void addSurface(Shape& shape, Int columns, Int rows, F&& point) {
    const auto at = [&](Int column, Int row) {
        return point(float(column) / float(columns), float(row) / float(rows));
    };
    for(Int row = 0; row != rows; ++row)
        for(Int column = 0; column != columns; ++column)
            addQuad(shape, at(column, row), at(column + 1, row), at(column + 1, row + 1), at(column, row + 1));
}

void addBox(Shape& shape, const Vector3& half) {
    for(std::size_t axis = 0; axis != 3; ++axis)
        for(const float side: {-1.0f, 1.0f}) {
            Vector3 corners[4];
            const std::size_t u = (axis + 1) % 3;
            const std::size_t v = (axis + 2) % 3;
            for(std::size_t i = 0; i != 4; ++i) {
                corners[i][axis] = half[axis] * side;
                corners[i][u] = i == 1 || i == 2 ? half[u] : -half[u];
                corners[i][v] = i >= 2 ? half[v] : -half[v];
            }
            addQuad(shape, corners[0], corners[1], corners[2], corners[3]);
        }
}

/** Turns a profile of radius and height around the y axis. */
Shape revolved(const std::vector<Vector2>& profile, Int segments) {
    Shape shape;
    const auto at = [&](const Vector2& point, Int segment) {
        const float angle = 2.0f * Pi * float(segment) / float(segments);
        return Vector3{point.x() * std::cos(angle), point.y(), point.x() * std::sin(angle)};
    };
    for(std::size_t i = 1; i < profile.size(); ++i)
        for(Int segment = 0; segment != segments; ++segment)
            addQuad(shape, at(profile[i - 1], segment), at(profile[i - 1], segment + 1), at(profile[i], segment + 1),
                at(profile[i], segment));
    return shape;
}

/** Two half balls at a distance, from pole to pole. */
std::vector<Vector2> capsuleProfile(float radius, float distance, Int rows) {
    std::vector<Vector2> profile;
    for(Int i = 0; i <= 2 * rows; ++i) {
        const float angle = Pi * (float(i) / float(2 * rows) - 0.5f);
        const float centre = distance * (i <= rows ? -0.5f : 0.5f);
        profile.emplace_back(radius * std::cos(angle), centre + radius * std::sin(angle));
        if(i == rows) profile.emplace_back(radius, distance * 0.5f);
    }
    return profile;
}

float lengthField(const rapidjson::Value& mesh, const char* name, float fallback) {
    return numberField(mesh, name, fallback, 0.0f, LargestNumber);
}

Int segmentsField(const rapidjson::Value& mesh) { return integerField(mesh, "segments", 24, 3, MaxSegments); }

Shape cube(const rapidjson::Value& mesh) {
    Shape shape;
    const std::vector<float> half = numbersField(mesh, "halfExtent", 4);
    if(half.size() == 3) addBox(shape, {half[0], half[1], half[2]});
    return shape;
}

Shape plane(const rapidjson::Value& mesh) {
    Shape shape;
    const std::vector<float> half = numbersField(mesh, "halfExtent", 3);
    if(half.size() == 2)
        addSurface(shape, 1, 1, [&](float u, float v) {
            return Vector3{half[0] * (2.0f * u - 1.0f), 0.0f, half[1] * (2.0f * v - 1.0f)};
        });
    return shape;
}

Shape cylinder(const rapidjson::Value& mesh) {
    const float radius = lengthField(mesh, "radius", 0.5f);
    const float height = lengthField(mesh, "height", 1.0f);
    const Int caps = integerField(mesh, "caps", 3, 0, 3);
    std::vector<Vector2> profile;
    if(caps & 1) profile.emplace_back(0.0f, 0.0f);
    profile.emplace_back(radius, 0.0f);
    profile.emplace_back(radius, height);
    if(caps & 2) profile.emplace_back(0.0f, height);
    return revolved(profile, segmentsField(mesh));
}

Shape capsule(const rapidjson::Value& mesh) {
    const float radius = lengthField(mesh, "radius", 0.5f);
    const float distance = std::max(0.0f, lengthField(mesh, "height", 2.0f) - 2.0f * radius);
    return revolved(capsuleProfile(radius, distance, 8), segmentsField(mesh));
}

Shape icosphere(const rapidjson::Value& mesh) {
    const Int rows = 3 << integerField(mesh, "subdivisions", 2, 0, 3);
    return revolved(capsuleProfile(lengthField(mesh, "radius", 0.5f), 0.0f, rows), 2 * rows);
}

Shape torus(const rapidjson::Value& mesh) {
    Shape shape;
    const std::vector<float> radius = numbersField(mesh, "radius", 3);
    std::vector<float> segments = numbersField(mesh, "segments", 3);
    if(segments.size() != 2) segments = {32.0f, 12.0f};
    if(radius.size() != 2) return shape;
    const auto count = [&](std::size_t i) { return Int(std::clamp(segments[i], 3.0f, float(MaxSegments))); };
    addSurface(shape, count(0), count(1), [&](float u, float v) {
        const float around = 2.0f * Pi * u;
        const float tube = 2.0f * Pi * v;
        const float distance = radius[0] + radius[1] * std::cos(tube);
        return Vector3{distance * std::cos(around), radius[1] * std::sin(tube), distance * std::sin(around)};
    });
    return shape;
}

Shape lathe(const rapidjson::Value& mesh) {
    return revolved(pointsField(mesh, "profile", MaxPoints), segmentsField(mesh));
}

Shape extrusion(const rapidjson::Value& mesh) {
    Shape shape;
    const std::vector<Vector2> outline = pointsField(mesh, "profile", MaxPoints);
    const float half = lengthField(mesh, "depth", 0.1f) * 0.5f;
    if(outline.size() < 3) return shape;
    for(std::size_t i = 0; i != outline.size(); ++i) {
        const Vector2& a = outline[i];
        const Vector2& b = outline[(i + 1) % outline.size()];
        addQuad(shape, {a, -half}, {b, -half}, {b, half}, {a, half});
        for(const float side: {-half, half}) shape.push_back({{{outline[0], side}, {a, side}, {b, side}}});
    }
    return shape;
}

Shape spiral(const rapidjson::Value& mesh) {
    Shape shape;
    const float radius = lengthField(mesh, "radius", 0.5f);
    const float turns = numberField(mesh, "turns", 3.0f, 0.25f, 16.0f);
    const float taper = numberField(mesh, "taper", 0.6f, 0.1f, 1.0f);
    addSurface(shape, Int(turns * 24.0f), 10, [&](float u, float v) {
        // A tube whose turns touch each other, winding upwards to its point.
        const float rest = radius * std::pow(taper, turns * u);
        const float tube = rest * (1.0f - taper * 0.5f) * 0.5f;
        const float around = 2.0f * Pi * turns * u;
        const float angle = 2.0f * Pi * v;
        const float distance = rest * 0.6f + tube * std::cos(angle);
        return Vector3{
            distance * std::cos(around), (radius - rest) * 1.5f + tube * std::sin(angle), distance * std::sin(around)};
    });
    return shape;
}

Shape helix(const rapidjson::Value& mesh) {
    Shape shape;
    const std::vector<float> radius = numbersField(mesh, "radius", 3);
    const float height = lengthField(mesh, "height", 1.0f);
    const Int steps = integerField(mesh, "steps", 16, 1, MaxSteps);
    if(radius.size() != 2) return shape;
    constexpr Int StepsOfTurn = 16;
    const float rise = height / float(steps);
    for(Int step = 0; step != steps; ++step) {
        const auto at = [&](Int edge, std::size_t side, float up) {
            const float angle = 2.0f * Pi * float(step + edge) / float(StepsOfTurn);
            return Vector3{radius[side] * std::cos(angle), (float(step) + up) * rise, radius[side] * std::sin(angle)};
        };
        addQuad(shape, at(0, 0, 1.0f), at(0, 1, 1.0f), at(1, 1, 1.0f), at(1, 0, 1.0f));
        addQuad(shape, at(0, 0, 0.0f), at(0, 1, 0.0f), at(0, 1, 1.0f), at(0, 0, 1.0f));
    }
    return shape;
}

Shape heightfield(const rapidjson::Value& mesh) {
    Shape shape;
    const std::vector<float> size = numbersField(mesh, "size", 3);
    const float cell = lengthField(mesh, "cellSize", 1.0f);
    const UnsignedInt seed = UnsignedInt(integerField(mesh, "seed", 0, 0, 1000000));
    if(size.size() != 2 || size[0] < 1.0f || size[1] < 1.0f) return shape;
    const auto count = [&](std::size_t i) { return Int(std::min(size[i], float(MaxCells))); };
    const float longer = std::max(size[0], size[1]);
    addSurface(shape, count(0), count(1), [&](float u, float v) {
        const float height = valueNoise(seed, 4, u * size[0] / longer * 4.0f, v * size[1] / longer * 4.0f);
        return Vector3{u * size[0] * cell, height * longer * cell * 0.3f, v * size[1] * cell};
    });
    return shape;
}

constexpr struct {
    std::string_view name;
    Shape (*make)(const rapidjson::Value& mesh);
} Primitives[]{
    {"cube", cube},
    {"plane", plane},
    {"cylinder", cylinder},
    {"capsule", capsule},
    {"icosphere", icosphere},
    {"torus", torus},
    {"lathe", lathe},
    {"extrusion", extrusion},
    {"spiral", spiral},
    {"helix", helix},
    {"heightfield", heightfield},
};

}

std::vector<Triangle> meshShape(const rapidjson::Value& mesh) {
    const rapidjson::Value* const name = fieldOf(mesh, "primitive");
    if(!name || !name->IsString()) return {};
    for(const auto& primitive: Primitives)
        if(primitive.name == std::string_view{name->GetString(), name->GetStringLength()}) return primitive.make(mesh);
    return {};
}

}
