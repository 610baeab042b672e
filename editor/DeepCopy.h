#pragma once

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Makes @p target a copy of @p source that shares nothing with it: what the JSON library keeps as a reference to somebody
    else's text, and would copy as such, is copied, too. Recurses as deep as the value is nested.
    @param allocator    owner of everything in the copy, of which what @p target held before is not given back */
void deepCopy(rapidjson::Value& target, const rapidjson::Value& source,
    rapidjson::MemoryPoolAllocator<rapidjson::CrtAllocator>& allocator);

/** Makes @p target a copy of @p source that shares its longer texts with it. They never change in place, and the allocator gives
    nothing back while it lives, so neither value notices what becomes of the other.
    @param allocator    owner of everything in both */
void sharingCopy(rapidjson::Value& target, const rapidjson::Value& source,
    rapidjson::MemoryPoolAllocator<rapidjson::CrtAllocator>& allocator);

}
