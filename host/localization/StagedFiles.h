#pragma once

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

class FileSystem;
class FolderLock;
struct FileError;

/** Where the files of an export are staged, in its folder. */
constexpr const char* StageFolder = ".localization-export";

/** A file as it is to be. */
struct StagedFile {
    /** Relative to a folder, with forward slashes, at most one folder deep; ends with ".json" or ".zip". */
    Containers::String path;

    Containers::String bytes;
};

/** The path of a folder without what names the same folder at its end: any "/" and "/.". */
QUORVANE_API Containers::StringView folderName(Containers::StringView path);

/** Takes the right to export into a folder, which one export at a time has.
    @param folder   absolute; where it is missing, nothing is taken
    @param error    set where another export has it */
QUORVANE_API bool lockExport(FileSystem& fileSystem, Containers::StringView folder, FolderLock& lock, FileError& error);

/** Puts the files of an export in place, all or none, whatever fails and whenever the power goes: see @ref FileSet , which stages
    them in the folder @ref StageFolder . Folders are made where they are missing.
    @param folder   absolute, as @ref folderName() gives it
    @param lock     the right to export into the folder; taken here where it is not held yet
    @param error    set on failure; files and folders are then as they were
    @return whether all are in place */
QUORVANE_API bool putInPlace(FileSystem& fileSystem, Containers::StringView folder,
    Containers::ArrayView<const StagedFile> files, FolderLock& lock, FileError& error);

/** Puts in place, or takes back, what an export into a folder left behind when it was cut short. To be called before an export
    looks at the files that are there, once it has the right to.
    @param folder   absolute; need not be there
    @param error    set on failure */
QUORVANE_API bool finishStaged(FileSystem& fileSystem, Containers::StringView folder, FileError& error);

/** Whether no export was cut short between the first and the last file that it put in place. Reading changes nothing, so who reads
    a folder where this is not so has files of two exports, and refuses.
    @param folder   absolute; need not be there
    @param error    set where it is not so, or cannot be known */
QUORVANE_API bool checkStaged(FileSystem& fileSystem, Containers::StringView folder, FileError& error);

}
