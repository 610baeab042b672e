#include "app/Thumbnails.h"

#include <string>

#include <Magnum/GL/Framebuffer.h>
#include <Magnum/GL/Texture.h>
#include <Magnum/Image.h>
#include <Magnum/Math/Range.h>
#include <Magnum/PixelFormat.h>
#include <gtest/gtest.h>
#include <imgui.h>
#include <rapidjson/document.h>

#include "ChangeManager.h"
#include "PictureProbe.h"
#include "ThumbnailManager.h"
#include "app/DesktopWindow.h"
#include "app/Renderer.h"
#include "document/EditorSession.h"

namespace QuorvaneEngine {
namespace {

namespace GL = Magnum::GL;

using Magnum::Image2D;
using Test::coverage;
using Test::described;
using Test::pixelAt;
using Test::ValuesOfEveryType;

constexpr const char* Project = R"({
    "images": {
        "red": {"generator": "constant", "size": [128, 128], "colors": [[255, 0, 0]]},
        "wide": {"generator": "constant", "size": [64, 32], "colors": [[0, 255, 0]]}
    },
    "materials": {"paper": {"baseColor": [0.9, 0.9, 0.8]}, "unknown": {"shader": "none"}},
    "meshes": {"box": {"primitive": "cube", "halfExtent": [1, 1, 1]}}
})";

/** A session, and a window for what it shows. */
class ThumbnailsTest: public testing::Test {
protected:
    ThumbnailsTest() {
        ImGui::CreateContext();
        DesktopWindow::Options options;
        options.width = options.height = 64;
        options.visible = false;
        if(window.open("Test", options)) renderer.emplace(window);
    }

    ~ThumbnailsTest() override {
        renderer = nullptr;
        ImGui::DestroyContext();
    }

    void SetUp() override { ASSERT_TRUE(renderer && renderer->isReady()); }

    /** As many frames as it takes, which are counted. */
    static int settle(Thumbnails& thumbnails) {
        int frames = 0;
        do {
            thumbnails.update();
            ++frames;
        } while(thumbnails.isBusy() && frames != 10000);
        return frames;
    }

    static Image2D cell(Thumbnails& thumbnails, const char* name) {
        const Magnum::Vector3i position = thumbnails.manager().thumbnailPos(name);
        const auto rectangle = Magnum::Range2Di::fromSize(position.xy() * 128, {128, 128});
        GL::Framebuffer framebuffer{rectangle};
        framebuffer.attachTexture(
            GL::Framebuffer::ColorAttachment{0}, thumbnails.manager().atlasSlice(position.z()), 0);
        return framebuffer.read(rectangle, Image2D{Magnum::PixelFormat::RGBA8Unorm});
    }

    void push(const char* path, const char* json) {
        const rapidjson::Document value = described(json);
        session.changes().pushChange(path, value, false);
    }

    DesktopWindow window;
    Containers::Pointer<Renderer> renderer;
    EditorSession session;
};

TEST_F(ThumbnailsTest, ArePublishedForAsLongAsTheyLive) {
    EXPECT_EQ(session.data().thumbnails, nullptr);
    {
        Thumbnails thumbnails{session};
        EXPECT_EQ(session.data().thumbnails, &thumbnails.manager());
    }
    EXPECT_EQ(session.data().thumbnails, nullptr);
}

TEST_F(ThumbnailsTest, EveryResourceThatCanBePicturedIsKnownByItsIndex) {
    session.replaceDocument(described(Project));
    Thumbnails thumbnails{session};
    settle(thumbnails);
    for(const char* name: {"1", "2", "ma1", "m1"}) EXPECT_TRUE(thumbnails.manager().hasThumbnail(name)) << name;
    for(const char* name: {"0", "3", "ma0", "ma2", "ma3", "m0", "m2"})
        EXPECT_FALSE(thumbnails.manager().hasThumbnail(name)) << name;
    EXPECT_EQ(pixelAt(cell(thumbnails, "1"), 64, 64), 0xff0000ffu);
    // Nothing is seen around a picture that is not square.
    const Image2D wide = cell(thumbnails, "2");
    EXPECT_EQ(pixelAt(wide, 64, 31), 0u);
    EXPECT_EQ(pixelAt(wide, 64, 33), 0x00ff00ffu);
    EXPECT_EQ(pixelAt(wide, 64, 94), 0x00ff00ffu);
    EXPECT_EQ(pixelAt(wide, 64, 96), 0u);
    EXPECT_GT(coverage(cell(thumbnails, "ma1")), 0.5);
    EXPECT_GT(coverage(cell(thumbnails, "m1")), 0.3);
}

TEST_F(ThumbnailsTest, TheSampleProjectHasAPictureOfEverything) {
    ASSERT_TRUE(session.open(QUORVANE_SOURCE_DIR "/samples/lighthouse"));
    Thumbnails thumbnails{session};
    settle(thumbnails);
    const rapidjson::Document& project = session.project().document();
    const struct {
        const char* collection;
        const char* prefix;
    } kinds[]{{"images", ""}, {"materials", "ma"}, {"meshes", "m"}};
    for(const auto& [collection, prefix]: kinds) {
        ASSERT_GT(project[collection].MemberCount(), 5u);
        for(unsigned i = 1; i <= project[collection].MemberCount(); ++i)
            EXPECT_TRUE(thumbnails.manager().hasThumbnail((prefix + std::to_string(i)).c_str()))
                << collection << " " << i;
    }
}

TEST_F(ThumbnailsTest, AChangedResourceGetsANewPictureAndSoDoesItsUndo) {
    session.replaceDocument(described(Project));
    Thumbnails thumbnails{session};
    settle(thumbnails);
    push("/images/red/colors/0", "[0, 0, 255]");
    settle(thumbnails);
    EXPECT_EQ(pixelAt(cell(thumbnails, "1"), 64, 64), 0x0000ffffu);
    session.undo();
    settle(thumbnails);
    EXPECT_EQ(pixelAt(cell(thumbnails, "1"), 64, 64), 0xff0000ffu);
}

TEST_F(ThumbnailsTest, ARemovedResourceLeavesItsIndexToTheNextOne) {
    session.replaceDocument(described(Project));
    Thumbnails thumbnails{session};
    settle(thumbnails);
    session.changes().pushRemoval("/images/red");
    settle(thumbnails);
    ASSERT_EQ(session.data().imageIndices["wide"], 1);
    EXPECT_EQ(pixelAt(cell(thumbnails, "1"), 64, 64), 0x00ff00ffu);
    EXPECT_EQ(pixelAt(cell(thumbnails, "1"), 64, 20), 0u);
}

TEST_F(ThumbnailsTest, AResourceThatCanNoLongerBePicturedShowsNothing) {
    session.replaceDocument(described(Project));
    Thumbnails thumbnails{session};
    settle(thumbnails);
    push("/images/red/generator", "\"fractal\"");
    settle(thumbnails);
    EXPECT_TRUE(thumbnails.manager().hasThumbnail("1"));
    EXPECT_EQ(coverage(cell(thumbnails, "1")), 0.0);
}

TEST_F(ThumbnailsTest, AnotherProjectBeginsAnew) {
    ASSERT_TRUE(session.open(QUORVANE_SOURCE_DIR "/samples/lighthouse"));
    Thumbnails thumbnails{session};
    settle(thumbnails);
    EXPECT_TRUE(thumbnails.manager().hasThumbnail("m5"));
    const std::string other = testing::TempDir() + "quorvane-thumbnails";
    ASSERT_EQ(
        std::system(("mkdir -p '" + other + "' && echo '" + Project + "' > '" + other + "/project.json'").c_str()), 0);
    ASSERT_TRUE(session.open(other.c_str()));
    settle(thumbnails);
    EXPECT_FALSE(thumbnails.manager().hasThumbnail("m5"));
    EXPECT_EQ(pixelAt(cell(thumbnails, "1"), 64, 64), 0xff0000ffu);
    std::system(("rm -r '" + other + "'").c_str());
}

TEST_F(ThumbnailsTest, AFrameMakesAFewPicturesAndASettledOneLooksNothingUp) {
    std::string project = R"({"images": {)";
    for(int i = 0; i != 1000; ++i)
        project += std::string{i ? "," : ""} + "\"" + std::to_string(i) +
            R"(": {"generator": "constant", "size": [2, 2], "colors": [[1, 2, 3]]})";
    session.replaceDocument(described(project + "}}"));
    Thumbnails thumbnails{session};
    const auto known = [&] {
        std::size_t count = 0;
        for(int i = 1; i <= 1000; ++i) count += thumbnails.manager().hasThumbnail(std::to_string(i).c_str());
        return count;
    };
    thumbnails.update();
    EXPECT_EQ(known(), Thumbnails::PicturesPerFrame);
    EXPECT_TRUE(thumbnails.isBusy());
    settle(thumbnails);
    EXPECT_EQ(known(), 1000u);

    const std::uint64_t lookUps = session.project().lookupCount();
    thumbnails.update();
    EXPECT_FALSE(thumbnails.isBusy());
    EXPECT_EQ(session.project().lookupCount(), lookUps);

    // One change: all are looked at once more, and one picture is made.
    push("/images/999/colors/0", "[9, 9, 9]");
    EXPECT_EQ(settle(thumbnails), (1000 + 63) / 64);
    EXPECT_EQ(pixelAt(cell(thumbnails, "1000"), 64, 64), 0x090909ffu);
}

TEST_F(ThumbnailsTest, WhoChangesSomethingInEveryFrameKeepsNobodyFromTheirTurn) {
    std::string project = R"({"images": {)";
    for(int i = 0; i != 200; ++i)
        project += std::string{i ? "," : ""} + "\"" + std::to_string(i) +
            R"(": {"generator": "constant", "size": [2, 2], "colors": [[1, 2, 3]]})";
    session.replaceDocument(described(project + R"(}, "dragged": 0})"));
    Thumbnails thumbnails{session};
    for(int frame = 0; frame != 60; ++frame) {
        push("/dragged", std::to_string(frame).c_str());
        thumbnails.update();
    }
    EXPECT_TRUE(thumbnails.manager().hasThumbnail("200"));
}

TEST_F(ThumbnailsTest, CollectionsOfAnyTypeAreBorne) {
    for(const char* value: ValuesOfEveryType) {
        session.replaceDocument(described(std::string{R"({"images": )"} + value + R"(, "materials": {"a": )" + value +
            R"(}, "meshes": )" + value + "}"));
        Thumbnails thumbnails{session};
        EXPECT_LT(settle(thumbnails), 10) << value;
        EXPECT_FALSE(thumbnails.manager().hasThumbnail("ma1")) << value;
    }
}

TEST_F(ThumbnailsTest, BeyondTheLimitOfAKindOnlyTheOthersHavePictures) {
    std::string project = R"({"images": {)";
    for(std::size_t i = 0; i != Thumbnails::MaxImages + 10; ++i)
        project += std::string{i ? "," : ""} + "\"" + std::to_string(i) +
            R"(": {"generator": "constant", "size": [1, 1], "colors": [[1, 2, 3]]})";
    session.replaceDocument(described(project + R"(}, "materials": {"paper": {"baseColor": [0.9, 0.9, 0.8]}},
        "meshes": {"box": {"primitive": "cube", "halfExtent": [1, 1, 1]}}})"));
    Thumbnails thumbnails{session};
    settle(thumbnails);
    EXPECT_TRUE(thumbnails.manager().hasThumbnail(std::to_string(Thumbnails::MaxImages).c_str()));
    EXPECT_FALSE(thumbnails.manager().hasThumbnail(std::to_string(Thumbnails::MaxImages + 1).c_str()));
    EXPECT_TRUE(thumbnails.manager().hasThumbnail("ma1"));
    EXPECT_TRUE(thumbnails.manager().hasThumbnail("m1"));
}

TEST_F(ThumbnailsTest, AllKindsTogetherFillFourSlices) {
    EXPECT_EQ(Thumbnails::MaxImages + Thumbnails::MaxMaterials + Thumbnails::MaxMeshes, std::size_t{4 * 1024});
}

}
}
