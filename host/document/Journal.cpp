#include "Journal.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "TextLines.h"

namespace QuorvaneEngine {

namespace {

constexpr std::string_view Format{"quorvane-journal 1"};
constexpr std::string_view End{"end"};
constexpr std::string_view Directions[]{"complete", "restore"};
constexpr std::string_view Actions[]{"replace", "create", "remove"};

/** The index of @p word among @p words, or their number. */
template <std::size_t count> std::size_t indexOf(const std::string_view (&words)[count], std::string_view word) {
    return std::size_t(std::find(words, words + count, word) - words);
}

}

bool Journal::isPath(const Containers::StringView path) {
    const std::string_view whole{path.data(), path.size()};
    const auto isForbidden = [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == '\\'; };
    if(std::any_of(whole.begin(), whole.end(), isForbidden)) return false;
    for(std::size_t begin = 0; begin <= whole.size();) {
        const std::size_t end = std::min(whole.find('/', begin), whole.size());
        const std::string_view component = whole.substr(begin, end - begin);
        if(component.empty() || component == "." || component == "..") return false;
        begin = end + 1;
    }
    return true;
}

Containers::Optional<Journal> Journal::fromText(const Containers::StringView text) {
    const std::vector<std::string_view> lines = linesOf({text.data(), text.size()});
    if(lines.size() < 3 || lines.front() != Format || lines.back() != End) return {};

    Journal journal;
    const std::size_t direction = indexOf(Directions, lines[1]);
    if(direction == std::size(Directions)) return {};
    journal.direction = Direction(direction);

    journal.entries = Containers::Array<Entry>{Corrade::ValueInit, lines.size() - 3};
    for(std::size_t i = 0; i != journal.entries.size(); ++i) {
        const std::string_view line = lines[i + 2];
        const std::size_t blank = std::min(line.find(' '), line.size() - 1);
        const std::size_t action = line.empty() ? std::size(Actions) : indexOf(Actions, line.substr(0, blank));
        if(action == std::size(Actions)) return {};
        const std::string_view path = line.substr(blank + 1);
        journal.entries[i] = {Action(action), Containers::String{path.data(), path.size()}};
        if(!isPath(journal.entries[i].path)) return {};
    }
    return Containers::Optional<Journal>{std::move(journal)};
}

Containers::String Journal::text() const {
    std::string text;
    const auto append = [&text](auto... parts) { (text.append(parts), ...); };
    append(Format, "\n", Directions[std::size_t(direction)], "\n");
    for(const Entry& entry: entries)
        append(Actions[std::size_t(entry.action)], " ", std::string_view{entry.path.data(), entry.path.size()}, "\n");
    append(End, "\n");
    return Containers::String{text.data(), text.size()};
}

}
