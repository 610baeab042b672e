#pragma once

#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Reads JSON (RFC 8259) that may come from anywhere, such as another program's clipboard.

    Beyond the grammar it refuses what the files of a project cannot hold or the JSON library cannot take: containers nested too
    deep, numbers of more than 100 characters or with exponents of more than 3 digits, text that is not UTF-8, also where escapes
    make it so, and objects that hold a key twice. A byte order mark in front is skipped. Takes time in proportion to the text,
    but for sorting keys, and never aborts.

    @param text         one JSON value
    @param maxDepth     how many containers may lie in each other, at most 256
    @param document     undefined where the text is refused
    @return whether the text was read */
bool readPastedJson(Containers::StringView text, UnsignedInt maxDepth, rapidjson::Document& document);

}
