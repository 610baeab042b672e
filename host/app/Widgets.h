#pragma once

#include <Corrade/Containers/StringView.h>
#include <imgui.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine::Widgets {

/** What is drawn meanwhile is one item, wrapped at a width in pixels. */
class BlockScope {
public:
    explicit BlockScope(float width) {
        ImGui::BeginGroup();
        ImGui::PushTextWrapPos(ImGui::GetCursorPosX() + width);
    }
    ~BlockScope() {
        ImGui::PopTextWrapPos();
        ImGui::EndGroup();
    }
    BlockScope(const BlockScope&) = delete;
    BlockScope& operator=(const BlockScope&) = delete;
};

/** Pixels of a distance that is @p pixels at scale 1. */
float scaled(float pixels);

/** Text as it is. */
void text(Containers::StringView text);

/** Text as it is, in a colour that stands back. */
void paleText(Containers::StringView text);

/** An icon and a line of larger text, with some space below. */
void heading(const char* icon, const char* text);

/** Moves the cursor to where a block of this size, in pixels, begins if it stands in the middle of what is left of the window,
    slightly above in the vertical. */
void centre(float width, float height);

/** A button that stands out: the one that Enter would press. */
bool primaryButton(const char* label);

}
