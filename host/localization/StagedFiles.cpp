#include "StagedFiles.h"

#include <cerrno>
#include <vector>

#include <Corrade/Utility/Path.h>

#include "../document/FileSet.h"
#include "../document/FileSystem.h"
#include "../document/FolderLock.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

namespace Path = Corrade::Utility::Path;

constexpr FileSet::Stage ExportStage{StageFolder, "by the next export"};

/** The folders that an export makes. */
class MadeFolders {
public:
    MadeFolders(FileSystem& fileSystem, FileError& error): _fileSystem{fileSystem}, _error{error} {}

    /** Makes a folder and those above it. */
    bool make(const Containers::StringView path) {
        Containers::Array<Containers::String> names;
        int result = _fileSystem.listFolder(path, names);
        if(result == 0) return true;
        const Containers::StringView above = Path::path(path);
        // It may be one of those above that is no folder.
        if(result == ENOTDIR && _fileSystem.listFolder(above, names) == ENOTDIR) return make(above);
        if(result == ENOENT) {
            if(!above.isEmpty() && above != path && !make(above)) return false;
            result = _fileSystem.makeFolder(path);
            if(result == 0) {
                _made.emplace_back(path);
                return true;
            }
            // Another export may have made it meanwhile.
            if(result == EEXIST && _fileSystem.listFolder(path, names) == 0) return true;
        }
        _error.path = path;
        _error.reason = result == ENOTDIR || result == EEXIST
            ? Containers::String{"is a file where a folder is needed"_s}
            : systemReason("made"_s, result);
        return false;
    }

    /** Returns when the names of those made so far have reached the disk. */
    bool sync() {
        for(const Containers::String& path: _made)
            if(const int result = _fileSystem.syncFolder(Path::path(path))) {
                _error.path = path;
                _error.reason = systemReason("made"_s, result);
                return false;
            }
        return true;
    }

    /** Those that hold nothing. */
    void remove() {
        for(std::size_t i = _made.size(); i-- != 0;) _fileSystem.removeFolder(_made[i]);
    }

private:
    FileSystem& _fileSystem;
    FileError& _error;
    std::vector<Containers::String> _made;
};

Containers::String stageOf(const Containers::StringView folder) { return Path::join(folder, ExportStage.folder); }

/** A folder may come from a stranger, the journal in it, too. */
bool isOfExport(const Journal& journal) {
    for(const Journal::Entry& entry: journal.entries)
        if(entry.action == Journal::Action::Remove ||
            !(entry.path.hasSuffix(".json"_s) || entry.path.hasSuffix(".zip"_s)))
            return false;
    return true;
}

}

Containers::StringView folderName(Containers::StringView path) {
    while((path.size() > 1 && path.hasSuffix('/')) || path.hasSuffix("/."_s)) path = path.exceptSuffix(1);
    return path;
}

bool lockExport(FileSystem& fileSystem, const Containers::StringView folder, FolderLock& lock, FileError& error) {
    return lock.isTaken(folder) || lock.take(fileSystem, folder, "another export to this folder is running"_s, error);
}

bool putInPlace(FileSystem& fileSystem, const Containers::StringView folder,
    const Containers::ArrayView<const StagedFile> files, FolderLock& lock, FileError& error) {
    if(files.isEmpty()) return true;
    MadeFolders folders{fileSystem, error};
    FileSet set{fileSystem, folder, ExportStage};
    // The folders below are synchronized by the set.
    bool isMade = folders.make(folder) && lockExport(fileSystem, folder, lock, error) &&
        finishStaged(fileSystem, folder, error) && folders.sync() && folders.make(stageOf(folder));
    for(const StagedFile& file: files) {
        isMade = isMade && folders.make(Path::path(Path::join(folder, file.path)));
        set.write(file.path, file.bytes);
    }
    if(isMade && set.commit(error)) return true;
    folders.remove();
    return false;
}

bool finishStaged(FileSystem& fileSystem, const Containers::StringView folder, FileError& error) {
    bool isFound = false;
    Journal journal;
    if(!FileSet::findJournal(fileSystem, folder, ExportStage, isFound, journal, error)) return false;
    if(isFound && !isOfExport(journal)) {
        error.path = stageOf(folder);
        error.reason = "is not what an export leaves behind; without it the files are taken as they are"_s;
        return false;
    }
    return FileSet::recover(fileSystem, folder, error, ExportStage);
}

bool checkStaged(FileSystem& fileSystem, const Containers::StringView folder, FileError& error) {
    bool isFound = false;
    Journal journal;
    if(!FileSet::findJournal(fileSystem, folder, ExportStage, isFound, journal, error)) return false;
    if(!isFound) return true;
    error.path = stageOf(folder);
    error.reason =
        "an export was cut short here, and another one puts the files in order; without this folder they are "
        "taken as they are"_s;
    return false;
}

}
