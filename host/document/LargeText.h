#pragma once

#include <cstddef>

#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** A string for many bytes. Unlike the heap, which keeps much of what was freed among other things, the system has its memory back as
    soon as it goes. Small ones are ordinary.
    @param size         in bytes, with whatever in them; a zero follows
    @param isFilled     whether all of it will be written, so that it is asked for at once and not page by page */
QUORVANE_API Containers::String largeText(std::size_t size, bool isFilled);

}
