#pragma once

#include <Corrade/Containers/ArrayView.h>

#include "QuorvaneEditor/Host.h"
#include "app/ViewCondition.h"

namespace QuorvaneEngine {

/** How the editor ends. */
enum class ExitCode : int {
    Success = 0,
    /** A picture or a new view was wanted, and the project could not be opened, or picture or view not be written. */
    Failure = 1,
    /** The command line is wrong. */
    Usage = 2,
    /** There is no display, or none with OpenGL 3.3, or it has gone. */
    NoDisplay = 3
};

/** Runs the desktop editor until the user ends it, or until the picture that was wanted is written.
    @param conditions   of the views */
QUORVANE_API ExitCode runEditor(
    int argc, const char* const* argv, Containers::ArrayView<const ViewCondition> conditions);

}
