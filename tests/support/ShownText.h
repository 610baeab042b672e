#pragma once

#include <climits>
#include <string>

#include <imgui.h>
#include <imgui_internal.h>

namespace QuorvaneEngine::Test {

/** Reads along what the GUI library shows as text, in all windows, while the object lives: within one frame. Texts are separated by
    blanks and line breaks as the library logs them, controls have braces. */
class ShownText {
public:
    ShownText() { ImGui::LogToBuffer(INT_MAX); }
    ~ShownText() { ImGui::LogFinish(); }

    ShownText(const ShownText&) = delete;
    ShownText& operator=(const ShownText&) = delete;

    std::string text() const { return ImGui::GetCurrentContext()->LogBuffer.c_str(); }

    bool contains(const std::string& part) const { return text().find(part) != std::string::npos; }
};

}
