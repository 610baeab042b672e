#pragma once

#include <Corrade/Containers/StringView.h>

/** @file
    Files and folders with all that is in them. Calls block until all is done, and keep no state. What the file system refuses is told on the
    error output, with the path. Paths have the length that the system allows, which is 4,096 bytes on Linux. */

namespace QuorvaneEngine {

/** Copies a folder.

    Folders are made before anything in them is copied, and files of a folder copied before those of the folders in it. A folder that is there
    already is filled up: its other files stay, and files of the same names are overwritten. Contents are copied, but not rights and times.
    Each file is announced on the debug output.

    Links are followed: the copy has files and folders in their places. What cannot be copied, or not without end, is left out with a warning: a
    link that leads nowhere or back to a folder that it lies in, the destination itself, a folder of the destination that would be copied
    into itself, a file that is its own destination, what is neither file nor folder. A folder that cannot be listed is left out, too.
    A link whose target exists, but cannot be looked at, is a file that cannot be copied.

    @attention Only opening a file can fail. The path library does not look whether all bytes were read and written: on a disk that is full or
    that breaks, a copy may be shorter than its file, and the result is still true. Before the original is deleted, compare.
    @param from     must be a folder
    @param to       made if necessary, with the folders above
    @return whether every file was copied that was not left out; the first one that could not be ends it, and what is copied already stays */
bool copyRecursive(Corrade::Containers::StringView from, Corrade::Containers::StringView to);

/** Deletes a file, or a folder and all that is in it.

    A link is removed as a link, whatever it leads to, also where the path ends with "/" or "/.". What cannot be deleted stays, with the folders
    above it, and each of these tells of it on the error output; everything else goes.
    @return whether nothing is left */
bool deleteRecursive(Corrade::Containers::StringView path);

}
