#include "ProjectLock.h"

#include <string>
#include <utility>

#include "FileSet.h"
#include "LockNote.h"

namespace QuorvaneEngine {

namespace {

constexpr const char* EditorFolder = "/.editor";
constexpr const char* ReasonWithoutLocks =
    "another program may have the project open for writing, which this disk cannot tell: ";
constexpr const char* Reason = "another program has the project open for writing";

Containers::String joined(const Containers::StringView folder, const char* const name) {
    const std::string path = std::string{folder.data(), folder.size()} + name;
    return {path.data(), path.size()};
}

}

bool ProjectLock::hasEditorFolder(const Containers::StringView folder) const {
    FileStamp stamp;
    const Containers::String path = joined(folder, EditorFolder);
    // A project may come from a stranger: nothing is written where a link of his leads to.
    return !_files->isLink(path) && _files->stampOf(path, stamp) == 0;
}

/** Another program that has a project on a file system without locks. */
Containers::String ProjectLock::holderWithoutLocks(const Containers::StringView folder) const {
    return _lock.isForAll() ? LockNote::readOther(*_files, folder) : Containers::String{};
}

bool ProjectLock::takeFolder(
    const Containers::StringView folder, const Containers::StringView locked, FileError& error) {
    if(!_lock.take(*_files, locked, Reason, error)) {
        const Containers::String holder = LockNote::read(*_files, folder);
        error.path = Containers::String{folder};
        if(!holder.isEmpty()) error.reason = error.reason + ": " + holder;
        return false;
    }
    if(const Containers::String holder = holderWithoutLocks(folder); !holder.isEmpty()) {
        _lock.release();
        error = {Containers::String{folder},
            ReasonWithoutLocks + holder + "; if that has ended, .editor/lock can be deleted"};
        return false;
    }
    _stamp = {};
    _files->stampOf(locked, _stamp);
    _folder = _lock.isTaken(locked) ? Containers::String{folder} : Containers::String{};
    return true;
}

bool ProjectLock::take(const Containers::StringView folder, const Making making, FileError& error) {
    release();
    if(!hasEditorFolder(folder)) {
        if(!takeFolder(folder, folder, error)) return false;
        FileError ignored;
        if(making == Making::Yes) FileSet::makeEditorFolder(*_files, folder, ignored);
    }
    // Also where somebody has just made it.
    if(hasEditorFolder(folder) && !takeFolder(folder, joined(folder, EditorFolder), error)) {
        _folder = {};
        return false;
    }
    return true;
}

bool ProjectLock::takeForSaving(const Containers::StringView folder, FileError& error) {
    if(isTaken(folder) && hasEditorFolder(folder)) return true;
    const bool isAnnounced = _isAnnounced;
    const bool isTaken = take(folder, Making::Yes, error);
    // Also who is refused tells, once he has it.
    _isAnnounced = isAnnounced;
    if(isTaken && isAnnounced) announce();
    return isTaken;
}

void ProjectLock::announce() {
    if(_folder.isEmpty()) return;
    LockNote::write(*_files, _folder);
    _isAnnounced = true;
}

bool ProjectLock::isTaken(const Containers::StringView folder) const {
    if(_folder.isEmpty() || !holderWithoutLocks(folder).isEmpty()) return false;
    FileStamp stamp;
    const Containers::String locked =
        hasEditorFolder(folder) ? joined(folder, EditorFolder) : Containers::String{folder};
    return _files->stampOf(locked, stamp) ? _folder == folder : stamp.isSameFile(_stamp);
}

void ProjectLock::release() {
    // Where the locked folder was replaced, the note is another program's.
    if(std::exchange(_isAnnounced, false) && isTaken(_folder)) LockNote::remove(*_files, _folder);
    _lock.release();
    _folder = {};
}

}
