#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <imgui.h>

#include "ImGuiGuards.h"
#include "ThumbnailPictures.h"
#include "support/Allocations.h"
#include "support/GuiTest.h"

namespace QuorvaneEngine::Test {
namespace {

/** What the last frame drew with a texture of the atlas. */
struct Drawn {
    const void* texture = nullptr;
    int commands = 0;
    std::vector<ImDrawVert> vertices;
};

class ThumbnailDrawing: public ThumbnailManagerTest {
protected:
    /** Draws a window of 400 x 300 pixels at (20, 10), with an inner size of its own, and returns what was drawn of @p atlas . */
    template <class F> Drawn draw(ThumbnailManager& manager, F&& what, int flags = 0, int frames = 3) {
        gui.frames(
            [&] {
                ImGui::SetNextWindowPos({20.0f, 10.0f});
                ImGui::SetNextWindowSize({400.0f, 300.0f});
                const WindowGuard guard{ImGui::Begin("Window", nullptr, flags)};
                what();
            },
            frames);
        Drawn drawn;
        for(const ImDrawList* const list: ImGui::GetDrawData()->CmdLists)
            for(const ImDrawCmd& command: list->CmdBuffer) {
                if(command.TexRef._TexData) continue;
                const auto* const texture = reinterpret_cast<const void*>(command.TexRef._TexID);
                if(texture != &manager.atlasSlice(0) && texture != &manager.atlasSlice(1)) continue;
                drawn.texture = texture;
                ++drawn.commands;
                for(unsigned i = 0; i != command.ElemCount; ++i)
                    drawn.vertices.push_back(
                        list->VtxBuffer[int(command.VtxOffset + list->IdxBuffer[int(command.IdxOffset + i)])]);
            }
        return drawn;
    }

    GuiTest gui;
};

TEST_F(ThumbnailDrawing, AThumbnailIsAnItemAtTheCursorWithTheAddressOfItsSlice) {
    ThumbnailManager manager;
    name(manager, 34);
    ImVec2 cursor, min, max, behind;
    const Drawn drawn = draw(manager, [&] {
        ImGui::GetStyle().FrameRounding = 0.0f;
        cursor = ImGui::GetCursorScreenPos();
        EXPECT_TRUE(manager.thumbnail(nameOf(33).c_str(), {60.0f, 40.0f}));
        min = ImGui::GetItemRectMin();
        max = ImGui::GetItemRectMax();
        EXPECT_EQ(ImGui::GetItemID(), 0u);
        behind = ImGui::GetCursorScreenPos();
    });
    EXPECT_EQ(min.x, cursor.x);
    EXPECT_EQ(min.y, cursor.y);
    EXPECT_EQ(max.x, cursor.x + 60.0f);
    EXPECT_EQ(max.y, cursor.y + 40.0f);
    EXPECT_EQ(behind.x, cursor.x);
    EXPECT_EQ(behind.y, cursor.y + 40.0f + ImGui::GetStyle().ItemSpacing.y);

    EXPECT_EQ(drawn.texture, &manager.atlasSlice(0));
    EXPECT_EQ(drawn.commands, 1);
    ASSERT_EQ(drawn.vertices.size(), 6u);
    for(const ImDrawVert& vertex: drawn.vertices) {
        EXPECT_EQ(vertex.col, IM_COL32(255, 255, 255, 255));
        // Column 1, row 1; the upper edge of the item shows the upper edge of the cell, which is the larger V.
        const bool left = vertex.pos.x == cursor.x, upper = vertex.pos.y == cursor.y;
        EXPECT_EQ(vertex.pos.x, left ? cursor.x : cursor.x + 60.0f);
        EXPECT_EQ(vertex.pos.y, upper ? cursor.y : cursor.y + 40.0f);
        EXPECT_EQ(vertex.uv.x, left ? 1.0f / 32.0f : 2.0f / 32.0f);
        EXPECT_EQ(vertex.uv.y, upper ? 2.0f / 32.0f : 1.0f / 32.0f);
    }
}

TEST_F(ThumbnailDrawing, AThumbnailOfAnotherSliceHasItsAddress) {
    ThumbnailManager manager;
    name(manager, 1025);
    manager.atlasSlice(1);
    const Drawn drawn = draw(manager, [&] { EXPECT_TRUE(manager.thumbnail(nameOf(1024).c_str(), {64.0f, 64.0f})); });
    EXPECT_EQ(drawn.texture, &manager.atlasSlice(1));
    EXPECT_EQ(drawn.commands, 1);
}

TEST_F(ThumbnailDrawing, ItsCornersAreAllRoundedAsThoseOfFramesAre) {
    ThumbnailManager manager;
    manager.thumbnailPos("a");
    ImVec2 cursor;
    const Drawn drawn = draw(manager, [&] {
        ImGui::GetStyle().FrameRounding = 12.0f;
        cursor = ImGui::GetCursorScreenPos();
        EXPECT_TRUE(manager.thumbnail("a", {64.0f, 64.0f}));
    });
    ASSERT_GT(drawn.vertices.size(), 6u);
    for(const ImDrawVert& vertex: drawn.vertices) {
        // Edges are smoothed by a fringe of one pixel.
        const float x = std::abs(vertex.pos.x - cursor.x - 32.0f), y = std::abs(vertex.pos.y - cursor.y - 32.0f);
        EXPECT_TRUE(x <= 33.0f && y <= 33.0f) << x << " " << y;
        if(x > 20.0f && y > 20.0f) {
            EXPECT_LE(std::hypot(x - 20.0f, y - 20.0f), 13.0f);
        }
        EXPECT_TRUE(vertex.uv.x >= 0.0f && vertex.uv.x <= 1.0f / 32.0f) << vertex.uv.x;
        EXPECT_TRUE(vertex.uv.y >= 0.0f && vertex.uv.y <= 1.0f / 32.0f) << vertex.uv.y;
    }
}

TEST_F(ThumbnailDrawing, WithoutASizeAThumbnailIsAsLargeAsACell) {
    ThumbnailManager manager;
    manager.thumbnailPos("a");
    draw(manager, [&] {
        EXPECT_TRUE(manager.thumbnail("a"));
        EXPECT_EQ(ImGui::GetItemRectSize().x, 128.0f);
        EXPECT_EQ(ImGui::GetItemRectSize().y, 128.0f);
    });
}

TEST_F(ThumbnailDrawing, AnUnknownNameDrawsNothingAndIsNoItem) {
    ThumbnailManager manager;
    manager.thumbnailPos("a");
    const Drawn drawn = draw(manager, [&] {
        const ImVec2 cursor = ImGui::GetCursorScreenPos();
        EXPECT_FALSE(manager.thumbnail("b", {64.0f, 64.0f}));
        EXPECT_FALSE(manager.thumbnail("b"));
        EXPECT_EQ(ImGui::GetCursorScreenPos().y, cursor.y);
    });
    EXPECT_FALSE(manager.hasThumbnail("b"));
    EXPECT_EQ(drawn.commands, 0);
}

TEST_F(ThumbnailDrawing, ACellInASliceThatIsNotThereYetDrawsNothing) {
    ThumbnailManager manager;
    name(manager, 1025);
    const Drawn drawn = draw(manager, [&] { EXPECT_FALSE(manager.thumbnail(nameOf(1024).c_str(), {64.0f, 64.0f})); });
    EXPECT_EQ(drawn.commands, 0);
}

TEST_F(ThumbnailDrawing, AnswersWithoutDrawingInACollapsedWindow) {
    ThumbnailManager manager;
    manager.thumbnailPos("a");
    const Drawn drawn = draw(manager, [&] {
        ImGui::SetWindowCollapsed(true);
        EXPECT_TRUE(manager.thumbnail("a", {64.0f, 64.0f}));
        EXPECT_FALSE(manager.thumbnail("b", {64.0f, 64.0f}));
    });
    EXPECT_EQ(drawn.commands, 0);
}

TEST_F(ThumbnailDrawing, IsAnItemThatIsNotDrawnWhereTheWindowIsClipped) {
    ThumbnailManager manager;
    manager.thumbnailPos("a");
    const Drawn drawn = draw(manager, [&] {
        ImGui::SetCursorPosY(1000.0f);
        const ImVec2 cursor = ImGui::GetCursorScreenPos();
        EXPECT_TRUE(manager.thumbnail("a", {64.0f, 64.0f}));
        EXPECT_EQ(ImGui::GetCursorScreenPos().y, cursor.y + 64.0f + ImGui::GetStyle().ItemSpacing.y);
    });
    EXPECT_EQ(drawn.commands, 0);
}

TEST_F(ThumbnailDrawing, MarksItsWindowAsWrittenTo) {
    ThumbnailManager manager;
    manager.thumbnailPos("a");
    draw(manager, [&] {
        ImGuiWindow* const current = ImGui::GetCurrentWindowRead();
        current->WriteAccessed = false;
        EXPECT_FALSE(manager.thumbnail("b"));
        EXPECT_FALSE(current->WriteAccessed);
        EXPECT_TRUE(manager.thumbnail("a"));
        EXPECT_TRUE(current->WriteAccessed);
    });
}

TEST_F(ThumbnailDrawing, LinesUpWithWhatFollowsOnTheSameLine) {
    ThumbnailManager manager;
    manager.thumbnailPos("a");
    draw(manager, [&] {
        const ImVec2 cursor = ImGui::GetCursorScreenPos();
        manager.thumbnail("a", {64.0f, 64.0f});
        ImGui::SameLine();
        ImGui::TextUnformatted("text");
        EXPECT_EQ(ImGui::GetItemRectMin().x, cursor.x + 64.0f + ImGui::GetStyle().ItemSpacing.x);
        EXPECT_EQ(ImGui::GetItemRectMin().y, cursor.y);
    });
}

TEST_F(ThumbnailDrawing, ASettledFrameAllocatesNothing) {
    ThumbnailManager manager;
    name(manager, 40);
    std::vector<std::string> names;
    for(int i = 0; i != 40; ++i) names.push_back(nameOf(i));
    std::uint64_t count = 1;
    draw(
        manager,
        [&] {
            const Allocations allocations;
            for(const std::string& each: names) manager.thumbnail({each.data(), each.size()}, {8.0f, 4.0f});
            count = allocations.count();
        },
        0, 5);
    EXPECT_EQ(count, 0u);
}

}
}
