#pragma once

#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

class Catalogue;
struct JsonError;

/** Reads one file of i18next JSON v4 into a catalogue, in its order. A byte order mark is accepted; null counts as no text; a value
    that is no text is kept as it is. Keys are canonical and nested as the file is: a name with a dot in it is one segment, whatever
    the shape of the file (see @ref Catalogue::isFlat() ).

    Refused is what @ref JsonReader::read() refuses, a file that holds no object, one with an array of more than
    @ref TermKey::MaxElements elements, and one whose keys, which repeat the names that lie around them, would together be more than
    16 times as long as the file and 64 KiB more.

    Noticed, and kept as they are, are names of members that programs lose (see @ref ReservedNames::memberReason() ) and plural
    forms as version 3 of the format has them, once for the whole file.

    @param bytes        all of the file; the catalogue keeps them
    @param catalogue    must be empty; is of no use on failure
    @param error        set on failure: line and column are of the place in the file
    @return whether the file was read */
QUORVANE_API bool readI18Next(Containers::String bytes, Catalogue& catalogue, JsonError& error);

}
