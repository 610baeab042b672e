#pragma once

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

class ChangeSteps;

/** The window that lists the steps of the change log, where a click goes to the state behind a step. */
class QUORVANE_API HistoryPanel {
public:
    static constexpr Int Nowhere = -1;

    /** Draws the window. Costs what its visible lines cost.
        @param steps        up to date
        @param isSettled    whether there is no open group of changes, in which nothing can be undone
        @param open         cleared by the close button
        @return how many of the steps the user wants to be applied, @ref Nowhere when nothing was clicked */
    Int draw(ChangeSteps& steps, bool isSettled, bool* open);

private:
    void drawRow(ChangeSteps& steps, std::size_t row);

    /** The row that was last in sight as the present one. */
    std::size_t _seen = 0;
    Int _clicked = Nowhere;
};

}
