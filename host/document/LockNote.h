#pragma once

#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

class FileSystem;

/** What a program that has a project locked tells the others about itself, in the file `.editor/lock` of the project. It is for people
    to read: whether the project is locked is known by the @ref FolderLock alone, which goes with its program; the file may be left. Only where
    the file system knows no locks, it is all there is.

    The file has a line for each of: the format's name and version, the program, the process, the host, and seconds since 1970. Where `.editor` is a link, it is left alone. */
namespace LockNote {

/** Writes that this program has the project, since now. Where it cannot be written, nobody is told.
    @param folder   of the project */
QUORVANE_API void write(FileSystem& files, Containers::StringView folder);

QUORVANE_API void remove(FileSystem& files, Containers::StringView folder);

/** Who has the project: "quorvane-editor on tower, process 4711, since 2026-03-01 17:45", in local time.
    @return empty where nobody tells, where it makes no sense, and where that process of this host is gone */
QUORVANE_API Containers::String read(FileSystem& files, Containers::StringView folder);

/** As @ref read() , but empty where it is this process. */
QUORVANE_API Containers::String readOther(FileSystem& files, Containers::StringView folder);

}

}
