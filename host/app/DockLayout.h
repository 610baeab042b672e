#pragma once

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Where the windows of views are docked. */
class QUORVANE_API DockLayout {
public:
    /** Titles of the host's own panels, which go below the views. */
    static constexpr const char* Messages = "Messages";
    static constexpr const char* History = "History";
    static constexpr const char* Modules = "Plug-ins";
    static constexpr const char* Report = "Localization Report";

    /** The GUI's id of the dock space. */
    static UnsignedInt space();

    /** Whether there is a layout, drawn or loaded, which takes until the next frame after @ref reset(). */
    static bool isArranged();

    /** Takes all windows out of the dock space, so that the next frame arranges them anew. Between two frames. */
    void reset();

    /** Tells that the GUI library has loaded a layout. Views that it does not know are put into the centre by the next frame. */
    void noteLoad() { _arranged = 0; }

    /** Draws the dock space over what bars leave of the main window. Where there is no layout yet, arranges the views: all as tabs of
        one large panel, the host's own panels below. A view that is new joins the large panel, a panel of the host's those that lie
        below already. */
    void draw(const EditorState& state);

private:
    /** Views below this number have their places. */
    UnsignedInt _arranged = 0;
};

}
