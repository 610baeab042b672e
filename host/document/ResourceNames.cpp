#include "ResourceNames.h"

#include "PathTokens.h"

namespace QuorvaneEngine {

namespace {

rapidjson::Value& entryAt(rapidjson::Value& collection, rapidjson::SizeType position) {
    return (collection.MemberBegin() + std::ptrdiff_t(position))->value;
}

}

rapidjson::Value* ResourceNames::find(
    rapidjson::Value& collection, Containers::StringView type, Containers::StringView name) {
    if(!collection.IsObject() || !collection.MemberCount()) return nullptr;
    if(collection.MemberCount() <= MemberIndex::ScannedMembers) return scan(collection, name);

    auto found = _collections.find(type);
    if(found == _collections.end()) found = _collections.try_emplace(Containers::String{type}).first;
    Collection& index = found->second;
    if(!index.isIndexed || index.members != &*collection.MemberBegin() || index.count != collection.MemberCount())
        build(index, collection);
    if(!index.isIndexed) return scan(collection, name);
    return lookUp(index, collection, name);
}

void ResourceNames::noteChange(Containers::StringView path, bool hasEntry) {
    PathTokens tokens{path};
    Containers::StringView token;
    if(!tokens.next(token)) return clear();
    const auto found = _collections.find(token);
    if(found == _collections.end()) return;
    const bool isInsideEntry = tokens.next(token) && tokens.next(token);
    if(!isInsideEntry || token == "name" || !hasEntry) found->second.isIndexed = false;
}

bool ResourceNames::isNamed(rapidjson::Value& collection, rapidjson::SizeType position, Containers::StringView name) {
    const rapidjson::Value* const own = _members->find(entryAt(collection, position), "name");
    return own && own->IsString() && textOf(*own) == name;
}

rapidjson::Value* ResourceNames::lookUp(
    const Collection& index, rapidjson::Value& collection, Containers::StringView name) {
    const std::uint32_t position = index.positions.find(
        HashIndex::hash(name), [&](std::uint32_t candidate) { return isNamed(collection, candidate, name); });
    return position == HashIndex::None ? nullptr : &entryAt(collection, position);
}

rapidjson::Value* ResourceNames::scan(rapidjson::Value& collection, Containers::StringView name) {
    for(rapidjson::SizeType position = 0; position != collection.MemberCount(); ++position)
        if(isNamed(collection, position, name)) return &entryAt(collection, position);
    return nullptr;
}

void ResourceNames::build(Collection& index, rapidjson::Value& collection) {
    index.members = &*collection.MemberBegin();
    index.count = collection.MemberCount();
    index.isIndexed = true;
    index.positions.reset(index.count);
    for(rapidjson::SizeType position = 0; position != index.count && index.isIndexed; ++position) {
        const rapidjson::Value* const own = _members->find(entryAt(collection, position), "name");
        if(!own || !own->IsString()) continue;
        const Containers::StringView name = textOf(*own);
        if(lookUp(index, collection, name)) continue;
        index.isIndexed = index.positions.insert(HashIndex::hash(name), position);
    }
}

}
