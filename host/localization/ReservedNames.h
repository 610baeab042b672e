#pragma once

#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Names that every object of JavaScript has something under already, so that programs that exchange texts may lose what a file has
    there. What the i18next library does is that of its version 26. */
namespace ReservedNames {

/** What becomes of a member with this name: the end of a sentence, empty for an ordinary name.

    The library finds all of them in a file that it loads. Where it merges a file into another one ("deep" of addResourceBundle()),
    it passes "__proto__" and "constructor" over; "prototype" is lost by other programs alone. */
QUORVANE_API Containers::StringView memberReason(Containers::StringView name);

/** What becomes of a namespace with this plain name; see @ref memberReason() . The library finds the texts of all of them, but
    does not see that it has "__proto__" and loads it again whenever it is asked for. */
QUORVANE_API Containers::StringView namespaceReason(Containers::StringView name);

}

}
