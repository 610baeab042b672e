#include "StagedFiles.h"

#include <cerrno>
#include <string>
#include <vector>

#include <Corrade/Utility/Path.h>

#include "../document/FileSystem.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

namespace Path = Corrade::Utility::Path;

Containers::String numbered(const Containers::StringView folder, const std::size_t number, const char* const suffix) {
    const std::string name = std::to_string(number) + suffix;
    return Path::join(folder, Containers::StringView{name.data(), name.size()});
}

class Staging {
public:
    Staging(FileSystem& fileSystem, const Containers::StringView folder,
        const Containers::ArrayView<const StagedFile> files, FileError& error)
        : _fileSystem{fileSystem},
          _folder{folder},
          _stage{Path::join(folder, ".localization-export"_s)},
          _files{files},
          _error{error},
          _hasOld(files.size()),
          _isDone(files.size()) {}

    bool run() {
        const bool isInPlace = makeFolders() && clear() && write() && keepOld() && rename();
        if(!isInPlace) restore();
        clear(true);
        if(!isInPlace) removeMade();
        return isInPlace;
    }

private:
    Containers::String target(const std::size_t i) const { return Path::join(_folder, _files[i].path); }
    Containers::String fresh(const std::size_t i) const { return numbered(_stage, i, ".new"); }
    Containers::String old(const std::size_t i) const { return numbered(_stage, i, ".old"); }

    bool fail(const Containers::StringView path, const Containers::StringView what, const int number) {
        _error.path = path;
        _error.reason = number == ENOTDIR || number == EEXIST
            ? Containers::String{"is a file where a folder is needed"_s}
            : systemReason(what, number);
        return false;
    }

    /** Makes a folder and those above it; remembers them for removal. */
    bool makeFolder(const Containers::StringView path) {
        Containers::Array<Containers::String> names;
        int result = _fileSystem.listFolder(path, names);
        if(result == 0) return true;
        const Containers::StringView above = Path::path(path);
        // It may be one of those above that is no folder.
        if(result == ENOTDIR && _fileSystem.listFolder(above, names) == ENOTDIR) return makeFolder(above);
        if(result == ENOENT) {
            if(!above.isEmpty() && above != path && !makeFolder(above)) return false;
            result = _fileSystem.makeFolder(path);
            if(result == 0) {
                _made.emplace_back(path);
                return true;
            }
        }
        return fail(path, "made"_s, result);
    }

    bool makeFolders() {
        if(!makeFolder(_folder)) return false;
        for(std::size_t i = 0; i != _files.size(); ++i)
            if(!makeFolder(Path::path(target(i)))) return false;
        return true;
    }

    /** Empties the staging folder, which an earlier run may have left behind.
        @param isLast   also remove it, and say nothing of what fails */
    bool clear(const bool isLast = false) {
        Containers::Array<Containers::String> names;
        const int listed = _fileSystem.listFolder(_stage, names);
        for(const Containers::String& name: names) {
            const Containers::String path = Path::join(_stage, name);
            if(const int result = _fileSystem.removeFile(path); result && !isLast)
                return fail(path, "removed"_s, result);
        }
        if(isLast) {
            _fileSystem.removeFolder(_stage);
            return true;
        }
        if(listed == 0) return true;
        const int result = listed == ENOENT ? _fileSystem.makeFolder(_stage) : listed;
        return result == 0 || fail(_stage, "made"_s, result);
    }

    bool write() {
        for(std::size_t i = 0; i != _files.size(); ++i) {
            int result = _fileSystem.writeFile(fresh(i), _files[i].bytes, target(i));
            if(!result) result = _fileSystem.syncFile(fresh(i));
            if(result) return fail(target(i), "written"_s, result);
        }
        return true;
    }

    /** A second name for every file that will be replaced, or a copy where the file system has no second names. */
    bool keepOld() {
        for(std::size_t i = 0; i != _files.size(); ++i) {
            int result = _fileSystem.linkFile(target(i), old(i));
            if(result && result != ENOENT) {
                Containers::String bytes;
                result = _fileSystem.readFile(target(i), bytes);
                if(!result) result = _fileSystem.writeFile(old(i), bytes, target(i));
            }
            if(result == ENOENT) continue;
            if(result) return fail(target(i), "replaced"_s, result);
            _hasOld[i] = true;
        }
        return true;
    }

    bool rename() {
        for(std::size_t i = 0; i != _files.size(); ++i) {
            if(const int result = _fileSystem.renameFile(fresh(i), target(i)))
                return fail(target(i), "replaced"_s, result);
            _isDone[i] = true;
        }
        // The files are in place whatever this says; a folder that cannot be synchronized is no reason to take them back.
        for(std::size_t i = 0; i != _files.size(); ++i) _fileSystem.syncFolder(Path::path(target(i)));
        return true;
    }

    void restore() {
        for(std::size_t i = 0; i != _files.size(); ++i) {
            if(!_isDone[i]) continue;
            if(_hasOld[i]) _fileSystem.renameFile(old(i), target(i));
            else _fileSystem.removeFile(target(i));
        }
    }

    void removeMade() {
        for(std::size_t i = _made.size(); i-- != 0;) _fileSystem.removeFolder(_made[i]);
    }

    FileSystem& _fileSystem;
    Containers::String _folder;
    Containers::String _stage;
    Containers::ArrayView<const StagedFile> _files;
    FileError& _error;
    std::vector<bool> _hasOld;
    std::vector<bool> _isDone;
    std::vector<Containers::String> _made;
};

}

bool putInPlace(FileSystem& fileSystem, const Containers::StringView folder,
    const Containers::ArrayView<const StagedFile> files, FileError& error) {
    return files.isEmpty() || Staging{fileSystem, folder, files, error}.run();
}

}
