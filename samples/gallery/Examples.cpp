#include "Examples.h"

#include <Corrade/Containers/StringIterable.h>
#include <ImGuiGuards.h>
#include <QuorvaneEditor/ProjectFile.h>
#include <QuorvaneEditor/ValueAccess.h>
#include <Ui/JsonNumbers.h>
#include <Ui/Scope.h>
#include <Ui/Ui.h>
#include <icons_font_awesome_6.h>
#include <imgui.h>

/* The gallery shows what is between the braces of these functions. */

namespace Gallery {

namespace {

// --- Layout ----------------------------------------------------------------------------------------------------------

void alignedText(Ui&, ExampleState&) {
    Ui::alignedText("Text that is level with");
    ImGui::SameLine();
    ImGui::Button("a button");
}

void label(Ui&, ExampleState&) {
    Ui::label("A label");
    ImGui::ProgressBar(0.6f);
}

void valueLabel(Ui& ui, ExampleState& state) {
    ui.valueLabel("Volume");
    ImGui::SliderInt("##volume", &state.volume, 0, 10);
}

void sameLineAt(Ui&, ExampleState&) {
    Ui::alignedText("At the end of this");
    Ui::sameLineAt(Ui::scaled(220.0f));
    Ui::alignedText("begins that.");
}

void pushScope(Ui& ui, ExampleState&) {
    const Scope door{&ui, "door"};
    ui.checkbox("open");
    ui.inputInt("keys", 0, 9, 0.1f, 1.0f);
}

void pushFlags(Ui& ui, ExampleState&) {
    ui.pushFlags(Ui::Flag::NoLabel);
    ui.inputFloat("height", 0.0f, 100.0f, 0.1f, 1.0f);
    ui.popFlags();
}

// --- Basic widgets ---------------------------------------------------------------------------------------------------

void text(Ui& ui, ExampleState&) { ui.text("title"); }

void iconButton(Ui&, ExampleState& state) {
    if(Ui::iconButton(ICON_FA_BELL, "bell")) ++state.presses;
    ImGui::SameLine();
    ImGui::Text("Rung %d times", state.presses);
}

void buttonGrouped(Ui&, ExampleState& state) {
    if(Ui::buttonGrouped("Left", {}, Ui::ButtonFlag::GroupStart)) state.choice = 0;
    ImGui::SameLine(0.0f, 1.0f);
    if(Ui::buttonGrouped("Middle", {}, {})) state.choice = 1;
    ImGui::SameLine(0.0f, 1.0f);
    if(Ui::buttonGrouped("Right", {}, Ui::ButtonFlag::GroupEnd)) state.choice = 2;
}

void radioButton(Ui&, ExampleState& state) {
    if(Ui::radioButton("Oil", state.choice == 0)) state.choice = 0;
    ImGui::SameLine();
    if(Ui::radioButton("Gas", state.choice == 1)) state.choice = 1;
}

void searchBar(Ui&, ExampleState& state) {
    const float width =
        ImGui::GetContentRegionAvail().x - ImGui::GetStyle().ItemSpacing.x;
    Ui::searchBar("anything", state.search, width, {}, 0.0f, false);
}

// --- Numbers ---------------------------------------------------------------------------------------------------------

void inputFloat(Ui& ui, ExampleState&) {
    ui.inputFloat("height", 0.0f, 100.0f, 0.1f, 1.0f);
}

void inputFloat2(Ui& ui, ExampleState&) {
    ui.inputFloat2("tiling", 0.0f, 0.0f, 0.01f, 0.1f);
}

void inputFloat3(Ui& ui, ExampleState&) {
    ui.inputFloat3("position", 0.0f, 0.0f, 0.01f, 1.0f);
}

void inputFloat4(Ui& ui, ExampleState&) {
    ui.inputFloat4("rotation", -1.0f, 1.0f, 0.001f, 0.01f);
}

void inputInt(Ui& ui, ExampleState&) { ui.inputInt("lamps", 1, 12, 0.1f, 1.0f); }

void inputInt2(Ui& ui, ExampleState&) { ui.inputInt2("size", 1, 4096, 1.0f, 16.0f); }

void inputInt3(Ui& ui, ExampleState&) { ui.inputInt3("cells", 0, 64, 0.1f, 1.0f); }

void inputInt4(Ui& ui, ExampleState&) { ui.inputInt4("margins", 0, 100, 0.5f, 5.0f); }

// --- Colours and choices ---------------------------------------------------------------------------------------------

void colorEdit3(Ui& ui, ExampleState&) { ui.colorEdit3("paint"); }

void colorEdit4(Ui& ui, ExampleState&) { ui.colorEdit4("glass"); }

void checkbox(Ui& ui, ExampleState& state) {
    ui.checkbox("visible");
    Ui::checkbox("a variable", &state.isTicked);
}

void checkboxUnlabled(Ui& ui, ExampleState&) {
    ui.checkboxUnlabled("visible");
    ImGui::SameLine();
    ui.checkboxUnlabled("locked");
}

void checkboxBit(Ui& ui, ExampleState&) {
    ui.checkboxBit("layers", 2, "the third layer");
}

void checkboxBits(Ui& ui, ExampleState&) {
    const Containers::StringView names[]{
        "north", "east", "south", "west", "cellar", "attic", "boat", "shed"};
    ui.checkboxBits("doors", 8, names);
}

void inputEnum(Ui& ui, ExampleState&) {
    ui.inputEnum("weather", {"calm", "fog", "storm"});
}

// --- Texts -----------------------------------------------------------------------------------------------------------

void inputText(Ui& ui, ExampleState&) { ui.inputText("title"); }

void inputTextMultiline(Ui& ui, ExampleState&) {
    const ChildGuard child{ImGui::BeginChild("log", {0.0f, Ui::scaled(90.0f)})};
    ui.inputTextMultiline("log", false, false);
}

void renameable(Ui& ui, ExampleState&) {
    Ui::alignedText("A double-click renames ");
    ImGui::SameLine(0.0f, 0.0f);
    ui.renameable("name", false);
}

void valueContextMenu(Ui& ui, ExampleState&) {
    const Scope scope{&ui, "oil"};
    ui.valueLabel("oil");
    ImGui::ProgressBar(jsonFloat(ui.project->getValue(ui.scopePath(), false)));
    ui.valueContextMenu();
}

// --- Resources and files ---------------------------------------------------------------------------------------------

void selectResource(Ui& ui, ExampleState&) {
    ui.selectResource("texture", "textures", false);
    ui.selectResource("colored", "materials", false, [](ValueAccess& material) {
        return material.member("texture").asString().isEmpty();
    });
}

void selectResourceName(Ui& ui, ExampleState&) {
    ui.selectResourceName("mesh", "meshes");
}

void selectObjectResource(Ui& ui, ExampleState& state) {
    ui.selectObjectResource("keeper", state.objects, false);
}

void resourceDragDropSource(Ui&, ExampleState&) {
    ImGui::Button("Drag \"Granite\" to a texture");
    Ui::resourceDragDropSource("textures", "granite", "Granite");
}

void acceptDragDropResources(Ui& ui, ExampleState& state) {
    ImGui::Button(
        state.dropped.isEmpty() ? "Drop a texture here" : state.dropped.data());
    Containers::StringView id;
    if(ui.acceptDragDropResources("textures", id)) state.dropped = id;
}

void beginDragDropTargetWindow(Ui&, ExampleState& state) {
    Ui::alignedText("Drop a texture anywhere in this child window.");
    if(!Ui::beginDragDropTargetWindow()) return;
    const char* const type = Ui::resourceToDragDropType("textures").data();
    if(const ImGuiPayload* payload = ImGui::AcceptDragDropPayload(type))
        state.dropped = {
            static_cast<const char*>(payload->Data), std::size_t(payload->DataSize)};
    ImGui::EndDragDropTarget();
}

void fileSelect(Ui& ui, ExampleState&) {
    const Containers::StringView filters[]{"Pictures", "*.png *.jpg"};
    ui.fileSelect("chart", "Choose a chart", filters);
}

// --- Search and lists ------------------------------------------------------------------------------------------------

void stringList(Ui& ui, ExampleState& state) {
    ui.stringList("duties", state.selectedLine);
}

void performSearch(Ui& ui, ExampleState& state) {
    const float width =
        ImGui::GetContentRegionAvail().x - ImGui::GetStyle().ItemSpacing.x;
    const bool isTyped =
        Ui::searchBar("entries", state.entrySearch, width, {}, 0.0f, false);
    if(isTyped || state.entriesRevision != ui.project->revision())
        ui.performSearch("/gallery/signals", state.entrySearch, state.entries,
            Ui::SearchFlag::Keys | Ui::SearchFlag::Values);
    state.entriesRevision = ui.project->revision();
    ImGui::Text("%zu signals found", state.entries.size());
}

void performResourceSearch(Ui& ui, ExampleState& state) {
    const float width =
        ImGui::GetContentRegionAvail().x - ImGui::GetStyle().ItemSpacing.x;
    const bool isTyped =
        Ui::searchBar("resources", state.resourceSearch, width, {}, 0.0f, false);
    if(isTyped || state.resourcesRevision != ui.project->revision())
        ui.performResourceSearch(
            "textures", "name", state.resourceSearch, state.resources);
    state.resourcesRevision = ui.project->revision();
    ImGui::Text("%zu textures found", state.resources.size());
}

constexpr char Layout[] = "Layout, scopes and flags";
constexpr char Basic[] = "Basic widgets";
constexpr char Numbers[] = "Numbers";
constexpr char Choices[] = "Colours and choices";
constexpr char Texts[] = "Texts and the clipboard";
constexpr char Resources[] = "Resources and files";
constexpr char Lists[] = "Search and lists";

constexpr Example Examples[]{
    {Layout, "alignedText", nullptr, alignedText},
    {Layout, "label", nullptr, label},
    {Layout, "valueLabel", nullptr, valueLabel},
    {Layout, "sameLineAt", nullptr, sameLineAt},
    {Layout, "pushScope", "door", pushScope},
    {Layout, "pushFlags", "height", pushFlags},
    {Basic, "text", "title", text},
    {Basic, "iconButton", nullptr, iconButton},
    {Basic, "buttonGrouped", nullptr, buttonGrouped},
    {Basic, "radioButton", nullptr, radioButton},
    {Basic, "searchBar", nullptr, searchBar},
    {Numbers, "inputFloat", "height", inputFloat},
    {Numbers, "inputFloat2", "tiling", inputFloat2},
    {Numbers, "inputFloat3", "position", inputFloat3},
    {Numbers, "inputFloat4", "rotation", inputFloat4},
    {Numbers, "inputInt", "lamps", inputInt},
    {Numbers, "inputInt2", "size", inputInt2},
    {Numbers, "inputInt3", "cells", inputInt3},
    {Numbers, "inputInt4", "margins", inputInt4},
    {Choices, "colorEdit3", "paint", colorEdit3},
    {Choices, "colorEdit4", "glass", colorEdit4},
    {Choices, "checkbox", "visible", checkbox},
    {Choices, "checkboxUnlabled", "locked", checkboxUnlabled},
    {Choices, "checkboxBit", "layers", checkboxBit},
    {Choices, "checkboxBits", "doors", checkboxBits},
    {Choices, "inputEnum", "weather", inputEnum},
    {Texts, "inputText", "title", inputText},
    {Texts, "inputTextMultiline", "log", inputTextMultiline},
    {Texts, "renameable", "name", renameable},
    {Texts, "valueContextMenu", "oil", valueContextMenu},
    {Resources, "selectResource", "texture", selectResource},
    {Resources, "selectResourceName", "mesh", selectResourceName},
    {Resources, "selectObjectResource", "keeper", selectObjectResource},
    {Resources, "resourceDragDropSource", nullptr, resourceDragDropSource},
    {Resources, "acceptDragDropResources", nullptr, acceptDragDropResources},
    {Resources, "beginDragDropTargetWindow", nullptr, beginDragDropTargetWindow},
    {Resources, "fileSelect", "chart", fileSelect},
    {Lists, "stringList", "duties", stringList},
    {Lists, "performSearch", "signals", performSearch},
    {Lists, "performResourceSearch", nullptr, performResourceSearch},
};

}

Containers::ArrayView<const Example> examples() { return Examples; }

}
