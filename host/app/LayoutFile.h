#pragma once

#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** What is wrong with the text of a file that the GUI library keeps the layout of windows in, which it would load without a look: a tree
    of docked panels that contradicts itself ends the process, and of other texts it takes what it understands.

    A layout is refused that is empty or no text, that was cut off, that lacks the dock space, or has a line that the library would not have
    written. Sections that the library does not know either may hold any lines.
    @param dockSpace    the id of the main dock space
    @return the reason, after the number of its line, counted from 1, where it has one: "12: ..."; empty for a layout that can be loaded */
QUORVANE_API Containers::String layoutProblem(Containers::StringView text, UnsignedInt dockSpace);

}
