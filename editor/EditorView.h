#pragma once

#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/AbstractModule.h"

struct ImGuiContext;

namespace QuorvaneEngine {

/** Base of every view that a module contributes.

    An author overrides @ref title() and @ref draw() , begins the window with @ref beginWindow() and ends it with `ImGui::End()`,
    whatever the former returned. The host calls @ref draw() once a frame while the view is open. All on the GUI thread. */
class EditorView: public AbstractModule {
public:
    explicit EditorView(Corrade::PluginManager::AbstractManager& manager, const Containers::StringView& plugin);

    /** Re-runs @ref init() with the three pointers of a record from @ref unload() ; does nothing with a view whose data pointer is
        null. The size of the record is not checked. */
    void load(Containers::ArrayView<char> state) override;
    using AbstractModule::load;

    /** Calls @ref deinit() and returns a record of three pointers (24 bytes), valid inside this process. A final unload returns
        nothing and calls nothing. */
    Containers::Array<char> unload(bool final) override;

    /** 1, a view. */
    Int moduleType() override;

    /** The window's title, by which the view is known to the editor, too. A constant, NUL-terminated. */
    virtual Containers::StringView title() = 0;

    /** Binds the view to its editor and registers it by its title. A null argument is a broken precondition. Overriders call this
        first.
        @param context      the host's GUI context, which becomes the current one; must outlive the view, as must the others */
    virtual void init(ImGuiContext* context, EditorData* editorData, QuorvaneEditorApplication* application);

    virtual void deinit();

    /** Draws the view's window; called once a frame. */
    virtual void draw() = 0;

    virtual void update();
    virtual void mouseMoveEvent();
    virtual void mousePressEvent();
    virtual void mouseReleaseEvent();
    virtual void mouseScrollEvent();
    virtual void keyPressEvent();
    virtual void keyReleaseEvent();
    virtual void exitEvent();

    /** Brings what stands at a path of the project document before the user's eyes, in the next frame that shows the view: the
        window scrolls there, turns to the tab that has it, gives up a search that hides it. The host opens the window and brings it
        to the front. Called between two frames, also while the window is closed.

        The last one of the virtual functions, so that a module from before it was there works as ever, with this host and with one
        that does not know it: the host calls it only on views whose metadata say that they were built with it (`framework=2` in the
        stamp, by `quorvane_add_view()`). What is added to this class follows behind it, with the next number.
        @param path     JSON Pointer (RFC 6901); not kept
        @return whether the view is going to show it: false, the default, where it has no place for such a value, or where there is
                no value */
    virtual bool show(Containers::StringView path);

    QuorvaneEditor& editor() const;
    Ui& ui() const;

    /** The open flag of the view's window, which its close button clears. */
    bool& open() const;

    UnsignedInt viewId() const { return _viewId; }

    /** Whether the window or one of its children had the focus when it was begun. */
    bool isFocused() const { return _focused; }

protected:
    /** Begins the view's window, with @ref open() for its close button, and sets @ref _windowOpen and what @ref isFocused() tells.
        A docked window takes the focus as soon as the mouse is over it, which is told from the next frame on.
        @param flags    window flags of the GUI library */
    void beginWindow(int flags);

    EditorData* _editorData = nullptr;
    QuorvaneEditorApplication* _application = nullptr;
    UnsignedInt _viewId = 0;
    bool _focused = false;

    /** Whether there is something to draw: false while the window is collapsed or hidden. Set by @ref beginWindow() . */
    bool _windowOpen = false;
};

}
