#include "app/StatusBar.h"

#include <algorithm>
#include <array>

#include <imgui.h>
#include <imgui_internal.h>

#include <icons_font_awesome_6.h>

#include "ImGuiGuards.h"
#include "app/MessageLog.h"
#include "app/MessagePanel.h"
#include "app/StatusLayout.h"
#include "app/Theme.h"
#include "app/Widgets.h"

namespace QuorvaneEngine::StatusBar {

namespace {

using namespace Containers::Literals;

/* Widths at scale 1. */
constexpr float Gap = 16.0f;
constexpr float TooltipWidth = 520.0f;

/* Of a text less than this, in line heights, is not worth showing. */
constexpr float ShortestText = 2.5f;

struct Item {
    /** Null for what is not there. */
    const char* icon = nullptr;
    Containers::StringView text = {};
    ImVec4 iconColor = {};
    ImVec4 textColor = {};
    /** Shown under the mouse; the text is where it is cut. */
    Containers::StringView details = {};
};

/* By StatusItem. */
constexpr const char* Ids[StatusItemCount]{"##folder", "##state", "##obstacle", "##fonts", "##message"};

using Items = std::array<Item, StatusItemCount>;

Items itemsOf(const Facts& facts, const MessageLog::Message* const message) {
    const ImVec4 letters = Theme::color(Theme::Color::Letters);
    const ImVec4 pale = Theme::color(Theme::Color::PaleLetters);
    const ImVec4 caution = Theme::color(Theme::Color::Caution);
    Items items{};
    const auto set = [&items](const StatusItem item, const char* const icon, const Containers::StringView text,
                         const ImVec4& iconColor, const ImVec4& textColor, const Containers::StringView details) {
        items[std::size_t(item)] = {icon, text, iconColor, textColor, details};
    };
    if(facts.folder.isEmpty()) set(StatusItem::Folder, ICON_FA_FOLDER, "No project"_s, pale, pale, {});
    else {
        set(StatusItem::Folder, ICON_FA_FOLDER, facts.folder, pale, letters, {});
        if(facts.isUnsaved) set(StatusItem::State, ICON_FA_CIRCLE_DOT, "Unsaved changes"_s, caution, caution, {});
        else set(StatusItem::State, ICON_FA_CHECK, "Saved"_s, pale, pale, {});
    }
    if(!facts.obstacle.isEmpty())
        set(StatusItem::Obstacle, ICON_FA_LOCK, "Read-only: another editor has this project"_s, caution, caution,
            facts.obstacle);
    if(!facts.fonts.isEmpty()) set(StatusItem::Fonts, ICON_FA_FONT, facts.fonts, pale, pale, facts.fontDetails);
    if(message)
        set(StatusItem::Message, MessagePanel::icon(message->severity), message->text,
            MessagePanel::color(message->severity), letters, {});
    return items;
}

float iconWidth(const Item& item) { return ImGui::CalcTextSize(item.icon).x + ImGui::GetStyle().ItemInnerSpacing.x; }

StatusWidth widthOf(const Item& item) {
    if(!item.icon) return {};
    return {iconWidth(item) + ImGui::CalcTextSize(item.text.begin(), item.text.end()).x,
        ImGui::CalcTextSize(item.icon).x, iconWidth(item) + ShortestText * ImGui::GetFontSize()};
}

void showTooltip(const Containers::StringView text) {
    const TooltipGuard tooltip{ImGui::BeginTooltip()};
    if(!tooltip) return;
    const Widgets::BlockScope block{Widgets::scaled(TooltipWidth)};
    Widgets::text(text);
}

/** @return whether it was clicked */
bool drawItem(const char* const id, const Item& item, const float natural, const float width) {
    const ImVec2 position = ImGui::GetCursorScreenPos();
    const ImVec2 end{position.x + width, position.y + ImGui::GetFontSize()};
    const bool isClicked = ImGui::InvisibleButton(id, {std::max(width, 1.0f), ImGui::GetFontSize()});
    const bool isCut = width + 0.5f < natural;
    if(ImGui::IsItemHovered() && (isCut || !item.details.isEmpty()))
        showTooltip(item.details.isEmpty() ? item.text : item.details);
    ImDrawList* const list = ImGui::GetWindowDrawList();
    list->AddText(position, ImGui::GetColorU32(item.iconColor), item.icon);
    const float begin = position.x + iconWidth(item);
    if(isCut && end.x - begin < ShortestText * ImGui::GetFontSize()) return isClicked;
    StyleGuard style;
    style.color(ImGuiCol_Text, item.textColor);
    ImGui::RenderTextEllipsis(list, {begin, position.y}, end, end.x, item.text.begin(), item.text.end(), nullptr);
    return isClicked;
}

}

bool draw(const Facts& facts, const MessageLog& log) {
    StyleGuard style;
    style.color(ImGuiCol_WindowBg, ImGui::GetStyleColorVec4(ImGuiCol_MenuBarBg))
        .variable(ImGuiStyleVar_WindowPadding, ImVec2{Widgets::scaled(12.0f), Widgets::scaled(5.0f)})
        .variable(ImGuiStyleVar_WindowBorderSize, 0.0f);
    const float height = ImGui::GetFontSize() + Widgets::scaled(10.0f);
    constexpr ImGuiWindowFlags Flags =
        ImGuiWindowFlags_NoDecoration | ImGuiWindowFlags_NoSavedSettings | ImGuiWindowFlags_NoNav;
    const WindowGuard bar{
        ImGui::BeginViewportSideBar("##status", ImGui::GetMainViewport(), ImGuiDir_Down, height, Flags)};
    if(!bar) return false;

    const Items items = itemsOf(facts, log.last());
    std::array<StatusWidth, StatusItemCount> widths{};
    float space = ImGui::GetContentRegionAvail().x + Widgets::scaled(Gap);
    for(std::size_t i = 0; i != StatusItemCount; ++i) {
        widths[i] = widthOf(items[i]);
        if(items[i].icon) space -= Widgets::scaled(Gap);
    }
    const std::array<float, StatusItemCount> fitting = fitStatusItems(widths, space);

    bool isMessageClicked = false;
    const ImVec2 begin = ImGui::GetCursorPos();
    float x = begin.x;
    const float right = begin.x + ImGui::GetContentRegionAvail().x;
    for(std::size_t i = 0; i != StatusItemCount; ++i) {
        if(!items[i].icon) continue;
        const bool isMessage = StatusItem(i) == StatusItem::Message;
        ImGui::SetCursorPos({isMessage ? std::max(x, right - fitting[i]) : x, begin.y});
        x += fitting[i] + Widgets::scaled(Gap);
        const bool isClicked = drawItem(Ids[i], items[i], widths[i].natural, fitting[i]);
        if(!isMessage) continue;
        isMessageClicked = isClicked;
        if(ImGui::IsItemHovered()) ImGui::SetMouseCursor(ImGuiMouseCursor_Hand);
    }
    return isMessageClicked;
}

}
