#pragma once

#include "QuorvaneEditor/Host.h"
#include "app/DockLayout.h"

namespace QuorvaneEngine {

/** The layout of the windows in the open project, which its folder keeps in `.editor/imgui.ini`.

    All but @ref draw() is for the time between two frames. */
class QUORVANE_API ProjectLayout {
public:
    /** @param editor   with a job system; must outlive this object, as must the job system */
    explicit ProjectLayout(QuorvaneEditor& editor): _editor{&editor} {}

    /** Takes the layout of the project that was just opened in place of the present one. Where there is none, the windows begin in their
        first places; so they do, with a warning, where there is one that cannot be loaded. Jobs of the GUI thread run.
        @return whether there is one that was loaded */
    bool load();

    /** Writes the layout now, where the project has a folder for it and windows have been put into their places since it was opened.
        Where the file is a link, which may be a stranger's and lead anywhere, nothing is written, with a warning once for a project. Jobs of the GUI thread run. */
    void save();

    /** Schedules to write the layout, as @ref save() does, where the GUI library says that it has changed for a while. */
    void saveChanges();

    /** Puts the windows into their first places. */
    void reset() { _docking.reset(); }

    /** Draws what the windows are docked in. */
    void draw();

private:
    void schedule();

    QuorvaneEditor* _editor;
    DockLayout _docking;

    /** Whether the user knows that the layout of this project is not kept. */
    bool _isRefusalTold = false;
};

}
