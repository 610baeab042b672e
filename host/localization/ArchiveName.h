#pragma once

#include <string>

#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** The names of entries in ZIP archives (PKWARE's APPNOTE.TXT 6.3.10, 4.4.17, 4.6.9 and appendix D). */
namespace ArchiveName {

/** The text of a name. Bytes that are not marked as UTF-8 are taken for it where they are well-formed, as some systems leave the
    mark out; else for code page 437, unless the entry's extra field has the name in UTF-8, and that of these very bytes.
    @param bytes    as they stand in the archive
    @param isUtf8   whether they are marked as UTF-8
    @param extra    the entry's extra fields, which may be damaged
    @param name     set on success, in UTF-8
    @return whether the bytes are what they are marked as */
QUORVANE_API bool decode(
    Containers::StringView bytes, bool isUtf8, Containers::StringView extra, Containers::String& name);

/** Why a name is refused, as the end of a sentence; empty for one that stays in its folder on every system. */
QUORVANE_API Containers::StringView fault(Containers::StringView name);

/** A name of which @ref fault() says nothing, without parts that are empty or ".", and without a slash at the end. */
QUORVANE_API Containers::String plain(Containers::StringView name);

/** A name as systems see it that do not tell cases or compositions of characters apart: Unicode's full case folding between
    canonical decompositions (The Unicode Standard, section 3.13, D145). */
QUORVANE_API std::string folded(Containers::StringView name);

}

}
