#pragma once

#include <cstddef>
#include <cstdint>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/StringView.h>

namespace QuorvaneEngine {

namespace Containers = Corrade::Containers;

/** Positions by hash: an open-addressing table with linear probing, never more than half full. It holds no keys, so whoever
    asks compares the key at each position offered. */
class HashIndex {
public:
    static constexpr std::uint32_t None = ~std::uint32_t{};

    /** More entries than this with hashes in one run are no accident, and the table would be slower than scanning. */
    static constexpr std::size_t LongestRun = 1024;

    static std::uint32_t hash(Containers::StringView key);

    /** Forgets all entries and makes room.
        @param expected     the number of entries that will follow */
    void reset(std::size_t expected);

    /** A position under a hash for which a predicate holds, or @ref None .
        @param isIt     `bool(std::uint32_t position)` */
    template <class IsIt> std::uint32_t find(std::uint32_t hash, IsIt&& isIt) const {
        if(!_slots.size()) return None;
        for(std::size_t slot = hash & _mask; _slots[slot].position != None; slot = (slot + 1) & _mask)
            if(_slots[slot].hash == hash && isIt(_slots[slot].position)) return _slots[slot].position;
        return None;
    }

    bool contains(std::uint32_t hash, std::uint32_t position) const;

    /** Adds an entry; false, and nothing is added, when the run of its slot is longer than @ref LongestRun . */
    bool insert(std::uint32_t hash, std::uint32_t position);

    /** Removes an entry, if it is there. */
    void erase(std::uint32_t hash, std::uint32_t position);

    /** Moves all positions above one down by one, as erasing from an array does. Takes time in proportion to the table. */
    void closeGap(std::uint32_t position);

private:
    struct Slot {
        std::uint32_t hash;
        std::uint32_t position;
    };

    void rehash(std::size_t slots);

    Containers::Array<Slot> _slots;
    std::size_t _mask = 0;
    std::size_t _size = 0;
};

}
