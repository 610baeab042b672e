#include "app/HistoryPanel.h"

#include <utility>

#include <Corrade/Containers/StringView.h>
#include <imgui.h>

#include <icons_font_awesome_6.h>

#include "ImGuiGuards.h"
#include "app/ChangeSteps.h"
#include "app/DockLayout.h"
#include "app/Widgets.h"

namespace QuorvaneEngine {

Int HistoryPanel::draw(ChangeSteps& steps, const bool isSettled, bool* const open) {
    ImGui::SetNextWindowSize({Widgets::scaled(420.0f), Widgets::scaled(300.0f)}, ImGuiCond_FirstUseEver);
    const WindowGuard window{ImGui::Begin(DockLayout::History, open)};
    if(!window) return Nowhere;
    const DisabledGuard disabled{!isSettled};
    const std::size_t present = steps.present();
    const bool hasMoved = present != _seen;
    ImGuiListClipper clipper;
    // The first row is the state before all steps.
    clipper.Begin(int(steps.size()) + 1, ImGui::GetTextLineHeightWithSpacing());
    if(hasMoved) clipper.IncludeItemByIndex(int(present));
    while(clipper.Step())
        for(int row = clipper.DisplayStart; row != clipper.DisplayEnd; ++row) drawRow(steps, std::size_t(row));
    _seen = present;
    return std::exchange(_clicked, Nowhere);
}

void HistoryPanel::drawRow(ChangeSteps& steps, const std::size_t row) {
    const IdGuard id{int(row)};
    const bool isPresent = row == steps.present();
    if(ImGui::Selectable("##step", isPresent)) _clicked = Int(row);
    if(isPresent && row != _seen && !ImGui::IsItemVisible()) ImGui::SetScrollHereY();
    ImGui::SameLine(0.0f, 0.0f);
    if(isPresent) ImGui::TextUnformatted(ICON_FA_CARET_RIGHT);
    ImGui::SameLine(Widgets::scaled(24.0f));
    const Containers::StringView name =
        row ? steps.name(row - 1) : Containers::StringView{"The project as it was opened"};
    if(row > steps.present()) Widgets::paleText(name);
    else Widgets::text(name);
}

}
