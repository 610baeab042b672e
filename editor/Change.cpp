#include "Change.h"

#include <utility>

#include <Corrade/Utility/Debug.h>
#include <rapidjson/document.h>

#include "QuorvaneEditor/RapidJsonUtils.h"

namespace QuorvaneEngine {

Change::Change() = default;

Change::~Change() = default;

Change::Change(Change&& other) noexcept = default;

Change& Change::operator=(Change&& other) noexcept {
    path = std::move(other.path);
    std::swap(oldValue, other.oldValue);
    std::swap(newValue, other.newValue);
    group = other.group;
    return *this;
}

Corrade::Utility::Debug& operator<<(Corrade::Utility::Debug& debug, const Change& change) {
    using Corrade::Utility::Debug;
    // The printer of JSON values lies in their own namespace.
    using rapidjson::operator<<;

    if(change.oldValue)
        debug << (change.newValue ? "Change" : "Remove") << change.path << Debug::nospace << ":" << *change.oldValue;
    else debug << "Create" << change.path << Debug::nospace << ": ()";
    debug << "->";
    return change.newValue ? debug << *change.newValue : debug << "()";
}

}
