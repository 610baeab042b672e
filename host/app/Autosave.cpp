#include "app/Autosave.h"

#include <cerrno>
#include <charconv>
#include <chrono>
#include <mutex>
#include <string_view>
#include <utility>

#include <Corrade/Utility/Debug.h>
#include <rapidjson/document.h>

#include "ChangeManager.h"
#include "QuorvaneEditor/JobSystem.h"
#include "document/EditorSession.h"
#include "document/FileSystem.h"
#include "document/JsonReader.h"
#include "document/SteppedJsonWriter.h"
#include "localization/Fingerprint.h"

namespace QuorvaneEngine {

namespace {

constexpr std::string_view Format{"quorvane-autosave 1 "};

/** How long a frame may be held up, and how many values are written between two looks at the clock. */
constexpr std::chrono::milliseconds Slice{3};
constexpr std::size_t SliceMembers = 200;

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

    /** The number of an error, and what could not be done; 0 while all is well. */
    int error = 0;
};

Autosave::Autosave(EditorSession& session, JobSystem& jobs, FileSystem& files)
    : _session{&session}, _jobs{&jobs}, _files{&files} {}

Autosave::~Autosave() = default;

Containers::String Autosave::place(const char* const name) const { return _folder + "/.editor/" + name; }

Autosave::Found Autosave::begin(const bool isWriting) {
    _found = nullptr;
    _writer = nullptr;
    _failure = {};
    _isKept = false;
    _seenRevision = _keptRevision = -1;
    _folder = isWriting ? Containers::String{_session->folder()} : Containers::String{};
    return _folder.isEmpty() ? Found::Nothing : read();
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
        Corrade::Utility::Warning{} << "Autosave::begin():" << path << Corrade::Utility::Warning::nospace << ":"
                                    << reason;
        return Found::Nothing;
    }
    _isKept = true;
    if(_session->isAsSaved(*document)) {
        discard();
        return Found::Nothing;
    }
    _found = std::move(document);
    return state == _session->savedState() ? Found::Changes : Found::Outdated;
}

void Autosave::restore() {
    if(!_found) return;
    _session->replaceDocument(std::move(*_found));
    _found = nullptr;
}

void Autosave::discard() {
    _found = nullptr;
    _writer = nullptr;
    _keptRevision = -1;
    if(!std::exchange(_isKept, false)) return;
    if(_task) {
        const std::lock_guard lock{_task->mutex};
        _task->isCancelled = true;
    }
    _files->removeFile(place("autosave"));
}

void Autosave::end() {
    if(!_found) discard();
    _found = nullptr;
    _folder = {};
}

void Autosave::update(const double now) {
    if(_folder.isEmpty() || _found) return;
    const Int revision = _session->project().revision();
    if(revision != _seenRevision) {
        _seenRevision = revision;
        _changed = now;
        _writer = nullptr;
    }
    if(!_session->hasUnsavedChanges()) return discard();
    if(_task) {
        const std::lock_guard lock{_task->mutex};
        if(!_task->isDone) return;
        const Containers::String failure = _task->error ? systemReason("written", _task->error) : Containers::String{};
        if(!failure.isEmpty() && failure != _failure)
            Corrade::Utility::Warning{} << "Autosave::update():" << place("autosave")
                                        << Corrade::Utility::Warning::nospace << ":" << failure
                                        << Corrade::Utility::Warning::nospace
                                        << "; unsaved changes are not kept for the case of a crash";
        _failure = failure;
    }
    if(_keptRevision == revision || now - _changed < Quiet || _session->changes().isGroupOpen()) return;
    if(!_session->project().document().IsObject()) return;
    if(!_writer) _writer.emplace(_session->project().document());
    const auto end = std::chrono::steady_clock::now() + Slice;
    bool isWritten = false;
    while(!isWritten && std::chrono::steady_clock::now() < end) isWritten = _writer->write(SliceMembers);
    if(isWritten) keep();
}

void Autosave::keep() {
    _keptRevision = _seenRevision;
    _isKept = true;
    _task = std::make_shared<Task>();
    auto text = std::make_shared<std::string>(std::move(_writer->text()));
    _writer = nullptr;
    const Containers::String state{_session->savedState()};
    _jobs->dispatch(
        [task = _task, text, state, files = _files, path = place("autosave"), aside = place("autosave.new")] {
            const std::string header = headerOf(state, {text->data(), text->size()});
            const Containers::StringView parts[]{{header.data(), header.size()}, {text->data(), text->size()}};
            int error = files->writeFile(aside, parts[0] + parts[1], {});
            if(!error) error = files->syncFile(aside);
            const std::lock_guard lock{task->mutex};
            if(!error && !task->isCancelled) error = files->renameFile(aside, path);
            if(error || task->isCancelled) files->removeFile(aside);
            task->error = task->isCancelled ? 0 : error;
            task->isDone = true;
        },
        {}, {});
}

}
