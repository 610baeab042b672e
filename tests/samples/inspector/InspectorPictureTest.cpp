#include <cstdlib>
#include <filesystem>
#include <string>

#include <Corrade/Containers/Pointer.h>
#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "InspectorDesk.h"
#include "app/DesktopWindow.h"
#include "app/Fonts.h"
#include "app/Renderer.h"
#include "app/Theme.h"
#include "app/Thumbnails.h"
#include "end_to_end/Picture.h"

namespace QuorvaneEngine::Test {
namespace {

constexpr Int Width = 1280;
constexpr Int Height = 860;

/** The example view in a window as the editor has it, with fonts, colours and pictures; a mouse moves and clicks. With a
    folder in the environment's QUORVANE_PICTURES the pictures are written there, and show a project folder without a number: with
    TMPDIR=/games, docs/pictures gets its own so. */
class InspectorPicture: public testing::Test {
protected:
    InspectorPicture() {
        DesktopWindow::Options options;
        options.width = Width;
        options.height = Height;
        options.visible = false;
        if(!window.open("Quorvane", options)) return;
        ImGui::CreateContext();
        ImGui::GetIO().IniFilename = nullptr;
        ImGui::GetIO().ConfigFlags |= ImGuiConfigFlags_DockingEnable;
        renderer.emplace(window);
        Theme::apply(1.0f);
        Fonts::load(QUORVANE_ICONS);
        desk.emplace(std::getenv("QUORVANE_PICTURES") ? "lighthouse" : "");
        thumbnails.emplace(desk->session);
    }

    ~InspectorPicture() override {
        thumbnails = nullptr;
        desk = nullptr;
        renderer = nullptr;
        if(ImGui::GetCurrentContext()) ImGui::DestroyContext();
    }

    void frames(const int count = 1) {
        for(int i = 0; i != count; ++i) {
            thumbnails->update();
            renderer->beginFrame();
            ImGui::GetIO().AddMousePosEvent(mouse.x, mouse.y);
            ImGui::NewFrame();
            desk->draw();
            ImGui::Render();
            renderer->render();
        }
    }

    void click(const ImVec2& where) {
        mouse = where;
        frames(2);
        ImGui::GetIO().AddMouseButtonEvent(0, true);
        frames();
        ImGui::GetIO().AddMouseButtonEvent(0, false);
        frames(3);
    }

    /** Writes what was rendered last, and reads it. */
    Picture take(const char* const name) {
        const char* const wanted = std::getenv("QUORVANE_PICTURES");
        const std::string path = ((wanted ? std::filesystem::path{wanted} : desk->game.folder) / name).string();
        EXPECT_TRUE(renderer->writeScreenshot(path.c_str()));
        return Picture{path};
    }

    DesktopWindow window;
    Containers::Pointer<Renderer> renderer;
    Containers::Pointer<InspectorDesk> desk;
    Containers::Pointer<Thumbnails> thumbnails;
    ImVec2 mouse{1.0f, 1.0f};
};

TEST_F(InspectorPicture, AnObjectIsEditedWithPicturesInAnOpenPicker) {
    ASSERT_TRUE(renderer && renderer->isReady());
    frames(60);
    ImGuiWindow* const tree = region("##tree");
    ASSERT_TRUE(tree);
    // The rows of the tree are of one height: that of the lantern is the 19th.
    const float row = ImGui::GetTextLineHeight() + 6.0f;
    click({tree->Pos.x + 120.0f, tree->Pos.y + 18.5f * row});
    ImGuiWindow* const rows = region("##rows");
    ASSERT_TRUE(rows);
    const Picture without = take("inspector.png");
    // Behind kind and mesh comes the material.
    const float line = ImGui::GetFrameHeight() + ImGui::GetStyle().ItemSpacing.y;
    click({rows->Pos.x + rows->Size.x * 0.6f, rows->Pos.y + 2.5f * line});
    mouse.y += 4.6f * 66.0f;
    frames(60);

    ASSERT_FALSE(ImGui::GetCurrentContext()->OpenPopupStack.empty());
    const Picture with = take("inspector-picker.png");
    EXPECT_EQ(with.width, unsigned(Width));
    EXPECT_GT(with.colors(), 1000u);
    EXPECT_GT(with.difference(without), 0.2);
}

}
}
