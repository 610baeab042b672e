#include "JsonReader.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <string_view>
#include <vector>

#include <rapidjson/document.h>
#include <rapidjson/error/error.h>
#include <rapidjson/memorystream.h>

namespace QuorvaneEngine::JsonReader {

namespace {

/** Objects up to this size are searched for duplicates pair by pair, which needs no memory. */
constexpr rapidjson::SizeType SmallObject = 12;

struct Problem {
    const char* at;
    Containers::String reason;
};

bool isBlank(char character) { return character == ' ' || character == '\t' || character == '\n' || character == '\r'; }

bool isDigit(char character) { return character >= '0' && character <= '9'; }

/** The size of the well-formed UTF-8 sequence at @p at, 0 where there is none (Unicode 15, table 3-7). */
std::size_t sequenceSize(const char* at, const char* end) {
    struct Form {
        unsigned char firstMin, firstMax, secondMin, secondMax, size;
    };
    static constexpr Form Forms[]{
        {0xc2, 0xdf, 0x80, 0xbf, 2},
        {0xe0, 0xe0, 0xa0, 0xbf, 3},
        {0xe1, 0xec, 0x80, 0xbf, 3},
        {0xed, 0xed, 0x80, 0x9f, 3},
        {0xee, 0xef, 0x80, 0xbf, 3},
        {0xf0, 0xf0, 0x90, 0xbf, 4},
        {0xf1, 0xf3, 0x80, 0xbf, 4},
        {0xf4, 0xf4, 0x80, 0x8f, 4},
    };
    const auto byte = [at](std::size_t i) { return static_cast<unsigned char>(at[i]); };
    if(byte(0) < 0x80) return 1;
    for(const Form& form: Forms) {
        if(byte(0) < form.firstMin || byte(0) > form.firstMax) continue;
        if(std::size_t(end - at) < form.size) return 0;
        if(byte(1) < form.secondMin || byte(1) > form.secondMax) return 0;
        for(std::size_t i = 2; i < form.size; ++i)
            if((byte(i) & 0xc0) != 0x80) return 0;
        return form.size;
    }
    return 0;
}

/** Looks at the text token by token and refuses what the parser would take, or would not survive. What else is wrong with the
    grammar is left to the parser, which sees the same tokens as far as it gets. */
class Check {
public:
    explicit Check(Containers::StringView text): _at{text.begin()}, _end{text.end()} {}

    bool run() {
        while(_at != _end)
            if(!token()) return false;
        return true;
    }

    Problem problem{};

private:
    bool refuse(const char* at, Containers::StringView reason) {
        problem = {at, reason};
        return false;
    }

    bool token() {
        const char first = *_at;
        if(first == '"') return string();
        if(first == '-' || isDigit(first)) return number();
        if(first == '{' || first == '[') {
            if(++_depth > MaxDepth) return refuse(_at, "containers are nested more than 256 levels deep");
        } else if((first == '}' || first == ']') && _depth) --_depth;
        return character(first == '\t' || first == '\n' || first == '\r');
    }

    /** Steps over one character. */
    bool character(bool mayBeControl) {
        const auto first = static_cast<unsigned char>(*_at);
        if(first >= 0x80) {
            const std::size_t size = sequenceSize(_at, _end);
            if(!size) return refuse(_at, "not valid UTF-8");
            _at += size;
            return true;
        }
        if(first < 0x20 && !mayBeControl) {
            char reason[32];
            std::snprintf(reason, sizeof(reason), "control character U+%04X", unsigned(first));
            return refuse(_at, reason);
        }
        ++_at;
        return true;
    }

    bool string() {
        for(++_at; _at != _end;) {
            if(*_at == '"') {
                ++_at;
                return true;
            }
            if(!(*_at == '\\' ? escape() : character(false))) return false;
        }
        return true;
    }

    bool escape() {
        const Int unit = escapedUnit();
        if(unit == -1) {
            ++_at;
            return _at == _end || character(false);
        }
        const char* const begin = _at;
        _at += 6;
        if(unit < 0xd800 || unit > 0xdfff) return true;
        const Int low = unit < 0xdc00 ? escapedUnit() : -1;
        if(low < 0xdc00 || low > 0xdfff) return refuse(begin, "a surrogate without its other half");
        _at += 6;
        return true;
    }

    /** The UTF-16 code unit of a `\uXXXX` that begins here, -1 where none does. */
    Int escapedUnit() const {
        if(_end - _at < 6 || _at[0] != '\\' || _at[1] != 'u') return -1;
        Int unit = 0;
        for(std::size_t i = 2; i != 6; ++i) {
            const char digit = _at[i];
            const char lower = digit >= 'A' && digit <= 'F' ? char(digit - 'A' + 'a') : digit;
            if(isDigit(digit)) unit = unit * 16 + (digit - '0');
            else if(lower >= 'a' && lower <= 'f') unit = unit * 16 + (lower - 'a' + 10);
            else return -1;
        }
        return unit;
    }

    bool number() {
        const char* const begin = _at;
        bool isExponent = false;
        std::size_t exponentDigits = 0;
        for(; _at != _end; ++_at) {
            if(*_at == 'e' || *_at == 'E') {
                isExponent = true;
                exponentDigits = 0;
            } else if(isDigit(*_at)) {
                if(isExponent && ++exponentDigits > MaxExponentDigits)
                    return refuse(begin, "a number's exponent has more than 3 digits");
            } else if(*_at != '.' && *_at != '-' && *_at != '+') break;
            if(std::size_t(_at - begin) >= MaxNumberSize) return refuse(begin, "a number has more than 100 characters");
        }
        return true;
    }

    const char* _at;
    const char* _end;
    UnsignedInt _depth = 0;
};

const char* reasonOf(rapidjson::ParseErrorCode code, bool isAtEnd) {
    const bool saysEnd =
        code == rapidjson::kParseErrorDocumentEmpty || code == rapidjson::kParseErrorStringMissQuotationMark;
    if(isAtEnd && !saysEnd) return "the text ends too early";
    switch(code) {
    case rapidjson::kParseErrorDocumentEmpty: return "a value is missing";
    case rapidjson::kParseErrorDocumentRootNotSingular: return "something follows the value";
    case rapidjson::kParseErrorValueInvalid: return "this is no value";
    case rapidjson::kParseErrorObjectMissName: return "the name of a member is missing";
    case rapidjson::kParseErrorObjectMissColon: return "a colon is missing behind the name of a member";
    case rapidjson::kParseErrorObjectMissCommaOrCurlyBracket: return "a comma or a closing brace is missing";
    case rapidjson::kParseErrorArrayMissCommaOrSquareBracket: return "a comma or a closing bracket is missing";
    case rapidjson::kParseErrorStringUnicodeEscapeInvalidHex: return "an escape lacks four hexadecimal digits";
    case rapidjson::kParseErrorStringUnicodeSurrogateInvalid: return "a surrogate without its other half";
    case rapidjson::kParseErrorStringEscapeInvalid: return "this is no escape";
    case rapidjson::kParseErrorStringMissQuotationMark: return "a string does not end";
    case rapidjson::kParseErrorStringInvalidEncoding: return "not valid UTF-8";
    case rapidjson::kParseErrorNumberTooBig: return "a number is too large";
    case rapidjson::kParseErrorNumberMissFraction: return "a number lacks digits behind its point";
    case rapidjson::kParseErrorNumberMissExponent: return "a number lacks the digits of its exponent";
    default: return "not valid JSON";
    }
}

std::string_view view(const rapidjson::Value& string) { return {string.GetString(), string.GetStringLength()}; }

/** The index of the first member whose name an earlier one has, the member count where there is none. */
rapidjson::SizeType duplicateMember(const rapidjson::Value& object) {
    const auto members = object.MemberBegin();
    const rapidjson::SizeType count = object.MemberCount();
    const auto name = [members](rapidjson::SizeType i) { return view(members[std::ptrdiff_t(i)].name); };

    if(count <= SmallObject) {
        for(rapidjson::SizeType i = 1; i < count; ++i)
            for(rapidjson::SizeType j = 0; j < i; ++j)
                if(name(i) == name(j)) return i;
        return count;
    }

    // Files that this project writes have their many names in order.
    rapidjson::SizeType i = 1;
    while(i < count && name(i - 1) < name(i)) ++i;
    if(i == count) return count;

    std::vector<rapidjson::SizeType> order(count);
    for(rapidjson::SizeType j = 0; j < count; ++j) order[j] = j;
    std::sort(order.begin(), order.end(), [&](auto a, auto b) {
        const int compared = name(a).compare(name(b));
        return compared < 0 || (compared == 0 && a < b);
    });
    rapidjson::SizeType first = count;
    for(rapidjson::SizeType j = 1; j < count; ++j)
        if(name(order[j - 1]) == name(order[j])) first = std::min(first, order[j]);
    return first;
}

/** Counts member names in the order of the text, up to a duplicate. */
bool findDuplicate(const rapidjson::Value& value, std::size_t& names) {
    if(value.IsArray()) {
        for(const rapidjson::Value& element: value.GetArray())
            if(findDuplicate(element, names)) return true;
    } else if(value.IsObject()) {
        const rapidjson::SizeType duplicate = duplicateMember(value);
        rapidjson::SizeType i = 0;
        for(const auto& member: value.GetObject()) {
            if(i++ == duplicate) return true;
            ++names;
            if(findDuplicate(member.value, names)) return true;
        }
    }
    return false;
}

/** Where the member name stands that @p names others precede, in a text that is valid. */
const char* placeOfName(Containers::StringView text, std::size_t names) {
    const char* const end = text.end();
    for(const char* at = text.begin(); at != end; ++at) {
        if(*at != '"') continue;
        const char* const begin = at;
        for(++at; *at != '"'; ++at)
            if(*at == '\\') ++at;
        const char* const next = std::find_if_not(at + 1, end, isBlank);
        if(next != end && *next == ':' && !names--) return begin;
    }
    return end;
}

JsonError errorAt(Containers::StringView text, const Problem& problem) {
    JsonError error{1, 1, problem.reason};
    for(const char* at = text.begin(); at != problem.at; ++at) {
        if(*at == '\n') {
            ++error.line;
            error.column = 1;
        } else if((static_cast<unsigned char>(*at) & 0xc0) != 0x80) ++error.column;
    }
    return error;
}

Containers::StringView withoutMark(Containers::StringView bytes) {
    return bytes.hasPrefix("\xef\xbb\xbf") ? bytes.exceptPrefix(3) : bytes;
}

const char* placeOfRoot(Containers::StringView text) { return std::find_if_not(text.begin(), text.end(), isBlank); }

}

bool read(const Containers::StringView bytes, rapidjson::Document& document, JsonError& error) {
    const Containers::StringView text = withoutMark(bytes);

    Check check{text};
    if(!check.run()) {
        error = errorAt(text, check.problem);
        return false;
    }

    rapidjson::Document parsed{&document.GetAllocator()};
    rapidjson::MemoryStream stream{text.data(), text.size()};
    parsed.ParseStream<rapidjson::kParseIterativeFlag | rapidjson::kParseFullPrecisionFlag>(stream);
    if(parsed.HasParseError()) {
        const std::size_t offset = std::min(parsed.GetErrorOffset(), text.size());
        error = errorAt(text, {text.begin() + offset, reasonOf(parsed.GetParseError(), offset == text.size())});
        return false;
    }

    std::size_t names = 0;
    if(findDuplicate(parsed, names)) {
        error = errorAt(text, {placeOfName(text, names), "a name stands twice in one object"});
        return false;
    }

    static_cast<rapidjson::Value&>(document).Swap(parsed);
    return true;
}

bool readObject(const Containers::StringView text, rapidjson::Document& document, JsonError& error) {
    rapidjson::Document parsed{&document.GetAllocator()};
    if(!read(text, parsed, error)) return false;
    if(!parsed.IsObject()) {
        const Containers::StringView content = withoutMark(text);
        error = errorAt(content, {placeOfRoot(content), "an object is expected here"});
        return false;
    }
    static_cast<rapidjson::Value&>(document).Swap(parsed);
    return true;
}

bool isUtf8(const Containers::StringView text) {
    for(const char* at = text.begin(); at != text.end();) {
        const std::size_t size = sequenceSize(at, text.end());
        if(!size) return false;
        at += size;
    }
    return true;
}

}
