#pragma once

#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Names a source text, so that a translation remembers what it translates: 64-bit FNV-1a of the text's UTF-8 bytes, as 16
    lower-case hexadecimal digits. */
QUORVANE_API Containers::String fingerprint(Containers::StringView text);

}
