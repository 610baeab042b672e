#pragma once

#include <cstdint>

#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>

#include "FileSystem.h"
#include "FolderLock.h"
#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** The right to write a project, which one at a time has: a @ref FolderLock on the project's folder `.editor`, so that its own folder is left
    to whoever puts something else into it. Where there is no such folder, it is one on the project's own folder, which everybody takes
    before he makes `.editor`. It goes with the object, and with its program, however that ends. */
class QUORVANE_API ProjectLock {
public:
    /** Whether the folder `.editor` is made where it is missing and can be made. */
    enum class Making : std::uint8_t { No, Yes };

    /** @param files    must outlive the lock */
    explicit ProjectLock(FileSystem& files): _files{&files} {}
    ~ProjectLock() { release(); }
    ProjectLock(const ProjectLock&) = delete;
    ProjectLock& operator=(const ProjectLock&) = delete;

    /** Takes the right to a project in place of the one that is held, and waits for nobody. Where the file system knows no locks, who has it is
        believed by the @ref LockNote .
        @param folder   absolute, NUL-terminated; may be missing or closed to this program, and then nothing is taken
        @param error    set on failure, with a reason that says in words who has it, as far as he tells
        @return false where somebody else has it; then nothing is held */
    bool take(Containers::StringView folder, Making making, FileError& error);

    /** Makes sure that it is held on a folder `.editor`, as @ref take() does, before something is written there. */
    bool takeForSaving(Containers::StringView folder, FileError& error);

    /** Tells others who has it, as long as it is held; without the folder `.editor` nobody is told. */
    void announce();

    /** Whether the right to a project is held, by whatever name the folder is called; not where the locked folder was replaced meanwhile. */
    bool isTaken(Containers::StringView folder) const;

    void release();

private:
    bool hasEditorFolder(Containers::StringView folder) const;
    Containers::String holderWithoutLocks(Containers::StringView folder) const;
    bool takeFolder(Containers::StringView folder, Containers::StringView locked, FileError& error);

    FileSystem* _files;
    FolderLock _lock;
    Containers::String _folder;
    FileStamp _stamp;
    bool _isAnnounced = false;
};

}
