#include "batch/TextTable.h"

#include <algorithm>

namespace QuorvaneEngine {

std::size_t TextTable::width(const std::size_t column) const {
    std::size_t width = 0;
    for(const std::vector<std::string>& row: _rows) width = std::max(width, characterCount(row[column]));
    return width;
}

std::size_t TextTable::width() const {
    std::size_t sum = 0;
    for(std::size_t column = 0; column != _sides.size(); ++column) sum += (column ? 2 : 0) + width(column);
    return sum;
}

std::string TextTable::text() const {
    std::vector<std::size_t> widths;
    for(std::size_t column = 0; column != _sides.size(); ++column) widths.push_back(width(column));

    std::string text;
    for(const std::vector<std::string>& row: _rows) {
        std::string line;
        for(std::size_t column = 0; column != _sides.size(); ++column) {
            const std::string blanks(widths[column] - characterCount(row[column]), ' ');
            if(column) line += "  ";
            line += _sides[column] == Side::Left ? row[column] + blanks : blanks + row[column];
        }
        line.erase(line.find_last_not_of(' ') + 1);
        text += line + '\n';
    }
    return text;
}

std::size_t characterCount(const std::string_view text) {
    std::size_t count = 0;
    for(std::size_t i = 0; i < text.size(); ++i) {
        if(text.substr(i, 2) == "\x1b[") i = std::min(text.find('m', i), text.size());
        else if((static_cast<unsigned char>(text[i]) & 0xc0) != 0x80) ++count;
    }
    return count;
}

}
