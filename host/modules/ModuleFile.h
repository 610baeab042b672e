#pragma once

#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Why a library cannot be mapped that is not there as a whole, because it is being written or was copied in part: the system would map
    it, and end the process where it reads behind the file's end. Compares the size of the file with what its ELF header, its segments
    and its section headers say.
    @param libraryFile      with forward slashes
    @return a clause without a full stop; empty where there is nothing to say, as of a file that is none of this kind: what else is wrong
        with one the system says in words */
QUORVANE_API Containers::String fileProblem(Containers::StringView libraryFile);

/** What the system says of a library that cannot be loaded, with the C++ names of symbols in place of those that a linker sees. */
QUORVANE_API Containers::String withReadableSymbols(Containers::StringView message);

}
