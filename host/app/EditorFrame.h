#pragma once

#include <cstdint>
#include <utility>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/Pointer.h>
#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"
#include "QuorvaneEditor/ProjectWatch.h"
#include "QuorvaneEditor/QuorvaneEditorApplication.h"
#include "Ui/Ui.h"
#include "app/Autosave.h"
#include "app/HeldCommand.h"
#include "app/MainMenu.h"
#include "app/ProjectAccess.h"
#include "app/ProjectChooser.h"
#include "app/ProjectLayout.h"
#include "app/Questions.h"
#include "app/TermExchange.h"
#include "app/ViewCondition.h"
#include "app/ViewSet.h"

namespace QuorvaneEngine {

class CommandPalette;
class EditorPanels;
class EditorSession;
class FileSystem;
class FontWatch;
class LeftOutModules;
class Look;
class MessageLog;
class ModuleLoader;
class RecentProjects;

/** The editor without its window: what happens between two frames, and what is drawn in one. It needs a GUI context and nothing
    that the context is shown on.

    What the user asks for in a frame is done before the next one, so that nothing changes under a view that is being drawn. */
class QUORVANE_API EditorFrame {
public:
    /** Lets the user choose a folder or a file; empty when nothing was chosen. */
    using PathDialog = TermExchange::PathDialog;

    /** What surrounds the editor on the desktop. What is missing, the menu offers in grey. */
    struct Desktop {
        /** Shows a folder in the desktop's file browser. */
        void (*showFolder)(Containers::StringView path) = nullptr;

        /** Opens a file or folder with the program that the user has for it. */
        void (*open)(Containers::StringView path) = nullptr;

        /** What there is to read about the editor. */
        Containers::String documentation;

        /** What the user opened before; must outlive the frame. */
        RecentProjects* recent = nullptr;

        /** What the menu changes of it; must outlive the frame. */
        Look* look = nullptr;

        /** Tells which languages can be shown; must outlive the frame. */
        FontWatch* fonts = nullptr;

        /** Which modules are not loaded because an editor died with them; must outlive the frame. */
        LeftOutModules* leftOut = nullptr;

        /** Whether there is a program that shows dialogs; null where there is. */
        bool (*hasDialogs)() = nullptr;
    };

    /** @param session          must outlive this object, as must the others
        @param conditions       not copied
        @param folderDialog     for a project, or a folder of terms
        @param archiveDialog    for a ZIP archive of terms
        @param fileSystem       where terms are; null for the disk */
    explicit EditorFrame(EditorSession& session, JobSystem& jobs, ModuleLoader& modules, MessageLog& log,
        Containers::ArrayView<const ViewCondition> conditions, PathDialog folderDialog, PathDialog archiveDialog,
        FileSystem* fileSystem = nullptr);

    /** Takes leave of the views, and makes the session forget the handlers that they may have registered. */
    ~EditorFrame();

    EditorFrame(const EditorFrame&) = delete;
    EditorFrame& operator=(const EditorFrame&) = delete;

    void setDesktop(Desktop desktop);

    /** What a project is opened for. */
    using Access = ProjectAccess::Kind;

    /** Opens a project in place of the present one and gives it fresh views; unsaved changes are lost. On failure everything is as
        before, and the reason is shown; where another program is writing the project, the user is asked whether to open it read-only.
        What is wrong with a project that can be worked with all the same is printed as
        warnings. The windows' layout is kept in the one project, and taken from the other. Between two frames. */
    bool open(Containers::StringView folder, Access access = Access::Write);

    /** What happens between two frames, in this order: jobs of the GUI thread, also those that keep the windows' layout, what the
        user asked for in the last frame, the publication of the revision, the views' conditions. */
    void prepare();

    /** Draws the frame, between its begin and its end. */
    void draw();

    /** Opens the project that the user has dropped onto the window, after asking for unsaved changes. Waits until no popup is open. What is no
        project is told in words. */
    void drop(Containers::Array<Containers::String>&& paths) { _dropped = std::move(paths); }

    /** Ends the editor, after asking for unsaved changes, which waits until no popup of a view is open. */
    void requestQuit() { _command = Command::Quit; }

    /** Ends the editor without a question, with the next frame or, where something is being typed, when that is part of the project, which takes
        one frame more. Unsaved changes are offered when the project is opened next; those of a project that is read-only are lost, with a warning. */
    void requestEnd() { _command = Command::EndKeeping; }

    /** Keeps unsaved changes for who opens the project next, in a moment in which nothing else can be done any more. */
    void keepUnsaved() { _autosave.keepNow(); }

    /** Whether unsaved changes are being kept, a part with every frame. */
    bool isKeeping() const { return _autosave.isBusy(); }

    bool isFinished() const { return _finished; }

    /** Whether a term that was chosen in the command palette has been shown since the last call: its mark fades for two seconds. */
    bool takeShownTerm() { return std::exchange(_isTermShown, false); }

    /** Whether another program has the open project, which cannot be saved as long as it does. */
    bool isReadOnly() const { return _access.kind() == Access::Read; }

    /** Why the last project could not be opened; empty when it could, and when the user has read it. */
    Containers::StringView failure() const { return _questions.failure(); }

    ViewSet& views() { return _views; }
    const TermExchange& exchange() const { return _exchange; }

private:
    void execute(Command command);
    void executeAnswer(Answer answer);
    void openNext(Containers::String folder);
    void takeDropped();
    void openDropped();
    void endKeeping();
    void drawStartPage();
    void showChosenTerm();
    void learnLanguages();
    void tellNewLanguages();
    void proceed();
    void restartViews();
    void askForSuspect();
    void load(const Containers::String& module);
    bool save();
    void updateAccess();
    bool keepsLayout() const;
    void lookAtDisk();
    void askForKept();
    void restore();
    bool askForChanges(Question question);
    void saveLayout();
    bool hasProject() const;
    MainMenu::Available available();

    EditorSession* _session;
    JobSystem* _jobs;
    MessageLog* _log;
    ProjectChooser _chooser;
    Ui _ui;
    QuorvaneEditorApplication _application;
    Containers::Pointer<EditorPanels> _panels;
    Containers::Pointer<CommandPalette> _palette;
    ProjectLayout _layout;
    ViewSet _views;
    TermExchange _exchange;
    Autosave _autosave;

    /** Of the project, as its views know them; and whether /languages has changed since. */
    Containers::Array<UnsignedInt> _languages;
    bool _areLanguagesTouched = false;
    ProjectWatch::Subscription _languageWatch;
    Questions _questions;
    Desktop _desktop;
    Command _command = Command::None;
    HeldCommand _held{_ui};
    Answer _answer = Answer::None;

    /** What was dropped and not looked at yet. */
    Containers::Array<Containers::String> _dropped;

    /** What @ref Command::OpenDropped is to open. */
    Containers::Array<Containers::String> _taken;

    /** The folder to open when unsaved changes are dealt with; empty to end the editor. */
    Containers::String _nextProject;

    /** The folder that the user is asked about, which another program is writing. */
    Containers::String _usedProject;

    ProjectAccess _access;

    /** State of the project's files on the disk of which the user wants to hear later, 0 for none. */
    std::uint64_t _putOff = 0;

    /** When to look next whether somebody else has changed the project, in seconds. */
    double _nextLook = 0.0;

    /** What the user wants to do after saving has been asked for. */
    bool _isProceeding = false;

    bool _isTermShown = false;

    bool _finished = false;
};

}
