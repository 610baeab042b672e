#pragma once

#include <unordered_map>

#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"
#include "Utils/StrHash.h"

namespace QuorvaneEngine {

/** Maps the IDs of one collection of resources to 16-bit indices, as the renderer and the thumbnails number them. */
class QUORVANE_API ResourceIndexMap {
public:
    ResourceIndexMap();
    ~ResourceIndexMap();
    ResourceIndexMap(const ResourceIndexMap&) = delete;
    ResourceIndexMap& operator=(const ResourceIndexMap&) = delete;

    /** The index of a resource. An unknown ID is inserted with index 0; the empty ID is always 0 and never stored. */
    UnsignedShort operator[](Containers::StringView id);

    /** Numbers a collection anew: its IDs get 1, 2, ... in document order. From 65,536 entries on there are no numbers left,
        and the rest share 0. */
    void assign(Containers::ArrayView<const Containers::StringView> ids);

    std::size_t size() const;

private:
    std::unordered_map<Containers::String, UnsignedShort, StrHash, StrEq> _indices;
};

}
