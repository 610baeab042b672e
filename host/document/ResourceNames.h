#pragma once

#include <unordered_map>

#include <Corrade/Containers/String.h>

#include <rapidjson/document.h>

#include "HashIndex.h"
#include "MemberIndex.h"
#include "Utils/StrHash.h"

namespace QuorvaneEngine {

/** Finds entries of the collections of resources by their "name", without walking a collection for each question. A collection
    is walked again after a change of its names and when its entries are not where they were. */
class ResourceNames {
public:
    /** @param members  finds the members of entries; must outlive this object */
    explicit ResourceNames(MemberIndex& members): _members{&members} {}

    /** The first entry with a name, or null.
        @param collection   the value of the collection, of any type
        @param type         the name of the collection */
    rapidjson::Value* find(rapidjson::Value& collection, Containers::StringView type, Containers::StringView name);

    /** Tells that the value at a path was changed.
        @param hasEntry     whether the entry on the way of the path is still there */
    void noteChange(Containers::StringView path, bool hasEntry);

    void clear() { _collections.clear(); }

private:
    struct Collection {
        const void* members = nullptr;
        rapidjson::SizeType count = 0;
        bool isIndexed = false;
        HashIndex positions;
    };

    bool isNamed(rapidjson::Value& collection, rapidjson::SizeType position, Containers::StringView name);
    rapidjson::Value* lookUp(const Collection& index, rapidjson::Value& collection, Containers::StringView name);
    rapidjson::Value* scan(rapidjson::Value& collection, Containers::StringView name);
    void build(Collection& index, rapidjson::Value& collection);

    MemberIndex* _members;
    std::unordered_map<Containers::String, Collection, StrHash, StrEq> _collections;
};

}
