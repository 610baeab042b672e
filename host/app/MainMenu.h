#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** What the user can ask the host for, by menu or by keys. It is done between two frames. */
enum class Command : std::uint8_t {
    None,
    OpenProject,
    NewProject,
    ShowProject,
    Save,
    PreviewImport,
    CheckTerms,
    Quit,
    Undo,
    Redo,
    DarkTheme,
    LightTheme,
    LargerScale,
    SmallerScale,
    NormalScale,
    OpenPalette,
    ResetLayout,
    ReloadModules,
    OpenDocumentation,
    About,
    /* What the desktop or the system asks for, in no menu. */
    OpenDropped,
    EndKeeping
};

namespace MainMenu {

/** Which commands make sense now. */
struct Available {
    bool showProject = false;
    bool save = false;
    bool previewImport = false;
    bool checkTerms = false;
    bool resetLayout = false;
    bool undo = false;
    bool redo = false;
    bool openDocumentation = false;
    bool theme = false;
    bool largerScale = false;
    bool smallerScale = false;
    bool normalScale = false;

    /* What is marked. */
    bool isDark = false;
    bool isLight = false;

    /** What would be undone and redone, to follow the verb; empty where there is nothing. */
    Containers::StringView undoName;
    Containers::StringView redoName;
};

/** Draws the menu bar of the main window, and listens to the keys of its commands, which a text input that is being edited keeps
    for itself, but for those to save, to open or make a project, to quit, and of the palette. While a popup is open, whoever opened
    it is still at something: of the keys those to save alone work.
    @return what was chosen */
QUORVANE_API Command draw(EditorState& state, const Available& available);

/** A command of the menu, to be offered elsewhere. */
struct Item {
    /** The menus that lead to it and its name: "View: Scale: Larger". */
    std::string path;
    std::string keys;
    Command command;
    bool isAvailable;
};

/** All but the views, in the order of the menu. */
std::vector<Item> items(const Available& available);

}

}
