#pragma once

namespace QuorvaneEngine {

class QuorvaneEditor;

/** @file
    The layout of the windows, in the file `.editor/imgui.ini` of the project's folder. What stands in it is the GUI library's.

    Both functions hand the work to the editor's job system, which must be there, and return at once. The job runs on the GUI thread between two
    frames, with the GUI context and the project that are the current ones then. Each call is a job of its own. Whether it went well is
    not reported. */

/** Notes in the editor that a load was scheduled, and schedules it. A file that is not there changes nothing.
    @attention The GUI library trusts the file: one that contradicts itself can end the process. Whoever does not know where it comes from
        looks at it first. */
void scheduleUIStateLoad(QuorvaneEditor& editor);

/** Schedules that the layout is written, whole. The folder `.editor` is not made: where it is not there, nothing is written. */
void scheduleUIStateSave(QuorvaneEditor& editor);

}
