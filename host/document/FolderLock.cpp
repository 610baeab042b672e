#include "FolderLock.h"

#include <cerrno>
#include <utility>

#include "FileSystem.h"

namespace QuorvaneEngine {

bool FolderLock::take(FileSystem& fileSystem, const Containers::StringView folder, const Containers::StringView reason,
    FileError& error) {
    release();
    const int result = fileSystem.lockFolder(folder, _lock);
    if(result == EWOULDBLOCK) {
        error = {Containers::String{folder}, Containers::String{reason}};
        return false;
    }
    // What else is wrong with the folder is said by who goes on to use it.
    if(result != 0 && result != ENOLCK) return true;
    _isForAll = result == ENOLCK;
    if(!_isForAll) _fileSystem = &fileSystem;
    _folder = Containers::String{folder};
    return true;
}

void FolderLock::release() {
    _isForAll = false;
    if(FileSystem* const fileSystem = std::exchange(_fileSystem, nullptr)) fileSystem->unlockFolder(_lock);
}

}
