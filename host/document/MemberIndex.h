#pragma once

#include <unordered_map>

#include <Corrade/Containers/StringView.h>

#include <rapidjson/document.h>

#include "HashIndex.h"

namespace QuorvaneEngine {

/** Finds the members of large JSON objects of one document by hash instead of by comparing every key.

    Nothing in an object tells that it has changed, so the index checks itself: what it finds is compared with the key that
    stands there; what it does not find is believed only while the object's member array, its number of members and its last key
    are those that were indexed. Else the object is indexed anew, or, where members were only added, continued. A removal that is
    told by @ref noteRemoval() is followed in place. So every answer is right as long as no two members are removed and
    replaced by others without a look-up or a note in between. No views into the document are kept, for its strings move. */
class MemberIndex {
public:
    /** Objects with no more members are scanned. */
    static constexpr rapidjson::SizeType ScannedMembers = 32;

    /** The first member with a key, or null; null also for what is no object.
        @param object   a value of the document */
    rapidjson::Value* find(rapidjson::Value& object, Containers::StringView key);

    /** Tells that a member was perhaps erased from an object, those behind it moving down by one.
        @return what @ref find() does */
    rapidjson::Value* noteRemoval(rapidjson::Value& object, Containers::StringView key);

    /** Forgets everything: the document was replaced. */
    void clear() { _objects.clear(); }

    /** How many members have been read to index objects, which tells what building has cost. */
    std::size_t indexedMembers() const { return _indexedMembers; }

private:
    struct Object {
        const void* members = nullptr;
        rapidjson::SizeType count = 0;
        std::uint32_t lastHash = 0;

        /** Of members with one key the first alone is in the table. */
        bool hasDuplicates = false;

        /** Too many keys share their hash: looked up by scanning. */
        bool isScanned = false;

        HashIndex positions;
    };

    static bool isLastWhereIndexed(const Object& index, rapidjson::Value& object);
    static rapidjson::Value* lookUp(const Object& index, rapidjson::Value& object, Containers::StringView key);
    static bool followRemoval(Object& index, rapidjson::Value& object, Containers::StringView key);

    void build(Object& index, rapidjson::Value& object);
    void append(Object& index, rapidjson::Value& object, rapidjson::SizeType from);

    std::unordered_map<const rapidjson::Value*, Object> _objects;
    std::size_t _indexedMembers = 0;
};

}
