#include "app/MessagePanel.h"

#include <imgui.h>

#include <icons_font_awesome_6.h>

#include "ImGuiGuards.h"
#include "app/DockLayout.h"
#include "app/Theme.h"
#include "app/Widgets.h"

namespace QuorvaneEngine::MessagePanel {

namespace {

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

const Look& look(MessageLog::Severity severity) { return Looks[std::size_t(severity)]; }

}

const char* icon(MessageLog::Severity severity) { return look(severity).icon; }

ImVec4 color(MessageLog::Severity severity) { return Theme::color(look(severity).color); }

void draw(const MessageLog& log, bool* open) {
    const WindowGuard window{ImGui::Begin(DockLayout::Messages, open, ImGuiWindowFlags_HorizontalScrollbar)};
    if(!window) return;
    ImGuiListClipper clipper;
    clipper.Begin(int(log.messages().size()), ImGui::GetTextLineHeightWithSpacing());
    while(clipper.Step())
        for(int i = clipper.DisplayStart; i != clipper.DisplayEnd; ++i) {
            const MessageLog::Message& message = log.messages()[std::size_t(i)];
            {
                StyleGuard style;
                style.color(ImGuiCol_Text, color(message.severity));
                ImGui::TextUnformatted(look(message.severity).icon);
            }
            ImGui::SameLine(Widgets::scaled(40.0f));
            if(message.severity == MessageLog::Severity::Detail) Widgets::paleText(message.text);
            else Widgets::text(message.text);
        }
    // New messages stay in sight for whoever has scrolled to the end.
    if(ImGui::GetScrollY() >= ImGui::GetScrollMaxY()) ImGui::SetScrollHereY(1.0f);
}

}
