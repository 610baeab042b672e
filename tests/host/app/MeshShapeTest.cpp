#include "app/MeshShape.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "PictureProbe.h"

namespace QuorvaneEngine {
namespace {

using Magnum::Vector3;
using Test::described;
using Test::ValuesOfEveryType;

struct Bounds {
    Vector3 min{std::numeric_limits<float>::max()};
    Vector3 max{-std::numeric_limits<float>::max()};
};

Bounds boundsOf(const std::string& json) {
    Bounds bounds;
    for(const Triangle& triangle: meshShape(described(json)))
        for(const Vector3& corner: triangle.corners)
            for(std::size_t i = 0; i != 3; ++i) {
                bounds.min[i] = std::min(bounds.min[i], corner[i]);
                bounds.max[i] = std::max(bounds.max[i], corner[i]);
            }
    return bounds;
}

TEST(MeshShape, ShapesHaveTheSizeThatIsDescribed) {
    const struct {
        const char* mesh;
        Vector3 min, max;
    } cases[]{
        {R"({"primitive": "cube", "halfExtent": [1, 2, 3]})", {-1, -2, -3}, {1, 2, 3}},
        {R"({"primitive": "plane", "halfExtent": [1, 2]})", {-1, 0, -2}, {1, 0, 2}},
        {R"({"primitive": "cylinder", "radius": 2, "height": 5, "segments": 8})", {-2, 0, -2}, {2, 5, 2}},
        {R"({"primitive": "capsule", "radius": 1, "height": 6, "segments": 8})", {-1, -3, -1}, {1, 3, 1}},
        {R"({"primitive": "icosphere", "radius": 3, "subdivisions": 2})", {-3, -3, -3}, {3, 3, 3}},
        {R"({"primitive": "torus", "radius": [3, 1], "segments": [8, 4]})", {-4, -1, -4}, {4, 1, 4}},
        {R"({"primitive": "lathe", "profile": [[1, 0], [2, 1], [1, 4]], "segments": 8})", {-2, 0, -2}, {2, 4, 2}},
        {R"({"primitive": "extrusion", "profile": [[0, 0], [3, 0], [0, 2]], "depth": 4})", {0, 0, -2}, {3, 2, 2}},
        {R"({"primitive": "helix", "radius": [1, 2], "height": 8, "steps": 16})", {-2, 0, -2}, {2, 8, 2}},
    };
    for(const auto& [mesh, min, max]: cases) {
        const Bounds bounds = boundsOf(mesh);
        for(std::size_t i = 0; i != 3; ++i) {
            EXPECT_NEAR(bounds.min[i], min[i], 1.0e-4f) << mesh << " " << i;
            EXPECT_NEAR(bounds.max[i], max[i], 1.0e-4f) << mesh << " " << i;
        }
    }
}

TEST(MeshShape, ACylinderHasTheCapsThatItNames) {
    const auto triangles = [](int caps) {
        return meshShape(described(R"({"primitive": "cylinder", "segments": 8, "caps": )" + std::to_string(caps) + "}"))
            .size();
    };
    EXPECT_EQ(triangles(0), 16u);
    EXPECT_EQ(triangles(1), 32u);
    EXPECT_EQ(triangles(2), 32u);
    EXPECT_EQ(triangles(3), 48u);
}

TEST(MeshShape, AHeightfieldFollowsItsSeed) {
    const auto heights = [](int seed) {
        std::vector<float> all;
        const std::string mesh =
            R"({"primitive": "heightfield", "size": [8, 8], "seed": )" + std::to_string(seed) + "}";
        for(const Triangle& triangle: meshShape(described(mesh))) all.push_back(triangle.corners[0].y());
        return all;
    };
    EXPECT_EQ(heights(1).size(), 8u * 8 * 2);
    EXPECT_EQ(heights(1), heights(1));
    EXPECT_NE(heights(1), heights(2));
}

TEST(MeshShape, NoDescriptionMakesMoreTrianglesThanAPictureCanShow) {
    const struct {
        const char* mesh;
        std::size_t limit;
    } cases[]{
        {R"({"primitive": "cylinder", "segments": 1e9})", 64 * 3 * 2},
        {R"({"primitive": "icosphere", "subdivisions": 1e9})", 48 * 49 * 2},
        {R"({"primitive": "torus", "radius": [2, 1], "segments": [1e9, 1e9]})", 64 * 64 * 2},
        {R"({"primitive": "spiral", "turns": 1e9})", 16 * 24 * 10 * 2},
        {R"({"primitive": "helix", "radius": [1, 2], "steps": 1e9})", 256 * 4},
        {R"({"primitive": "heightfield", "size": [1e9, 1e9]})", 48 * 48 * 2},
    };
    for(const auto& [mesh, limit]: cases) {
        const std::size_t count = meshShape(described(mesh)).size();
        EXPECT_GT(count, 0u) << mesh;
        EXPECT_LE(count, limit) << mesh;
    }
}

TEST(MeshShape, WhatIsNotDescribedHasNoTriangles) {
    for(const char* json: {"null", "[]", "{}", R"({"primitive": "teapot"})", R"({"primitive": 7})",
            R"({"primitive": "cube"})", R"({"primitive": "cube", "halfExtent": [1, 2]})",
            R"({"primitive": "plane", "halfExtent": [1, 2, 3]})", R"({"primitive": "torus", "radius": 1})",
            R"({"primitive": "lathe"})", R"({"primitive": "lathe", "profile": [[1, 0]]})",
            R"({"primitive": "extrusion", "profile": [[1, 0], [2, 0]]})", R"({"primitive": "helix", "radius": [1]})",
            R"({"primitive": "heightfield", "size": [0, 4]})"})
        EXPECT_TRUE(meshShape(described(json)).empty()) << json;
}

TEST(MeshShape, BearsAnyTypeInAnyField) {
    for(const char* primitive: {"cube", "plane", "cylinder", "capsule", "icosphere", "torus", "lathe", "extrusion",
            "spiral", "helix", "heightfield"})
        for(const char* field: {"primitive", "halfExtent", "radius", "height", "segments", "caps", "subdivisions",
                "profile", "depth", "turns", "taper", "steps", "size", "cellSize", "seed"})
            for(const char* value: ValuesOfEveryType) {
                rapidjson::Document mesh;
                mesh.SetObject();
                mesh.AddMember("primitive", rapidjson::StringRef(primitive), mesh.GetAllocator());
                rapidjson::Document replacement{&mesh.GetAllocator()};
                replacement.Parse(value);
                mesh.RemoveMember(field);
                mesh.AddMember(rapidjson::StringRef(field), replacement, mesh.GetAllocator());
                for(const Triangle& triangle: meshShape(mesh))
                    for(const Vector3& corner: triangle.corners)
                        ASSERT_TRUE(std::isfinite(corner.x() + corner.y() + corner.z()))
                            << primitive << " " << field << " " << value;
            }
}

}
}
