#include "app/ProgressBox.h"

#include <algorithm>

#include <imgui.h>

#include "ImGuiGuards.h"
#include "app/Widgets.h"
#include "localization/Progress.h"

namespace QuorvaneEngine::ProgressBox {

bool draw(const Texts& texts, const Progress& progress) {
    const float width = Widgets::scaled(Width);
    {
        const Widgets::BlockScope block{width};
        Widgets::heading(texts.icon, texts.heading);
        if(!texts.subject.isEmpty()) Widgets::paleText(texts.subject);
        if(!texts.note.isEmpty()) Widgets::text(texts.note);
        ImGui::Spacing();
    }
    const UnsignedInt total = progress.total;
    const UnsignedInt done = std::min<UnsignedInt>(progress.done, total);
    {
        StyleGuard style;
        style.color(ImGuiCol_PlotHistogram, ImGui::GetStyleColorVec4(ImGuiCol_SliderGrab));
        // A bar that knows no end walks to and fro.
        ImGui::ProgressBar(total ? float(done) / float(total) : -float(ImGui::GetTime()), {width, 0.0f}, "");
    }
    ImGui::Spacing();
    const bool isCancelled = progress.isCancelled;
    const DisabledGuard disabled{isCancelled};
    const bool isPressed = ImGui::Button(isCancelled ? "Cancelling...###Cancel" : "Cancel###Cancel");
    ImGui::SameLine();
    if(total) ImGui::TextDisabled("%u of %u", done, total);
    return !isCancelled && (isPressed || ImGui::Shortcut(ImGuiKey_Escape));
}

}
