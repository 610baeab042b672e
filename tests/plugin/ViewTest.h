#pragma once

#include <string>

#include <Corrade/Containers/Pointer.h>
#include <Corrade/Containers/StringView.h>
#include <Corrade/PluginManager/Manager.h>

#include "EditorView.h"
#include "QuorvaneEditor/QuorvaneEditorApplication.h"
#include "Ui/Ui.h"
#include "document/EditorSession.h"
#include "support/GuiTest.h"

namespace QuorvaneEngine::Test {

/** The view from the very module file that is installed, on a project, in a GUI that the Test Engine uses. Everything that a frame
    of the editor does is done here, too. */
class ViewTest {
public:
    using Script = GuiTest::Script;

    /** @param project  JSON text of the whole document */
    explicit ViewTest(Containers::StringView project, const ImVec2& displaySize = {1280.0f, 900.0f});
    ~ViewTest();

    ViewTest(const ViewTest&) = delete;
    ViewTest& operator=(const ViewTest&) = delete;

    /** Takes another document for the project. */
    void replaceDocument(Containers::StringView project);

    /** Draws a frame's GUI. */
    void draw();

    /** Draws frames until the script has ended, with the view's window large and at a known place. */
    bool run(const Script& script);

    void frames(int count = 1);

    /** All text that the view shows in a frame, line by line, with "\n" between items and rows. */
    std::string shownText();

    /** The whole document as JSON text. */
    std::string document();

    EditorSession session;
    Ui ui;
    QuorvaneEditorApplication application;
    GuiTest gui;
    Corrade::PluginManager::Manager<AbstractModule> manager;
    Containers::Pointer<AbstractModule> module;

    /** The module's view. */
    EditorView* view = nullptr;

    /** Drawn beside the view, where set. */
    GuiTest::Gui beside;

    /** Whether the view's window is docked. */
    bool docked = false;

    bool capturesText = false;
    std::string capturedText;
};

/** @{ @name What a user does and sees */

/** Whether the frame drawn last has a triangle's corner of exactly this colour inside of a rectangle. */
bool paints(ImU32 color, const ImRect& where);

/** The window of the rows below the tab bar: "termtablebody" or "languagestablebody". */
ImGuiWindow* childWindow(ImGuiTestContext& user, const char* name);

/** A row by its label, or an item of a row by "label/item", scrolled to where it is drawn. Its ID is 0 where there is none. */
ImGuiTestItemInfo rowItem(ImGuiTestContext& user, const char* child, const char* path);

/** Types a text into the search bar of a tab in place of what is there: "##termsearch" or "##languagesearch". */
void search(ImGuiTestContext& user, const char* bar, const char* text);

void selectTab(ImGuiTestContext& user, const char* tab);

/** The box of a term, scrolled into view and clicked. */
void tick(ImGuiTestContext& user, const char* term);

/** @} */

/** Opens the context menu of a language's row. */
void openContextMenu(ImGuiTestContext& user, const char* language);

/** Opens the popup of the languages that can be added, from any tab. */
void openLanguagePopup(ImGuiTestContext& user);

/** The window of that popup, null where it is closed, and of the list in it. */
ImGuiWindow* languagePopup(ImGuiTestContext& user);
ImGuiWindow* languageList(ImGuiTestContext& user);

/** The row of a language in that list, scrolled into view. Its ID is 0 where there is none. */
ImGuiTestItemInfo offeredLanguage(ImGuiTestContext& user, Containers::StringView language);

/** A number of documents have these languages and no more. */
constexpr char English[] = R"({"languages": {"en": {"isDefault": true}}})";

}
