#pragma once

#include <cstddef>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

class Catalogue;
struct JsonError;

/** A value of a file that was not taken over. */
struct LeftOut {
    /** Canonical key; see @ref TermKey . */
    Containers::String key;

    /** The end of a sentence: no capital letter, no full stop. */
    Containers::String reason;
};

/** Reads one file of i18next JSON v4 into a catalogue, in its order. A byte order mark is accepted; null counts as no text; values
    that are no text are left out.

    Refused is what @ref JsonReader::read() refuses, a file that holds no object, and one with an array of more than
    @ref TermKey::MaxElements elements.
    @param bytes        the whole file
    @param catalogue    empty; receives the texts
    @param leftOut      appended to
    @param error        set on failure
    @return whether the file was accepted; a refused one may leave part of its texts in @p catalogue */
QUORVANE_API bool readI18Next(
    Containers::StringView bytes, Catalogue& catalogue, Containers::Array<LeftOut>& leftOut, JsonError& error);

}
