#pragma once

#include <vector>

#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine::StartPage {

/** What the user wants. */
struct Choice {
    /** Whether to ask for a project. */
    bool asks = false;

    /** Whether to begin a new project. */
    bool begins = false;

    /** A project to open; empty for none. */
    Containers::String project;
};

/** Draws what stands in place of the views while no project is open.
    @param recent   projects to choose from */
QUORVANE_API Choice draw(const std::vector<Containers::String>& recent);

}
