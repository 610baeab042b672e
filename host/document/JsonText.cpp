#include "JsonText.h"

#include <charconv>
#include <cmath>
#include <vector>

namespace QuorvaneEngine {

namespace {

/** The short escapes of RFC 8259, section 7; null where there is none. */
const char* shortEscape(char character) {
    switch(character) {
    case '"': return "\\\"";
    case '\\': return "\\\\";
    case '\b': return "\\b";
    case '\f': return "\\f";
    case '\n': return "\\n";
    case '\r': return "\\r";
    case '\t': return "\\t";
    default: return nullptr;
    }
}

bool needsEscape(char character) {
    return static_cast<unsigned char>(character) < 0x20 || character == '"' || character == '\\';
}

void appendDouble(std::string& out, double number) {
    if(!std::isfinite(number)) {
        out += "null";
        return;
    }
    const double size = std::abs(number);
    const bool isPlain = size == 0.0 || (size >= 1e-4 && size < 1e16);
    char digits[64];
    const char* const end = std::to_chars(
        digits, digits + sizeof(digits), number, isPlain ? std::chars_format::fixed : std::chars_format::scientific)
                                .ptr;
    const std::string_view text{digits, std::size_t(end - digits)};
    const std::string_view mantissa = text.substr(0, text.find('e'));
    out += mantissa;
    // Without a point it would read back as an integer.
    if(mantissa.find('.') == std::string_view::npos) out += ".0";
    out += text.substr(mantissa.size());
}

/** An object or array that is being printed, and how many of its members or elements are. */
struct Level {
    const rapidjson::Value* container;
    rapidjson::SizeType next;
};

void appendScalar(std::string& out, const rapidjson::Value& value) {
    if(value.IsString()) appendJsonString(out, {value.GetString(), value.GetStringLength()});
    else if(value.IsNumber()) appendJsonNumber(out, value);
    else out += value.IsTrue() ? "true" : value.IsFalse() ? "false" : "null";
}

}

void appendJsonString(std::string& out, std::string_view text) {
    out += '"';
    while(!text.empty()) {
        std::size_t plain = 0;
        while(plain != text.size() && !needsEscape(text[plain])) ++plain;
        out += text.substr(0, plain);
        if(plain == text.size()) break;
        if(const char* const escape = shortEscape(text[plain])) out += escape;
        else {
            out += "\\u00";
            out += "01"[text[plain] >> 4];
            out += "0123456789ABCDEF"[text[plain] & 15];
        }
        text.remove_prefix(plain + 1);
    }
    out += '"';
}

void appendJsonNumber(std::string& out, const rapidjson::Value& number) {
    if(!number.IsInt64() && !number.IsUint64()) return appendDouble(out, number.GetDouble());
    char digits[24];
    char* const end = digits + sizeof(digits);
    out.append(digits,
        number.IsInt64() ? std::to_chars(digits, end, number.GetInt64()).ptr
                         : std::to_chars(digits, end, number.GetUint64()).ptr);
}

void appendJson(std::string& out, const rapidjson::Value& root) {
    std::vector<Level> levels;
    const auto open = [&](const rapidjson::Value& value) {
        if(value.IsObject() || value.IsArray()) {
            out += value.IsObject() ? '{' : '[';
            levels.push_back({&value, 0});
        } else appendScalar(out, value);
    };

    open(root);
    while(!levels.empty()) {
        Level& level = levels.back();
        const bool isObject = level.container->IsObject();
        if(level.next == (isObject ? level.container->MemberCount() : level.container->Size())) {
            out += isObject ? '}' : ']';
            levels.pop_back();
            continue;
        }
        if(level.next) out += ',';
        const rapidjson::SizeType index = level.next++;
        if(!isObject) {
            open((*level.container)[index]);
            continue;
        }
        const auto member = level.container->MemberBegin() + std::ptrdiff_t(index);
        appendScalar(out, member->name);
        out += ':';
        open(member->value);
    }
}

}
