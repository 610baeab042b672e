#pragma once

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine::StartPage {

/** Draws what stands in place of the views while no project is open.
    @return whether the user wants to open one */
QUORVANE_API bool draw();

}
