#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Text in columns, two blanks apart. */
class TextTable {
public:
    enum class Side { Left, Right };

    explicit TextTable(std::vector<Side> sides): _sides(std::move(sides)) {}

    /** A line with a cell for each column. */
    void add(std::vector<std::string> cells) { _rows.push_back(std::move(cells)); }

    /** Of the longest line, in characters; with the blanks that are left out at the ends of lines. */
    std::size_t width() const;

    /** All lines, each with its end and no blanks before that. */
    std::string text() const;

private:
    std::size_t width(std::size_t column) const;

    std::vector<Side> _sides;
    std::vector<std::vector<std::string>> _rows;
};

/** The number of characters (Unicode code points) of a UTF-8 text that are seen: those that change colours (ECMA-48, SGR) are not. */
std::size_t characterCount(std::string_view text);

}
