#include "app/Autosave.h"

#include <cerrno>
#include <charconv>
#include <chrono>
#include <mutex>
#include <string_view>
#include <utility>
#include <vector>

#include <unistd.h>

#include <Corrade/Containers/Array.h>
#include <Corrade/Utility/Debug.h>
#include <rapidjson/document.h>

#include "ChangeManager.h"
#include "QuorvaneEditor/JobSystem.h"
#include "document/EditorSession.h"
#include "document/FileSystem.h"
#include "document/JsonReader.h"
#include "document/MendedText.h"
#include "document/SteppedJsonWriter.h"
#include "localization/Fingerprint.h"

namespace QuorvaneEngine {

namespace {

constexpr std::string_view Format{"quorvane-autosave 1 "};

/** How long a frame may be held up in nanoseconds, and how many values are written between two looks at the clock. */
constexpr std::int64_t Slice = 3'000'000;
constexpr std::size_t SliceMembers = 200;

std::int64_t machineTime() {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

/** Of the names under which bytes lie before they are in place: those that a job writes, and those that are written at once. */
constexpr const char* NewSuffix = ".new";
constexpr const char* NowSuffix = ".now";

/** Characters of a fingerprint. */
constexpr std::size_t FingerprintSize = 16;

std::string_view view(const Containers::StringView text) { return {text.data(), text.size()}; }

std::string headerOf(const Containers::StringView state, const Containers::StringView content) {
    std::string header{Format};
    header.append(view(state)).append(" ").append(std::to_string(content.size())).append(" ");
    return header.append(view(fingerprint(content))).append("\n");
}

/** The content behind the header of a file that is whole; else why it is not.
    @param state    receives the saved state that it belongs to */
const char* contentOf(const Containers::StringView bytes, Containers::String& state, Containers::StringView& content) {
    const std::string_view all = view(bytes);
    const std::size_t end = all.find('\n');
    if(!all.starts_with(Format) || end == std::string_view::npos || end < Format.size() + FingerprintSize)
        return "is nothing that was kept for the case of a crash";
    state = Containers::String{bytes.slice(Format.size(), Format.size() + FingerprintSize)};
    content = bytes.exceptPrefix(end + 1);
    return headerOf(state, content) == all.substr(0, end + 1) ? nullptr : "is cut or damaged, and cannot be restored";
}

}

struct Autosave::Task {
    std::mutex mutex;
    bool isCancelled = false;
    bool isDone = false;

    /** The number of an error; 0 while all is well. */
    int error = 0;

    /** Which file. */
    Containers::String path;
};

/** What is written. */
struct Autosave::Copy {
    std::vector<std::string> parts;
    Containers::String state;
    FileSystem* files;
    Containers::String path;
    Containers::String project;

    /** @param aside    where the bytes lie before they are in place
        @param task     which may be cancelled meanwhile
        @return the number of an error */
    int write(const Containers::StringView aside, Task& task) {
        std::string text;
        for(std::string& part: parts) text += std::exchange(part, {});
        // What the editor takes for a text it may not take from a file.
        if(!JsonReader::isUtf8({text.data(), text.size()})) text = mendedText(text);
        const std::string header = headerOf(state, {text.data(), text.size()});
        int error =
            files->writeFile(aside, {(header + text).c_str(), header.size() + text.size()}, project + "/project.json");
        if(!error) error = files->syncFile(aside);
        {
            const std::lock_guard lock{task.mutex};
            if(!error && !task.isCancelled) error = files->renameFile(aside, path);
            if(error || task.isCancelled) files->removeFile(aside);
            if(task.isCancelled) return 0;
        }
        return error ? error : files->syncFolder(project + "/.editor");
    }
};

Autosave::Autosave(EditorSession& session, JobSystem& jobs, FileSystem& files, const Clock clock)
    : _session{&session}, _jobs{&jobs}, _files{&files}, _clock{clock ? clock : machineTime} {}

Autosave::~Autosave() = default;

Containers::String Autosave::place(const char* const name) const { return _folder + "/.editor/" + name; }

Containers::String Autosave::aside(const char* const suffix) const {
    // Another program, that has lost the project since, may write at the same time.
    return place("autosave.") + (std::to_string(::getpid()) + suffix).c_str();
}

void Autosave::removeAsides() {
    const Containers::String folder = _folder + "/.editor";
    Containers::Array<Containers::String> names;
    _files->listFolder(folder, names);
    for(const Containers::StringView name: names)
        if(name.hasPrefix("autosave.") && (name.hasSuffix(NewSuffix) || name.hasSuffix(NowSuffix)))
            _files->removeFile(folder + "/" + name);
}

void Autosave::cancelTask() {
    if(!_task) return;
    const std::lock_guard lock{_task->mutex};
    _task->isCancelled = true;
}

Autosave::Found Autosave::begin(const bool isWriting) {
    // By now the file may be another program's, or be asked for.
    cancelTask();
    _found = nullptr;
    dropWriter();
    _failure = {};
    _isKept = false;
    _seenRevision = _keptRevision = _failedRevision = -1;
    _isWaiting = false;
    _isRefused = !isWriting;
    _folder = isWriting ? Containers::String{_session->folder()} : Containers::String{};
    if(_folder.isEmpty()) return Found::Nothing;
    removeAsides();
    return read();
}

Autosave::Found Autosave::read() {
    Containers::String bytes, state;
    const Containers::String path = place("autosave");
    const int error = _files->readFile(path, bytes);
    if(error == ENOENT || error == ENOTDIR) return Found::Nothing;
    Containers::StringView content;
    Containers::String reason = error ? systemReason("read", error) : Containers::String{};
    if(const char* const problem = error ? nullptr : contentOf(bytes, state, content)) reason = problem;
    Containers::Pointer<rapidjson::Document> document{Corrade::InPlaceInit};
    JsonError jsonError;
    if(reason.isEmpty() && !JsonReader::readObject(content, *document, jsonError)) reason = jsonError.reason;
    if(!reason.isEmpty()) {
        const Containers::String aside = place("autosave.unreadable");
        if(!_files->renameFile(path, aside)) reason = reason + "; kept as " + aside;
        Corrade::Utility::Warning{} << "Autosave::begin():" << path << Corrade::Utility::Warning::nospace << ":"
                                    << reason;
        return Found::Nothing;
    }
    _isKept = true;
    if(_session->isAsSaved(*document)) {
        discard();
        return Found::Nothing;
    }
    // Only one of both can be the document.
    if(_session->hasUnsavedChanges()) {
        setAside(path);
        return Found::Nothing;
    }
    _found = std::move(document);
    return state == _session->savedState() ? Found::Changes : Found::Outdated;
}

void Autosave::setAside(const Containers::String& path) {
    const Containers::String first = place("autosave.of-another");
    Containers::String aside = first;
    FileStamp stamp;
    for(int i = 2; _files->stampOf(aside, stamp) == 0; ++i) aside = first + ("-" + std::to_string(i)).c_str();
    const int error = _files->renameFile(path, aside);
    Corrade::Utility::Warning warning{};
    warning << "Autosave::begin():" << path << Corrade::Utility::Warning::nospace
            << ": another program kept its unsaved changes here";
    if(!error) {
        warning << Corrade::Utility::Warning::nospace << "; kept as" << aside;
        _isKept = false;
    } else {
        warning << Corrade::Utility::Warning::nospace << ", and the file" << systemReason("renamed", error)
                << Corrade::Utility::Warning::nospace << "; unsaved changes are not kept for the case of a crash";
        _folder = {};
        _isRefused = true;
    }
}

void Autosave::restore() {
    if(!_found) return;
    _session->replaceDocument(std::move(*_found));
    _found = nullptr;
}

void Autosave::discard() {
    _found = nullptr;
    dropWriter();
    _keptRevision = -1;
    _isWaiting = false;
    if(!std::exchange(_isKept, false)) return;
    cancelTask();
    _files->removeFile(place("autosave"));
}

void Autosave::end() {
    if(!_found) discard();
    _found = nullptr;
    _folder = {};
    _isRefused = false;
}

bool Autosave::takeResult(const double now) {
    if(!_task) return true;
    int error = 0;
    {
        const std::lock_guard lock{_task->mutex};
        if(!_task->isDone) return false;
        error = _task->error;
    }
    const std::shared_ptr<Task> task = std::move(_task);
    const Containers::String failure = error ? systemReason("written", error) : Containers::String{};
    if(error) {
        _failedRevision = std::exchange(_keptRevision, -1);
        _retry = now + RetryPeriod;
    }
    if(!failure.isEmpty() && failure != _failure)
        Corrade::Utility::Warning{} << "Autosave::update():" << task->path << Corrade::Utility::Warning::nospace << ":"
                                    << failure << Corrade::Utility::Warning::nospace
                                    << "; unsaved changes are not kept for the case of a crash";
    _failure = failure;
    return true;
}

bool Autosave::isReady(const double now) {
    if(_session->changes().isGroupOpen() || !_session->project().document().IsObject()) return false;
    if(_keptRevision == _seenRevision || (_failedRevision == _seenRevision && now < _retry)) return false;
    return now - _changed >= Quiet || (_isWaiting && now - _waitsSince >= OldestAge);
}

void Autosave::update(const double now) {
    if(_folder.isEmpty() || _found) return;
    const Int revision = _session->project().revision();
    if(revision != _seenRevision) {
        _seenRevision = revision;
        _changed = now;
        dropWriter();
        if(!std::exchange(_isWaiting, true)) _waitsSince = now;
    }
    if(!_session->hasUnsavedChanges()) return discard();
    if(!takeResult(now) || !isReady(now)) return;
    if(!_writer) _writer.emplace(_session->project().document());
    const bool isInOneGo = _isWaiting && now - _waitsSince >= OldestAge + Grace;
    const std::int64_t end = _clock() + Slice;
    bool isWritten = false;
    while(!isWritten && (isInOneGo || _clock() < end)) isWritten = _writer->write(SliceMembers);
    if(isWritten) keep();
}

void Autosave::dropWriter() {
    if(!_writer) return;
    // To free what is large takes longer than a frame may be held up.
    _jobs->dispatch(
        [parts = std::make_shared<std::vector<std::string>>(_writer->takeParts())] { parts->clear(); }, {}, {});
    _writer = nullptr;
}

Autosave::Copy Autosave::copy() {
    _keptRevision = _seenRevision;
    _isKept = true;
    _isWaiting = false;
    // Somebody may have tidied up.
    _session->makeEditorFolder();
    Copy copy{_writer->takeParts(), Containers::String{_session->savedState()}, _files, place("autosave"),
        Containers::String{_folder}};
    _writer = nullptr;
    return copy;
}

void Autosave::keep() {
    _task = std::make_shared<Task>();
    _task->path = place("autosave");
    _jobs->dispatch(
        [task = _task, copy = std::make_shared<Copy>(copy()), aside = aside(NewSuffix)] {
            const int error = copy->write(aside, *task);
            const std::lock_guard lock{task->mutex};
            task->error = error;
            task->isDone = true;
        },
        {}, {});
}

void Autosave::keepNow() {
    if((_folder.isEmpty() && !_isRefused) || !_session->project().document().IsObject() ||
        !_session->hasUnsavedChanges())
        return;
    if(_isRefused || _found) {
        Corrade::Utility::Warning{} << "Autosave::keepNow():" << _session->folder()
                                    << Corrade::Utility::Warning::nospace
                                    << (_found ? ": what was kept before waits for an answer"
                                               : ": nothing can be kept here, as in a project that is read-only")
                                    << Corrade::Utility::Warning::nospace << "; unsaved changes are lost";
        return;
    }
    // What it writes may be older.
    cancelTask();
    _writer.emplace(_session->project().document());
    while(!_writer->write(SliceMembers)) {
    }
    Task task;
    const int error = copy().write(aside(NowSuffix), task);
    if(error)
        Corrade::Utility::Warning{} << "Autosave::keepNow():" << place("autosave") << Corrade::Utility::Warning::nospace
                                    << ":" << systemReason("written", error) << Corrade::Utility::Warning::nospace
                                    << "; unsaved changes are lost";
}

}
