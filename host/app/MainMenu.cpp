#include "app/MainMenu.h"

#include <cstddef>
#include <cstdio>
#include <iterator>

#include <Corrade/Containers/StringView.h>
#include <imgui.h>
#include <imgui_internal.h>

#include <icons_font_awesome_6.h>

#include "ImGuiGuards.h"
#include "QuorvaneEditor/EditorState.h"
#include "app/Widgets.h"

namespace QuorvaneEngine::MainMenu {

namespace {

struct Entry {
    const char* menu;
    const char* icon;
    const char* label;
    const char* keys;
    ImGuiKeyChord chord;
    ImGuiKeyChord otherChord;
    bool Available::*available;
    Command command;
    bool endsGroup;

    /** Whether its keys work while a popup is open. */
    bool duringPopup = false;

    /** Whether they work while a text is being edited, which has no use for them, and is ended where the command needs it. */
    bool duringTextInput = false;

    /** Where it lies in the menu; entries of one follow each other. */
    const char* submenu = nullptr;

    bool Available::*marked = nullptr;

    /** What it would be done to. */
    Containers::StringView Available::*object = nullptr;
};

constexpr Entry Entries[]{
    {"File", ICON_FA_FOLDER_OPEN, "Open project...", "Ctrl+O", ImGuiMod_Ctrl | ImGuiKey_O, 0, nullptr,
        Command::OpenProject, false, false, true},
    {"File", ICON_FA_FOLDER_PLUS, "New project...", "Ctrl+N", ImGuiMod_Ctrl | ImGuiKey_N, 0, nullptr,
        Command::NewProject, false, false, true},
    {"File", ICON_FA_FOLDER_TREE, "Show project folder", "", 0, 0, &Available::showProject, Command::ShowProject, true},
    {"File", ICON_FA_FLOPPY_DISK, "Save", "Ctrl+S", ImGuiMod_Ctrl | ImGuiKey_S, 0, &Available::save, Command::Save,
        true, true, true},
    {"File", ICON_FA_FILE_IMPORT, "Preview import...", "", 0, 0, &Available::previewImport, Command::PreviewImport,
        false},
    {"File", ICON_FA_MAGNIFYING_GLASS, "Check terms", "", 0, 0, &Available::checkTerms, Command::CheckTerms, true},
    {"File", ICON_FA_RIGHT_FROM_BRACKET, "Quit", "Ctrl+Q", ImGuiMod_Ctrl | ImGuiKey_Q, 0, nullptr, Command::Quit, false,
        false, true},
    {"Edit", ICON_FA_ROTATE_LEFT, "Undo", "Ctrl+Z", ImGuiMod_Ctrl | ImGuiKey_Z, 0, &Available::undo, Command::Undo,
        false, false, false, nullptr, nullptr, &Available::undoName},
    {"Edit", ICON_FA_ROTATE_RIGHT, "Redo", "Ctrl+Shift+Z", ImGuiMod_Ctrl | ImGuiMod_Shift | ImGuiKey_Z,
        ImGuiMod_Ctrl | ImGuiKey_Y, &Available::redo, Command::Redo, false, false, false, nullptr, nullptr,
        &Available::redoName},
    {"View", nullptr, nullptr, nullptr, 0, 0, nullptr, Command::None, true},
    {"View", ICON_FA_MOON, "Dark", "", 0, 0, &Available::theme, Command::DarkTheme, false, false, false, "Theme",
        &Available::isDark},
    {"View", ICON_FA_SUN, "Light", "", 0, 0, &Available::theme, Command::LightTheme, false, false, false, "Theme",
        &Available::isLight},
    {"View", ICON_FA_MAGNIFYING_GLASS_PLUS, "Larger", "Ctrl+=", ImGuiMod_Ctrl | ImGuiKey_Equal,
        ImGuiMod_Ctrl | ImGuiKey_KeypadAdd, &Available::largerScale, Command::LargerScale, false, false, false,
        "Scale"},
    {"View", ICON_FA_MAGNIFYING_GLASS_MINUS, "Smaller", "Ctrl+-", ImGuiMod_Ctrl | ImGuiKey_Minus,
        ImGuiMod_Ctrl | ImGuiKey_KeypadSubtract, &Available::smallerScale, Command::SmallerScale, false, false, false,
        "Scale"},
    {"View", ICON_FA_EXPAND, "Normal", "Ctrl+0", ImGuiMod_Ctrl | ImGuiKey_0, ImGuiMod_Ctrl | ImGuiKey_Keypad0,
        &Available::normalScale, Command::NormalScale, true, false, false, "Scale"},
    {"View", ICON_FA_TERMINAL, "Command palette...", "Ctrl+Shift+P", ImGuiMod_Ctrl | ImGuiMod_Shift | ImGuiKey_P, 0,
        nullptr, Command::OpenPalette, false, false, true},
    {"View", ICON_FA_TABLE_COLUMNS, "Reset layout", "", 0, 0, &Available::resetLayout, Command::ResetLayout, false},
    {"View", ICON_FA_ARROWS_ROTATE, "Reload modules", "", 0, 0, nullptr, Command::ReloadModules, false},
    {"Help", ICON_FA_BOOK, "Open documentation", "", 0, 0, &Available::openDocumentation, Command::OpenDocumentation,
        false},
    {"Help", ICON_FA_CIRCLE_INFO, "About", "", 0, 0, nullptr, Command::About, false},
};

constexpr const char* Menus[]{"File", "Edit", "View", "Help"};

bool isAvailable(const Entry& entry, const Available& available) {
    return !entry.available || available.*entry.available;
}

bool isPressed(const Entry& entry) {
    // A field that can only be read takes the keys of undo without a use for them.
    constexpr ImGuiInputFlags Flags =
        ImGuiInputFlags_RouteGlobal | ImGuiInputFlags_RouteOverActive | ImGuiInputFlags_Repeat;
    for(ImGuiKeyChord chord: {entry.chord, entry.otherChord})
        if(chord && ImGui::Shortcut(chord, Flags)) return true;
    return false;
}

/** The label of a menu item, whose ID is its name whatever it is done to. */
class Label {
public:
    explicit Label(const Entry& entry, const Available& available) {
        append(entry.label);
        if(!entry.object) return;
        if(!(available.*entry.object).isEmpty()) append(" ");
        appendObject(available.*entry.object);
        append("###");
        append(entry.label);
    }

    operator const char*() const { return _text; }

private:
    void append(Containers::StringView text) {
        for(const char byte: text) append(byte);
    }

    /* The library takes two number signs for the end of what shows. */
    void appendObject(Containers::StringView name) {
        for(const char byte: name) {
            if(_size + Reserve >= sizeof(_text)) return;
            if(byte == '#' && _text[_size - 1] == '#') append(' ');
            append(byte);
        }
    }

    void append(char byte) {
        if(_size + 1 != sizeof(_text)) _text[_size++] = byte;
    }

    /** For what follows the object. */
    static constexpr std::size_t Reserve = 64;

    char _text[512]{};
    std::size_t _size = 0;
};

/** The keys as they are called on this system, where the library swaps some. */
const char* keysOf(const Entry& entry, char (&buffer)[32]) {
    if(!ImGui::GetIO().ConfigMacOSXBehaviors) return entry.keys;
    const Containers::StringView keys = entry.keys;
    const Containers::StringView rest = keys.hasPrefix("Ctrl+") ? keys.exceptPrefix("Ctrl+") : keys;
    std::snprintf(buffer, sizeof(buffer), "%s%s", rest.size() == keys.size() ? "" : "Cmd+", rest.data());
    return buffer;
}

void drawViewFlags(EditorState& state) {
    for(UnsignedInt view = 0; view != state.viewCount(); ++view)
        ImGui::MenuItem(state.viewTitle(view).data(), nullptr, &state.isViewOpen(view));
}

bool isMarked(const Entry& entry, const Available& available) { return entry.marked && available.*entry.marked; }

bool isIn(const Entry& entry, const char* const menu) { return Containers::StringView{entry.menu} == menu; }

/** @return whether it was chosen */
bool drawEntry(const Entry& entry, const Available& available) {
    char keys[32];
    return ImGui::MenuItemEx(Label{entry, available}, entry.icon, keysOf(entry, keys), isMarked(entry, available),
        isAvailable(entry, available));
}

/** Draws the menu of an entry inside of its menu, with all that are in it.
    @return the last of them */
const Entry* drawSubmenu(const Entry* const first, const Available& available, Command& chosen) {
    const MenuGuard menu{ImGui::BeginMenu(first->submenu)};
    const Entry* entry = first;
    for(; entry != std::end(Entries) && Containers::StringView{entry->submenu} == first->submenu; ++entry)
        if(menu && drawEntry(*entry, available)) chosen = entry->command;
    return entry - 1;
}

void drawMenu(const char* const name, EditorState& state, const Available& available, Command& chosen) {
    const MenuGuard menu{ImGui::BeginMenu(name)};
    if(!menu) return;
    for(const Entry* entry = std::begin(Entries); entry != std::end(Entries); ++entry) {
        if(!isIn(*entry, name)) continue;
        if(entry->submenu) entry = drawSubmenu(entry, available, chosen);
        else if(!entry->label) drawViewFlags(state);
        else if(drawEntry(*entry, available)) chosen = entry->command;
        if(entry->endsGroup) ImGui::Separator();
    }
}

}

Command draw(EditorState& state, const Available& available) {
    Command chosen = Command::None;
    if(const MainMenuBarGuard bar{ImGui::BeginMainMenuBar()}; bar)
        for(const char* name: Menus) drawMenu(name, state, available, chosen);
    const bool hasPopup = ImGui::IsPopupOpen(nullptr, ImGuiPopupFlags_AnyPopup);
    for(const Entry& entry: Entries)
        if((entry.duringTextInput || !ImGui::GetIO().WantTextInput) && (entry.duringPopup || !hasPopup) &&
            isAvailable(entry, available) && isPressed(entry))
            chosen = entry.command;
    return chosen;
}

std::vector<Item> items(const Available& available) {
    std::vector<Item> items;
    for(const Entry& entry: Entries) {
        // The palette is open already where it is offered.
        if(entry.command == Command::None || entry.command == Command::OpenPalette) continue;
        std::string path = std::string{entry.menu} + ": ";
        if(entry.submenu) path += std::string{entry.submenu} + ": ";
        char keys[32];
        items.push_back(Item{path + entry.label, keysOf(entry, keys), entry.command, isAvailable(entry, available)});
    }
    return items;
}

}
