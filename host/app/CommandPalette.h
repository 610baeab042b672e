#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"
#include "app/MainMenu.h"
#include "app/TermSearch.h"

namespace QuorvaneEngine {

/** A popup in which every command of the menu, and every view, is found by a few letters of its name, and every term of the project
    by letters of its key or text. What fits best comes first, commands before terms that fit as well. Terms of a large project
    appear over several frames. */
class QUORVANE_API CommandPalette {
public:
    /** @param project  must outlive this object */
    explicit CommandPalette(ProjectFile& project);

    /** Has the next frame open the popup, with nothing typed yet. */
    void open() { _opens = true; }

    /** Draws the popup where it is open. A view that is chosen is opened or closed at once.
        @return the command that was chosen; one that makes no sense now cannot be */
    Command draw(EditorState& state, const MainMenu::Available& available);

    /** The path of the term that was chosen since the last call, a JSON Pointer; empty where none was. */
    Containers::String takeTerm();

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

    /** A row of the list: a command, or a term that was found, where @ref command is null. */
    struct Shown {
        const Row* command;
        const TermSearch::Found* term;
    };

    /** What the user has moved to, which stays selected when others are found before it. */
    struct Selection {
        enum Kind : unsigned char { First, Command, Term };

        Kind kind = First;

        /** The command's place in @ref _rows , or the term's number. */
        std::size_t number = 0;
    };

    void list(EditorState& state, const MainMenu::Available& available);
    void merge();
    bool isSelected(const Shown& shown) const;
    void select(std::size_t row);
    bool move();
    bool drawList();
    bool drawRow(std::size_t row, bool isMoved);
    bool drawCommand(const Row& command, bool isSelected);
    bool drawTerm(const TermSearch::Found& term, bool isSelected);
    Command choose(EditorState& state);

    bool _opens = false;

    /** NUL-terminated. */
    Containers::Array<char> _search;

    /** The commands that fit, the best first. */
    std::vector<Row> _rows;
    TermSearch _terms;

    /** Both, as they are shown. */
    std::vector<Shown> _shown;
    Selection _selection;

    /** The place of the selection in the list. */
    std::size_t _selected = 0;

    /** Whether Enter was pressed before all terms had been looked at. */
    bool _isEntered = false;

    Containers::String _chosenTerm;
};

}
