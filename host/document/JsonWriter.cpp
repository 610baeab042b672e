#include "JsonWriter.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>
#include <string_view>
#include <vector>

#include <rapidjson/document.h>

#include "JsonReader.h"

namespace QuorvaneEngine::JsonWriter {

namespace {

class Writer {
public:
    explicit Writer(const Layout& layout): _layout{layout} {}

    bool value(const rapidjson::Value& value, UnsignedInt depth);

    std::string text;

    /** Where a failure lies, from the innermost token outwards, and what it is. */
    std::string path;
    const char* reason = "";

private:
    bool refuse(const char* why) {
        reason = why;
        return false;
    }

    bool object(const rapidjson::Value& object, UnsignedInt depth);
    bool array(const rapidjson::Value& array, UnsignedInt depth);
    bool string(std::string_view characters);
    bool number(const rapidjson::Value& number);
    bool floatingPoint(double number);

    /** What stands before a member or element, and, where @p isEnd, before the closing bracket. */
    void separate(UnsignedInt depth, bool isFirst, bool isEnd);

    bool isWritten(const rapidjson::Value& value) const {
        return std::find(_layout.omitted.begin(), _layout.omitted.end(), &value) == _layout.omitted.end();
    }

    void prependToken(std::string_view token);

    const Layout& _layout;
};

bool Writer::value(const rapidjson::Value& value, const UnsignedInt depth) {
    switch(value.GetType()) {
    case rapidjson::kNullType: text += "null"; return true;
    case rapidjson::kFalseType: text += "false"; return true;
    case rapidjson::kTrueType: text += "true"; return true;
    case rapidjson::kStringType: return string({value.GetString(), value.GetStringLength()});
    case rapidjson::kNumberType: return number(value);
    case rapidjson::kObjectType:
    case rapidjson::kArrayType:
        if(depth >= JsonReader::MaxDepth) return refuse("containers are nested more than 256 levels deep");
        return value.IsObject() ? object(value, depth) : array(value, depth);
    }
    return true;
}

bool Writer::object(const rapidjson::Value& object, const UnsignedInt depth) {
    std::vector<const rapidjson::Value::Member*> sorted;
    const bool isSorted = depth == 0 && _layout.isRootSorted;
    if(isSorted) {
        for(const auto& member: object.GetObject()) sorted.push_back(&member);
        const auto name = [](const rapidjson::Value::Member* member) {
            return std::string_view{member->name.GetString(), member->name.GetStringLength()};
        };
        std::sort(sorted.begin(), sorted.end(), [&](auto* a, auto* b) { return name(a) < name(b); });
    }

    bool isFirst = true;
    text += '{';
    for(rapidjson::SizeType i = 0; i != object.MemberCount(); ++i) {
        const auto& member = isSorted ? *sorted[i] : object.MemberBegin()[std::ptrdiff_t(i)];
        if(!isWritten(member.value)) continue;
        separate(depth, isFirst, false);
        isFirst = false;
        const std::string_view name{member.name.GetString(), member.name.GetStringLength()};
        bool isGood = string(name);
        text += ": ";
        isGood = isGood && value(member.value, depth + 1);
        if(!isGood) {
            prependToken(name);
            return false;
        }
    }
    if(!isFirst) separate(depth, false, true);
    text += '}';
    return true;
}

bool Writer::array(const rapidjson::Value& array, const UnsignedInt depth) {
    text += '[';
    for(rapidjson::SizeType i = 0; i != array.Size(); ++i) {
        separate(depth, i == 0, false);
        if(!value(array[i], depth + 1)) {
            prependToken(std::to_string(i));
            return false;
        }
    }
    if(!array.Empty()) separate(depth, false, true);
    text += ']';
    return true;
}

void Writer::separate(const UnsignedInt depth, const bool isFirst, const bool isEnd) {
    if(!isFirst && !isEnd) text += ',';
    if(depth < _layout.brokenLevels) {
        text += '\n';
        text.append(2 * (isEnd ? depth : depth + 1), ' ');
    } else if(!isFirst && !isEnd) text += ' ';
}

bool Writer::string(const std::string_view characters) {
    static constexpr char Digits[]{"0123456789ABCDEF"};
    text += '"';
    const auto isPlain = [](char c) { return static_cast<unsigned char>(c) >= 0x20 && c != '"' && c != '\\'; };
    for(auto at = characters.begin(); at != characters.end();) {
        const auto end = std::find_if_not(at, characters.end(), isPlain);
        text.append(at, end);
        if(end == characters.end()) break;
        text += '\\';
        switch(*end) {
        case '"':
        case '\\': text += *end; break;
        case '\b': text += 'b'; break;
        case '\f': text += 'f'; break;
        case '\n': text += 'n'; break;
        case '\r': text += 'r'; break;
        case '\t': text += 't'; break;
        default:
            text += "u00";
            text += Digits[*end >> 4];
            text += Digits[*end & 15];
        }
        at = end + 1;
    }
    text += '"';
    return JsonReader::isUtf8({characters.data(), characters.size()}) || refuse("a text is not valid UTF-8");
}

bool Writer::number(const rapidjson::Value& number) {
    char buffer[24];
    std::to_chars_result end{};
    if(number.IsInt64()) end = std::to_chars(buffer, buffer + sizeof(buffer), number.GetInt64());
    else if(number.IsUint64()) end = std::to_chars(buffer, buffer + sizeof(buffer), number.GetUint64());
    else return floatingPoint(number.GetDouble());
    text.append(buffer, end.ptr);
    return true;
}

bool Writer::floatingPoint(const double number) {
    if(!std::isfinite(number)) return refuse("a number is not finite");
    const double size = std::abs(number);
    const bool isPlain = size == 0.0 || (size >= 1e-4 && size < 1e16);
    char buffer[40];
    const auto end = std::to_chars(
        buffer, buffer + sizeof(buffer), number, isPlain ? std::chars_format::fixed : std::chars_format::scientific);
    const std::string_view digits{buffer, std::size_t(end.ptr - buffer)};
    const std::size_t exponent = std::min(digits.find('e'), digits.size());
    text += digits.substr(0, exponent);
    if(digits.find('.') == std::string_view::npos) text += ".0";
    text += digits.substr(exponent);
    return true;
}

void Writer::prependToken(const std::string_view token) {
    std::string escaped{'/'};
    for(const char character: token) {
        if(character == '~') escaped += "~0";
        else if(character == '/') escaped += "~1";
        else escaped += character;
    }
    path.insert(0, escaped);
}

}

bool write(const rapidjson::Value& value, const Layout& layout, Containers::String& text, Containers::String& error) {
    Writer writer{layout};
    if(!writer.value(value, 0)) {
        const std::string message = (writer.path.empty() ? "the root" : writer.path) + ": " + writer.reason;
        error = Containers::String{message.data(), message.size()};
        return false;
    }
    writer.text += '\n';
    text = Containers::String{writer.text.data(), writer.text.size()};
    return true;
}

}
