#pragma once

#include <gtest/gtest.h>
#include <imgui.h>

#include "ImGuiGuards.h"
#include "Ui/Ui.h"
#include "support/GuiTest.h"

namespace QuorvaneEngine::Test {

/** Widgets that are bound to nothing, in a window of a known size. */
class UiBasic: public testing::Test {
protected:
    static constexpr float SomeWidth = 400.0f;

    /** Draws a window of a known size for some frames. */
    template <class F> void inWindow(F&& what, int frames = 2) {
        gui.frames([&] { draw(what); }, frames);
    }

    template <class F> static void draw(F&& what) {
        ImGui::SetNextWindowSize({SomeWidth, 300.0f});
        const WindowGuard window{ImGui::Begin("Window")};
        what();
    }

    GuiTest gui;
};

}
