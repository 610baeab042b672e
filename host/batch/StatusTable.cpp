#include "batch/StatusTable.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

#include "QuorvaneEditor/AllLanguages.h"
#include "batch/TextTable.h"
#include "fonts/FontWords.h"
#include "fonts/LanguageLetters.h"
#include "localization/LocalizationStatus.h"

namespace QuorvaneEngine {

namespace {

/** Columns and members, from what is finished to what is not begun. */
struct Column {
    TranslationState state;
    const char* title;
};

constexpr Column Columns[]{
    {TranslationState::Done, "Done"},
    {TranslationState::Review, "Review"},
    {TranslationState::Draft, "Draft"},
    {TranslationState::Stale, "Stale"},
    {TranslationState::Missing, "Missing"},
};

/** What a bar is made of. Colours by ECMA-48. */
struct Part {
    const char* meaning;
    const char* character;
    const char* ascii;
    const char* color;
};

constexpr Part Parts[]{
    {"done", "\u2588", "#", "\x1b[32m"},
    {"review or draft", "\u2593", "+", "\x1b[36m"},
    {"stale", "\u2592", "~", "\x1b[33m"},
    {"missing", "\u2591", ".", "\x1b[2m"},
};
constexpr const char* NoColor = "\x1b[0m";

std::string string(const Containers::StringView text) { return {text.data(), text.size()}; }

UnsignedInt percentOf(const LanguageStatus& status) {
    const std::size_t left = status.count(TranslationState::Missing) + status.count(TranslationState::Stale);
    return status.total() ? UnsignedInt((status.total() - left) * 100 / status.total()) : 100;
}

std::string drawn(const Part& part, const std::size_t count, const Terminal& terminal) {
    std::string text;
    for(std::size_t i = 0; i != count; ++i) text += terminal.isUtf8 ? part.character : part.ascii;
    return terminal.hasColors && count ? part.color + text + NoColor : text;
}

std::string barOf(const LanguageStatus& status, const std::size_t width, const Terminal& terminal) {
    const std::size_t counts[]{status.count(TranslationState::Done),
        status.count(TranslationState::Review) + status.count(TranslationState::Draft),
        status.count(TranslationState::Stale), status.count(TranslationState::Missing)};
    std::size_t cells[std::size(Parts)]{};
    std::size_t used = 0;
    for(std::size_t i = 0; i != std::size(Parts); ++i) {
        if(counts[i]) cells[i] = std::max<std::size_t>(1, counts[i] * width / status.total());
        used += cells[i];
    }
    // What rounding leaves or takes falls to the part where it shows least.
    std::size_t& largest = *std::max_element(std::begin(cells), std::end(cells));
    largest += width - used;

    std::string bar;
    for(std::size_t i = 0; i != std::size(Parts); ++i) bar += drawn(Parts[i], cells[i], terminal);
    return bar;
}

std::string legend(const Terminal& terminal) {
    std::string text;
    for(const Part& part: Parts) text += (text.empty() ? "" : "   ") + drawn(part, 1, terminal) + ' ' + part.meaning;
    return text + '\n';
}

TextTable tableOf(const Containers::ArrayView<const LanguageStatus> statuses, const Terminal& terminal,
    const bool hasNames, const std::size_t barWidth) {
    using Side = TextTable::Side;
    std::vector<Side> sides{Side::Left, Side::Left, Side::Right};
    std::vector<std::string> titles{"Language", "Translated", ""};
    for(const Column& column: Columns) {
        sides.push_back(Side::Right);
        titles.emplace_back(column.title);
    }
    if(hasNames) {
        sides.insert(sides.begin(), Side::Left);
        titles.insert(titles.begin() + 1, std::string{});
    }

    TextTable table{std::move(sides)};
    table.add(std::move(titles));
    for(const LanguageStatus& status: statuses) {
        std::vector<std::string> cells{string(AllLanguages[status.language].code)};
        if(hasNames) cells.push_back(string(AllLanguages[status.language].name));
        cells.push_back(barOf(status, barWidth, terminal));
        cells.push_back(std::to_string(percentOf(status)) + " %");
        for(const Column& column: Columns) cells.push_back(std::to_string(status.count(column.state)));
        table.add(std::move(cells));
    }
    return table;
}

}

std::string statusTable(const Containers::ArrayView<const LanguageStatus> statuses, const Terminal& terminal) {
    constexpr std::size_t ShortestBar = 10;
    constexpr std::size_t LongestBar = 40;
    std::size_t width = tableOf(statuses, terminal, true, ShortestBar).width();
    const bool hasNames = width <= terminal.width;
    if(!hasNames) width = tableOf(statuses, terminal, false, ShortestBar).width();
    const std::size_t left = terminal.width > width ? terminal.width - width : 0;
    const std::size_t bar = std::min(ShortestBar + left, LongestBar);
    return tableOf(statuses, terminal, hasNames, bar).text() + legend(terminal);
}

std::string letterLines(const Containers::ArrayView<const LanguageLetters> languages, const bool hasFonts) {
    std::string undrawn;
    std::string shaped;
    const auto add = [](std::string& list, const LanguageLetters& letters) {
        list += list.empty() ? "" : ", ";
        list += string(AllLanguages[letters.language].code);
    };
    for(const LanguageLetters& letters: languages) {
        if(letters.needsShaping()) add(shaped, letters);
        if(!letters.undrawn) continue;
        add(undrawn, letters);
        undrawn +=
            " (" + std::to_string(letters.undrawn) + ", such as " + FontWords::codePoint(letters.firstUndrawn) + ')';
    }
    std::string lines;
    if(!hasFonts) lines = "This machine has no fonts; which letters the editor can draw is known where it has some.\n";
    else if(!undrawn.empty()) lines = "Letters that no font of this machine has: " + undrawn + '\n';
    if(!shaped.empty()) lines += "Drawn letter by letter in the editor, which does no shaping: " + shaped + '\n';
    return lines;
}

void addStatus(const Containers::ArrayView<const LanguageStatus> statuses,
    const Containers::ArrayView<const LanguageLetters> letters, const bool hasFonts, rapidjson::Document& object) {
    auto& allocator = object.GetAllocator();
    const auto reference = [](const Containers::StringView text) {
        return rapidjson::StringRef(text.data(), rapidjson::SizeType(text.size()));
    };
    rapidjson::Value languages{rapidjson::kArrayType};
    for(std::size_t i = 0; i != statuses.size(); ++i) {
        const LanguageStatus& status = statuses[i];
        rapidjson::Value entry{rapidjson::kObjectType};
        entry.AddMember("language", reference(AllLanguages[status.language].code), allocator);
        entry.AddMember("name", reference(AllLanguages[status.language].name), allocator);
        entry.AddMember("percent", percentOf(status), allocator);
        entry.AddMember("total", status.total(), allocator);
        for(const Column& column: Columns)
            entry.AddMember(reference(translationStateName(column.state)), status.count(column.state), allocator);
        entry.AddMember("undrawn", hasFonts ? rapidjson::Value{letters[i].undrawn} : rapidjson::Value{}, allocator);
        entry.AddMember("needsShaping", letters[i].needsShaping(), allocator);
        languages.PushBack(entry, allocator);
    }
    object.AddMember("languages", languages, allocator);
    object.AddMember("hasFonts", hasFonts, allocator);
}

}
