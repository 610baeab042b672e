#pragma once

#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Where the text of a term comes from. A term names it as `sourceText`: a JSON Pointer (RFC 6901) such as "/objects/door/text",
    or the key of a plain member of the project's root. */
namespace TermSource {

/** The JSON Pointer of a source. */
QUORVANE_API Containers::String path(Containers::StringView sourceText);

/** The source as a value of the project, null where it is gone or is no text. */
QUORVANE_API rapidjson::Value* value(ProjectFile& project, Containers::StringView sourceText);

/** Why a source is no text, for messages: the end of a sentence, on one line.
    @param found    what is at its @ref path(), null for nothing */
QUORVANE_API Containers::String fault(Containers::StringView sourceText, const rapidjson::Value* found);

/** Where the text of a term is kept that belongs to no object: "/localization/strings/" and the escaped key. */
QUORVANE_API Containers::String stringsPath(Containers::StringView term);

}

}
