#pragma once

#include <cstddef>

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

/** The bytes of a text from which on it is shared. Shorter ones may lie in their values, which move. */
constexpr std::size_t MinSharedText = 24;

/** Hands a value on to a document that is being populated, by events (SAX).
    @param isSharing    whether its longer texts are shared, as by @ref sharingCopy() : the allocator of the document then is the owner of
        both; otherwise all are copied
    @return false where the document says so */
bool putCopy(rapidjson::Document& target, const rapidjson::Value& source, bool isSharing);

}
