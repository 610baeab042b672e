#include "InspectorDesk.h"

#include <cstring>

#include <unistd.h>

#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "QuorvaneEditor/ProjectFile.h"
#include "app/ViewConditions.h"
#include "support/Json.h"

namespace QuorvaneEngine::Test {

namespace fs = std::filesystem;

namespace {

Containers::String noDialog(Containers::StringView, Containers::StringView) { return {}; }

/** What stands on the ID stack in a row of the region of the values. */
ImGuiID rowOf(const std::string& path) {
    const ImGuiWindow* const rows = region("##rows");
    ImGuiID id = rows ? rows->ID : 0;
    for(std::size_t at = 0; at < path.size();) {
        const std::size_t end = std::min(path.find('/', at + 1), path.size());
        id = ImHashStr(path.substr(at + 1, end - at - 1).c_str(), 0, id);
        at = end;
    }
    return id;
}

}

SampleCopy::SampleCopy(const std::string& name)
    : folder{fs::temp_directory_path() / (name.empty() ? "lighthouse-" + std::to_string(getpid()) : name)} {
    fs::remove_all(folder);
    fs::copy(QUORVANE_SOURCE_DIR "/samples/lighthouse", folder, fs::copy_options::recursive);
    fs::remove_all(folder / ".editor");
}

SampleCopy::~SampleCopy() {
    std::error_code error;
    fs::remove_all(folder, error);
}

InspectorDesk::InspectorDesk(const std::string& project)
    : game{project}, frame{session, jobs, modules, log, viewConditions(), noDialog, noDialog} {
    ImGuiContextHook hook;
    hook.Type = ImGuiContextHookType_NewFramePre;
    hook.UserData = &frame;
    hook.Callback = [](ImGuiContext*, ImGuiContextHook* own) { static_cast<EditorFrame*>(own->UserData)->prepare(); };
    ImGui::AddContextHook(ImGui::GetCurrentContext(), &hook);
    EXPECT_TRUE(frame.open(game.folder.c_str()));
}

std::string InspectorDesk::document() { return toText(session.project()); }

void InspectorDesk::load(const std::string& json) {
    rapidjson::Document document = parsed(json);
    session.project().replace(std::move(document));
}

ImGuiWindow* region(const char* const name) {
    const std::string part = std::string{"/"} + name + "_";
    for(ImGuiWindow* const window: ImGui::GetCurrentContext()->Windows)
        if(window->Active && std::strstr(window->Name, "Inspector") == window->Name &&
            std::strstr(window->Name, part.c_str()))
            return window;
    return nullptr;
}

unsigned treeRow(const std::string& path) {
    ImGuiWindow* const tree = region("##tree");
    return tree ? ImHashStr(("##" + path).c_str(), 0, tree->ID) : 0;
}

unsigned scopeOf(const std::string& path) {
    // The row and the widget in it have the same name.
    return ImHashStr(path.substr(path.rfind('/') + 1).c_str(), 0, rowOf(path));
}

unsigned widget(const std::string& path, const char* const item) { return ImHashStr(item, 0, scopeOf(path)); }

ImGuiWindow* around(const std::string& path, const char* const name) {
    const ImGuiID id = ImHashStr(name, 0, rowOf(path));
    for(ImGuiWindow* const window: ImGui::GetCurrentContext()->Windows)
        if(window->Active && window->ChildId == id) return window;
    return nullptr;
}

}
