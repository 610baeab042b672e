#include "app/MeshPicture.h"

#include <fstream>
#include <sstream>

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

std::string sampleProject() {
    std::ifstream file{QUORVANE_SOURCE_DIR "/samples/lighthouse/project.json"};
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

/** The outermost columns and rows in which there is something. */
struct Extent {
    int left = PictureSize, right = -1, bottom = PictureSize, top = -1;
};

Extent extentOf(const Image2D& picture) {
    Extent extent;
    for(int y = 0; y != PictureSize; ++y)
        for(int x = 0; x != PictureSize; ++x) {
            if(!channel(picture, x, y, 3)) continue;
            extent.left = std::min(extent.left, x);
            extent.right = std::max(extent.right, x);
            extent.bottom = std::min(extent.bottom, y);
            extent.top = std::max(extent.top, y);
        }
    return extent;
}

TEST(MeshPicture, EveryMeshOfTheSampleFillsItsPictureInOneDirection) {
    const rapidjson::Document project = described(sampleProject());
    for(const auto& mesh: project["meshes"].GetObject()) {
        SCOPED_TRACE(mesh.name.GetString());
        const Containers::Optional<Image2D> picture = meshPicture(mesh.value);
        ASSERT_TRUE(picture);
        ASSERT_EQ(picture->size(), (Vector2i{PictureSize, PictureSize}));
        const Extent extent = extentOf(*picture);
        const int width = extent.right - extent.left + 1, height = extent.top - extent.bottom + 1;
        EXPECT_NEAR(std::max(width, height), 116, 2);
        EXPECT_NEAR(extent.left + extent.right, PictureSize - 1, 2);
        EXPECT_NEAR(extent.bottom + extent.top, PictureSize - 1, 2);
        EXPECT_GT(coverage(*picture), 0.03);
    }
}

TEST(MeshPicture, OfACubeThreeFacesAreSeenTheUpperOneLightest) {
    const Containers::Optional<Image2D> picture =
        meshPicture(described(R"({"primitive": "cube", "halfExtent": [1, 1, 1]})"));
    ASSERT_TRUE(picture);
    const int upper = channel(*picture, 64, 95, 1), left = channel(*picture, 40, 50, 1),
              right = channel(*picture, 95, 50, 1);
    EXPECT_GT(upper, left);
    EXPECT_GT(upper, right);
    EXPECT_NE(left, right);
    EXPECT_EQ(channel(*picture, 64, 95, 3), 255);
    EXPECT_EQ(channel(*picture, 2, 2, 3), 0);
}

/** How many pixels of two pictures differ. */
int differences(const Image2D& a, const Image2D& b) {
    int count = 0;
    for(int y = 0; y != PictureSize; ++y)
        for(int x = 0; x != PictureSize; ++x) count += pixelAt(a, x, y) != pixelAt(b, x, y);
    return count;
}

TEST(MeshPicture, WhatIsNearerHidesWhatIsBehindWhicheverIsDrawnFirst) {
    const auto turned = [](const char* profile) {
        Containers::Optional<Image2D> picture = meshPicture(
            described(std::string{R"({"primitive": "lathe", "segments": 64, "profile": )"} + profile + "}"));
        EXPECT_TRUE(picture);
        return std::move(*picture);
    };
    // A bowl, and one that is closed by a lid, beginning at the bottom and at the lid.
    const Image2D open = turned("[[0, -0.6], [1, 0.1]]");
    const Image2D lidLast = turned("[[0, -0.6], [1, 0.1], [0, 0.1]]");
    const Image2D lidFirst = turned("[[0, 0.1], [1, 0.1], [0, -0.6]]");
    // Where lid and bowl meet, nobody is nearer.
    EXPECT_LT(differences(lidFirst, lidLast), 300);
    EXPECT_GT(differences(open, lidLast), 2000);
}

TEST(MeshPicture, WhatHasNoExtentOrIsTooThinToBeSeenHasNoPicture) {
    for(const char* json: {"null", "{}", R"({"primitive": "cube", "halfExtent": [1e300, 0, 0]})",
            R"({"primitive": "cube", "halfExtent": [0, 0, 0]})",
            R"({"primitive": "cylinder", "radius": 0, "height": 0})",
            R"({"primitive": "lathe", "profile": [[0, 0], [0, 0]]})"})
        EXPECT_FALSE(meshPicture(described(json))) << json;
}

TEST(MeshPicture, FitsMeshesOfAnySize) {
    for(const char* half: {"[1e-3, 1e-3, 1e-3]", "[1e300, 1e300, 1e300]", "[-1, -1, -1]"}) {
        const Containers::Optional<Image2D> picture =
            meshPicture(described(std::string{R"({"primitive": "cube", "halfExtent": )"} + half + "}"));
        ASSERT_TRUE(picture) << half;
        const Extent extent = extentOf(*picture);
        EXPECT_NEAR(std::max(extent.right - extent.left, extent.top - extent.bottom) + 1, 116, 2) << half;
    }
}

}
}
