#pragma once

#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Walks the keys of a JSON object in document order. Valid until the object changes. */
class QUORVANE_API KeyIterator {
public:
    /** @param object   an object, or null or any other value, which has no keys
        @param index    position among the members */
    explicit KeyIterator(const rapidjson::Value* object, std::size_t index): _object{object}, _index{index} {}

    /** The key, NUL-terminated, viewing the document. */
    Containers::StringView operator*() const;

    KeyIterator& operator++() {
        ++_index;
        return *this;
    }

    bool operator!=(const KeyIterator& other) const { return _index != other._index; }
    bool operator==(const KeyIterator& other) const { return _index == other._index; }

private:
    const rapidjson::Value* _object;
    std::size_t _index;
};

}
