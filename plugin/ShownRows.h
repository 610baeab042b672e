#pragma once

#include "TermRows.h"

namespace QuorvaneEngine {

/** The rows of the term table that a frame has to draw, as runs of rows in ascending order that neither touch nor overlap.

    Beside the rows that show these are the ones that the keyboard needs: the row that has its cursor, so that it is not lost while
    the wheel scrolls it away, and the rows that it may go to next. While the GUI's output is logged, all rows.

    To be made in the table, between its header row and the first row, after the rows have been laid out. */
class ShownRows {
public:
    explicit ShownRows(const TermRows& rows);

    const TermRows::Range* begin() const { return _ranges; }
    const TermRows::Range* end() const { return _ranges + _count; }

private:
    void add(TermRows::Range range);
    void sortAndJoin();

    static constexpr std::size_t Capacity = 5;

    TermRows::Range _ranges[Capacity];
    std::size_t _count = 0;
};

}
