#include "app/CommandPalette.h"

#include <algorithm>

#include <imgui.h>

#include "ImGuiGuards.h"
#include "QuorvaneEditor/EditorState.h"
#include "app/FuzzyScore.h"
#include "app/Widgets.h"

namespace QuorvaneEngine {

namespace {

constexpr const char* Title = "Command palette";
constexpr std::size_t SearchCapacity = 256;
constexpr float Width = 560.0f;
constexpr float Height = 320.0f;

}

CommandPalette::CommandPalette(): _search{Corrade::ValueInit, SearchCapacity} {}

void CommandPalette::list(EditorState& state, const MainMenu::Available& available) {
    _rows.clear();
    _selected = 0;
    const auto add = [&](std::string text, std::string keys, Command command, UnsignedInt view, bool isAvailable) {
        const Int score = fuzzyScore({text.data(), text.size()}, Containers::StringView{_search.data()});
        if(score != NoFuzzyMatch)
            _rows.push_back(Row{std::move(text), std::move(keys), command, view, isAvailable, score});
    };
    for(const MainMenu::Item& item: MainMenu::items(available))
        add(item.path, item.keys, item.command, 0, item.isAvailable);
    for(UnsignedInt view = 0; view != state.viewCount(); ++view)
        add("View: " + std::string{state.viewTitle(view).data()}, {}, Command::None, view, true);
    std::stable_sort(_rows.begin(), _rows.end(), [](const Row& a, const Row& b) {
        return a.score != b.score ? a.score > b.score : a.isAvailable && !b.isAvailable;
    });
}

void CommandPalette::move() {
    if(_rows.empty()) return;
    const std::size_t count = _rows.size();
    if(ImGui::IsKeyPressed(ImGuiKey_DownArrow)) _selected = (_selected + 1) % count;
    if(ImGui::IsKeyPressed(ImGuiKey_UpArrow)) _selected = (_selected + count - 1) % count;
}

Command CommandPalette::draw(EditorState& state, const MainMenu::Available& available) {
    if(_opens) {
        _search[0] = '\0';
        list(state, available);
        ImGui::OpenPopup(Title);
    }
    const ImGuiViewport& viewport = *ImGui::GetMainViewport();
    ImGui::SetNextWindowPos(
        {viewport.WorkPos.x + viewport.WorkSize.x * 0.5f, viewport.WorkPos.y + Widgets::scaled(40.0f)},
        ImGuiCond_Always, {0.5f, 0.0f});
    ImGui::SetNextWindowSize({std::min(Widgets::scaled(Width), viewport.WorkSize.x), Widgets::scaled(Height)});
    // The arrow keys move the selection while the keyboard stays in the field.
    const PopupGuard popup{ImGui::BeginPopup(Title, ImGuiWindowFlags_NoNavInputs | ImGuiWindowFlags_NoSavedSettings)};
    if(!popup) return Command::None;
    ImGui::SetNextItemWidth(-1.0f);
    if(_opens) ImGui::SetKeyboardFocusHere();
    _opens = false;
    if(ImGui::InputTextWithHint("##search", "Type the name of a command", _search.data(), _search.size()))
        list(state, available);
    if(ImGui::IsKeyPressed(ImGuiKey_Escape)) ImGui::CloseCurrentPopup();
    const std::size_t before = _selected;
    move();
    bool isChosen = ImGui::IsKeyPressed(ImGuiKey_Enter) || ImGui::IsKeyPressed(ImGuiKey_KeypadEnter);
    {
        const ChildGuard child{ImGui::BeginChild("commands", {}, ImGuiChildFlags_None, ImGuiWindowFlags_NoNavInputs)};
        if(_rows.empty()) Widgets::paleText("No command has these letters in its name");
        for(std::size_t row = 0; row != _rows.size(); ++row) isChosen |= drawRow(row, before != _selected);
    }
    if(!isChosen || _selected >= _rows.size() || !_rows[_selected].isAvailable) return Command::None;
    ImGui::CloseCurrentPopup();
    const Row& row = _rows[_selected];
    if(row.command == Command::None) {
        bool& open = state.isViewOpen(row.view);
        open = !open;
    }
    return row.command;
}

bool CommandPalette::drawRow(const std::size_t row, const bool isMoved) {
    const Row& shown = _rows[row];
    const DisabledGuard disabled{!shown.isAvailable};
    const float end = ImGui::GetCursorPosX() + ImGui::GetContentRegionAvail().x;
    const bool isClicked =
        ImGui::Selectable(shown.text.c_str(), row == _selected, ImGuiSelectableFlags_NoAutoClosePopups);
    if(isClicked) _selected = row;
    if(row == _selected && isMoved) ImGui::SetScrollHereY();
    if(!shown.keys.empty()) {
        ImGui::SameLine(end - ImGui::CalcTextSize(shown.keys.c_str()).x);
        Widgets::paleText({shown.keys.data(), shown.keys.size()});
    }
    return isClicked;
}

}
