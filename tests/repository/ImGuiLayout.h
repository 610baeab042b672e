#pragma once

#include <cstddef>

#include <imgui.h>
#include <imgui_internal.h>

/** A size or an offset of Dear ImGui's data, as the file sees it that includes this header. */
struct ImGuiLayout {
    const char* name;
    std::size_t value;
};

constexpr int ImGuiLayoutCapacity = 32;

/* Each file that includes this has its own copy: that is the point. */
namespace {

/** Fills the array from its start and returns how many there are. */
[[maybe_unused]] int imGuiLayouts(ImGuiLayout (&layouts)[ImGuiLayoutCapacity]) {
    int count = 0;
    const auto add = [&](const char* name, std::size_t value) { layouts[count++] = {name, value}; };
#define ADD_SIZE(type) add(#type, sizeof(type))
#define ADD_OFFSET(type, member) add(#type "::" #member, offsetof(type, member))
    ADD_SIZE(ImDrawIdx);
    ADD_SIZE(ImWchar);
    ADD_SIZE(ImDrawVert);
    ADD_SIZE(ImDrawList);
    ADD_SIZE(ImFont);
    ADD_SIZE(ImGuiIO);
    ADD_SIZE(ImGuiStyle);
    ADD_SIZE(ImGuiContext);
    ADD_SIZE(ImGuiWindow);
    ADD_SIZE(ImGuiTable);
    ADD_SIZE(ImGuiListClipper);
    ADD_SIZE(ImGuiInputTextState);
    ADD_SIZE(ImGuiLastItemData);
    ADD_OFFSET(ImGuiContext, CurrentWindow);
    ADD_OFFSET(ImGuiContext, LastItemData);
    ADD_OFFSET(ImGuiContext, TestEngine);
    ADD_OFFSET(ImGuiWindow, DC);
#undef ADD_OFFSET
#undef ADD_SIZE
    return count;
}

}

/** The same as a file sees it that is compiled against the plain flavour. */
int plainFlavourLayouts(ImGuiLayout (&layouts)[ImGuiLayoutCapacity]);

/** Whether the loaded library finds that file's layouts right. */
bool plainFlavourPassesVersionCheck();
