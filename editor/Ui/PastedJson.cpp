#include "Ui/PastedJson.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include <rapidjson/document.h>
#include <rapidjson/memorystream.h>

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

constexpr std::size_t MaxNumberSize = 100;
constexpr std::size_t MaxExponentDigits = 3;

bool isDigit(const char character) { return character >= '0' && character <= '9'; }

/** Looks for what would harm the JSON library, which itself knows the grammar. */
class Guard {
public:
    explicit Guard(const Containers::StringView text, const UnsignedInt maxDepth)
        : _at{text.begin()}, _end{text.end()}, _maxDepth{maxDepth} {}

    bool run() {
        while(_at != _end)
            if(!token()) return false;
        return true;
    }

private:
    bool token() {
        const char first = *_at;
        if(first == '"') return string();
        if(first == '-' || isDigit(first)) return number();
        ++_at;
        if(first == '[' || first == '{') return ++_depth <= _maxDepth;
        if((first == ']' || first == '}') && _depth) --_depth;
        return true;
    }

    bool string() {
        for(++_at; _at != _end; ++_at) {
            if(*_at == '"') {
                ++_at;
                return true;
            }
            if(*_at != '\\') continue;
            if(isLoneLowSurrogate()) return false;
            // On to its other half.
            if(isHighSurrogate() && _end - _at > UnitSize) _at += UnitSize;
            if(++_at == _end) break;
        }
        return true;
    }

    /** Of a `\uXXXX` that begins here, the second digit of those whose first one is D, zero where there is none. */
    char surrogateDigit() const {
        if(_end - _at < UnitSize || _at[1] != 'u' || (_at[2] != 'd' && _at[2] != 'D')) return '\0';
        return char(_at[3] >= 'a' ? _at[3] - 'a' + 'A' : _at[3]);
    }

    bool isHighSurrogate() const {
        const char digit = surrogateDigit();
        return digit == '8' || digit == '9' || digit == 'A' || digit == 'B';
    }

    /** The library takes it for a character. A high one without its other half, it refuses. */
    bool isLoneLowSurrogate() const {
        const char digit = surrogateDigit();
        return digit >= 'C' && digit <= 'F';
    }

    bool number() {
        const char* const begin = _at;
        std::size_t exponentDigits = 0;
        for(bool isExponent = false; _at != _end; ++_at) {
            if(isDigit(*_at)) exponentDigits += isExponent;
            else if(*_at == 'e' || *_at == 'E') isExponent = true;
            else if(*_at != '.' && *_at != '+' && *_at != '-') break;
        }
        return std::size_t(_at - begin) <= MaxNumberSize && exponentDigits <= MaxExponentDigits;
    }

    static constexpr std::ptrdiff_t UnitSize = 6;

    const char* _at;
    const char* _end;
    UnsignedInt _maxDepth;
    UnsignedInt _depth = 0;
};

bool hasNameTwice(const rapidjson::Value& value) {
    if(value.IsArray())
        return std::any_of(value.Begin(), value.End(), [](const auto& element) { return hasNameTwice(element); });
    if(!value.IsObject()) return false;
    std::vector<std::string_view> names;
    names.reserve(value.MemberCount());
    for(const auto& member: value.GetObject()) {
        if(hasNameTwice(member.value)) return true;
        names.emplace_back(member.name.GetString(), member.name.GetStringLength());
    }
    std::sort(names.begin(), names.end());
    return std::adjacent_find(names.begin(), names.end()) != names.end();
}

}

bool readPastedJson(const Containers::StringView text, const UnsignedInt maxDepth, rapidjson::Document& document) {
    const Containers::StringView json = text.exceptPrefix(text.hasPrefix("\xef\xbb\xbf"_s) ? 3 : 0);
    if(json.isEmpty() || !Guard{json, maxDepth}.run()) return false;
    rapidjson::MemoryStream stream{json.data(), json.size()};
    document.ParseStream<rapidjson::kParseDefaultFlags | rapidjson::kParseValidateEncodingFlag>(stream);
    return !document.HasParseError() && !hasNameTwice(document);
}

}
