#include "I18NextReader.h"

#include <string>

#include <Corrade/Containers/GrowableArray.h>
#include <rapidjson/document.h>

#include "../document/JsonReader.h"
#include "Catalogue.h"
#include "TermKey.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

struct Walk {
    Catalogue& catalogue;
    Containers::Array<LeftOut>& leftOut;
    std::string path;
    bool isTooLong = false;

    Containers::StringView key() const { return {path.data(), path.size()}; }

    // As deep as files are nested, which the JSON reader limits.
    void members(const rapidjson::Value& object, const bool isRoot) {
        const std::size_t size = path.size();
        for(const auto& member: object.GetObject()) {
            if(!isRoot) path += '.';
            append(TermKey::memberSegment({member.name.GetString(), member.name.GetStringLength()}));
            value(member.value);
            path.resize(size);
        }
    }

    void elements(const rapidjson::Value& array) {
        if(array.Size() > rapidjson::SizeType(TermKey::MaxElements)) {
            isTooLong = true;
            return;
        }
        const std::size_t size = path.size();
        Int index = 0;
        for(const rapidjson::Value& element: array.GetArray()) {
            path += '.';
            append(TermKey::elementSegment(index++));
            value(element);
            path.resize(size);
        }
    }

    void value(const rapidjson::Value& value) {
        if(value.IsString()) catalogue.add(key(), {value.GetString(), value.GetStringLength()});
        else if(value.IsNull()) catalogue.add(key(), {});
        else if(value.IsObject() && !value.ObjectEmpty()) members(value, false);
        else if(value.IsArray() && !value.Empty()) elements(value);
        else
            skip(value.IsNumber()     ? "is a number and no text"_s
                    : value.IsBool()  ? "is true or false and no text"_s
                    : value.IsArray() ? "is an empty array"_s
                                      : "is an empty object"_s);
    }

    void append(const Containers::StringView segment) { path.append(segment.data(), segment.size()); }

    void skip(const Containers::StringView reason) {
        Containers::arrayAppend(leftOut, LeftOut{Containers::String{key()}, Containers::String{reason}});
    }
};

bool refuse(JsonError& error, const Containers::StringView reason) {
    error.line = error.column = 1;
    error.reason = reason;
    return false;
}

}

bool readI18Next(
    const Containers::StringView bytes, Catalogue& catalogue, Containers::Array<LeftOut>& leftOut, JsonError& error) {
    rapidjson::Document document;
    if(!JsonReader::read(bytes, document, error)) return false;
    if(!document.IsObject()) return refuse(error, "the file holds no object"_s);
    Walk walk{catalogue, leftOut, {}};
    walk.members(document, true);
    return !walk.isTooLong || refuse(error, "an array has too many elements"_s);
}

}
