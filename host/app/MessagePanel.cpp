#include "app/MessagePanel.h"

#include <algorithm>
#include <ctime>
#include <iterator>

#include <imgui_internal.h>

#include <icons_font_awesome_6.h>

#include "ImGuiGuards.h"
#include "ImGuiText.h"
#include "QuorvaneEditor/Utils.h"
#include "Ui/Ui.h"
#include "app/DockLayout.h"
#include "app/Theme.h"
#include "app/Widgets.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

constexpr std::size_t SearchCapacity = 256;

struct Look {
    const char* icon;
    Theme::Color color;
};

/* By severity */
constexpr Look Looks[]{
    {ICON_FA_ANGLE_RIGHT, Theme::Color::PaleLetters},
    {ICON_FA_CIRCLE_CHECK, Theme::Color::Good},
    {ICON_FA_TRIANGLE_EXCLAMATION, Theme::Color::Caution},
    {ICON_FA_CIRCLE_XMARK, Theme::Color::Bad},
};

/* By severity */
constexpr const char* Switches[]{"Details###Details", "Notes###Notes", "Warnings###Warnings", "Errors###Errors"};
constexpr const char* Names[]{"Detail", "Note", "Warning", "Error"};

const Look& look(MessageLog::Severity severity) { return Looks[std::size_t(severity)]; }

/** In local time. */
struct Time {
    explicit Time(std::chrono::system_clock::time_point when) {
        const std::time_t seconds = std::chrono::system_clock::to_time_t(when);
        std::tm local{};
        localtime_r(&seconds, &local);
        std::strftime(text, sizeof(text), "%H:%M:%S", &local);
    }

    char text[16];
};

/** The number of the oldest message that is kept. */
std::size_t firstOf(const MessageLog& log) { return log.count() - log.messages().size(); }

const MessageLog::Message& messageOf(const MessageLog& log, std::size_t number) {
    return log.messages()[number - firstOf(log)];
}

/** A button that stays pressed while something is on. */
bool drawSwitch(const char* label, const ImVec4& color, bool& isOn) {
    StyleGuard style;
    style.color(ImGuiCol_Text, isOn ? color : ImGui::GetStyleColorVec4(ImGuiCol_TextDisabled));
    if(!isOn) style.color(ImGuiCol_Button, ImVec4{});
    if(!ImGui::Button(label)) return false;
    isOn = !isOn;
    return true;
}

}

const char* MessagePanel::icon(MessageLog::Severity severity) { return look(severity).icon; }

ImVec4 MessagePanel::color(MessageLog::Severity severity) { return Theme::color(look(severity).color); }

MessagePanel::MessagePanel(): _search{Corrade::ValueInit, SearchCapacity} {}

void MessagePanel::draw(const MessageLog& log, bool* const open) {
    const WindowGuard window{ImGui::Begin(DockLayout::Messages, open, ImGuiWindowFlags_NoScrollbar)};
    if(!window) return;
    const bool isFiltered = drawTools();
    ImGui::SameLine();
    if(ImGui::Button(ICON_FA_COPY "  Copy###Copy")) copy(log, false);
    if(ImGui::IsItemHovered()) setTooltip("Copy all lines that are shown"_s);
    list(log, isFiltered);
    {
        const ChildGuard child{
            ImGui::BeginChild("messages", {}, ImGuiChildFlags_None, ImGuiWindowFlags_HorizontalScrollbar)};
        if(child) drawRows(log);
    }
    if(ImGui::Shortcut(ImGuiMod_Ctrl | ImGuiKey_C)) copy(log, true);
}

bool MessagePanel::drawTools() {
    bool isChanged = false;
    for(std::size_t i = 0; i != std::size(Switches); ++i) {
        isChanged |= drawSwitch(Switches[i], color(MessageLog::Severity(i)), _isShown[i]);
        ImGui::SameLine();
    }
    const GroupGuard group;
    isChanged |= Ui::searchBar("messages"_s, _search, Widgets::scaled(260.0f), {}, 0.0f, false);
    return isChanged;
}

bool MessagePanel::matches(const MessageLog::Message& message) const {
    return _isShown[std::size_t(message.severity)] &&
        Utils::caseInsensitiveSearch(message.text, Containers::StringView{_search.data()}) != -1;
}

void MessagePanel::list(const MessageLog& log, const bool anew) {
    const std::size_t first = firstOf(log);
    if(anew) {
        _rows.clear();
        _listed = first;
    }
    if(_listed == log.count()) return;
    // Messages that the log has dropped.
    _rows.erase(_rows.begin(), std::lower_bound(_rows.begin(), _rows.end(), first));
    for(std::size_t number = std::max(_listed, first); number != log.count(); ++number)
        if(matches(messageOf(log, number))) _rows.push_back(number);
    _listed = log.count();
}

void MessagePanel::drawRows(const MessageLog& log) {
    _selection.UserData = this;
    _selection.AdapterIndexToStorageId = [](ImGuiSelectionBasicStorage* self, int row) {
        return ImGuiID(static_cast<MessagePanel*>(self->UserData)->_rows[std::size_t(row)]);
    };
    const int rows = int(_rows.size());
    ImGuiMultiSelectIO* io = ImGui::BeginMultiSelect(ImGuiMultiSelectFlags_ClearOnEscape, _selection.Size, rows);
    _selection.ApplyRequests(io);
    ImGuiListClipper clipper;
    clipper.Begin(rows, ImGui::GetTextLineHeightWithSpacing());
    if(io->RangeSrcItem != -1) clipper.IncludeItemByIndex(int(io->RangeSrcItem));
    while(clipper.Step())
        for(int row = clipper.DisplayStart; row != clipper.DisplayEnd; ++row) drawRow(log, row);
    io = ImGui::EndMultiSelect();
    _selection.ApplyRequests(io);
    // New messages stay in sight for whoever has scrolled to the end.
    if(ImGui::GetScrollY() >= ImGui::GetScrollMaxY()) ImGui::SetScrollHereY(1.0f);
}

void MessagePanel::drawRow(const MessageLog& log, const int row) {
    const std::size_t number = _rows[std::size_t(row)];
    const MessageLog::Message& message = messageOf(log, number);
    const IdGuard id{int(number)};
    ImGui::SetNextItemSelectionUserData(row);
    ImGui::Selectable("##line", _selection.Contains(ImGuiID(number)), ImGuiSelectableFlags_AllowOverlap);
    if(const PopupGuard menu{ImGui::BeginPopupContextItem("menu")}; menu) drawContextMenu(log);
    ImGui::SameLine(0.0f, 0.0f);
    Widgets::paleText(Time{message.when}.text);
    ImGui::SameLine(Widgets::scaled(72.0f));
    {
        StyleGuard style;
        style.color(ImGuiCol_Text, color(message.severity));
        ImGui::TextUnformatted(icon(message.severity));
    }
    ImGui::SameLine(Widgets::scaled(100.0f));
    if(message.severity == MessageLog::Severity::Detail) Widgets::paleText(message.text);
    else Widgets::text(message.text);
}

void MessagePanel::drawContextMenu(const MessageLog& log) {
    if(ImGui::MenuItemEx("Copy the selected lines", ICON_FA_COPY, "Ctrl+C")) copy(log, true);
    if(ImGui::MenuItemEx("Copy all lines shown", ICON_FA_COPY)) copy(log, false);
}

void MessagePanel::copy(const MessageLog& log, const bool selectedOnly) const {
    std::string text;
    for(const std::size_t number: _rows) {
        if(selectedOnly && !_selection.Contains(ImGuiID(number))) continue;
        const MessageLog::Message& message = messageOf(log, number);
        text += std::string{Time{message.when}.text} + "\t" + Names[std::size_t(message.severity)] + "\t";
        text.append(message.text.data(), message.text.size()) += "\n";
    }
    if(!text.empty()) ImGui::SetClipboardText(text.c_str());
}

}
