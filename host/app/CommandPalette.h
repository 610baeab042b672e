#pragma once

#include <string>
#include <vector>

#include <Corrade/Containers/Array.h>

#include "QuorvaneEditor/Host.h"
#include "app/MainMenu.h"

namespace QuorvaneEngine {

/** A popup in which every command of the menu, and every view, is found by a few letters of its name. */
class QUORVANE_API CommandPalette {
public:
    CommandPalette();

    /** Has the next frame open the popup, with nothing typed yet. */
    void open() { _opens = true; }

    /** Draws the popup where it is open. A view that is chosen is opened or closed at once.
        @return the command that was chosen; one that makes no sense now cannot be */
    Command draw(EditorState& state, const MainMenu::Available& available);

private:
    struct Row {
        std::string text;
        std::string keys;
        Command command;
        /** Of a row without a command. */
        UnsignedInt view;
        bool isAvailable;
        Int score;
    };

    void list(EditorState& state, const MainMenu::Available& available);
    void move();
    bool drawRow(std::size_t row, bool isMoved);

    bool _opens = false;

    /** NUL-terminated. */
    Containers::Array<char> _search;

    /** What fits, the best first. */
    std::vector<Row> _rows;
    std::size_t _selected = 0;
};

}
