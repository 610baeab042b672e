#include "TextMarkup.h"

#include <algorithm>

#include "Placeholders.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

/** The longest that HTML knows, "&CounterClockwiseContourIntegral;". */
constexpr std::size_t MaxEntity = 33;

bool isLetter(const char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool isDigit(const char c) { return c >= '0' && c <= '9'; }
bool isHexadecimal(const char c) { return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

}

TextMarkup::TextMarkup(const Containers::StringView text): _text{text} {
    const Placeholders places{text};
    for(const Nesting& nesting: places.nestings()) addRange(nesting.text);
    for(const Placeholder& placeholder: places.placeholders()) addRange(placeholder.text);
    std::sort(_ranges.begin(), _ranges.end(), [](const Range& a, const Range& b) { return a.begin < b.begin; });
}

TextMarkup::~TextMarkup() = default;

std::size_t TextMarkup::end(const std::size_t position) {
    while(_next != _ranges.size() && _ranges[_next].end <= position) ++_next;
    if(_next != _ranges.size() && _ranges[_next].begin <= position) return _ranges[_next].end;
    switch(_text[position]) {
    case '<': return endOfTag(position);
    case '&': return endOfEntity(position);
    case '\\': return endOfEscape(position);
    }
    return position;
}

void TextMarkup::addRange(const Containers::StringView text) {
    const std::size_t begin = std::size_t(text.data() - _text.data());
    _ranges.push_back({begin, begin + text.size()});
}

std::size_t TextMarkup::endOfTag(const std::size_t position) const {
    const std::size_t name = position + (_text.exceptPrefix(position).hasPrefix("</"_s) ? 2 : 1);
    if(name >= _text.size() || !(isLetter(_text[name]) || isDigit(_text[name]) || _text[name] == '!')) return position;
    std::size_t range = _next;
    char quote = '\0';
    for(std::size_t i = name; i < _text.size(); ++i) {
        while(range != _ranges.size() && _ranges[range].end <= i) ++range;
        if(range != _ranges.size() && _ranges[range].begin <= i) {
            i = _ranges[range].end - 1;
            continue;
        }
        const char c = _text[i];
        if(quote) {
            if(c == quote) quote = '\0';
        } else if(c == '>') return i + 1;
        else if(c == '<') return position;
        // Anywhere else it is an apostrophe, as in "<3 isn't a tag".
        else if((c == '"' || c == '\'') && _text[i - 1] == '=') quote = c;
    }
    return position;
}

std::size_t TextMarkup::endOfEntity(const std::size_t position) const {
    const Containers::StringView rest = _text.slice(position + 1, std::min(_text.size(), position + MaxEntity));
    const Containers::StringView name = rest.prefix(rest.findOr(';', rest.begin()).begin());
    const bool isCode = name.hasPrefix("#x"_s) || name.hasPrefix("#X"_s);
    const bool isNumber = !isCode && name.hasPrefix('#');
    const Containers::StringView digits = name.exceptPrefix(isCode ? 2 : isNumber ? 1 : 0);
    if(digits.isEmpty() || !(isCode || isNumber || isLetter(digits.front()))) return position;
    for(const char c: digits)
        if(isCode ? !isHexadecimal(c) : !isDigit(c) && (isNumber || !isLetter(c))) return position;
    return position + name.size() + 2;
}

std::size_t TextMarkup::endOfEscape(const std::size_t position) const {
    const std::size_t kind = position + 1;
    if(kind == _text.size() || !(isLetter(_text[kind]) || isDigit(_text[kind]) || _text[kind] == '\\')) return kind;
    const std::size_t digits = _text[kind] == 'u' ? 4 : _text[kind] == 'x' ? 2 : 0;
    std::size_t end = kind + 1;
    while(end != _text.size() && end != kind + 1 + digits && isHexadecimal(_text[end])) ++end;
    return end;
}

}
