#include "Catalogue.h"

#include <utility>

#include <Corrade/Containers/GrowableArray.h>

namespace QuorvaneEngine {

Catalogue::Catalogue() = default;
Catalogue::~Catalogue() = default;
Catalogue::Catalogue(Catalogue&&) noexcept = default;
Catalogue& Catalogue::operator=(Catalogue&&) noexcept = default;

bool Catalogue::add(const Containers::StringView key, const Containers::StringView text) {
    if(!_indices.emplace(Containers::String{key}, Int(_entries.size())).second) return false;
    Containers::arrayAppend(_entries, CatalogueEntry{Containers::String{key}, Containers::String{text}});
    return true;
}

Int Catalogue::find(const Containers::StringView key) const {
    const auto found = _indices.find(key);
    return found == _indices.end() ? -1 : found->second;
}

}
