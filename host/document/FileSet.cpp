#include "FileSet.h"

#include <algorithm>
#include <cerrno>
#include <string>
#include <string_view>
#include <vector>

#include <Corrade/Containers/GrowableArray.h>

namespace QuorvaneEngine {

namespace {

constexpr std::string_view EditorFolder{".editor"};
constexpr std::string_view IgnoreFile{".editor/.gitignore"};
constexpr std::string_view StageFolder{".editor/save"};
constexpr std::string_view JournalFile{".editor/save/journal"};
constexpr std::string_view NewJournalFile{".editor/save/journal.new"};
constexpr std::string_view BackJournalFile{".editor/save/journal.back"};
constexpr const char* NoWayBack = "; what is on the disk is put in order when the project is saved or opened next";

std::string_view view(Containers::StringView text) { return {text.data(), text.size()}; }

Containers::String joined(Containers::StringView folder, std::string_view path) {
    std::string whole{view(folder)};
    whole += '/';
    whole += path;
    return {whole.data(), whole.size()};
}

/** The staged form of the file with an index, or the second name of the one that it replaces. */
std::string staged(std::size_t index, const char* suffix) {
    std::string path{StageFolder};
    return path.append("/").append(std::to_string(index)).append(suffix);
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

    bool write(std::string_view path, Containers::StringView bytes, std::string_view modeOf = {}) {
        const Containers::String mode = modeOf.empty() ? Containers::String{} : at(modeOf);
        return check(_files.writeFile(at(path), bytes, mode), path, "written") &&
            check(_files.syncFile(at(path)), path, "written");
    }

    bool sync(std::string_view path, int ignored = 0) {
        return check(
            _files.syncFolder(path.empty() ? Containers::String{_folder} : at(path)), path, "written", ignored);
    }

    bool rename(std::string_view from, std::string_view to, int ignored = 0) {
        return check(_files.renameFile(at(from), at(to)), to, "put in place", ignored);
    }

    bool remove(std::string_view path, int ignored = 0) {
        return check(_files.removeFile(at(path)), path, "removed", ignored);
    }

    bool makeFolder(std::string_view path) { return check(_files.makeFolder(at(path)), path, "made", EEXIST); }

    /** Keeps a file under a second name, or a copy of it where the disk knows no second names. */
    bool keep(std::string_view path, std::string_view name, bool& isMissing) {
        const int error = _files.linkFile(at(path), at(name));
        isMissing = error == ENOENT;
        if(isMissing) return true;
        if(error != EPERM && error != EOPNOTSUPP && error != ENOSYS && error != EMLINK)
            return check(error, path, "kept");
        Containers::String bytes;
        const int readError = _files.readFile(at(path), bytes);
        isMissing = readError == ENOENT;
        return isMissing || (check(readError, path, "read") && write(name, bytes, path));
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

/** Removes the stage, once no journal refers to it. What stays behind is removed by the next save. */
void clear(FileSystem& files, Containers::StringView folder) {
    Containers::Array<Containers::String> names;
    const Containers::String stage = joined(folder, StageFolder);
    if(files.listFolder(stage, names)) return;
    for(const Containers::String& name: names) files.removeFile(joined(stage, view(name)));
    files.removeFolder(stage);
}

/** Removes those folders of created files that hold nothing else. */
void removeEmptyParents(FileSystem& files, Containers::StringView folder, const Journal& journal) {
    for(const Journal::Entry& entry: journal.entries)
        if(entry.action == Journal::Action::Create && hasParent(entry.path))
            files.removeFolder(joined(folder, parentOf(entry.path)));
}

/** Moves one file on its way. Steps that were done before are met as files that are not there. */
bool move(Steps& steps, const Journal::Entry& entry, std::size_t index, Journal::Direction direction) {
    const std::string_view path = view(entry.path);
    if(direction == Journal::Direction::Restore)
        return entry.action == Journal::Action::Create ? steps.remove(path, ENOENT)
                                                       : steps.rename(staged(index, ".old"), path, ENOENT);
    if(entry.action == Journal::Action::Remove) return steps.remove(path, ENOENT);
    return (!hasParent(entry.path) || steps.makeFolder(parentOf(entry.path))) &&
        steps.rename(staged(index, ".new"), path, ENOENT);
}

/** Goes where a journal on the disk points to, and then removes it. Can be begun again at any time. */
bool follow(FileSystem& files, Containers::StringView folder, const Journal& journal, FileError& error) {
    Steps steps{files, folder, error};
    std::vector<std::string_view> parents;
    for(std::size_t i = 0; i != journal.entries.size(); ++i) {
        const Journal::Entry& entry = journal.entries[i];
        if(!move(steps, entry, i, journal.direction)) return false;
        if(hasParent(entry.path) && std::find(parents.begin(), parents.end(), parentOf(entry.path)) == parents.end())
            parents.push_back(parentOf(entry.path));
    }
    if(journal.direction == Journal::Direction::Restore) removeEmptyParents(files, folder, journal);
    for(const std::string_view parent: parents)
        if(!steps.sync(parent, ENOENT)) return false;
    return steps.sync({}) && steps.remove(JournalFile) && steps.sync(StageFolder);
}

}

FileSet::FileSet(FileSystem& files, const Containers::StringView folder): _files{&files}, _folder{folder} {}

void FileSet::write(const Containers::StringView path, const Containers::StringView bytes) {
    arrayAppend(_journal.entries, Journal::Entry{Journal::Action::Replace, path});
    arrayAppend(_contents, Containers::String{bytes});
}

void FileSet::remove(const Containers::StringView path) {
    arrayAppend(_journal.entries, Journal::Entry{Journal::Action::Remove, path});
    arrayAppend(_contents, Containers::String{});
}

bool FileSet::makeEditorFolder(FileSystem& files, const Containers::StringView folder, FileError& error) {
    Steps steps{files, folder, error};
    Containers::String ignored;
    return steps.makeFolder(EditorFolder) &&
        (files.readFile(steps.at(IgnoreFile), ignored) != ENOENT || steps.write(IgnoreFile, "*\n"));
}

bool FileSet::stage(FileError& error) {
    Steps steps{*_files, _folder, error};
    if(!makeEditorFolder(*_files, _folder, error) || !steps.makeFolder(StageFolder)) return false;

    for(std::size_t i = 0; i != _journal.entries.size(); ++i) {
        Journal::Entry& entry = _journal.entries[i];
        bool isMissing = false;
        if(!steps.keep(view(entry.path), staged(i, ".old"), isMissing)) return false;
        if(entry.action == Journal::Action::Remove) continue;
        if(isMissing) {
            entry.action = Journal::Action::Create;
            // Here and not on the way, so that it has reached the disk before anything is put into it.
            if(hasParent(entry.path) && !steps.makeFolder(parentOf(entry.path))) return false;
        }
        if(!steps.write(staged(i, ".new"), _contents[i], view(entry.path))) return false;
    }

    // The way back must not depend on space that the disk may not have then.
    _journal.direction = Journal::Direction::Restore;
    if(!steps.write(BackJournalFile, _journal.text())) return false;
    _journal.direction = Journal::Direction::Complete;
    return steps.write(NewJournalFile, _journal.text()) && steps.sync(StageFolder) && steps.sync(EditorFolder) &&
        steps.sync({}) && steps.rename(NewJournalFile, JournalFile);
}

bool FileSet::commit(FileError& error) {
    if(_journal.entries.isEmpty()) return true;
    if(!recover(*_files, _folder, error)) return false;
    if(!stage(error)) {
        clear(*_files, _folder);
        removeEmptyParents(*_files, _folder, _journal);
        return false;
    }

    Steps steps{*_files, _folder, error};
    const bool isDone = steps.sync(StageFolder) && follow(*_files, _folder, _journal, error);
    if(!isDone) {
        FileError backError;
        Steps back{*_files, _folder, backError};
        _journal.direction = Journal::Direction::Restore;
        if(!back.rename(BackJournalFile, JournalFile) || !back.sync(StageFolder) ||
            !follow(*_files, _folder, _journal, backError)) {
            const std::string reason = std::string{view(error.reason)} + NoWayBack;
            error.reason = Containers::String{reason.data(), reason.size()};
            return false;
        }
    }
    clear(*_files, _folder);
    return isDone;
}

bool FileSet::recover(FileSystem& files, const Containers::StringView folder, FileError& error) {
    Steps steps{files, folder, error};
    Containers::String text;
    const int failure = files.readFile(steps.at(JournalFile), text);
    if(!failure) {
        const Containers::Optional<Journal> journal = Journal::fromText(text);
        if(!journal) {
            error = {steps.at(JournalFile), "is no journal of a save; without it the files are taken as they are"};
            return false;
        }
        if(!follow(files, folder, *journal, error)) return false;
    } else if(failure != ENOENT && failure != ENOTDIR) return steps.check(failure, JournalFile, "read");
    clear(files, folder);
    return true;
}

}
