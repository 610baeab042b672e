#include "JsonWriter.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>
#include <vector>

#include <rapidjson/document.h>

#include "JsonReader.h"
#include "JsonText.h"

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
    appendJsonString(text, characters);
    return JsonReader::isUtf8({characters.data(), characters.size()}) || refuse("a text is not valid UTF-8");
}

bool Writer::number(const rapidjson::Value& number) {
    if(number.IsDouble() && !std::isfinite(number.GetDouble())) return refuse("a number is not finite");
    appendJsonNumber(text, number);
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
