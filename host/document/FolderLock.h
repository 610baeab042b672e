#pragma once

#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

class FileSystem;
struct FileError;

/** The right to change the files of a folder, which one at a time has, of all programs that ask for it. It goes with the object, and with
    its program, however that ends; on the disk it leaves nothing behind. Where a file system knows no locks, everybody is given it. */
class QUORVANE_API FolderLock {
public:
    FolderLock() = default;
    ~FolderLock() { release(); }
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

    /** Takes the right to a folder in place of the one that is held, and waits for nobody.
        @param fileSystem   must outlive the lock
        @param folder       absolute; may be missing, and then nothing is taken
        @param reason       the end of a sentence, for where somebody else has it
        @param error        set on failure */
    bool take(FileSystem& fileSystem, Containers::StringView folder, Containers::StringView reason, FileError& error);

    void release();

    /** Whether the right to a folder is held. */
    bool isTaken(Containers::StringView folder) const { return (_fileSystem || _isForAll) && _folder == folder; }

    /** Whether it is held where the file system knows no locks, and so keeps nobody out. */
    bool isForAll() const { return _isForAll; }

private:
    FileSystem* _fileSystem = nullptr;
    Containers::String _folder;
    int _lock = -1;
    bool _isForAll = false;
};

}
