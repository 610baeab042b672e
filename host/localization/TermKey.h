#pragma once

#include <string>

#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** The namespace of terms whose key names none. */
constexpr const char* DefaultNamespace = "translation";

/** The key of a term is `<namespace>:<path>`, or `<path>` alone in the default namespace. A namespace is a file, and the path is
    that of a text in it: segments joined by ".", each the name of a member, or `[0]`, `[1]`, ... for an element of an array.

    Inside a name ".", ":", "%", "#", control characters and a leading "[" are written as "%" and two upper-case hexadecimal
    digits. So every path has exactly one key in its file, its *canonical* one, and no two paths share it. Term keys of a project
    are any text: each is read as some namespace and some path, and @ref canonical() gives that path's own key.

    Where a namespace is *flat*, all its texts are members of the root, and their names are written with "." as it is: the path of a
    term key is then one name, see @ref flatPath() . */
namespace TermKey {

/** Elements from this index on are not taken for elements: the segment is a name. */
constexpr Int MaxElements = 65536;

/** Files nest their texts no deeper than this. */
constexpr std::size_t MaxSegments = 256;

/** The segment of a member's name. */
QUORVANE_API Containers::String memberSegment(Containers::StringView name);

/** Appends the segment of a member's name to a key that is being made. */
QUORVANE_API void appendSegment(std::string& key, Containers::StringView name);

/** The segment of an element.
    @param index    0 to @ref MaxElements less one */
QUORVANE_API Containers::String elementSegment(Int index);

/** The index that a segment names, -1 for the segment of a member. */
QUORVANE_API Int elementIndex(Containers::StringView segment);

/** The name of the member that a segment names; what is no escape stands for itself. */
QUORVANE_API Containers::String memberName(Containers::StringView segment);

/** The canonical key of a path that is written in any way, without namespace. A blank in front may be written as "%20". */
QUORVANE_API Containers::String canonical(Containers::StringView path);

/** Whether @p path is what @ref canonical() makes of it. Allocates nothing. */
QUORVANE_API bool isCanonical(Containers::StringView path);

/** Splits the key of a term. What stands before the first ":" is a namespace unless it is empty, holds a blank or a "/", or stands
    for a name that begins with "." or holds control characters, or a blank follows the ":" ("Status: Loading..." is one path).
    @param path     receives what follows the namespace: views @p key , and is not canonical where the key is not
    @return the namespace as it is written, see @ref namespaceName() ; null data for the default one */
QUORVANE_API Containers::StringView takeNamespace(Containers::StringView key, Containers::StringView& path);

/** The name of a namespace that is written in a key, @ref DefaultNamespace for what is empty. */
QUORVANE_API Containers::String namespaceName(Containers::StringView written);

/** The key of a term, which @ref takeNamespace() splits into the same again.
    @param name     of the namespace: what @ref canTakeNamespace() holds for
    @param path     canonical, or what @ref flatKey() gives */
QUORVANE_API Containers::String withNamespace(Containers::StringView name, Containers::StringView path);

/** File systems have names of 255 bytes, of which ".json" takes five. */
constexpr std::size_t MaxNamespaceSize = 250;

/** Whether a key can name this namespace: any name of a file can that is not hidden, by a "." in front, holds no control characters
    and no backslash, and is not longer than @ref MaxNamespaceSize . */
QUORVANE_API bool canTakeNamespace(Containers::StringView name);

/** The path of a term key in a flat namespace for a member of the root: its name with "." as it is.
    @param key  canonical, of one segment */
QUORVANE_API Containers::String flatKey(Containers::StringView key);

/** The canonical key, of one segment, for the path of a term key in a flat namespace: `menu.file` and `menu%2Efile` are both the
    member "menu.file". */
QUORVANE_API Containers::String flatPath(Containers::StringView path);

/** How many segments a key has, at least one. */
QUORVANE_API std::size_t segmentCount(Containers::StringView key);

/** The first segment of a key, and in @p rest what follows its "."; null data where nothing does. */
QUORVANE_API Containers::StringView takeSegment(Containers::StringView key, Containers::StringView& rest);

}

}
