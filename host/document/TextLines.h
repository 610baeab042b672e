#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace QuorvaneEngine {

/** The lines of a text, each of which must end with LF; none where the last does not. */
inline std::vector<std::string_view> linesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while(!text.empty()) {
        const std::size_t end = text.find('\n');
        if(end == std::string_view::npos) return {};
        lines.push_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    return lines;
}

}
