#include "QuorvaneEditor/ProjectFile.h"

#include <utility>

#include <rapidjson/document.h>

#include "DefaultValues.h"
#include "MemberIndex.h"
#include "PathTokens.h"
#include "QuorvaneEditor/ValueAccess.h"
#include "ResourceNames.h"

namespace QuorvaneEngine {

struct ProjectFile::Data {
    rapidjson::Document document{rapidjson::kObjectType};
    MemberIndex members;
    ResourceNames names{members};
    DefaultValues defaults;
    Int revision = 0;
    std::uint64_t lookups = 0;
};

ProjectFile::ProjectFile(): _data{Corrade::InPlaceInit} {}

ProjectFile::~ProjectFile() = default;

rapidjson::Document& ProjectFile::document() { return _data->document; }

rapidjson::MemoryPoolAllocator<rapidjson::CrtAllocator>& ProjectFile::allocator() {
    return _data->document.GetAllocator();
}

void ProjectFile::replace(rapidjson::Document&& document) {
    _data->document = std::move(document);
    _data->members.clear();
    _data->names.clear();
    ++_data->revision;
}

rapidjson::Value* ProjectFile::getValue(Containers::StringView path, bool withDefaults) {
    ++_data->lookups;
    rapidjson::Value* const value = valueAt(_data->document, path,
        [this](rapidjson::Value& object, Containers::StringView key) { return _data->members.find(object, key); });
    return value || !withDefaults ? value : _data->defaults.find(path);
}

rapidjson::Value* ProjectFile::member(rapidjson::Value& object, Containers::StringView key) {
    ++_data->lookups;
    return _data->members.find(object, key);
}

ValueAccess ProjectFile::root() { return ValueAccess{*this, &_data->document}; }

ValueAccess ProjectFile::resourceByName(Containers::StringView type, Containers::StringView name) {
    ++_data->lookups;
    rapidjson::Value* const collection = _data->members.find(_data->document, type);
    return ValueAccess{*this, collection ? _data->names.find(*collection, type, name) : nullptr};
}

void ProjectFile::noteChange(Containers::StringView path) {
    ++_data->revision;

    // What was removed is missing from the last object on the way that is still there: emptied containers go with it.
    std::size_t found = 0;
    valueAt(_data->document, path, [&](rapidjson::Value& object, Containers::StringView key) {
        rapidjson::Value* const value = _data->members.noteRemoval(object, key);
        if(value) ++found;
        return value;
    });
    _data->names.noteChange(path, found >= 2);
}

Int ProjectFile::revision() const { return _data->revision; }

std::uint64_t ProjectFile::lookupCount() const { return _data->lookups; }

}
