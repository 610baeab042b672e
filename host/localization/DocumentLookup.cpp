#include "DocumentLookup.h"

#include "../document/MemberIndex.h"
#include "../document/PathTokens.h"

namespace QuorvaneEngine {

struct DocumentLookup::Data {
    rapidjson::Value& root;
    MemberIndex members;
};

// Looking up hands out values that may be changed, and changes none itself.
DocumentLookup::DocumentLookup(const rapidjson::Value& root)
    : _data{Corrade::InPlaceInit, const_cast<rapidjson::Value&>(root), MemberIndex{}} {}

DocumentLookup::~DocumentLookup() = default;

const rapidjson::Value* DocumentLookup::find(const Containers::StringView path) {
    return valueAt(_data->root, path, [this](rapidjson::Value& object, const Containers::StringView key) {
        return _data->members.find(object, key);
    });
}

const rapidjson::Value* memberOf(const rapidjson::Value* const object, const Containers::StringView name) {
    return object ? scanMembers(const_cast<rapidjson::Value&>(*object), name) : nullptr;
}

}
