#include "EditorSession.h"

#include <utility>

#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Utility/Debug.h>

#include <rapidjson/document.h>

#include "FileSystem.h"
#include "ProjectStorage.h"
#include "QuorvaneEditor/ValueAccess.h"

namespace QuorvaneEngine {

namespace {

/** Collections whose resources have numbers. */
struct Numbered {
    const char* collection;
    ResourceIndexMap EditorData::*indices;
};

constexpr Numbered NumberedCollections[]{
    {"images", &EditorData::imageIndices},
    {"materials", &EditorData::materialIndices},
    {"meshes", &EditorData::meshIndices},
};

void number(EditorSession& session, const Numbered& numbered) {
    Containers::Array<Containers::StringView> ids;
    session.project().root().member(numbered.collection).keys(ids);
    (session.data().*numbered.indices).assign(ids);
}

}

EditorSession::EditorSession(JobSystem* const jobs, FileSystem* const fileSystem)
    : _changes{_project},
      _watch{_changes},
      _data{_project},
      _editor{_project, _changes, _state, _folder, jobs, &_watch},
      _storage{Corrade::InPlaceInit, fileSystem ? *fileSystem : FileSystem::disk()} {
    _storage->setSaved(_project.document());
    numberResources();
    for(const Numbered& numbered: NumberedCollections)
        _numbering.push_back(_watch.subscribe(nullptr, numbered.collection,
            [this, &numbered](const Change& change, Containers::ArrayView<Containers::StringView> components) {
                // To set what was in the collection before adds no resource and takes none away.
                const bool isSet = change.oldValue && change.newValue;
                if(!isSet || components.size() < 3) number(*this, numbered);
            }));
}

EditorSession::~EditorSession() = default;

bool EditorSession::lock(const Containers::StringView folder) { return _storage->lock(folder); }

bool EditorSession::tryLock(const Containers::StringView folder, FileError& refusal) {
    return _storage->tryLock(folder, refusal);
}

bool EditorSession::isLocked() const { return _storage->isLocked(); }

bool EditorSession::open(const Containers::StringView folder) {
    rapidjson::Document document;
    if(!_storage->open(folder, document)) return false;
    _folder = Containers::String{_storage->folder()};
    _isGone = false;
    _data.projectFolder = _folder;
    takeOver(std::move(document));
    _editor.layoutLoadScheduled = false;
    return true;
}

void EditorSession::makeEditorFolder() { _storage->makeEditorFolder(); }

bool EditorSession::save() {
    if(!_storage->save(_project.document())) return false;
    markSaved();
    _isGone = false;
    return true;
}

DiskState EditorSession::lookAtDisk(Containers::String* const changed) {
    if(_folder.isEmpty()) return DiskState::Same;
    const DiskState state = _storage->look(changed);
    const bool wasGone = std::exchange(_isGone, state == DiskState::Gone);
    if(_isGone && !wasGone)
        Corrade::Utility::Warning{} << "EditorSession::lookAtDisk():" << _folder
                                    << "has no project.json any more; what is open here stays, and is saved anew";
    return state;
}

void EditorSession::keepDocument() {
    _storage->keepDocument();
    _savedRevision = _changedRevision = -1;
}

bool EditorSession::hasUnsavedChanges() {
    if(_isGone) return true;
    const Int revision = _project.revision();
    if(revision == _savedRevision) return false;
    if(revision == _changedRevision) return true;

    // The change manager's mark is an index into its log. An edit that is merged into the entry there leaves the index as it was,
    // and an index that has become -1 names the empty log. So its word is taken for changes, but not for their absence.
    const bool isChanged =
        _changes.hasUnsavedChanges() || lastValue() != _savedValue || !_storage->isSaved(_project.document());
    (isChanged ? _changedRevision : _savedRevision) = revision;
    return isChanged;
}

bool EditorSession::isAsSaved(const rapidjson::Document& document) const { return _storage->isSaved(document); }

Containers::StringView EditorSession::savedState() const { return _storage->savedState(); }

void EditorSession::beginFrame() { _data.publishRevision(); }

void EditorSession::undo() {
    if(!_changes.isGroupOpen()) _changes.undoLast();
}

void EditorSession::redo() {
    if(!_changes.isGroupOpen()) _changes.redoLastUndo();
}

void EditorSession::replaceDocument(rapidjson::Document&& document) {
    takeOver(std::move(document));
    if(_folder.isEmpty()) _storage->setSaved(_project.document());
    else if(!_storage->isSaved(_project.document())) _savedRevision = -1;
}

void EditorSession::takeOver(rapidjson::Document&& document) {
    // The log's values live in the document that goes.
    if(_changes.isGroupOpen()) _changes.commit();
    forgetHandlers();
    _project.replace(std::move(document));
    _editor.lastRun.reset();
    markSaved();
    numberResources();
}

void EditorSession::markSaved() {
    _changes.markSave();
    _savedRevision = _project.revision();
    _changedRevision = -1;
    _savedValue = lastValue();
}

const rapidjson::Value* EditorSession::lastValue() {
    return _changes.canUndo() ? _changes.lastChange().newValue.get() : nullptr;
}

void EditorSession::forgetHandlers() {
    _changes.reset(_project);
    _watch.attach();
}

void EditorSession::numberResources() {
    for(const Numbered& numbered: NumberedCollections) number(*this, numbered);
}

}
