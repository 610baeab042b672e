#include "app/ModulePanel.h"

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/String.h>
#include <imgui.h>

#include <icons_font_awesome_6.h>

#include "ImGuiGuards.h"
#include "app/DockLayout.h"
#include "app/MessagePanel.h"
#include "app/Widgets.h"
#include "modules/ModuleLoader.h"

namespace QuorvaneEngine::ModulePanel {

using namespace Containers::Literals;

namespace {

struct Look {
    Containers::StringView name;
    MessageLog::Severity severity;
};

/* By ModuleLoader::Status */
constexpr Look Looks[]{
    {"Not loaded"_s, MessageLog::Severity::Detail},
    {"Loaded"_s, MessageLog::Severity::Note},
    {"Refused"_s, MessageLog::Severity::Warning},
    {"Failed"_s, MessageLog::Severity::Error},
    {"Left out"_s, MessageLog::Severity::Warning},
};

void drawState(const ModuleLoader::Status status) {
    const Look& look = Looks[std::size_t(status)];
    StyleGuard style;
    style.color(ImGuiCol_Text, MessagePanel::color(look.severity));
    ImGui::TextUnformatted(MessagePanel::icon(look.severity));
    ImGui::SameLine();
    Widgets::text(look.name);
}

/** @return whether it is to be loaded, or loaded anew */
bool drawRow(const ModuleLoader::Module& module) {
    const IdGuard id{Containers::StringView{module.name}};
    ImGui::TableNextRow();
    ImGui::TableNextColumn();
    ImGui::AlignTextToFramePadding();
    Widgets::text(module.name);
    ImGui::TableNextColumn();
    ImGui::AlignTextToFramePadding();
    drawState(module.status);
    ImGui::TableNextColumn();
    ImGui::AlignTextToFramePadding();
    {
        const TextWrapGuard wrap{0.0f};
        Widgets::paleText(module.file);
        if(!module.reason.isEmpty()) Widgets::text(module.reason);
    }
    ImGui::TableNextColumn();
    if(module.status == ModuleLoader::Status::LeftOut) return ImGui::Button(ICON_FA_PLAY "  Load###Load");
    return ImGui::Button(ICON_FA_ARROWS_ROTATE "  Reload###Reload");
}

}

Containers::StringView draw(const ModuleLoader& modules, bool* const open) {
    ImGui::SetNextWindowSize({Widgets::scaled(800.0f), Widgets::scaled(240.0f)}, ImGuiCond_FirstUseEver);
    const WindowGuard window{ImGui::Begin(DockLayout::Modules, open)};
    Containers::StringView wanted;
    if(!window) return wanted;
    if(modules.modules().isEmpty()) Widgets::paleText("There are no modules."_s);
    constexpr ImGuiTableFlags Flags =
        ImGuiTableFlags_RowBg | ImGuiTableFlags_BordersInnerH | ImGuiTableFlags_SizingFixedFit;
    if(const TableGuard table{!modules.modules().isEmpty() && ImGui::BeginTable("modules", 4, Flags)}; table) {
        ImGui::TableSetupColumn("Plug-in");
        ImGui::TableSetupColumn("State");
        ImGui::TableSetupColumn("File", ImGuiTableColumnFlags_WidthStretch);
        ImGui::TableSetupColumn("");
        ImGui::TableHeadersRow();
        for(const ModuleLoader::Module& module: modules.modules())
            if(drawRow(module)) wanted = module.name;
    }
    const TextWrapGuard wrap{0.0f};
    for(const Containers::String& message: modules.folderMessages()) Widgets::text(message);
    return wanted;
}

}
