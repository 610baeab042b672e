#pragma once

#include <string>
#include <vector>

#include <Corrade/Containers/Array.h>
#include <imgui.h>

#include "QuorvaneEditor/Host.h"
#include "app/MessageLog.h"

namespace QuorvaneEngine {

/** The window with everything that was printed so far, and when: to be narrowed down by severity and by text, selected, copied. */
class QUORVANE_API MessagePanel {
public:
    MessagePanel();

    /** Draws the window. Costs what its visible lines cost.
        @param log      the same one every time
        @param open     cleared by the close button */
    void draw(const MessageLog& log, bool* open);

    /** The sign of a severity, as the icon font's text. */
    static const char* icon(MessageLog::Severity severity);

    static ImVec4 color(MessageLog::Severity severity);

private:
    bool drawTools();
    void list(const MessageLog& log, bool anew);
    bool matches(const MessageLog::Message& message) const;
    void drawRows(const MessageLog& log);
    void drawRow(const MessageLog& log, int row);
    void drawContextMenu(const MessageLog& log);
    void copy(const MessageLog& log, bool selectedOnly) const;

    bool _isShown[4]{true, true, true, true};

    /** NUL-terminated. */
    Containers::Array<char> _search;

    /** The messages that are shown, by their number since the beginning; and how many there were when they were listed. */
    std::vector<std::size_t> _rows;
    std::size_t _listed = 0;

    /** By the number of the message. */
    ImGuiSelectionBasicStorage _selection;
};

}
