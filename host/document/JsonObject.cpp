#include "QuorvaneEditor/JsonObject.h"

#include <rapidjson/document.h>

#include "PathTokens.h"

namespace QuorvaneEngine {

rapidjson::Value* JsonObject::valueByPointer(rapidjson::Document& document, Containers::StringView path) {
    return valueAt(document, path, scanMembers);
}

bool JsonObject::asBool() const { return _value && _value->IsTrue(); }

Containers::StringView JsonObject::asString() const { return _value ? textOf(*_value) : emptyText(); }

std::size_t JsonObject::size() const {
    if(!_value) return 0;
    if(_value->IsObject()) return _value->MemberCount();
    return _value->IsArray() ? _value->Size() : 0;
}

bool JsonObject::isObject() const { return _value && _value->IsObject(); }

}
