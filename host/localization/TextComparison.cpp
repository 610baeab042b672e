#include "TextComparison.h"

#include <algorithm>
#include <iterator>
#include <string>

#include <Corrade/Utility/Format.h>
#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include "../document/PrintableText.h"
#include "TextBlanks.h"
#include "TextMarkup.h"

namespace QuorvaneEngine::TextComparison {

using namespace Containers::Literals;

namespace {

/** In bytes. */
constexpr std::size_t MaxShown = 60;
constexpr std::size_t MaxListed = 5;

constexpr Containers::StringView PluralName = "count"_s;

/** Something that is the same in two texts where the keys are equal. */
struct Keyed {
    std::string key;
    Containers::StringView written;

    bool operator<(const Keyed& other) const { return key < other.key; }
    bool operator==(const Keyed& other) const { return key == other.key; }
};

using List = std::vector<Keyed>;

/** Whether the same is written in the same order, as it is in most translations. */
template <class Place>
bool areAlike(const Containers::ArrayView<const Place> a, const Containers::ArrayView<const Place> b) {
    return std::equal(
        a.begin(), a.end(), b.begin(), b.end(), [](const Place& x, const Place& y) { return x.text == y.text; });
}

void sortUnique(List& list) {
    // Of those with one key the first that is written is shown.
    std::stable_sort(list.begin(), list.end());
    list.erase(std::unique(list.begin(), list.end()), list.end());
}

/** Those of @p a that @p b does not have. */
List difference(const List& a, const List& b) {
    List out;
    std::set_difference(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(out));
    return out;
}

std::string stringOf(const Containers::StringView text) { return {text.data(), text.size()}; }

Containers::StringView viewOf(const std::string& text) { return {text.data(), text.size()}; }

void appendShown(std::string& out, const Containers::StringView value) {
    const Containers::String text = shown(value);
    out.append(text.data(), text.size());
}

void appendList(std::string& out, const List& list) {
    const std::size_t count = std::min(list.size(), MaxListed);
    for(std::size_t i = 0; i != count; ++i) {
        if(i != 0) out += i + 1 == list.size() ? " and " : ", ";
        appendShown(out, list[i].written);
    }
    if(list.size() > count) out += " and " + std::to_string(list.size() - count) + " more";
}

Containers::String lacksAndHas(const List& lacked, const List& added) {
    std::string out;
    if(!lacked.empty()) {
        out += "lacks ";
        appendList(out, lacked);
        out += " of the source";
    }
    if(!added.empty()) {
        out += out.empty() ? "has " : ", and has ";
        appendList(out, added);
        out += ", which the source does not have";
    }
    return Containers::String{out.data(), out.size()};
}

List namesOf(const Placeholders& places) {
    List out;
    for(const Placeholder& one: places.placeholders()) out.push_back({stringOf(one.name), one.text});
    sortUnique(out);
    return out;
}

/** What stands in braces, however many there are, up to a comma. */
List bracesOf(const Containers::StringView text) {
    List out;
    for(std::size_t i = 0; i != text.size();) {
        if(text[i] != '{') {
            ++i;
            continue;
        }
        const std::size_t begin = i;
        while(i != text.size() && text[i] == '{') ++i;
        const std::size_t content = i;
        while(i != text.size() && text[i] != '}' && text[i] != '{') ++i;
        const Containers::StringView inner = text.slice(content, i);
        if(i == text.size() || text[i] == '{') continue;
        while(i != text.size() && text[i] == '}') ++i;
        out.push_back({stringOf(TextBlanks::trimmed(inner.prefix(inner.findOr(',', inner.end()).begin()))),
            text.slice(begin, i)});
    }
    return out;
}

/** Names, each with one way of writing its value. */
List formatsOf(const Placeholders& places) {
    List out;
    for(const Placeholder& one: places.placeholders()) {
        std::string key = stringOf(one.name);
        key.append({'\0', one.isUnescaped ? '-' : ' '});
        for(const char c: one.format)
            if(c != ' ') key += c;
        out.push_back({std::move(key), one.text});
    }
    sortUnique(out);
    return out;
}

/** Leaves out those whose name the other text does not have. */
void keepNames(List& list, const List& names) {
    std::erase_if(list, [&](const Keyed& one) {
        const Keyed name{one.key.substr(0, one.key.find('\0')), {}};
        return !std::binary_search(names.begin(), names.end(), name);
    });
}

List nestedKeys(const Placeholders& places) {
    List out;
    for(const Nesting& one: places.nestings()) out.push_back({stringOf(one.key), one.text});
    sortUnique(out);
    return out;
}

bool areFormatted(const Placeholders& places) {
    return std::any_of(places.placeholders().begin(), places.placeholders().end(),
        [](const Placeholder& one) { return one.isUnescaped || !one.format.isEmpty(); });
}

void appendBlanks(std::string& out, const Containers::StringView blanks) {
    if(blanks.isEmpty()) {
        out += "no blank";
        return;
    }
    out += '"';
    std::size_t i = 0;
    while(i != blanks.size() && i < MaxShown) {
        const std::size_t begin = i;
        UChar32 c;
        U8_NEXT(blanks.data(), i, blanks.size(), c);
        constexpr const char* Digits = "0123456789abcdef";
        if(c < 0x80) appendShown(out, blanks.slice(begin, i));
        // Blanks of other widths look the same.
        else out.append("\\u").append({Digits[c >> 12], Digits[c >> 8 & 15], Digits[c >> 4 & 15], Digits[c & 15]});
    }
    out += i == blanks.size() ? "\"" : "...\"";
}

void appendEnd(std::string& out, const char* const verb, const Containers::StringView source,
    const Containers::StringView translation) {
    if(source == translation) return;
    if(!out.empty()) out += ", and ";
    out.append(verb) += " with ";
    appendBlanks(out, translation);
    out += " where the source has ";
    appendBlanks(out, source);
}

}

Containers::String placeholders(const Placeholders& source, const Placeholders& translation,
    const std::vector<Containers::StringView>* const forms, const bool isOneNumber) {
    if(areAlike(source.placeholders(), translation.placeholders())) return {};
    const List expected = namesOf(source);
    const List present = namesOf(translation);
    List lacked = difference(expected, present);
    List added = difference(present, expected);
    if(forms)
        std::erase_if(added, [&](const Keyed& one) {
            return viewOf(one.key) == PluralName || std::binary_search(forms->begin(), forms->end(), viewOf(one.key));
        });
    if(isOneNumber) std::erase_if(lacked, [](const Keyed& one) { return viewOf(one.key) == PluralName; });
    return lacksAndHas(lacked, added);
}

Containers::String wrongBraces(const Containers::StringView sourceText, const Placeholders& source,
    const Containers::StringView text, const Placeholders& translation,
    const std::vector<Containers::StringView>* const forms) {
    List names = namesOf(source);
    if(forms)
        for(const Containers::StringView name: *forms) names.push_back({stringOf(name), name});
    sortUnique(names);
    names = difference(names, namesOf(translation));
    if(names.empty()) return {};

    List braced = bracesOf(text);
    const List meant = bracesOf(sourceText);
    std::erase_if(braced, [&](const Keyed& one) {
        return !std::binary_search(names.begin(), names.end(), one) ||
            std::any_of(meant.begin(), meant.end(), [&](const Keyed& other) { return other.written == one.written; });
    });
    if(braced.empty()) return {};
    sortUnique(braced);
    std::string out{"has "};
    appendList(out, braced);
    out += " as plain text, as a placeholder has two braces on each side";
    return Containers::String{out.data(), out.size()};
}

Containers::String formats(const Placeholders& source, const Placeholders& translation) {
    if(areAlike(source.placeholders(), translation.placeholders())) return {};
    if(!areFormatted(source) && !areFormatted(translation)) return {};
    const List expected = formatsOf(source);
    const List present = formatsOf(translation);
    List lacked = difference(expected, present);
    List added = difference(present, expected);
    keepNames(lacked, namesOf(translation));
    keepNames(added, namesOf(source));
    if(lacked.empty() && added.empty()) return {};

    std::string out;
    if(!added.empty()) {
        out += "has ";
        appendList(out, added);
    }
    if(!lacked.empty()) {
        out += added.empty() ? "lacks " : " where the source has ";
        appendList(out, lacked);
        if(added.empty()) out += " of the source";
    } else out += ", which the source does not have";
    return Containers::String{out.data(), out.size()};
}

Containers::String nestings(const Placeholders& source, const Placeholders& translation) {
    if(areAlike(source.nestings(), translation.nestings())) return {};
    const List expected = nestedKeys(source);
    const List present = nestedKeys(translation);
    return lacksAndHas(difference(expected, present), difference(present, expected));
}

Containers::String unknownNestings(const Placeholders& places, const Placeholders* const source,
    const std::function<bool(Containers::StringView)>& isTarget) {
    if(places.nestings().isEmpty()) return {};
    List unknown = nestedKeys(places);
    if(source) unknown = difference(unknown, nestedKeys(*source));
    std::erase_if(unknown, [&](const Keyed& one) {
        const Containers::StringView key{one.key.data(), one.key.size()};
        // What the application makes of a placeholder is not known here.
        return key.contains("{{"_s) || isTarget(key);
    });
    if(unknown.empty()) return {};
    std::string out{"has "};
    appendList(out, unknown);
    out += ", and no exported term has this key";
    return Containers::String{out.data(), out.size()};
}

Containers::String missingForms(const PluralCategories missing, const Containers::StringView language) {
    std::string names;
    std::size_t count = 0;
    for(std::size_t i = PluralCategoryCount; i-- != 0;) {
        if(!(missing & AllPluralCategories[i])) continue;
        const Containers::StringView name = pluralCategoryName(AllPluralCategories[i]);
        names.insert(0, count == 0 ? "" : count == 1 ? " and " : ", ").insert(0, name.data(), name.size());
        ++count;
    }
    return Corrade::Utility::format(
        "lacks the form{} {}, which {} has numbers for", count == 1 ? "" : "s", names.c_str(), language);
}

Containers::String outerBlanks(const Containers::StringView source, const Containers::StringView translation) {
    std::string out;
    appendEnd(out, "begins", TextBlanks::leading(source), TextBlanks::leading(translation));
    appendEnd(out, "ends", TextBlanks::trailing(source), TextBlanks::trailing(translation));
    return Containers::String{out.data(), out.size()};
}

bool hasLetters(const Containers::StringView text) {
    TextMarkup markup{text};
    for(std::size_t i = 0; i != text.size();) {
        const std::size_t end = markup.end(i);
        if(end != i) {
            i = end;
            continue;
        }
        UChar32 c;
        U8_NEXT(text.data(), i, text.size(), c);
        if(c >= 0 && u_isUAlphabetic(c)) return true;
    }
    return false;
}

Containers::String shown(const Containers::StringView value) {
    if(value.size() <= MaxShown) return printable(value);
    std::size_t end = MaxShown;
    while(end != 0 && U8_IS_TRAIL(value[end])) --end;
    return printable(value.prefix(end)) + "..."_s;
}

void addNames(const Placeholders& places, std::vector<Containers::StringView>& names) {
    for(const Placeholder& one: places.placeholders()) names.push_back(one.name);
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
}

}
