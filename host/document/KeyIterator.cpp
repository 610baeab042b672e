#include "QuorvaneEditor/KeyIterator.h"

#include <rapidjson/document.h>

#include "PathTokens.h"

namespace QuorvaneEngine {

Containers::StringView KeyIterator::operator*() const {
    if(!_object || !_object->IsObject() || _index >= _object->MemberCount()) return emptyText();
    return textOf((_object->MemberBegin() + std::ptrdiff_t(_index))->name);
}

}
