#include "QuorvaneEditor/ValueAccess.h"

#include <Corrade/Containers/GrowableArray.h>

#include <rapidjson/document.h>

#include "QuorvaneEditor/ProjectFile.h"

namespace QuorvaneEngine {

ValueAccess ValueAccess::operator[](Containers::StringView keyOrPath) const {
    if(!keyOrPath.isEmpty() && keyOrPath.front() == '/')
        return ValueAccess{*_project, _project->getValue(keyOrPath, false)};
    return member(keyOrPath);
}

ValueAccess ValueAccess::member(Containers::StringView key) const {
    return ValueAccess{*_project, _value ? _project->member(*_value, key) : nullptr};
}

void ValueAccess::keys(Containers::Array<Containers::StringView>& keys) const {
    if(!isObject()) return;
    Containers::arrayReserve(keys, keys.size() + size());
    for(const Containers::StringView key: *this) Containers::arrayAppend(keys, key);
}

KeyIterator ValueAccess::begin() const { return KeyIterator{_value, 0}; }

KeyIterator ValueAccess::end() const { return KeyIterator{_value, isObject() ? size() : 0}; }

}
