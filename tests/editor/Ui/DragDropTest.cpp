#include <string>
#include <utility>

#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "ImGuiGuards.h"
#include "Ui/Ui.h"
#include "support/Abort.h"
#include "support/GuiTest.h"
#include "support/ShownText.h"

namespace QuorvaneEngine {
namespace {

using Containers::StringView;
using Test::GuiTest;
using Test::ShownText;

constexpr std::pair<const char*, const char*> PayloadTypes[]{
    {"meshes", "DND_MESH"},
    {"textures", "DND_TEXTURE"},
    {"shaders", "DND_SHADER"},
    {"materials", "DND_MATERIAL"},
    {"images", "DND_IMAGE"},
    {"animations", "DND_ANIMATION"},
    {"skins", "DND_SKIN"},
    {"pipelines", "DND_PIPELINE"},
    {"objects", "DND_OBJECT"},
    {"fonts", "DND_FONT"},
};

TEST(UiDragDropType, EachCollectionHasItsPayload) {
    for(const auto& [collection, payload]: PayloadTypes) {
        const StringView type = Ui::resourceToDragDropType(collection);
        EXPECT_EQ(type, payload);
        EXPECT_TRUE(type.flags() & Containers::StringViewFlag::NullTerminated);
    }
}

TEST(UiDragDropType, AnyOtherCollectionIsABrokenPrecondition) {
    QUORVANE_EXPECT_ABORT(
        Ui::resourceToDragDropType("sounds"), "Ui::acceptDragDropResources(): resource type sounds unsupported.");
    QUORVANE_EXPECT_ABORT(
        Ui::resourceToDragDropType("image"), "Ui::acceptDragDropResources(): resource type image unsupported.");
}

/** A window with a button to drag from and one to drop on. */
struct Scene {
    void source() {
        ImGui::Button("source");
        if(Ui::resourceDragDropSource(sourceType, {id.data(), id.size()}, label)) {
            ++draggedFrames;
            const ImGuiPayload* const payload = ImGui::GetDragDropPayload();
            payloadSize = payload ? payload->DataSize : -1;
        }
    }

    void target() {
        ImGui::Button("target");
        StringView view = "untouched";
        if(ui.acceptDragDropResources(targetType, view)) {
            ++drops;
            dropped = std::string{view.data() ? view.data() : "", view.size()};
        } else EXPECT_EQ(view, "untouched");
    }

    void draw() {
        ImGui::SetNextWindowSize({400.0f, 300.0f});
        const WindowGuard window{ImGui::Begin("Window")};
        source();
        target();
    }

    bool drag() {
        return gui.run(
            "drag", [this] { draw(); },
            [](ImGuiTestContext& user) { user.ItemDragAndDrop("//Window/source", "//Window/target"); });
    }

    GuiTest gui;
    Ui ui;
    std::string id = "rock";
    StringView label = StringView{"the label and more"}.prefix(9);
    StringView sourceType = "textures";
    StringView targetType = "textures";
    int draggedFrames = 0;
    int payloadSize = -1;
    int drops = 0;
    std::string dropped;
};

class UiDragDrop: public testing::Test, protected Scene {};

TEST_F(UiDragDrop, AResourceIsDroppedOnATargetOfItsType) {
    EXPECT_TRUE(drag());
    EXPECT_EQ(drops, 1);
    EXPECT_EQ(dropped, "rock");
}

TEST_F(UiDragDrop, EveryTypeIsTakenByItsOwnTargetAlone) {
    for(const auto& [from, payload]: PayloadTypes) {
        sourceType = from;
        for(const auto& [to, other]: PayloadTypes) {
            // One after another is enough: each type and its neighbours.
            if(from != to && to != StringView{"materials"} && to != StringView{"fonts"}) continue;
            drops = 0;
            targetType = to;
            EXPECT_TRUE(drag());
            EXPECT_EQ(drops, from == to ? 1 : 0) << from << " on " << to;
        }
    }
}

TEST_F(UiDragDrop, ThePayloadIsTheIdWithoutAZeroByteBehindIt) {
    EXPECT_TRUE(drag());
    EXPECT_EQ(payloadSize, 4);
    EXPECT_GT(draggedFrames, 0);
}

TEST_F(UiDragDrop, AnIdMayHoldAnyByte) {
    id = std::string{"a/b~c##d%s\0e", 12};
    EXPECT_TRUE(drag());
    EXPECT_EQ(dropped, id);
}

TEST_F(UiDragDrop, AnIdOfAnyLengthIsReadableBehindTheTarget) {
    for(const std::size_t size: {16u, 17u, 36u, 5000u}) {
        id = std::string(size, 'x');
        EXPECT_TRUE(drag());
        EXPECT_EQ(dropped, id);
    }
}

TEST_F(UiDragDrop, AnEmptyIdIsAPayloadWithoutBytes) {
    id = "";
    dropped = "something";
    EXPECT_TRUE(drag());
    EXPECT_EQ(payloadSize, 0);
    EXPECT_EQ(drops, 1);
    EXPECT_EQ(dropped, "");
}

TEST_F(UiDragDrop, TheLabelIsShownBesideTheMouseAsItStands) {
    const struct {
        StringView label;
        const char* shown;
    } cases[]{
        {StringView{"the label and more"}.prefix(9), "the label"},
        {"100%s %n##hidden", "100%s %n##hidden"},
    };
    for(const auto& each: cases) {
        label = each.label;
        std::string shown;
        EXPECT_TRUE(gui.run(
            "drag",
            [&] {
                const ShownText text;
                draw();
                shown = text.text();
            },
            [&](ImGuiTestContext& user) {
                user.MouseMove("//Window/source");
                user.MouseDown();
                user.MouseMove("//Window/target");
                user.Yield(2);
                IM_CHECK(shown.find(each.shown) != std::string::npos);
                IM_CHECK(shown.find("and more") == std::string::npos);
                user.MouseUp();
                user.Yield(2);
                IM_CHECK(shown.find(each.shown) == std::string::npos);
            }));
    }
}

TEST_F(UiDragDrop, NothingIsInProgressUntilTheMouseMoves) {
    EXPECT_TRUE(gui.run(
        "click", [this] { draw(); }, [](ImGuiTestContext& user) { user.ItemClick("//Window/source"); }));
    EXPECT_EQ(draggedFrames, 0);
    EXPECT_EQ(drops, 0);
}

/** With a GUI of its own, whose user acts on a thread that a copy of the process would not have. */
void dragBetween(const StringView from, const StringView to) {
    Scene scene;
    scene.sourceType = from;
    scene.targetType = to;
    scene.drag();
}

TEST(UiDragDropType, AResourceThatCannotBeDraggedIsABrokenPrecondition) {
    QUORVANE_EXPECT_ABORT(
        dragBetween("sounds", "textures"), "Ui::acceptDragDropResources(): resource type sounds unsupported.");
}

TEST(UiDragDropType, ATargetOfAnUnknownTypeIsABrokenPrecondition) {
    QUORVANE_EXPECT_ABORT(
        dragBetween("textures", "sounds"), "Ui::acceptDragDropResources(): resource type sounds unsupported.");
}

TEST_F(UiDragDrop, OtherPayloadsAreNotTaken) {
    const auto foreign = [&] {
        ImGui::SetNextWindowSize({400.0f, 300.0f});
        const WindowGuard window{ImGui::Begin("Window")};
        ImGui::Button("source");
        if(ImGui::BeginDragDropSource()) {
            ImGui::SetDragDropPayload("OTHER", nullptr, 0);
            ImGui::EndDragDropSource();
        }
        target();
    };
    EXPECT_TRUE(gui.run(
        "drag", foreign, [](ImGuiTestContext& user) { user.ItemDragAndDrop("//Window/source", "//Window/target"); }));
    EXPECT_EQ(drops, 0);
}

// A window as a target

class UiDragDropWindow: public UiDragDrop {
protected:
    void drawWindows() {
        ImGui::SetNextWindowPos({0.0f, 0.0f});
        ImGui::SetNextWindowSize({200.0f, 100.0f});
        {
            const WindowGuard window{ImGui::Begin("Source", nullptr, ImGuiWindowFlags_NoMove)};
            source();
        }
        ImGui::SetNextWindowPos({300.0f, 200.0f});
        ImGui::SetNextWindowSize(targetSize);
        const WindowGuard window{ImGui::Begin("Target", nullptr, flags)};
        if(!Ui::beginDragDropTargetWindow()) return;
        if(const ImGuiPayload* const payload = ImGui::AcceptDragDropPayload("DND_TEXTURE")) {
            dropped = std::string{static_cast<const char*>(payload->Data), std::size_t(payload->DataSize)};
            ++drops;
            EXPECT_FALSE(Ui::beginDragDropTargetWindow()) << "while it is delivered";
        }
        ImGui::EndDragDropTarget();
    }

    /** Drops at a place from the corner of the window's inner rectangle. */
    bool dropAt(const ImVec2& position) {
        return gui.run(
            "drop", [this] { drawWindows(); },
            [&](ImGuiTestContext& user) {
                user.MouseMove("//Source/source");
                user.MouseDown();
                user.MouseMoveToPos(position);
                user.Yield(2);
                user.MouseUp();
                user.Yield(2);
            });
    }

    ImGuiWindowFlags flags = ImGuiWindowFlags_NoTitleBar | ImGuiWindowFlags_NoMove | ImGuiWindowFlags_NoResize;
    ImVec2 targetSize{200.0f, 100.0f};
};

TEST_F(UiDragDropWindow, AWholeWindowTakesDrops) {
    EXPECT_TRUE(dropAt({400.0f, 250.0f}));
    EXPECT_EQ(drops, 1);
    EXPECT_EQ(dropped, "rock");
}

TEST_F(UiDragDropWindow, AMarginOfEightPixelsTakesNone) {
    for(const float scale: {1.0f, 2.0f}) {
        ImGui::GetStyle().FontScaleMain = scale;
        const float margin = 8.0f * scale;
        for(const ImVec2 outside: {ImVec2{300.0f + margin - 1.0f, 250.0f}, ImVec2{500.0f - margin, 250.0f},
                ImVec2{400.0f, 200.0f + margin - 1.0f}, ImVec2{400.0f, 300.0f - margin}}) {
            drops = 0;
            EXPECT_TRUE(dropAt(outside));
            EXPECT_EQ(drops, 0) << outside.x << " " << outside.y;
        }
        for(const ImVec2 inside: {ImVec2{300.0f + margin, 250.0f}, ImVec2{500.0f - margin - 1.0f, 250.0f},
                ImVec2{400.0f, 200.0f + margin}, ImVec2{400.0f, 300.0f - margin - 1.0f}}) {
            drops = 0;
            EXPECT_TRUE(dropAt(inside));
            EXPECT_EQ(drops, 1) << inside.x << " " << inside.y;
        }
    }
}

TEST_F(UiDragDropWindow, TheMarginLiesInsideTitleAndScrollBar) {
    flags = ImGuiWindowFlags_NoMove | ImGuiWindowFlags_NoResize | ImGuiWindowFlags_AlwaysVerticalScrollbar;
    gui.frames([this] { drawWindows(); }, 3);
    const ImRect inner = ImGui::FindWindowByName("Target")->InnerRect;
    ASSERT_GE(inner.Min.y, 210.0f);
    ASSERT_LE(inner.Max.x, 490.0f);
    const struct {
        ImVec2 position;
        int drops;
    } cases[]{
        {{400.0f, inner.Min.y + 7.0f}, 0},
        {{400.0f, inner.Min.y + 8.0f}, 1},
        {{inner.Max.x - 8.0f, 250.0f}, 0},
        {{inner.Max.x - 9.0f, 250.0f}, 1},
    };
    for(const auto& [position, expected]: cases) {
        drops = 0;
        EXPECT_TRUE(dropAt(position));
        EXPECT_EQ(drops, expected) << position.x << " " << position.y;
    }
}

TEST_F(UiDragDropWindow, AWindowOfMarginsAloneTakesNone) {
    ImGui::GetStyle().WindowMinSize = {4.0f, 4.0f};
    targetSize = {12.0f, 12.0f};
    EXPECT_TRUE(dropAt({306.0f, 206.0f}));
    EXPECT_EQ(drops, 0);
}

}
}
