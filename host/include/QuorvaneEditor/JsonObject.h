#pragma once

#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Total access to one JSON value: whatever the document holds, every question has an answer. A missing value and a value of
    another type answer with the empty value. */
class QUORVANE_API JsonObject {
public:
    /** The value at a JSON Pointer (RFC 6901) of a document, or null where there is none or the pointer is not valid. Never
        creates anything and, unlike the accessors of a project, looks nothing up in an index. */
    static rapidjson::Value* valueByPointer(rapidjson::Document& document, Containers::StringView path);

    explicit JsonObject(rapidjson::Value* value = nullptr): _value{value} {}

    /** The value itself, null where there is none. */
    rapidjson::Value* value() const { return _value; }

    /** True for JSON `true` alone. */
    bool asBool() const;

    /** The text of a JSON string, NUL-terminated, viewing the document; else an empty text. It is valid until the next change. */
    Containers::StringView asString() const;

    /** The number of members of an object or elements of an array, else 0. */
    std::size_t size() const;

    bool isObject() const;

protected:
    rapidjson::Value* _value;
};

}
