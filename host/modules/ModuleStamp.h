#pragma once

#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Why a module cannot work with this program, told from its metadata alone: `quorvane_add_view()` has stamped them with the
    compiler, Dear ImGui with its configuration, and which Corrade and Magnum the module was built with, each of which decides how
    objects lie in memory that both share.
    @param metadataFile     `<name>.conf`, with forward slashes; one that is not there or cannot be read has no stamp
    @return what differs, one clause for each, without a full stop; empty when nothing does */
QUORVANE_API Containers::String stampProblem(Containers::StringView metadataFile);

/** The number of the view framework that a module was built with, by which the host knows what it can ask of the module's objects.
    @return 1 for the first framework, whose modules' metadata do not say */
QUORVANE_API Int moduleFramework(Containers::StringView metadataFile);

}
