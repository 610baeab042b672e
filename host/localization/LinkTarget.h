#pragma once

#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Where a path of the disk leads, with all links followed; empty where there is nothing.
    @param path     absolute */
QUORVANE_API Containers::String linkTarget(Containers::StringView path);

/** The path from a folder to a file, with all links followed on both ways; empty where the file does not lie below it, or either is
    not there.
    @param folder   absolute, as @p file is */
QUORVANE_API Containers::String linkTargetBelow(Containers::StringView folder, Containers::StringView file);

}
