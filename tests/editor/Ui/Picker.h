#pragma once

#include <functional>
#include <string>

#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>
#include <rapidjson/pointer.h>

#include "ChangeManager.h"
#include "ImGuiGuards.h"
#include "QuorvaneEditor/EditorData.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "QuorvaneEditor/ValueAccess.h"
#include "Ui/Ui.h"
#include "support/GuiTest.h"
#include "support/Json.h"
#include "support/ShownText.h"

namespace QuorvaneEngine::Test {

/** A window with a resource picker for the value "/value" and a button that a resource is dragged from. */
class Picker {
public:
    static constexpr const char* Field = "//Window/value/##val";

    /** Opens a project, and records a change of a value that no test edits: the first entry of a log never merges.
        @param json     the project */
    void open(const std::string& json) {
        load(project, json);
        changes.reset(project);
        changes.pushChange("/first", rapidjson::Value{true}, false);
    }

    /** How many changes were recorded since the project was opened. */
    int recorded() const { return changes.lastChangeIndex(); }

    void draw() {
        ImGui::SetNextWindowPos(position);
        ImGui::SetNextWindowSize({400.0f, 200.0f});
        const ShownText text;
        {
            const WindowGuard window{ImGui::Begin("Window", nullptr, ImGuiWindowFlags_NoMove)};
            regionStart = ImGui::GetCursorScreenPos();
            regionWidth = ImGui::GetContentRegionAvail().x;
            const Int before = changes.lastChangeIndex();
            const bool changed = pick ? pick() : ui.selectResource("value", type, byName, offers());
            EXPECT_EQ(changed, changes.lastChangeIndex() != before) << "what is returned in the frame of a change";
            pushes += changed;
            item = {ImGui::GetItemRectMin(), ImGui::GetItemRectMax()};
            ImGui::Dummy({10.0f, 10.0f});
            ImGui::Button("source");
            Ui::resourceDragDropSource(draggedType, {draggedId.data(), draggedId.size()}, "dragged");
        }
        shown = text.text();
    }

    bool run(const GuiTest::Script& script) {
        return gui.run(
            "picker", [this] { draw(); }, script);
    }

    void frames(int count = 3) {
        gui.frames([this] { draw(); }, count);
    }

    std::string value() {
        const rapidjson::Value* const value = rapidjson::Pointer{"/value"}.Get(project.document());
        return value ? toText(*value) : "missing";
    }

    bool shows(const std::string& part) const { return shown.find(part) != std::string::npos; }

    /** The open list, null when there is none. */
    static ImGuiWindow* popup() {
        for(ImGuiWindow* const window: ImGui::GetCurrentContext()->Windows)
            if(window->WasActive && (window->Flags & ImGuiWindowFlags_Popup) &&
                !(window->Flags & ImGuiWindowFlags_ChildMenu))
                return window;
        return nullptr;
    }

    /** The part of the open list that scrolls. */
    static ImGuiWindow* region() {
        for(ImGuiWindow* const window: ImGui::GetCurrentContext()->Windows)
            if(window->WasActive && (window->Flags & ImGuiWindowFlags_ChildWindow) && window->ParentWindow == popup())
                return window;
        return nullptr;
    }

    /** Opens the list by a click. */
    static void openList(ImGuiTestContext& user) {
        user.ItemClick(Field);
        user.Yield(3);
    }

    GuiTest gui;
    ProjectFile project;
    ChangeManager changes{project};
    EditorData data{project};
    Ui ui{&project, &changes, &data};

    /** What the picker is asked for. */
    Containers::StringView type = "textures";
    bool byName = false;
    std::function<bool(ValueAccess&)> filter;

    /** Another call in its place. */
    std::function<bool()> pick;

    /** Of the window. */
    ImVec2 position{100.0f, 60.0f};

    Containers::StringView draggedType = "textures";
    std::string draggedId = "t1";

    /** What a frame showed. */
    std::string shown;
    ImVec2 regionStart;
    float regionWidth = 0.0f;
    ImRect item;

    /** The frames in which the picker said that it pushed a change. */
    int pushes = 0;

private:
    Ui::ResourceFilter offers() {
        if(!filter) return nullptr;
        return [this](ValueAccess& entry) { return filter(entry); };
    }
};

/** Three textures, and a value that refers to none. */
inline constexpr const char* SomeTextures =
    R"({"value":null,"textures":{"t9":{"name":"Grass","image":"i1"},"t1":{"name":"Rock"},"t5":{"name":"tall grass"}}})";

}
