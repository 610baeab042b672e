#pragma once

#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** The key of a term is the path of its text in an exchanged file: segments joined by ".". A segment is the name of a member, or
    `[0]`, `[1]`, ... for an element of an array.

    Inside a name ".", ":", "%", "#", control characters and a leading "[" are written as "%" and two upper-case hexadecimal
    digits. So every path has exactly one key, its *canonical* one, and no two paths share it. Term keys of a project are any text:
    each is read as some path, and @ref canonical() gives that path's own key. */
namespace TermKey {

/** Elements from this index on are not taken for elements: the segment is a name. */
constexpr Int MaxElements = 65536;

/** Files nest their texts no deeper than this. */
constexpr std::size_t MaxSegments = 256;

/** The segment of a member's name. */
QUORVANE_API Containers::String memberSegment(Containers::StringView name);

/** The segment of an element.
    @param index    0 to @ref MaxElements less one */
QUORVANE_API Containers::String elementSegment(Int index);

/** The index that a segment names, -1 for the segment of a member. */
QUORVANE_API Int elementIndex(Containers::StringView segment);

/** The name of the member that a segment names; what is no escape stands for itself. */
QUORVANE_API Containers::String memberName(Containers::StringView segment);

/** The key of the path that @p key is read as. */
QUORVANE_API Containers::String canonical(Containers::StringView key);

/** Whether @p key is what @ref canonical() makes of it. Allocates nothing. */
QUORVANE_API bool isCanonical(Containers::StringView key);

/** How many segments a key has, at least one. */
QUORVANE_API std::size_t segmentCount(Containers::StringView key);

/** The first segment of a key, and in @p rest what follows its "."; null data where nothing does. */
QUORVANE_API Containers::StringView takeSegment(Containers::StringView key, Containers::StringView& rest);

}

}
