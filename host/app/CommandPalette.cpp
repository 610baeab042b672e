#include "app/CommandPalette.h"

#include <algorithm>
#include <utility>

#include <Corrade/Containers/StringView.h>
#include <imgui.h>

#include "ImGuiGuards.h"
#include "ImGuiText.h"
#include "QuorvaneEditor/EditorState.h"
#include "app/FuzzyPattern.h"
#include "app/Widgets.h"
#include "localization/JsonPath.h"

namespace QuorvaneEngine {

namespace {

constexpr const char* Title = "Command palette";
constexpr std::size_t SearchCapacity = 256;
constexpr float Width = 640.0f;
constexpr float Height = 320.0f;

/** Where the text of a term begins, and the place of its text, in parts of the row's width. */
constexpr float TextColumn = 0.38f;
constexpr float SourceColumn = 0.72f;

}

CommandPalette::CommandPalette(ProjectFile& project): _search{Corrade::ValueInit, SearchCapacity}, _terms{project} {}

void CommandPalette::list(EditorState& state, const MainMenu::Available& available) {
    _rows.clear();
    _selection = {};
    _isEntered = false;
    FuzzyPattern pattern{Containers::StringView{_search.data()}};
    const auto add = [&](std::string text, std::string keys, Command command, UnsignedInt view, bool isAvailable) {
        const Int score = pattern.score({text.data(), text.size()});
        if(score != FuzzyPattern::NoMatch)
            _rows.push_back(Row{std::move(text), std::move(keys), command, view, isAvailable, score});
    };
    for(const MainMenu::Item& item: MainMenu::items(available))
        add(item.path, item.keys, item.command, 0, item.isAvailable);
    for(UnsignedInt view = 0; view != state.viewCount(); ++view)
        add("View: " + std::string{state.viewTitle(view).data()}, {}, Command::None, view, true);
    std::stable_sort(_rows.begin(), _rows.end(), [](const Row& a, const Row& b) {
        return a.score != b.score ? a.score > b.score : a.isAvailable && !b.isAvailable;
    });
    _terms.start(Containers::StringView{_search.data()});
    _shown.reserve(_rows.size() + TermSearch::MaxCount);
}

void CommandPalette::merge() {
    _shown.clear();
    auto command = _rows.begin();
    for(const TermSearch::Found& term: _terms.found()) {
        for(; command != _rows.end() && command->score >= term.score; ++command) _shown.push_back({&*command, nullptr});
        _shown.push_back({nullptr, &term});
    }
    for(; command != _rows.end(); ++command) _shown.push_back({&*command, nullptr});
    const auto selected =
        std::find_if(_shown.begin(), _shown.end(), [this](const Shown& shown) { return isSelected(shown); });
    _selected = selected == _shown.end() ? 0 : std::size_t(selected - _shown.begin());
}

bool CommandPalette::isSelected(const Shown& shown) const {
    switch(_selection.kind) {
    case Selection::First: return true;
    case Selection::Command: return shown.command == _rows.data() + _selection.number;
    case Selection::Term: return shown.term && shown.term->number == _selection.number;
    }
    return false;
}

void CommandPalette::select(const std::size_t row) {
    const Shown& shown = _shown[row];
    _selected = row;
    if(shown.term) _selection = {Selection::Term, shown.term->number};
    else _selection = {Selection::Command, std::size_t(shown.command - _rows.data())};
}

bool CommandPalette::move() {
    if(_shown.empty()) return false;
    const std::size_t count = _shown.size();
    const bool isDown = ImGui::IsKeyPressed(ImGuiKey_DownArrow);
    const bool isUp = ImGui::IsKeyPressed(ImGuiKey_UpArrow);
    if(isDown) select((_selected + 1) % count);
    if(isUp) select((_selected + count - 1) % count);
    return isDown || isUp;
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
    if(ImGui::InputTextWithHint(
           "##search", "Name of a command, or key or text of a term", _search.data(), _search.size()))
        list(state, available);
    if(ImGui::IsKeyPressed(ImGuiKey_Escape)) ImGui::CloseCurrentPopup();
    _terms.update();
    merge();
    return drawList() ? choose(state) : Command::None;
}

bool CommandPalette::drawList() {
    const bool isMoved = move();
    // Enter was meant for what fits best, and who moves on has thought better of it.
    if(isMoved) _isEntered = false;
    _isEntered |= ImGui::IsKeyPressed(ImGuiKey_Enter) || ImGui::IsKeyPressed(ImGuiKey_KeypadEnter);
    // Who types fast means what fits best, and not what has been found by now.
    bool isChosen = _isEntered && (_selection.kind != Selection::First || !_terms.isSearching());
    if(isChosen) _isEntered = false;
    const ChildGuard child{ImGui::BeginChild("commands", {}, ImGuiChildFlags_None, ImGuiWindowFlags_NoNavInputs)};
    if(_shown.empty())
        Widgets::paleText(_terms.isSearching()
                ? "Looking through the terms..."
                : "No command has these letters in its name, and no term in its key or text");
    for(std::size_t row = 0; row != _shown.size(); ++row) isChosen |= drawRow(row, isMoved);
    return isChosen && _selected < _shown.size();
}

bool CommandPalette::drawRow(const std::size_t row, const bool isMoved) {
    const Shown& shown = _shown[row];
    const bool isSelected = row == _selected;
    const bool isClicked = shown.term ? drawTerm(*shown.term, isSelected) : drawCommand(*shown.command, isSelected);
    if(isClicked) select(row);
    if(isSelected && isMoved) ImGui::SetScrollHereY();
    return isClicked;
}

bool CommandPalette::drawCommand(const Row& command, const bool isSelected) {
    const DisabledGuard disabled{!command.isAvailable};
    const float end = ImGui::GetCursorPosX() + ImGui::GetContentRegionAvail().x;
    const bool isClicked = ImGui::Selectable(command.text.c_str(), isSelected, ImGuiSelectableFlags_NoAutoClosePopups);
    if(!command.keys.empty()) {
        ImGui::SameLine(end - ImGui::CalcTextSize(command.keys.c_str()).x);
        Widgets::paleText({command.keys.data(), command.keys.size()});
    }
    return isClicked;
}

bool CommandPalette::drawTerm(const TermSearch::Found& term, const bool isSelected) {
    const IdGuard id{int(term.number)};
    const bool isClicked = ImGui::Selectable("##term", isSelected, ImGuiSelectableFlags_NoAutoClosePopups);
    const ImVec2 min = ImGui::GetItemRectMin();
    const ImVec2 max = ImGui::GetItemRectMax();
    const float spacing = ImGui::GetStyle().ItemSpacing.x;
    const float text = min.x + (max.x - min.x) * TextColumn;
    const float source = min.x + (max.x - min.x) * SourceColumn;
    renderLine({min.x + spacing * 0.5f, min.y}, {text - spacing, max.y}, term.key);
    renderLine({text, min.y}, {source - spacing, max.y}, term.text);
    StyleGuard style;
    style.color(ImGuiCol_Text, ImGui::GetStyleColorVec4(ImGuiCol_TextDisabled));
    renderLine({source, min.y}, {max.x, max.y}, term.source);
    return isClicked;
}

Command CommandPalette::choose(EditorState& state) {
    const Shown& shown = _shown[_selected];
    if(shown.term) {
        _chosenTerm = jsonPath({"localization", "terms", shown.term->key});
        ImGui::CloseCurrentPopup();
        return Command::None;
    }
    const Row& row = *shown.command;
    if(!row.isAvailable) return Command::None;
    ImGui::CloseCurrentPopup();
    if(row.command == Command::None) {
        bool& open = state.isViewOpen(row.view);
        open = !open;
    }
    return row.command;
}

Containers::String CommandPalette::takeTerm() { return std::exchange(_chosenTerm, Containers::String{}); }

}
