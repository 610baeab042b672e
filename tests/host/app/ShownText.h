#pragma once

#include <string>

#include "support/GuiTest.h"

namespace QuorvaneEngine::Test {

/** All text that a GUI shows in a frame, with line ends between rows, and in windows that scroll also what does not show. */
inline std::string shownText(GuiTest& gui, const GuiTest::Gui& draw) {
    std::string text;
    gui.frames(
        [&] {
            ImGui::LogToBuffer();
            draw();
            text = ImGui::GetCurrentContext()->LogBuffer.c_str();
            ImGui::LogFinish();
        },
        2);
    return text;
}

}
