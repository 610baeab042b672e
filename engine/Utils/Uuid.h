#pragma once

#include <Corrade/Containers/String.h>

namespace QuorvaneEngine {

/** A new random identifier (RFC 4122, version 4): 36 characters, upper-case hexadecimal digits in groups of 8, 4, 4, 4 and 12 with "-"
    between them. From the system's own source of randomness; any thread may call it. */
Corrade::Containers::String generateUUID();

}
