#pragma once

#include <unordered_map>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"
#include "Utils/StrHash.h"

namespace QuorvaneEngine {

/** One text of a catalogue. */
struct CatalogueEntry {
    /** Canonical key; see @ref TermKey . */
    Containers::String key;

    /** Empty for a term that is not translated. */
    Containers::String text;
};

/** The texts of one language, as they stand in one exchanged file: in the file's order, each key once. */
class QUORVANE_API Catalogue {
public:
    Catalogue();
    ~Catalogue();
    Catalogue(const Catalogue&) = delete;
    Catalogue& operator=(const Catalogue&) = delete;
    Catalogue(Catalogue&&) noexcept;
    Catalogue& operator=(Catalogue&&) noexcept;

    /** Appends a text.
        @param key  canonical
        @return false, with nothing changed, where the key is there already */
    bool add(Containers::StringView key, Containers::StringView text);

    Containers::ArrayView<const CatalogueEntry> entries() const { return _entries; }

    /** The index among @ref entries(), -1 where there is no such key. */
    Int find(Containers::StringView key) const;

private:
    Containers::Array<CatalogueEntry> _entries;
    std::unordered_map<Containers::String, Int, StrHash, StrEq> _indices;
};

}
