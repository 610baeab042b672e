#include <memory>
#include <string>
#include <vector>

#include <Magnum/Math/Vector3.h>
#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "ThumbnailManager.h"
#include "editor/GlWindow.h"
#include "editor/Ui/Picker.h"
#include "support/Allocations.h"

/* The lists of resource pickers with real thumbnails, which need OpenGL. */

namespace QuorvaneEngine {
namespace {

using Containers::StringView;
using Test::Allocations;
using Test::GlWindow;
using Test::GuiTest;
using Test::Picker;

/** A picture in the list: where it is, and the column of its cell. */
struct Picture {
    ImVec2 min;
    ImVec2 max;
    int column;
};

class UiResourcePictures: public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(window.isReady()) << GlWindow::reason();
        thumbnails = std::make_unique<ThumbnailManager>();
        picker.data.thumbnails = thumbnails.get();
        // In columns 0 to 5 of the first row.
        for(const char* const name: {"1", "2", "m1", "m2", "ma1", "ma2"}) thumbnails->thumbnailPos(name);
    }

    /** The pictures that the open list draws. */
    std::vector<Picture> pictures() {
        std::vector<Picture> found;
        const ImDrawList& list = *Picker::region()->DrawList;
        for(const ImDrawCmd& command: list.CmdBuffer) {
            if(reinterpret_cast<const void*>(command.TexRef._TexID) != &thumbnails->atlasSlice(0)) continue;
            for(unsigned i = 0; i != command.ElemCount; i += 6) {
                const ImDrawVert& first =
                    list.VtxBuffer[int(command.VtxOffset) + list.IdxBuffer[int(command.IdxOffset + i)]];
                const ImDrawVert& last =
                    list.VtxBuffer[int(command.VtxOffset) + list.IdxBuffer[int(command.IdxOffset + i) + 2]];
                found.push_back({first.pos, last.pos, int(first.uv.x * 32.0f + 0.5f)});
            }
        }
        return found;
    }

    std::vector<int> columns() {
        std::vector<int> columns;
        for(const Picture& picture: pictures()) columns.push_back(picture.column);
        return columns;
    }

    bool list(const std::string& json, StringView type, const GuiTest::Script& script) {
        picker.type = type;
        picker.open(json);
        return picker.run([&](ImGuiTestContext& user) {
            Picker::openList(user);
            user.MouseMoveToVoid();
            user.Yield(2);
            script(user);
            user.KeyPress(ImGuiKey_Escape);
        });
    }

    using Columns = std::vector<int>;

    GlWindow window;
    Picker picker;
    std::unique_ptr<ThumbnailManager> thumbnails;
};

constexpr const char* Meshes = R"({"value":null,"meshes":{"a":{"name":"A"},"b":{"name":"B"},"c":{"name":"C"}}})";

TEST_F(UiResourcePictures, AMeshHasThePictureOfItsIndex) {
    picker.data.meshIndices.assign(Containers::arrayView<const StringView>({"b", "a"}));
    EXPECT_TRUE(list(Meshes, "meshes", [this](ImGuiTestContext&) { IM_CHECK(columns() == (Columns{3, 2})); }));
}

TEST_F(UiResourcePictures, AMaterialHasThePictureOfItsIndex) {
    picker.data.materialIndices.assign(Containers::arrayView<const StringView>({"b", "a"}));
    EXPECT_TRUE(list(
        R"({"value":null,"materials":{"a":{"name":"A"},"b":{"name":"B"}}})", "materials", [this](ImGuiTestContext&) {
            IM_CHECK(columns() == (Columns{5, 4}));
        }));
}

TEST_F(UiResourcePictures, ATextureHasThePictureOfItsImage) {
    picker.data.imageIndices.assign(Containers::arrayView<const StringView>({"i", "j", "a"}));
    EXPECT_TRUE(
        list(R"({"value":null,"textures":{"a":{"name":"A","image":"j"},"b":{"name":"B","image":"i"},"c":{"name":"C"},
            "d":{"name":"D","image":5},"e":7}})",
            "textures", [this](ImGuiTestContext&) {
                IM_CHECK(columns() == (Columns{1, 0}));
            }));
}

TEST_F(UiResourcePictures, ATextureWithoutAnImageHasThePictureOfIndexZero) {
    thumbnails->thumbnailPos("0");
    picker.data.imageIndices.assign(Containers::arrayView<const StringView>({"a", "b"}));
    EXPECT_TRUE(list(R"({"value":null,"textures":{"a":{"name":"A"},"b":{"name":"B","image":"b"},
            "c":{"name":"C","image":5},"d":7}})",
        "textures", [this](ImGuiTestContext&) {
            IM_CHECK(columns() == (Columns{6, 1, 6, 6}));
        }));
}

TEST_F(UiResourcePictures, TexturesOfOneImageHaveOnePicture) {
    picker.data.imageIndices.assign(Containers::arrayView<const StringView>({"i", "j"}));
    EXPECT_TRUE(list(R"({"value":null,"textures":{"a":{"name":"A","image":"j"},"b":{"name":"B","image":"j"}}})",
        "textures", [this](ImGuiTestContext&) {
            IM_CHECK(columns() == (Columns{1, 1}));
        }));
}

TEST_F(UiResourcePictures, ResourcesOfOneNameHaveEachItsOwnPicture) {
    picker.data.meshIndices.assign(Containers::arrayView<const StringView>({"a", "b"}));
    EXPECT_TRUE(list(R"({"value":null,"meshes":{"a":{"name":"Chair"},"b":{"name":"Chair"}}})", "meshes",
        [this](ImGuiTestContext& user) {
            IM_CHECK(columns() == (Columns{2, 3}));
            user.ItemClick("**/##b");
            user.Yield(3);
        }));
    EXPECT_EQ(picker.value(), R"("b")");
}

TEST_F(UiResourcePictures, OthersHaveNone) {
    // Whatever it was taken for, there would be a picture.
    for(ResourceIndexMap* const indices:
        {&picker.data.imageIndices, &picker.data.materialIndices, &picker.data.meshIndices})
        indices->assign(Containers::arrayView<const StringView>({"a", "b"}));
    for(const char* const other: {"images", "shaders", "objects", "animations", "skins", "pipelines", "fonts"}) {
        EXPECT_TRUE(list(std::string{R"({"value":null,")"} + other + R"(":{"a":{"name":"A"},"b":{"name":"B"}}})", other,
            [&](ImGuiTestContext&) {
                IM_CHECK(picker.shows("B"));
                IM_CHECK(columns().empty());
            }));
    }
}

TEST_F(UiResourcePictures, AnUnknownIdGetsIndexZero) {
    thumbnails->thumbnailPos("m0");
    EXPECT_TRUE(list(Meshes, "meshes", [this](ImGuiTestContext&) { IM_CHECK(columns() == (Columns{6, 6, 6})); }));
    EXPECT_EQ(picker.data.meshIndices.size(), 3u);
}

TEST_F(UiResourcePictures, WithoutThumbnailsThereAreRowsOfTheSameHeight) {
    picker.data.thumbnails = nullptr;
    for(EditorData* const known: {&picker.data, static_cast<EditorData*>(nullptr)}) {
        picker.ui.editorData = known;
        EXPECT_TRUE(list(Meshes, "meshes", [this](ImGuiTestContext&) {
            IM_CHECK(columns().empty());
            IM_CHECK(picker.shows("C"));
            IM_CHECK_LE(ImAbs(Picker::region()->ContentSize.y - (ImGui::GetTextLineHeight() + 3.0f * 66.0f)), 1.0f);
        }));
    }
}

TEST_F(UiResourcePictures, PicturesFillTheirRowsAndNamesStandBesideThem) {
    picker.data.meshIndices.assign(Containers::arrayView<const StringView>({"a", "b"}));
    for(const float scale: {1.0f, 1.25f, 2.0f}) {
        ImGui::GetStyle().FontScaleMain = scale;
        EXPECT_TRUE(list(Meshes, "meshes", [&](ImGuiTestContext& user) {
            const std::vector<Picture> shown = pictures();
            IM_CHECK_EQ(shown.size(), std::size_t{2});
            const float size = ImTrunc(64.0f * scale);
            for(std::size_t i = 0; i != 2; ++i) {
                const ImRect row = user.ItemInfo(i ? "**/##b" : "**/##a").RectFull;
                IM_CHECK_EQ(shown[i].max.x - shown[i].min.x, size);
                IM_CHECK_EQ(shown[i].max.y - shown[i].min.y, size);
                IM_CHECK_GE(shown[i].min.y, row.Min.y);
                IM_CHECK_LE(shown[i].max.y, row.Max.y);
            }
            // All of them stand in one column, and so do all names, also that of a mesh without a picture.
            IM_CHECK_EQ(shown[0].min.x, shown[1].min.x);
            const ImDrawList& drawn = *Picker::region()->DrawList;
            std::vector<float> lefts;
            for(const ImDrawCmd& command: drawn.CmdBuffer) {
                if(reinterpret_cast<const void*>(command.TexRef._TexID) == &thumbnails->atlasSlice(0)) continue;
                for(unsigned i = 0; i < command.ElemCount; i += 6)
                    lefts.push_back(
                        drawn.VtxBuffer[int(command.VtxOffset) + drawn.IdxBuffer[int(command.IdxOffset + i)]].pos.x);
            }
            int beside = 0;
            for(const float left: lefts) beside += left >= shown[0].max.x && left < shown[0].max.x + 20.0f * scale;
            IM_CHECK_GE(beside, 3);
        }));
    }
}

TEST_F(UiResourcePictures, TheScrollRangeFitsWithPictures) {
    std::string json = R"({"value":null,"meshes":{)";
    for(int i = 0; i != 300; ++i) json += (i ? ",\"k" : "\"k") + std::to_string(i) + R"(":{"name":"n"})";
    json += "}}";
    thumbnails->thumbnailPos("m0");
    for(const float scale: {1.0f, 1.25f, 2.0f}) {
        ImGui::GetStyle().FontScaleMain = scale;
        EXPECT_TRUE(list(json, "meshes", [&](ImGuiTestContext& user) {
            const float height = ImGui::GetTextLineHeight() + 300.0f * (ImTrunc(64.0f * scale) + ImTrunc(2.0f * scale));
            for(const float share: {0.0f, 0.5f, 1.0f}) {
                ImGui::SetScrollY(Picker::region(), share * Picker::region()->ScrollMax.y);
                user.Yield(3);
                IM_CHECK_LE(ImAbs(Picker::region()->ContentSize.y - height), 0.5f);
            }
        }));
    }
}

TEST_F(UiResourcePictures, AClickOnAPictureChoosesItsRow) {
    picker.data.meshIndices.assign(Containers::arrayView<const StringView>({"a", "b"}));
    EXPECT_TRUE(list(Meshes, "meshes", [&](ImGuiTestContext& user) {
        const Picture second = pictures()[1];
        user.MouseMoveToPos({second.min.x + 30.0f, second.min.y + 30.0f});
        user.MouseClick();
        user.Yield(3);
    }));
    EXPECT_EQ(picker.value(), R"("b")");
}

TEST_F(UiResourcePictures, AnIdleFrameAllocatesNothing) {
    picker.data.meshIndices.assign(Containers::arrayView<const StringView>({"a", "b"}));
    picker.type = "meshes";
    picker.open(Meshes);
    std::uint64_t count = 1;
    EXPECT_TRUE(picker.gui.run(
        "idle",
        [&] {
            const WindowGuard window{ImGui::Begin("Window")};
            const Allocations allocations;
            picker.ui.selectResource("value", picker.type, false);
            count = allocations.count();
        },
        [&](ImGuiTestContext& user) {
            Picker::openList(user);
            user.Yield(10);
            IM_CHECK_EQ(count, std::uint64_t{0});
        }));
}

}
}
