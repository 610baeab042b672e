#include "MemberIndex.h"

#include "PathTokens.h"

namespace QuorvaneEngine {

namespace {

/** Entries of objects that are gone are found by nobody; beyond this number all are dropped. */
constexpr std::size_t MaxObjects = 4096;

Containers::StringView keyAt(rapidjson::Value& object, rapidjson::SizeType position) {
    return textOf((object.MemberBegin() + std::ptrdiff_t(position))->name);
}

const void* memberArray(rapidjson::Value& object) { return object.MemberCount() ? &*object.MemberBegin() : nullptr; }

}

rapidjson::Value* MemberIndex::find(rapidjson::Value& object, Containers::StringView key) {
    if(!object.IsObject()) return nullptr;
    const rapidjson::SizeType count = object.MemberCount();
    if(count <= ScannedMembers) return scanMembers(object, key);

    auto found = _objects.find(&object);
    if(found == _objects.end()) {
        if(_objects.size() >= MaxObjects) _objects.clear();
        found = _objects.try_emplace(&object).first;
    }
    Object& index = found->second;

    if(index.members != memberArray(object) || index.count > count) build(index, object);
    else if(index.count < count) {
        if(isLastWhereIndexed(index, object)) append(index, object, index.count);
        else build(index, object);
    }
    if(index.isScanned) return scanMembers(object, key);
    if(rapidjson::Value* const value = lookUp(index, object, key)) return value;
    if(isLastWhereIndexed(index, object)) return nullptr;
    build(index, object);
    return index.isScanned ? scanMembers(object, key) : lookUp(index, object, key);
}

rapidjson::Value* MemberIndex::noteRemoval(rapidjson::Value& object, Containers::StringView key) {
    if(!object.IsObject()) return nullptr;
    const auto found = _objects.find(&object);
    if(found != _objects.end()) {
        Object& index = found->second;
        if(object.MemberCount() <= ScannedMembers) _objects.erase(found);
        else if(index.members == memberArray(object) && index.count == object.MemberCount() + 1 && !index.isScanned &&
            !followRemoval(index, object, key))
            build(index, object);
    }
    return find(object, key);
}

bool MemberIndex::isLastWhereIndexed(const Object& index, rapidjson::Value& object) {
    return HashIndex::hash(keyAt(object, index.count - 1)) == index.lastHash;
}

rapidjson::Value* MemberIndex::lookUp(const Object& index, rapidjson::Value& object, Containers::StringView key) {
    const rapidjson::SizeType count = object.MemberCount();
    const std::uint32_t position = index.positions.find(HashIndex::hash(key),
        [&](std::uint32_t candidate) { return candidate < count && keyAt(object, candidate) == key; });
    return position == HashIndex::None ? nullptr : &(object.MemberBegin() + std::ptrdiff_t(position))->value;
}

bool MemberIndex::followRemoval(Object& index, rapidjson::Value& object, Containers::StringView key) {
    if(index.hasDuplicates) return false;
    const rapidjson::SizeType count = object.MemberCount();
    const auto stood = [&](rapidjson::SizeType now, rapidjson::SizeType then) {
        return index.positions.contains(HashIndex::hash(keyAt(object, now)), then);
    };
    // Who stood before the removed member must stand there still, and who stood behind it one place further down.
    const std::uint32_t hash = HashIndex::hash(key);
    const std::uint32_t position = index.positions.find(hash, [&](std::uint32_t candidate) {
        if(candidate && !stood(candidate - 1, candidate - 1)) return false;
        return candidate == count || stood(candidate, candidate + 1);
    });
    if(position == HashIndex::None) return false;

    index.positions.erase(hash, position);
    if(position != count) index.positions.closeGap(position);
    index.count = count;
    index.lastHash = HashIndex::hash(keyAt(object, count - 1));
    return true;
}

void MemberIndex::build(Object& index, rapidjson::Value& object) {
    index.members = memberArray(object);
    index.count = 0;
    index.hasDuplicates = false;
    index.isScanned = false;
    index.positions.reset(object.MemberCount());
    append(index, object, 0);
}

void MemberIndex::append(Object& index, rapidjson::Value& object, rapidjson::SizeType from) {
    const rapidjson::SizeType count = object.MemberCount();
    index.count = count;
    index.lastHash = HashIndex::hash(keyAt(object, count - 1));
    for(rapidjson::SizeType position = from; position != count && !index.isScanned; ++position) {
        const Containers::StringView key = keyAt(object, position);
        const std::uint32_t hash = HashIndex::hash(key);
        ++_indexedMembers;
        const std::uint32_t first =
            index.positions.find(hash, [&](std::uint32_t candidate) { return keyAt(object, candidate) == key; });
        // Of members with one key the first counts.
        if(first != HashIndex::None) index.hasDuplicates = true;
        else index.isScanned = !index.positions.insert(hash, position);
    }
}

}
