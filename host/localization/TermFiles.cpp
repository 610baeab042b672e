#include "TermFiles.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <utility>
#include <vector>

#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Utility/Format.h>
#include <Corrade/Utility/Path.h>

#include "../document/FileSystem.h"
#include "../document/JsonReader.h"
#include "../document/PrintableText.h"
#include "ArchiveReader.h"
#include "FoundLanguages.h"
#include "LinkTarget.h"
#include "Parallel.h"
#include "Progress.h"
#include "StagedFiles.h"
#include "TermFilePath.h"
#include "TermKey.h"
#include "UnknownCodes.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

namespace Path = Corrade::Utility::Path;
using Corrade::Utility::format;

/** Whether a path, with all links followed, lies in a folder. What is not there is said when it is read. */
bool isInside(const Containers::StringView folder, const Containers::StringView path) {
    return linkTarget(folder).isEmpty() || linkTarget(path).isEmpty() || !linkTargetBelow(folder, path).isEmpty();
}

/** In which a project has its own files of translations. */
constexpr Containers::StringView StorageFolder = "localization"_s;

/** How far below the folder of a language files are looked for that lie too deep. */
constexpr std::size_t MaxDepth = 8;

class Finding {
public:
    Finding(FileSystem& fileSystem, const Containers::StringView path, const TermFileOptions& options, TermFiles& found,
        const Progress* const progress)
        : _fileSystem{fileSystem},
          _path{folderName(path)},
          _progress{progress},
          _files{found.files},
          _notices{found.notices},
          _refusals{found.refusals},
          _isInaccessible{found.isInaccessible},
          _lacksLanguages{found.lacksLanguages},
          _hasUnusedMappings{found.hasUnusedMappings},
          _languages{options.map, options.languages},
          _unknownCodes{options.known} {}

    void run() {
        Containers::Array<Containers::String> names;
        const int result = _fileSystem.listFolder(_path, names);
        FileError error;
        if(result == 0 && !checkStaged(_fileSystem, _path, error)) refuse(error.path, error.reason);
        else if(result == 0 && isStorage()) {
            refuse(_path, "is where a project keeps its translations; give a folder that an export has written"_s);
        } else if(result == 0) {
            findFiles(names);
            findFilesBelow();
            readFiles();
        } else if(result == ENOTDIR) readArchive();
        else refuseUnread(_path, result);
        if(isCancelled()) {
            _refusals = {};
            _files = {};
            return;
        }
        std::vector<UnsignedInt> taken{_languages.others().begin(), _languages.others().end()};
        for(const TermFile& file: _files) taken.push_back(file.language);
        _unknownCodes.describe({taken.data(), taken.size()}, _notices);
        _lacksLanguages = _unknownCodes.hasLanguages();
        noticeDeepFiles();
        _hasUnusedMappings = _languages.noticeUnusedMappings(_notices);
        if(_refusals.isEmpty() && !hasFiles()) refuseAll();

        std::stable_sort(_files.begin(), _files.end(), [](const TermFile& a, const TermFile& b) {
            return a.language != b.language ? a.language < b.language : a.nameSpace < b.nameSpace;
        });
        for(std::size_t i = 1; i < _files.size(); ++i)
            if(_files[i].language == _files[i - 1].language && _files[i].nameSpace == _files[i - 1].nameSpace)
                refuse(_files[i].name, format("holds the same as {}: one language, one namespace", _files[i - 1].name));
    }

    bool isCancelled() const { return _progress && _progress->isCancelled; }

private:
    /** Whether there are any, be it of languages that nobody asked for. */
    bool hasFiles() const { return !_files.isEmpty() || !_languages.others().isEmpty(); }

    void refuse(const Containers::StringView name, const Containers::StringView reason) {
        Containers::arrayAppend(_refusals, format("{}: {}", printable(name), reason));
    }

    /** Where nothing is found, it may lie there under another name. */
    void refuseAll() {
        if(isLanguage(Path::filename(_path)))
            refuse(_path, "is the folder of one language; give the folder around it"_s);
        else if(_notices.isEmpty())
            refuse(_path, "holds no terms: there is no <language code>/translation.json and no <language code>.json"_s);
        else
            refuse(_path,
                format("holds no terms{}; {}{}{}", _unknownCodes.isEmpty() ? "" : " of a known language",
                    _notices[0].file, _notices[0].file.isEmpty() ? "" : ": ", _notices[0].reason));
    }

    void noticeDeepFiles() {
        if(_deepFiles.empty()) return;
        std::sort(_deepFiles.begin(), _deepFiles.end());
        const Containers::StringView reason = "only files that lie right in the folder of their language are read"_s;
        const std::size_t more = _deepFiles.size() - 1;
        Containers::arrayAppend(_notices,
            FileNotice{printable(_deepFiles.front()),
                more ? format("{} ({} more lie too deep)", reason, more) : Containers::String{reason}});
    }

    void refuseUnread(const Containers::StringView name, const int error) {
        refuse(name, systemReason("read"_s, error));
        _isInaccessible = true;
    }

    /** Whether the folder is the one in which a project, whose file lies beside it, has its translations. */
    bool isStorage() const { return Path::filename(_path) == StorageFolder && isProject(Path::path(_path)); }

    bool isProject(const Containers::StringView folder) const {
        Containers::Array<Containers::String> names;
        return _fileSystem.listFolder(folder, names) == 0 &&
            std::find(names.begin(), names.end(), "project.json"_s) != names.end();
    }

    /** What lies in one more folder, as it may in an archive, where there is nothing else. */
    void findFilesBelow() {
        if(hasFiles() || !_refusals.isEmpty() || !_deepFiles.empty()) return;
        if(isProject(_path))
            _foldersAround.erase(
                std::remove(_foldersAround.begin(), _foldersAround.end(), StorageFolder), _foldersAround.end());
        if(_foldersAround.empty() || isLanguage(Path::filename(_path)) || _unknownCodes.hasLanguages()) return;
        if(_foldersAround.size() != 1) {
            refuse(_path,
                format("holds no terms itself, but its folders {} and {} do: give one of them",
                    printable(_foldersAround[0]), printable(_foldersAround[1])));
            return;
        }
        const Containers::String folder = Path::join(_path, _foldersAround[0]);
        Containers::Array<Containers::String> names;
        FileError error;
        if(!checkStaged(_fileSystem, folder, error)) refuse(error.path, error.reason);
        else if(const int result = _fileSystem.listFolder(folder, names)) refuseUnread(folder, result);
        else {
            _unknownCodes.clear();
            _around = _foldersAround[0] + "/"_s;
            findFiles(names);
        }
    }

    void findFiles(const Containers::ArrayView<const Containers::String> names) {
        for(const Containers::String& inFolder: names) {
            if(inFolder.hasPrefix('.')) continue;
            const Containers::String name = _around + inFolder;
            if(name.hasSuffix(".json"_s)) {
                findFile(name);
                continue;
            }
            const Containers::String folder = Path::join(_path, name);
            // What lies elsewhere is refused where it would be read, and is nobody's business else.
            const Int language = _languages.find(inFolder);
            const bool isMeant = language != -1;
            const bool isAskedFor = isMeant && _languages.isAskedFor(UnsignedInt(language));
            if(!isAskedFor && _fileSystem.isLink(folder) && !isInside(_path, folder)) {
                if(isMeant) _languages.add(inFolder, UnsignedInt(language));
                continue;
            }
            Containers::Array<Containers::String> inner;
            const int result = _fileSystem.listFolder(folder, inner);
            // Only a folder of a language is missed where it cannot be read.
            if(result != 0 && result != ENOTDIR && isMeant) {
                if(isAskedFor) refuseUnread(folder, result);
                _languages.add(inFolder, UnsignedInt(language));
            }
            bool isAround = false;
            for(const Containers::String& file: inner) {
                if(file.hasPrefix('.')) continue;
                isAround = isAround ||
                    (!isMeant &&
                        isLanguage(file.hasSuffix(".json"_s) ? file.exceptSuffix(5) : Containers::StringView{file}));
                if(file.hasSuffix(".json"_s)) findFile(name + "/"_s + file);
                else if(isMeant) {
                    const std::size_t before = _deepFiles.size();
                    findDeepFiles(name + "/"_s + file, 0);
                    if(_deepFiles.size() != before) addDeepFiles(before, inFolder);
                }
            }
            if(isAround && _around.isEmpty()) _foldersAround.push_back(name);
        }
    }

    /** Files that somebody may hope to be read, below a folder of a language. */
    // As deep as said.
    void findDeepFiles(const Containers::String& relative, const std::size_t depth) {
        const Containers::String folder = pathOf(relative);
        Containers::Array<Containers::String> names;
        // What a link leads to lies elsewhere, or is seen there.
        if(isCancelled() || depth == MaxDepth || _deepFiles.size() >= ArchiveDirectory::MaxEntries ||
            _fileSystem.isLink(folder) || _fileSystem.listFolder(folder, names) != 0)
            return;
        for(const Containers::String& name: names) {
            if(name.hasPrefix('.')) continue;
            if(name.hasSuffix(".json"_s)) _deepFiles.push_back(relative + "/"_s + name);
            else findDeepFiles(relative + "/"_s + name, depth + 1);
        }
    }

    /** Keeps those from a place on, which lie below the folder of a language, where that one is asked for. */
    void addDeepFiles(const std::size_t first, const Containers::StringView code) {
        const UnsignedInt language = UnsignedInt(_languages.find(code));
        if(_languages.isAskedFor(language)) return;
        _deepFiles.resize(first);
        _languages.add(code, language);
    }

    /** The folder of a language that an entry of an archive lies below, with another folder between; empty where it does not. */
    Containers::StringView folderAboveDeep(const Containers::StringView entry) const {
        if(!entry.hasSuffix(".json"_s)) return {};
        const Containers::Array<Containers::StringView> parts = entry.split('/');
        for(const Containers::StringView part: parts)
            if(part.isEmpty() || part.hasPrefix('.')) return {};
        if(parts.size() < 3) return {};
        // One folder, whatever its name, may lie around those of the languages.
        if(isLanguage(parts[0]) && (parts.size() != 3 || !isLanguage(parts[1]))) return parts[0];
        return parts.size() != 3 && isLanguage(parts[1]) ? parts[1] : Containers::StringView{};
    }

    bool isLanguage(const Containers::StringView folder) const { return _languages.find(folder) != -1; }

    void findFile(const Containers::String& relative) {
        TermFilePath parsed;
        if(isCancelled() || !isTermFile(relative, false, parsed)) return;
        const Containers::String path = pathOf(relative);
        if(!isInside(_path, path)) {
            refuse(path, "is a link that leads out of the folder"_s);
            return;
        }
        Containers::arrayAppend(_files,
            TermFile{
                printable(path), relative, UnsignedInt(parsed.language), Containers::String{parsed.nameSpace}, {}});
    }

    void readFiles() {
        if(_files.size() > ArchiveDirectory::MaxEntries) {
            refuse(_path, "holds more than 10,000 files of terms"_s);
            _files = {};
            return;
        }
        std::vector<int> results(_files.size());
        std::atomic<std::size_t> sizeSoFar{0};
        forEach(_fileSystem.canReadAtOnce(), [&](const std::size_t i) {
            // What is left is not read any more: one of those before will be too large.
            if(sizeSoFar > ArchiveReader::MaxTotalSize) return;
            const Containers::String path = pathOf(_files[i].relativePath);
            results[i] = _fileSystem.readFile(path, _files[i].bytes, ArchiveReader::MaxFileSize);
            sizeSoFar += _files[i].bytes.size();
        });
        if(isCancelled()) return;
        std::size_t totalSize = 0, read = 0;
        for(std::size_t i = 0; i != _files.size() && totalSize <= ArchiveReader::MaxTotalSize; ++i) {
            const Containers::String path = pathOf(_files[i].relativePath);
            totalSize += _files[i].bytes.size();
            if(results[i] == EFBIG) refuse(path, "is larger than 64 MiB"_s);
            else if(results[i]) refuseUnread(path, results[i]);
            else if(totalSize > ArchiveReader::MaxTotalSize) refuse(path, ArchiveReader::TotalReason);
            else if(i == read++) continue;
            else _files[read - 1] = std::move(_files[i]);
        }
        Containers::arrayRemoveSuffix(_files, _files.size() - read);
    }

    /** Calls a function for every file, on all cores if it may, until it is cancelled. */
    template <class Run> void forEach(const bool isAtOnce, Run&& run) {
        const auto runOne = [&](const std::size_t i) {
            if(!isCancelled()) run(i);
        };
        if(isAtOnce) forEachInParallel(_files.size(), runOne);
        else
            for(std::size_t i = 0; i != _files.size(); ++i) runOne(i);
    }

    void readArchive() {
        Containers::String bytes;
        if(const int result = _fileSystem.readFile(_path, bytes)) {
            if(result == EFBIG) refuse(_path, "is larger than 1 GiB"_s);
            else refuseUnread(_path, result);
            return;
        }
        ArchiveReader archive;
        ArchiveRefusal refusal;
        if(!archive.open(bytes, refusal)) {
            refuse(refusal);
            return;
        }
        std::vector<std::size_t> entries;
        for(std::size_t i = 0; i != archive.entries().size(); ++i) {
            const Containers::String& name = archive.entries()[i].name;
            TermFilePath parsed;
            if(const Containers::StringView folder = folderAboveDeep(name); !folder.isEmpty()) {
                _deepFiles.push_back(name);
                addDeepFiles(_deepFiles.size() - 1, folder);
                continue;
            }
            if(!isTermFile(name, true, parsed)) continue;
            entries.push_back(i);
            Containers::arrayAppend(_files,
                TermFile{printable(pathOf(name)), name, UnsignedInt(parsed.language),
                    Containers::String{parsed.nameSpace}, {}});
        }

        // The first that is refused ends it, so that what is refused does not depend on who comes first.
        std::vector<ArchiveRefusal> refusals(_files.size());
        std::atomic<std::size_t> end{archive.countWithin({entries.data(), entries.size()})};
        if(end != _files.size())
            refusals[end] = {printable(archive.entries()[entries[end]].name), ArchiveReader::TotalReason};
        forEach(true, [&](const std::size_t i) {
            if(i >= end || archive.read(entries[i], _files[i].bytes, refusals[i])) return;
            for(std::size_t old = end; i < old && !end.compare_exchange_weak(old, i);) {
            }
        });
        if(end == _files.size()) return;
        refuse(refusals[end]);
        _files = {};
    }

    void refuse(const ArchiveRefusal& refusal) {
        refuse(refusal.entry.isEmpty() ? _path : pathOf(refusal.entry), refusal.reason);
    }

    /** Also of a name that is hostile, which joined as a path would be another place. */
    Containers::String pathOf(const Containers::StringView name) const { return format("{}/{}", _path, name); }

    /** Whether a path is one of a file that is to be read. */
    bool isTermFile(const Containers::String& relative, const bool isEnclosed, TermFilePath& parsed) {
        if(!TermFilePath::parse(relative.exceptPrefix(_around.size()), isEnclosed, _languages.map(), parsed))
            return false;
        if(parsed.language == -1) {
            // Of a folder and a file neither of which has a known code, it is the file's that is nearer to one.
            const bool isInFolder = isEnclosed && relative.count('/') == 1 &&
                _unknownCodes.nearest(parsed.code) == -1 && _unknownCodes.nearest(parsed.nameSpace) != -1;
            _unknownCodes.add(isInFolder ? parsed.nameSpace : parsed.code, relative);
            return false;
        }
        _languages.add(parsed.code, UnsignedInt(parsed.language));
        if(!_languages.isAskedFor(UnsignedInt(parsed.language))) return false;
        if(!JsonReader::isUtf8(relative)) refuse(pathOf(relative), "has a name that is not valid UTF-8"_s);
        else if(!TermKey::canTakeNamespace(parsed.nameSpace))
            refuse(pathOf(relative), "has a name that no namespace can have"_s);
        else return true;
        return false;
    }

    FileSystem& _fileSystem;
    Containers::String _path;
    const Progress* _progress;
    Containers::Array<TermFile>& _files;
    Containers::Array<FileNotice>& _notices;
    Containers::Array<Containers::String>& _refusals;
    bool& _isInaccessible;
    bool& _lacksLanguages;
    bool& _hasUnusedMappings;
    FoundLanguages _languages;
    UnknownCodes _unknownCodes;
    /** Folders that are of no language and hold some. */
    std::vector<Containers::String> _foldersAround;
    /** The one of them that is read, with "/" behind; empty where files lie in no such folder. */
    Containers::String _around;
    /** Relative paths of those that lie too deep. */
    std::vector<Containers::String> _deepFiles;
};

}

bool readTermFiles(FileSystem& fileSystem, const Containers::StringView path, const TermFileOptions& options,
    TermFiles& found, const Progress* const progress) {
    Finding finding{fileSystem, path, options, found, progress};
    finding.run();
    return found.refusals.isEmpty() && !finding.isCancelled();
}

}
