#include "QuorvaneEditor/ResourceIndexMap.h"

#include <limits>

#include <Corrade/Containers/ArrayView.h>

namespace QuorvaneEngine {

ResourceIndexMap::ResourceIndexMap() = default;

ResourceIndexMap::~ResourceIndexMap() = default;

UnsignedShort ResourceIndexMap::operator[](Containers::StringView id) {
    if(id.isEmpty()) return 0;
    const auto found = _indices.find(id);
    if(found != _indices.end()) return found->second;
    _indices.emplace(Containers::String{id}, UnsignedShort{});
    return 0;
}

void ResourceIndexMap::assign(Containers::ArrayView<const Containers::StringView> ids) {
    _indices.clear();
    UnsignedInt next = 1;
    for(const Containers::StringView id: ids) {
        if(id.isEmpty()) continue;
        const bool isLeft = next <= std::numeric_limits<UnsignedShort>::max();
        if(_indices.emplace(Containers::String{id}, UnsignedShort(isLeft ? next : 0)).second) ++next;
    }
}

std::size_t ResourceIndexMap::size() const { return _indices.size(); }

}
