#pragma once

#include <map>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/Pointer.h>
#include <Corrade/Containers/String.h>

#include "../document/HashIndex.h"
#include "QuorvaneEditor/Host.h"
#include "TextArena.h"

namespace QuorvaneEngine {

/** A text or a value of a catalogue. The views live as long as the catalogue, also where it is moved. */
struct CatalogueEntry {
    /** Canonical key in the file, without namespace; see @ref TermKey . */
    Containers::StringView key;

    /** Empty for a term that is not translated, and beside a value. */
    Containers::StringView text;

    /** What stands in the place of a text and is none: a number, a bool, an empty object or an empty array. Null for a text. */
    const rapidjson::Value* value = nullptr;
};

/** Something that people should know about a file, which is read nevertheless. */
struct CatalogueNotice {
    /** Canonical key in the file; empty for the file as a whole. */
    Containers::String key;

    /** The end of a sentence: no capital letter, no full stop. */
    Containers::String reason;
};

/** What one exchanged file holds: the texts of one language in one namespace, and the values among them, in the file's order,
    each key once. */
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

    /** Appends a copy of a value.
        @param key      canonical
        @param value    of the types that @ref CatalogueEntry::value has
        @return false, with nothing changed, where the key is there already */
    bool addValue(Containers::StringView key, const rapidjson::Value& value);

    Containers::ArrayView<const CatalogueEntry> entries() const { return _entries; }

    /** The index among @ref entries(), -1 where there is no such key. The first call takes time for all of them, and no other thread
        may use the catalogue meanwhile. */
    Int find(Containers::StringView key) const;

    /** A number as the file has it, such as "1.50"; empty for what is no number, or came without a file.
        @param entry    index among @ref entries() */
    Containers::StringView spelling(std::size_t entry) const;

    /** @param entry    one of @ref entries() */
    Containers::StringView spelling(const CatalogueEntry& entry) const {
        return spelling(std::size_t(&entry - _entries.data()));
    }

    /** Whether the file has the shape of a flat one: every value at the root is no container, and at least one key has a ".", a ":"
        or a blank. */
    bool isFlat() const;

    /** Whether numbered keys are plural forms of version 3 of the format; see @ref noticeVersion3() . */
    bool hasNumberedForms() const { return _hasNumberedForms; }
    void setNumberedForms() { _hasNumberedForms = true; }

    /** Keeps the bytes of a file, which entries may refer to. */
    Containers::StringView keepFile(Containers::String&& bytes);

    /** What @ref readI18Next() noticed. */
    Containers::ArrayView<const CatalogueNotice> notices() const { return _notices; }

    /** @param key  canonical, or empty; both are copied */
    void addNotice(Containers::StringView key, Containers::StringView reason);

private:
    friend class CatalogueBuilder;

    struct Spelling {
        /** Index among @ref entries() . */
        UnsignedInt entry;
        Containers::StringView text;
    };

    using ValueMemory = rapidjson::MemoryPoolAllocator<rapidjson::CrtAllocator>;

    void append(Containers::StringView key, Containers::StringView text, const rapidjson::Value* value);
    const rapidjson::Value& copy(const rapidjson::Value& value);
    void updateIndex() const;

    /** The bytes of a file, in which texts and numbers stay where they stand; decoded ones are among the texts. */
    Containers::String _file;
    TextArena _texts;
    Containers::Pointer<ValueMemory> _values;
    Containers::Array<CatalogueEntry> _entries;
    /** Of numbers, by entries. */
    Containers::Array<Spelling> _spellings;
    Containers::Array<CatalogueNotice> _notices;
    bool _hasNumberedForms = false;
    /** Of the first entries, as many as have been asked for. */
    mutable HashIndex _index;
    mutable std::size_t _indexed = 0;
    /** Those for which the index has no room, by malice. */
    mutable std::map<Containers::StringView, Int> _crowded;
};

}
