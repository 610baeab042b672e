#include "JsonReader.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <string_view>
#include <vector>

#include <rapidjson/document.h>
#include <rapidjson/error/error.h>
#include <rapidjson/memorystream.h>

#include "JsonScanner.h"
#include "Utf8.h"

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
            const std::size_t size = utf8SequenceSize(_at, _end);
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
        const Containers::StringView number{begin, std::size_t(_at - begin)};
        return exponentDigits < MaxExponentDigits || JsonScanner::isInRange(number) ||
            refuse(begin, "a number is too large");
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

/** Counts member names in the order of the text, up to a duplicate.
    @return the duplicate, null where there is none */
const rapidjson::Value* findDuplicate(const rapidjson::Value& value, std::size_t& names) {
    if(value.IsArray()) {
        for(const rapidjson::Value& element: value.GetArray())
            if(const rapidjson::Value* const found = findDuplicate(element, names)) return found;
    } else if(value.IsObject()) {
        const rapidjson::SizeType duplicate = duplicateMember(value);
        rapidjson::SizeType i = 0;
        for(const auto& member: value.GetObject()) {
            if(i++ == duplicate) return &member.name;
            ++names;
            if(const rapidjson::Value* const found = findDuplicate(member.value, names)) return found;
        }
    }
    return nullptr;
}

/** A name as a message has it, which is to be read by people. */
std::string shortName(const rapidjson::Value& name) {
    constexpr std::size_t MaxSize = 100;
    std::string text{view(name)};
    if(text.size() <= MaxSize) return text;
    std::size_t size = MaxSize;
    while((static_cast<unsigned char>(text[size]) & 0xc0) == 0x80) --size;
    return text.substr(0, size) + "...";
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

/** Tells a document, which is being made, what a text holds; false where the text is not right. */
bool scan(JsonScanner& scanner, rapidjson::Document& document) {
    for(;;) {
        const auto text = [&scanner] { return scanner.text().data(); };
        const auto size = [&scanner] { return rapidjson::SizeType(scanner.text().size()); };
        switch(scanner.next()) {
        case JsonToken::ObjectBegin: document.StartObject(); break;
        case JsonToken::ObjectEnd: document.EndObject(scanner.count()); break;
        case JsonToken::ArrayBegin: document.StartArray(); break;
        case JsonToken::ArrayEnd: document.EndArray(scanner.count()); break;
        case JsonToken::Name: document.Key(text(), size(), true); break;
        case JsonToken::Text: document.String(text(), size(), true); break;
        case JsonToken::Number: scanner.number().Accept(document); break;
        case JsonToken::True: document.Bool(true); break;
        case JsonToken::False: document.Bool(false); break;
        case JsonToken::Null: document.Null(); break;
        case JsonToken::End: return true;
        case JsonToken::Wrong: return false;
        }
    }
}

/** What a byte order mark says that is none of UTF-8. */
Containers::StringView otherEncoding(Containers::StringView text) {
    using namespace Containers::Literals;
    if(text.hasPrefix("\xff\xfe\0\0"_s) || text.hasPrefix("\0\0\xfe\xff"_s)) return "this is UTF-32, not UTF-8"_s;
    if(text.hasPrefix("\xff\xfe"_s) || text.hasPrefix("\xfe\xff"_s)) return "this is UTF-16, not UTF-8"_s;
    return {};
}

const char* placeOfRoot(Containers::StringView text) { return std::find_if_not(text.begin(), text.end(), isBlank); }

}

Containers::StringView withoutMark(const Containers::StringView bytes) {
    return bytes.hasPrefix("\xef\xbb\xbf") ? bytes.exceptPrefix(3) : bytes;
}

bool check(const Containers::StringView text, JsonError& error) {
    Check check{text};
    if(check.run()) return true;
    if(const Containers::StringView encoding = otherEncoding(text); !encoding.isEmpty()) {
        error = errorAt(text, 0, encoding);
        return false;
    }
    error = errorAt(text, std::size_t(check.problem.at - text.begin()), check.problem.reason);
    return false;
}

JsonError errorAt(const Containers::StringView text, const std::size_t offset, const Containers::StringView reason) {
    JsonError error{1, 1, reason};
    for(const char character: text.prefix(offset)) {
        if(character == '\n') {
            ++error.line;
            error.column = 1;
        } else if((static_cast<unsigned char>(character) & 0xc0) != 0x80) ++error.column;
    }
    return error;
}

JsonError errorOf(const Containers::StringView text, const rapidjson::ParseResult& result) {
    const std::size_t offset = std::min(result.Offset(), text.size());
    const char closing = result.Code() == rapidjson::kParseErrorObjectMissName ? '}'
        : result.Code() == rapidjson::kParseErrorValueInvalid                  ? ']'
                                                                               : '\0';
    if(offset != text.size() && closing && text[offset] == closing) {
        // What has to go is the comma, which may stand lines above.
        std::size_t last = offset;
        while(last != 0 && isBlank(text[last - 1])) --last;
        if(last != 0 && text[last - 1] == ',')
            return errorAt(text, last - 1,
                closing == '}' ? "a comma stands behind the last member" : "a comma stands behind the last element");
    }
    return errorAt(text, offset, reasonOf(result.Code(), offset == text.size()));
}

bool read(const Containers::StringView bytes, rapidjson::Document& document, JsonError& error) {
    rapidjson::Document parsed{&document.GetAllocator()};
    bool isRight = false;
    const auto fill = [bytes, &isRight](rapidjson::Document& made) {
        JsonScanner scanner{bytes};
        return isRight = scan(scanner, made);
    };
    parsed.Populate(fill);
    if(isRight) static_cast<rapidjson::Value&>(document).Swap(parsed);
    else findError(bytes, error);
    return isRight;
}

bool readObject(const Containers::StringView text, rapidjson::Document& document, JsonError& error) {
    rapidjson::Document parsed{&document.GetAllocator()};
    if(!read(text, parsed, error)) return false;
    if(!parsed.IsObject()) {
        const Containers::StringView content = withoutMark(text);
        error = errorAt(content, std::size_t(placeOfRoot(content) - content.begin()), "an object is expected here");
        return false;
    }
    static_cast<rapidjson::Value&>(document).Swap(parsed);
    return true;
}

bool findError(const Containers::StringView bytes, JsonError& error) {
    const Containers::StringView text = withoutMark(bytes);
    if(!check(text, error)) return true;

    rapidjson::Document parsed;
    rapidjson::MemoryStream stream{text.data(), text.size()};
    // What numbers are is of no interest, and a zero with an exponent makes the library count the bits of nothing.
    parsed.ParseStream<rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag>(stream);
    if(parsed.HasParseError()) {
        error = errorOf(text, parsed);
        return true;
    }

    std::size_t names = 0;
    const rapidjson::Value* const duplicate = findDuplicate(parsed, names);
    if(!duplicate) return false;
    const std::string reason = "the name \"" + shortName(*duplicate) + "\" stands twice in one object";
    error = errorAt(text, std::size_t(placeOfName(text, names) - text.begin()),
        Containers::StringView{reason.data(), reason.size()});
    return true;
}

bool isUtf8(const Containers::StringView text) {
    const char* at = text.begin();
    while((at = skipPlainText(at, text.end())) != text.end()) {
        if(static_cast<unsigned char>(*at) >= 0x80) return false;
        ++at;
    }
    return true;
}

}
