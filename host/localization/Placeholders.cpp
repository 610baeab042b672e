#include "Placeholders.h"

#include "TextBlanks.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

/** Where the search for the end of a placeholder ended. */
struct PlaceholderEnd {
    /** Position of "}}", or of the end of the line. */
    std::size_t position;
    bool isFound;
};

/** @param content  where the content begins, of which at least one character comes before the end */
PlaceholderEnd findPlaceholderEnd(const Containers::StringView text, const std::size_t content) {
    for(std::size_t i = content; i < text.size(); ++i) {
        const char c = text[i];
        if(c == '\n' || c == '\r') return {i, false};
        // U+2028 and U+2029, which end a line in JavaScript
        if(c == '\xe2' && i + 2 < text.size() && text[i + 1] == '\x80' &&
            (text[i + 2] == '\xa8' || text[i + 2] == '\xa9'))
            return {i, false};
        if(c == '}' && i != content && i + 1 < text.size() && text[i + 1] == '}') return {i, true};
    }
    return {text.size(), false};
}

/** The position behind the ")" that ends a nesting, 0 where none does.
    @param position     behind the "("
    @param budget       how many characters may be looked at; counts down */
std::size_t findNestingEnd(const Containers::StringView text, std::size_t position, std::size_t& budget) {
    bool isInner = false;
    char quote = '\0';
    for(; position != text.size() && budget; ++position, --budget) {
        const char c = text[position];
        if(quote) {
            if(c == quote) quote = '\0';
        } else if(c == '"' || c == '\'') quote = c;
        else if(c == '(') {
            if(isInner) return 0;
            isInner = true;
        } else if(c == ')') {
            if(!isInner) return position + 1;
            isInner = false;
        }
    }
    return 0;
}

/** The key in front of options in braces, or of formats. */
Containers::StringView nestingKey(Containers::StringView content) {
    const Containers::StringView brace = content.find('{');
    const Containers::StringView end = content.findLast('}');
    const bool hasBraces = brace && end && brace.begin() < end.begin();
    if(!hasBraces) return TextBlanks::trimmed(content.prefix(content.findOr(',', content.end()).begin()));

    content = TextBlanks::trimmed(content.prefix(end.end()));
    for(std::size_t i = 0; i != content.size(); ++i) {
        if(content[i] != ',') continue;
        std::size_t next = i + 1;
        while(next != content.size() && content[next] == ' ') ++next;
        // A blank before the comma belongs to the key.
        if(next != content.size() && content[next] == '{') return content.prefix(i);
    }
    return content;
}

}

Placeholders::Placeholders() = default;

Placeholders::Placeholders(const Containers::StringView text) { read(text); }

Placeholders::~Placeholders() = default;

void Placeholders::read(const Containers::StringView text) {
    _placeholders.clear();
    _nestings.clear();
    readPlaceholders(text);
    readNestings(text);
}

void Placeholders::readPlaceholders(const Containers::StringView text) {
    std::size_t position = 0;
    while(const Containers::StringView begin = text.exceptPrefix(position).find("{{"_s)) {
        position = std::size_t(begin.data() - text.data());
        bool isUnescaped = position + 2 != text.size() && text[position + 2] == '-';
        PlaceholderEnd end = findPlaceholderEnd(text, position + (isUnescaped ? 3 : 2));
        if(!end.isFound && isUnescaped) {
            // "{{-}}" has the value "-".
            isUnescaped = false;
            end = findPlaceholderEnd(text, position + 2);
        }
        if(!end.isFound) {
            position = end.position;
            continue;
        }

        const Containers::StringView content = text.slice(position + (isUnescaped ? 3 : 2), end.position);
        if(!isUnescaped) {
            // The library replaces those with "-" first, and then finds no end for what is around them.
            const Containers::StringView inner = text.slice(position + 1, end.position).find("{{-"_s);
            if(inner && findPlaceholderEnd(text, std::size_t(inner.end() - text.data())).isFound) {
                position = std::size_t(inner.data() - text.data());
                continue;
            }
        }
        const Containers::StringView comma = content.findOr(',', content.end());
        const Containers::StringView name = TextBlanks::trimmed(content.prefix(comma.begin()));
        const Containers::StringView format = TextBlanks::trimmed(content.suffix(comma.end()));
        if(!name.isEmpty())
            _placeholders.push_back({text.slice(position, end.position + 2), name, format, isUnescaped});
        position = end.position + 2;
    }
}

void Placeholders::readNestings(const Containers::StringView text) {
    std::size_t budget = text.size() * 8;
    std::size_t position = 0;
    while(const Containers::StringView begin = text.exceptPrefix(position).find("$t("_s)) {
        const std::size_t content = std::size_t(begin.end() - text.data());
        const std::size_t end = findNestingEnd(text, content, budget);
        position = end ? end : content;
        if(end)
            _nestings.push_back(
                {text.slice(begin.data(), text.data() + end), nestingKey(text.slice(content, end - 1))});
        if(!budget) return;
    }
}

}
