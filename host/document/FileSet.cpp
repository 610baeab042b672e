#include "FileSet.h"

#include <algorithm>
#include <cerrno>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <Corrade/Containers/GrowableArray.h>

namespace QuorvaneEngine {

namespace {

constexpr std::string_view EditorFolder{".editor"};
constexpr std::string_view IgnoreFile{".editor/.gitignore"};
constexpr const char* IgnoreAll = "*\n";
constexpr std::string_view JournalFile{"journal"};
constexpr std::string_view NewJournalFile{"journal.new"};
constexpr std::string_view BackJournalFile{"journal.back"};
constexpr const char* NoWayBack = "; what is on the disk is put in order ";
constexpr const char* IsLink = "is a link where a folder is needed";
constexpr const char* LeadsOut = "is a link, through which nothing is put in order that was cut short";

std::string_view view(Containers::StringView text) { return {text.data(), text.size()}; }

Containers::String joined(Containers::StringView folder, std::string_view path) {
    std::string whole{view(folder)};
    whole += '/';
    whole += path;
    return {whole.data(), whole.size()};
}

/** A file in the stage. */
std::string staged(const FileSet::Stage& stage, std::string_view name) {
    std::string path{stage.folder};
    return path.append("/").append(name);
}

/** The staged form of the file with an index, or the second name of the one that it replaces. */
std::string staged(const FileSet::Stage& stage, std::size_t index, const char* suffix) {
    return staged(stage, std::to_string(index) + suffix);
}

std::string_view parentOf(Containers::StringView path) {
    const std::string_view whole = view(path);
    return whole.substr(0, std::min(whole.find('/'), whole.size()));
}

bool hasParent(Containers::StringView path) { return view(path).find('/') != std::string_view::npos; }

/** The steps on one folder. Each says whether it went well; one that did not leaves its reason in the error. */
class Steps {
public:
    explicit Steps(FileSystem& files, Containers::StringView folder, FileError& error)
        : _files{files}, _folder{folder}, _error{error} {}

    /** @param shown    the path that an error names */
    bool write(std::string_view path, Containers::StringView bytes, std::string_view modeOf, std::string_view shown) {
        const Containers::String mode = modeOf.empty() ? Containers::String{} : at(modeOf);
        return check(_files.writeFile(at(path), bytes, mode), shown, "written");
    }

    bool syncFile(std::string_view path, std::string_view shown) {
        return check(_files.syncFile(at(path)), shown, "written");
    }

    bool writeThrough(std::string_view path, Containers::StringView bytes) {
        return write(path, bytes, {}, path) && syncFile(path, path);
    }

    bool sync(std::string_view path, int ignored = 0) {
        return check(
            _files.syncFolder(path.empty() ? Containers::String{_folder} : at(path)), path, "written", ignored);
    }

    /** What has to reach the disk, in any order. */
    struct Unsynced {
        /** Paths, and those that errors name. */
        std::vector<std::pair<std::string, std::string_view>> files;

        /** Empty for the folder of all. */
        std::vector<std::string_view> folders;
    };

    bool sync(const Unsynced& unsynced, int ignored = 0) {
        Containers::Array<Containers::String> files, folders;
        for(const auto& file: unsynced.files) arrayAppend(files, at(file.first));
        for(const std::string_view folder: unsynced.folders)
            arrayAppend(folders, folder.empty() ? Containers::String{_folder} : at(folder));
        Containers::Array<int> results{Corrade::ValueInit, files.size() + folders.size()};
        _files.syncAll(files, folders, results);
        for(std::size_t i = 0; i != results.size(); ++i) {
            const bool isFile = i < files.size();
            if(!check(results[i], isFile ? unsynced.files[i].second : unsynced.folders[i - files.size()], "written",
                   isFile ? 0 : ignored))
                return false;
        }
        return true;
    }

    bool rename(std::string_view from, std::string_view to, int ignored = 0) {
        return check(_files.renameFile(at(from), at(to)), to, "put in place", ignored);
    }

    bool remove(std::string_view path, int ignored = 0) {
        return check(_files.removeFile(at(path)), path, "removed", ignored);
    }

    bool makeFolder(std::string_view path) { return check(_files.makeFolder(at(path)), path, "made", EEXIST); }

    /** Keeps a file under a second name, or a copy of it where the disk knows no second names. */
    bool keep(std::string_view path, std::string_view name, bool& isMissing, bool& isCopy) {
        const int error = _files.linkFile(at(path), at(name));
        isMissing = error == ENOENT;
        if(isMissing) return true;
        if(error != EPERM && error != EOPNOTSUPP && error != ENOSYS && error != EMLINK)
            return check(error, path, "kept");
        Containers::String bytes;
        const int readError = _files.readFile(at(path), bytes);
        isMissing = readError == ENOENT;
        isCopy = !isMissing;
        return isMissing || (check(readError, path, "read") && write(name, bytes, path, path));
    }

    /** Whether no part of a path is a link.
        @param reason   for one that is */
    bool hasNoLink(std::string_view path, const char* reason) {
        for(std::size_t end = 0; end != std::string_view::npos;) {
            end = path.find('/', end + 1);
            if(!_files.isLink(at(path.substr(0, end)))) continue;
            _error = {at(path.substr(0, end)), reason};
            return false;
        }
        return true;
    }

    Containers::String at(std::string_view path) const { return joined(_folder, path); }

    bool check(int error, std::string_view path, const char* what, int ignored = 0) {
        if(!error || error == ignored) return true;
        _error = {path.empty() ? Containers::String{_folder} : at(path), systemReason(what, error)};
        return false;
    }

private:
    FileSystem& _files;
    Containers::StringView _folder;
    FileError& _error;
};

/** Removes the stage, once no journal refers to it. What stays behind is removed by the next set. */
void clear(FileSystem& files, Containers::StringView folder, const FileSet::Stage& stage) {
    Containers::Array<Containers::String> names;
    const Containers::String path = joined(folder, stage.folder);
    if(files.listFolder(path, names)) return;
    for(const Containers::String& name: names) files.removeFile(joined(path, view(name)));
    files.removeFolder(path);
}

/** Removes those folders of created files that hold nothing else. */
void removeEmptyParents(FileSystem& files, Containers::StringView folder, const Journal& journal) {
    for(const Journal::Entry& entry: journal.entries)
        if(entry.action == Journal::Action::Create && hasParent(entry.path))
            files.removeFolder(joined(folder, parentOf(entry.path)));
}

/** Moves one file on its way.
    @param isAgain  whether steps may have been done before, which are then met as files that are not there */
bool move(Steps& steps, const FileSet::Stage& stage, const Journal::Entry& entry, std::size_t index,
    Journal::Direction direction, bool isAgain) {
    const std::string_view path = view(entry.path);
    if(direction == Journal::Direction::Restore)
        return entry.action == Journal::Action::Create ? steps.remove(path, ENOENT)
                                                       : steps.rename(staged(stage, index, ".old"), path, ENOENT);
    if(entry.action == Journal::Action::Remove) return steps.remove(path, ENOENT);
    return (!hasParent(entry.path) || steps.makeFolder(parentOf(entry.path))) &&
        steps.rename(staged(stage, index, ".new"), path, isAgain ? ENOENT : 0);
}

/** Goes where a journal on the disk points to, and then removes it. Can be begun again at any time.
    @param isAgain  whether it may have been begun before */
bool follow(FileSystem& files, Containers::StringView folder, const FileSet::Stage& stage, const Journal& journal,
    bool isAgain, FileError& error) {
    Steps steps{files, folder, error};
    Steps::Unsynced unsynced;
    std::vector<std::string_view>& parents = unsynced.folders;
    for(std::size_t i = 0; i != journal.entries.size(); ++i) {
        const Journal::Entry& entry = journal.entries[i];
        if(!move(steps, stage, entry, i, journal.direction, isAgain)) return false;
        if(hasParent(entry.path) && std::find(parents.begin(), parents.end(), parentOf(entry.path)) == parents.end())
            parents.push_back(parentOf(entry.path));
    }
    if(journal.direction == Journal::Direction::Restore) removeEmptyParents(files, folder, journal);
    parents.emplace_back();
    return steps.sync(unsynced, ENOENT) && steps.remove(staged(stage, JournalFile)) && steps.sync(stage.folder);
}

}

FileSet::FileSet(FileSystem& files, const Containers::StringView folder, const Stage& stage)
    : _files{&files}, _folder{folder}, _stage{stage} {}

void FileSet::write(const Containers::StringView path, const Containers::StringView bytes) {
    arrayAppend(_journal.entries, Journal::Entry{Journal::Action::Replace, path});
    arrayAppend(_contents, bytes);
}

void FileSet::remove(const Containers::StringView path) {
    arrayAppend(_journal.entries, Journal::Entry{Journal::Action::Remove, path});
    arrayAppend(_contents, Containers::StringView{});
}

bool FileSet::makeEditorFolder(FileSystem& files, const Containers::StringView folder, FileError& error) {
    Steps steps{files, folder, error};
    if(!steps.hasNoLink(EditorFolder, IsLink) || !steps.makeFolder(EditorFolder)) return false;
    Containers::String ignored;
    const int failure = files.readFile(steps.at(IgnoreFile), ignored);
    // One that is empty was being made when the program was ended.
    return (failure ? failure != ENOENT : !ignored.isEmpty()) || steps.writeThrough(IgnoreFile, IgnoreAll);
}

bool FileSet::stage(FileError& error) {
    Steps steps{*_files, _folder, error};
    const std::string_view parent = parentOf(_stage.folder);
    const bool isInFolder = parent.size() != std::string_view{_stage.folder}.size();
    if(parent == EditorFolder && !makeEditorFolder(*_files, _folder, error)) return false;
    if(!steps.makeFolder(_stage.folder)) return false;
    const std::string ignore = staged(_stage, ".gitignore");
    if(parent != EditorFolder && !steps.write(ignore, IgnoreAll, {}, ignore)) return false;

    Steps::Unsynced unsynced;
    auto& written = unsynced.files;
    for(std::size_t i = 0; i != _journal.entries.size(); ++i) {
        Journal::Entry& entry = _journal.entries[i];
        const std::string_view path = view(entry.path);
        bool isMissing = false, isCopy = false;
        if(!steps.keep(path, staged(_stage, i, ".old"), isMissing, isCopy)) return false;
        if(isCopy) written.emplace_back(staged(_stage, i, ".old"), path);
        if(entry.action == Journal::Action::Remove) continue;
        if(isMissing) {
            entry.action = Journal::Action::Create;
            // Here and not on the way, so that it has reached the disk before anything is put into it.
            if(hasParent(entry.path) && !steps.makeFolder(parentOf(entry.path))) return false;
        }
        written.emplace_back(staged(_stage, i, ".new"), path);
        if(!steps.write(written.back().first, _contents[i], path, path)) return false;
    }

    // The way back must not depend on space that the disk may not have then.
    const std::string back = staged(_stage, BackJournalFile), forth = staged(_stage, NewJournalFile);
    _journal.direction = Journal::Direction::Restore;
    if(!steps.write(back, _journal.text(), {}, back)) return false;
    _journal.direction = Journal::Direction::Complete;
    if(!steps.write(forth, _journal.text(), {}, forth)) return false;

    written.emplace_back(back, back);
    written.emplace_back(forth, forth);
    unsynced.folders = {_stage.folder, {}};
    if(isInFolder) unsynced.folders.push_back(parent);
    return steps.sync(unsynced) && steps.rename(forth, staged(_stage, JournalFile));
}

bool FileSet::commit(FileError& error) {
    if(_journal.entries.isEmpty()) return true;
    if(!recover(*_files, _folder, error, _stage)) return false;
    if(!stage(error)) {
        clear(*_files, _folder, _stage);
        removeEmptyParents(*_files, _folder, _journal);
        return false;
    }

    Steps steps{*_files, _folder, error};
    const bool isDone = steps.sync(_stage.folder) && follow(*_files, _folder, _stage, _journal, false, error);
    if(!isDone) {
        FileError backError;
        Steps back{*_files, _folder, backError};
        _journal.direction = Journal::Direction::Restore;
        if(!back.rename(staged(_stage, BackJournalFile), staged(_stage, JournalFile)) || !back.sync(_stage.folder) ||
            !follow(*_files, _folder, _stage, _journal, true, backError)) {
            const std::string reason = std::string{view(error.reason)} + NoWayBack + _stage.remedy;
            error.reason = Containers::String{reason.data(), reason.size()};
            return false;
        }
    }
    clear(*_files, _folder, _stage);
    return isDone;
}

bool FileSet::findJournal(FileSystem& files, const Containers::StringView folder, const Stage& stage, bool& isFound,
    Journal& journal, FileError& error) {
    Steps steps{files, folder, error};
    const std::string path = staged(stage, JournalFile);
    isFound = false;
    if(!steps.hasNoLink(stage.folder, IsLink)) return false;
    Containers::String text;
    const int failure = files.readFile(steps.at(path), text);
    if(failure == ENOENT || failure == ENOTDIR) return true;
    if(failure) return steps.check(failure, path, "read");
    Containers::Optional<Journal> read = Journal::fromText(text);
    if(!read) {
        error = {steps.at(path), "is no journal of a save; without it the files are taken as they are"};
        return false;
    }
    isFound = true;
    journal = std::move(*read);
    return true;
}

bool FileSet::recover(FileSystem& files, const Containers::StringView folder, FileError& error, const Stage& stage) {
    bool isFound = false;
    Journal journal;
    if(!findJournal(files, folder, stage, isFound, journal, error)) return false;
    if(isFound) {
        Steps steps{files, folder, error};
        for(const Journal::Entry& entry: journal.entries) {
            const std::string_view path = view(entry.path);
            if(hasParent(entry.path) && !steps.hasNoLink(path.substr(0, path.rfind('/')), LeadsOut)) return false;
        }
        if(!follow(files, folder, stage, journal, true, error)) return false;
    }
    clear(files, folder, stage);
    return true;
}

}
