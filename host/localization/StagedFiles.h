#pragma once

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

class FileSystem;
struct FileError;

/** A file as it is to be. */
struct StagedFile {
    /** Relative to a folder, with forward slashes, at most one folder deep. */
    Containers::String path;

    Containers::String bytes;
};

/** Puts files in place, all or none: they are written aside in the folder `.localization-export` first, and renamed when all of
    them have reached the disk. Folders are made where they are missing.
    @param folder   absolute
    @param error    set on failure; files and folders are then as they were
    @return whether all are in place */
QUORVANE_API bool putInPlace(FileSystem& fileSystem, Containers::StringView folder,
    Containers::ArrayView<const StagedFile> files, FileError& error);

}
