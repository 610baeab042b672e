#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <utility>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>
#include <Corrade/Utility/Debug.h>

namespace QuorvaneEngine {

/** A small map with string keys that is filled first, then sorted once, and then searched without allocating.

    Keys are ordered as byte strings. There is no check for duplicates: which of two entries with one key is found is not
    determined. */
template <class T> class StaticMap {
public:
    struct Entry {
        Corrade::Containers::String key;
        T value{};
    };

    /** Stores an entry behind the others; the map must be compiled before the next search. An empty key and a full map are
        broken preconditions.
        @return the stored value, valid until the map is compiled or grown */
    T* put(Corrade::Containers::StringView key, T&& value) {
        if(!key.data() || key.isEmpty()) {
            Corrade::Utility::Error{} << "StaticMap::put(): key cannot be nullptr.";
            std::abort();
        }
        if(_size >= _entries.size()) {
            Corrade::Utility::Error{} << "StaticMap::put(): capacity exhausted.";
            std::abort();
        }
        Entry& entry = _entries[_size++];
        entry.key = key;
        entry.value = std::move(value);
        _compiled = false;
        return &entry.value;
    }

    /** Makes room for @p by more entries. */
    void grow(std::size_t by) {
        Corrade::Containers::Array<Entry> entries{Corrade::ValueInit, _entries.size() + by};
        std::move(_entries.begin(), _entries.end(), entries.begin());
        _entries = std::move(entries);
    }

    /** Sorts the entries, so that they can be searched. */
    void compile() {
        std::sort(
            _entries.begin(), _entries.begin() + _size, [](const Entry& a, const Entry& b) { return a.key < b.key; });
        _compiled = true;
    }

    /** The value with that key, or null. A map that has not been compiled since the last @ref put() is a broken precondition. */
    T* find(Corrade::Containers::StringView key) {
        if(!_compiled) {
            Corrade::Utility::Error{} << "StaticMap::find(): Map needs to be compiled.";
            std::abort();
        }
        Entry* const end = _entries.begin() + _size;
        Entry* const found = std::lower_bound(_entries.begin(), end, key,
            [](const Entry& entry, auto searched) { return Corrade::Containers::StringView{entry.key} < searched; });
        return found != end && found->key == key ? &found->value : nullptr;
    }

    /** Clears every entry; capacity and compiled state stay. */
    void clear() {
        for(Entry& entry: _entries) entry = Entry{};
        _size = 0;
    }

    bool isCompiled() const { return _compiled; }
    std::uint64_t size() const { return _size; }
    std::size_t capacity() const { return _entries.size(); }

private:
    bool _compiled = true;
    std::uint64_t _size = 0;
    Corrade::Containers::Array<Entry> _entries;
};

}
