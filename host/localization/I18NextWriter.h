#pragma once

#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

class Catalogue;

/** Writes one file of i18next JSON v4: UTF-8 without byte order mark, nested by two spaces, LF, one final newline, characters as
    they are but for control characters. Entries without text are left out; elements missing from an array before its last one
    are null. Keys must not be in conflict; see @ref TermTree .
    @param order    the file as it stands, whose order is kept: what is new there comes after its nearest neighbour of
        @p catalogue before it. Null for the catalogue's own order. */
QUORVANE_API Containers::String writeI18Next(const Catalogue& catalogue, const Catalogue* order);

}
