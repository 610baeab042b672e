#include "JsonScanner.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <system_error>

#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

#include "HashIndex.h"
#include "JsonReader.h"
#include "Utf8.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

/** Objects up to this size are searched for duplicates pair by pair, which needs no memory. */
constexpr std::size_t SmallObject = 20;

/** Numbers up to this size without fraction and exponent fit 64 bits with their sign. */
constexpr std::size_t SmallNumber = 18;

bool isBlank(const char character) {
    return character == ' ' || character == '\n' || character == '\r' || character == '\t';
}

bool isDigit(const char character) { return character >= '0' && character <= '9'; }

/** The number of a text that is one: integers where 64 bits hold them, else doubles. */
rapidjson::Value numberOf(const Containers::StringView text) {
    if(!text.contains('.') && !text.contains('e') && !text.contains('E')) {
        std::int64_t integer = 0;
        std::uint64_t large = 0;
        if(std::from_chars(text.begin(), text.end(), integer).ec == std::errc{}) return rapidjson::Value{integer};
        if(std::from_chars(text.begin(), text.end(), large).ec == std::errc{}) return rapidjson::Value{large};
    }
    double number = text.hasPrefix('-') ? -0.0 : 0.0;
    std::from_chars(text.begin(), text.end(), number);
    return rapidjson::Value{number};
}

bool isSame(const Containers::StringView a, const Containers::StringView b) {
    if(a.size() != b.size()) return false;
    // Names of one object differ in their ends more often than in their beginnings.
    return a.isEmpty() || (a.back() == b.back() && std::memcmp(a.data(), b.data(), a.size()) == 0);
}

}

JsonScanner::JsonScanner(const Containers::StringView text): _begin{text.begin()}, _at{text.begin()}, _end{text.end()} {
    takeWord("\xef\xbb\xbf"_s);
}

JsonScanner::~JsonScanner() = default;

JsonToken JsonScanner::next() {
    skipBlanks();
    if(_levels.empty()) {
        if(_isStarted) return _at == _end ? JsonToken::End : JsonToken::Wrong;
        _isStarted = true;
        return value();
    }
    Level& level = _levels.back();
    if(level.isValueNext) {
        level.isValueNext = false;
        return value();
    }
    if(take(level.isObject ? '}' : ']')) return end();
    if(level.count) {
        if(!take(',')) return JsonToken::Wrong;
        skipBlanks();
    }
    ++level.count;
    return level.isObject ? member(level) : value();
}

void JsonScanner::skipBlanks() {
    while(_at != _end && isBlank(*_at)) ++_at;
}

bool JsonScanner::take(const char character) {
    if(_at == _end || *_at != character) return false;
    ++_at;
    return true;
}

bool JsonScanner::takeWord(const Containers::StringView word) {
    if(std::size_t(_end - _at) < word.size() || std::memcmp(_at, word.data(), word.size()) != 0) return false;
    _at += word.size();
    return true;
}

JsonToken JsonScanner::value() {
    if(_at == _end) return JsonToken::Wrong;
    switch(*_at) {
    case '"': return string() ? JsonToken::Text : JsonToken::Wrong;
    case '{': return begin(true);
    case '[': return begin(false);
    case 't': return takeWord("true"_s) ? JsonToken::True : JsonToken::Wrong;
    case 'f': return takeWord("false"_s) ? JsonToken::False : JsonToken::Wrong;
    case 'n': return takeWord("null"_s) ? JsonToken::Null : JsonToken::Wrong;
    default: return numberToken();
    }
}

JsonToken JsonScanner::member(Level& level) {
    if(_at == _end || *_at != '"' || !string()) return JsonToken::Wrong;
    _names.push_back(_text);
    skipBlanks();
    if(!take(':')) return JsonToken::Wrong;
    level.isValueNext = true;
    return JsonToken::Name;
}

JsonToken JsonScanner::begin(const bool isObject) {
    if(_levels.size() == JsonReader::MaxDepth) return JsonToken::Wrong;
    ++_at;
    _levels.push_back({isObject, false, 0, _names.size()});
    return isObject ? JsonToken::ObjectBegin : JsonToken::ArrayBegin;
}

JsonToken JsonScanner::end() {
    const Level level = _levels.back();
    _levels.pop_back();
    _count = level.count;
    if(!level.isObject) return JsonToken::ArrayEnd;
    if(hasNameTwice(level.firstName)) return JsonToken::Wrong;
    _names.resize(level.firstName);
    return JsonToken::ObjectEnd;
}

bool JsonScanner::string() {
    const char* const begin = ++_at;
    _at = skipPlainText(_at, _end);
    if(_at == _end) return false;
    if(*_at == '\\') return decode(begin);
    if(*_at != '"') return false;
    _text = {begin, std::size_t(_at++ - begin)};
    _isInPlace = true;
    return true;
}

bool JsonScanner::decode(const char* begin) {
    std::string& decoded = _decoded.emplace_back();
    for(;;) {
        decoded.append(begin, _at);
        if(_at == _end) return false;
        if(*_at == '"') break;
        if(*_at != '\\' || !decodeEscape(decoded)) return false;
        begin = _at;
        _at = skipPlainText(_at, _end);
    }
    ++_at;
    _text = {decoded.data(), decoded.size()};
    _isInPlace = false;
    return true;
}

bool JsonScanner::decodeEscape(std::string& decoded) {
    if(_end - _at < 2) return false;
    const char kind = _at[1];
    _at += 2;
    switch(kind) {
    case '"':
    case '\\':
    case '/': decoded += kind; return true;
    case 'b': decoded += '\b'; return true;
    case 'f': decoded += '\f'; return true;
    case 'n': decoded += '\n'; return true;
    case 'r': decoded += '\r'; return true;
    case 't': decoded += '\t'; return true;
    case 'u': break;
    default: return false;
    }

    Int character = codeUnit();
    if(character < 0 || (character >= 0xdc00 && character <= 0xdfff)) return false;
    if(character >= 0xd800 && character <= 0xdbff) {
        if(!takeWord("\\u"_s)) return false;
        const Int low = codeUnit();
        if(low < 0xdc00 || low > 0xdfff) return false;
        character = 0x10000 + ((character - 0xd800) << 10) + (low - 0xdc00);
    }
    const auto tail = [&](const Int shift) { return char(0x80 | ((character >> shift) & 0x3f)); };
    if(character < 0x80) decoded += char(character);
    else if(character < 0x800) decoded += {char(0xc0 | (character >> 6)), tail(0)};
    else if(character < 0x10000) decoded += {char(0xe0 | (character >> 12)), tail(6), tail(0)};
    else decoded += {char(0xf0 | (character >> 18)), tail(12), tail(6), tail(0)};
    return true;
}

/** The four hexadecimal digits that stand here, -1 where they do not. */
Int JsonScanner::codeUnit() {
    if(_end - _at < 4) return -1;
    Int unit = 0;
    for(const char* const end = _at + 4; _at != end; ++_at) {
        const char lower = *_at >= 'A' && *_at <= 'F' ? char(*_at - 'A' + 'a') : *_at;
        if(isDigit(lower)) unit = unit * 16 + (lower - '0');
        else if(lower >= 'a' && lower <= 'f') unit = unit * 16 + (lower - 'a' + 10);
        else return -1;
    }
    return unit;
}

JsonToken JsonScanner::numberToken() {
    const char* const begin = _at;
    std::uint64_t value = 0;
    std::size_t exponentDigits = 0;
    bool isInteger = true;
    for(bool isExponent = false; _at != _end; ++_at) {
        if(isDigit(*_at)) {
            value = value * 10 + std::uint64_t(*_at - '0');
            exponentDigits += isExponent;
        } else if(*_at == 'e' || *_at == 'E') isExponent = true;
        else if(*_at != '.' && *_at != '+' && *_at != '-') break;
        isInteger = isInteger && (isDigit(*_at) || (*_at == '-' && _at == begin));
    }
    const std::size_t size = std::size_t(_at - begin);
    if(!size || size > JsonReader::MaxNumberSize || exponentDigits > JsonReader::MaxExponentDigits)
        return JsonToken::Wrong;
    _text = {begin, size};
    _isInPlace = true;

    const bool isNegative = *begin == '-';
    const bool isShort =
        isInteger && size > isNegative && size <= SmallNumber && (begin[isNegative] != '0' || size == 1);
    if(isShort && !isNegative) _number = rapidjson::Value{value};
    else if(isShort) _number = rapidjson::Value{-std::int64_t(value)};
    else {
        rapidjson::MemoryStream stream{begin, size};
        rapidjson::BaseReaderHandler<> ignored;
        rapidjson::Reader reader;
        if(exponentDigits == JsonReader::MaxExponentDigits && !isInRange({begin, size})) return JsonToken::Wrong;
        // The library knows the grammar; but a zero with an exponent makes it count the bits of nothing.
        if(!reader.Parse<rapidjson::kParseNumbersAsStringsFlag>(stream, ignored)) return JsonToken::Wrong;
        _number = numberOf(_text);
    }
    return JsonToken::Number;
}

bool JsonScanner::isInRange(const Containers::StringView number) {
    double value;
    const bool isFitting = std::from_chars(number.begin(), number.end(), value).ec != std::errc::result_out_of_range;
    // Of as many digits as are allowed, none makes up for such a small exponent: what is too small is 0.
    return isFitting || number.exceptPrefix(1).contains('-');
}

bool JsonScanner::hasNameTwice(const std::size_t first) const {
    const auto begin = _names.begin() + std::ptrdiff_t(first);
    if(_names.size() - first <= SmallObject) {
        for(auto name = begin; name != _names.end(); ++name)
            for(auto other = begin; other != name; ++other)
                if(isSame(*name, *other)) return true;
        return false;
    }

    // Files that this project writes have their many names in order.
    const auto precedes = [](const Containers::StringView a, const Containers::StringView b) { return a < b; };
    if(std::adjacent_find(begin, _names.end(), [&](auto a, auto b) { return !precedes(a, b); }) == _names.end())
        return false;

    HashIndex index;
    index.reset(_names.size() - first);
    for(std::size_t i = first; i != _names.size(); ++i) {
        const std::uint32_t hash = HashIndex::hash(_names[i]);
        if(index.find(hash, [&](const std::uint32_t other) { return isSame(_names[other], _names[i]); }) !=
            HashIndex::None)
            return true;
        if(index.insert(hash, std::uint32_t(i))) continue;
        // Names that were chosen to share their hash.
        std::vector<Containers::StringView> sorted{begin, _names.end()};
        std::sort(sorted.begin(), sorted.end(), precedes);
        return std::adjacent_find(sorted.begin(), sorted.end(), isSame) != sorted.end();
    }
    return false;
}

}
