#pragma once

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"
#include "StagedFiles.h"

namespace QuorvaneEngine {

/** Makes a ZIP archive in memory: deflate at level 6, in the given order, all dated 1980-01-01 and with the permissions of a
    usual file. So equal files give equal bytes. What @ref ArchiveReader would refuse is not made: a file that is packed too well
    for it is stored as it is, and two names that some systems take for one are an error.
    @param bytes    receives the archive
    @param reason   set on failure
    @return whether it was made */
QUORVANE_API bool writeArchive(
    Containers::ArrayView<const StagedFile> files, Containers::String& bytes, Containers::String& reason);

}
