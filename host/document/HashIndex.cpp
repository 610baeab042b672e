#include "HashIndex.h"

#include <utility>

#include "Utils/StrHash.h"

namespace QuorvaneEngine {

std::uint32_t HashIndex::hash(Containers::StringView key) {
    const std::uint64_t hash = StrHash{}(key);
    return std::uint32_t(hash ^ (hash >> 32));
}

void HashIndex::reset(std::size_t expected) {
    _size = 0;
    std::size_t slots = 64;
    while(slots < 2 * expected) slots *= 2;
    _mask = slots - 1;
    _slots = Containers::Array<Slot>{Corrade::DirectInit, slots, Slot{0, None}};
}

bool HashIndex::contains(std::uint32_t hash, std::uint32_t position) const {
    return find(hash, [position](std::uint32_t candidate) { return candidate == position; }) != None;
}

bool HashIndex::insert(std::uint32_t hash, std::uint32_t position) {
    if(2 * (_size + 1) > _slots.size()) rehash(_slots.size() ? 2 * _slots.size() : 64);
    std::size_t slot = hash & _mask;
    for(std::size_t run = 0; _slots[slot].position != None; slot = (slot + 1) & _mask)
        if(++run > LongestRun) return false;
    _slots[slot] = {hash, position};
    ++_size;
    return true;
}

void HashIndex::rehash(std::size_t slots) {
    Containers::Array<Slot> old =
        std::exchange(_slots, Containers::Array<Slot>{Corrade::DirectInit, slots, Slot{0, None}});
    _mask = slots - 1;
    for(const Slot& entry: old) {
        if(entry.position == None) continue;
        std::size_t slot = entry.hash & _mask;
        while(_slots[slot].position != None) slot = (slot + 1) & _mask;
        _slots[slot] = entry;
    }
}

void HashIndex::erase(std::uint32_t hash, std::uint32_t position) {
    if(!_slots.size()) return;
    std::size_t gap = hash & _mask;
    while(_slots[gap].position != position) {
        if(_slots[gap].position == None) return;
        gap = (gap + 1) & _mask;
    }
    // Whatever of the run may stand in the gap is moved there, so that no look-up ends at the gap too early.
    for(std::size_t slot = (gap + 1) & _mask; _slots[slot].position != None; slot = (slot + 1) & _mask) {
        const std::size_t home = _slots[slot].hash & _mask;
        if(((slot - home) & _mask) < ((slot - gap) & _mask)) continue;
        _slots[gap] = _slots[slot];
        gap = slot;
    }
    _slots[gap].position = None;
    --_size;
}

void HashIndex::closeGap(std::uint32_t position) {
    // No branch: which positions are higher is random in the order of slots.
    for(Slot& slot: _slots)
        slot.position -= std::uint32_t(slot.position > position) & std::uint32_t(slot.position != None);
}

}
