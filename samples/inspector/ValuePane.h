#pragma once

#include <map>
#include <string>
#include <vector>

#include "ValueRows.h"

namespace InspectorPlugin {

/** The right side: the values of what is selected, each with the widget of the toolkit that goes with it. Only rows that show are
    drawn, and the one that is being edited. */
class ValuePane {
public:
    /** Draws into the current window.
        @param selected     JSON Pointer of an object or array */
    void draw(Ui& ui, const std::string& selected);

private:
    float heightOf(const ValueRows::Row& row) const;
    void layOut();
    void drawRow(Ui& ui, const ValueRows::Row& row);
    void drawSection(const ValueRows::Row& row);
    void drawLabel(const ValueRows::Row& row) const;
    void drawWidget(Ui& ui, const ValueRows::Row& row);
    void drawNumbers(Ui& ui, const ValueRows::Row& row) const;
    void drawLines(Ui& ui, const ValueRows::Row& row) const;
    void drawList(Ui& ui, const ValueRows::Row& row);
    void drawFlags(Ui& ui, const ValueRows::Row& row) const;

    ValueRows _rows;

    /** Where each row begins, in pixels below the first one; one more for the end of the last. */
    std::vector<float> _tops;

    /** The line of each list that is selected, by path. */
    std::map<std::string, int> _lines;

    /** What is laid out. */
    float _frameHeight = 0.0f;

    /** The row that has the keyboard or the mouse; -1 for none. */
    int _active = -1;
};

}
