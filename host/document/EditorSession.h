#pragma once

#include <cstdint>
#include <vector>

#include <Corrade/Containers/Pointer.h>
#include <Corrade/Containers/String.h>

#include "ChangeManager.h"
#include "QuorvaneEditor/EditorData.h"
#include "QuorvaneEditor/EditorState.h"
#include "QuorvaneEditor/Host.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "QuorvaneEditor/ProjectWatch.h"
#include "QuorvaneEditor/QuorvaneEditor.h"

namespace QuorvaneEngine {

class FileSystem;
class ProjectStorage;
enum class DiskState : std::uint8_t;
struct FileError;

/** One editor at work on one project after another: the document in memory, its change log, what views are told about it, and the
    folder that it is loaded from and saved to. The desktop editor, the batch tool and tests are built on it.

    Whoever wants to hear of changes subscribes to @ref watch() , as the session does for the collections of resources ("images",
    "materials", "meshes"), whose numbers are therefore right when others are told. All on the GUI thread. */
class QUORVANE_API EditorSession {
public:
    /** Begins with an empty document in no folder.
        @param jobs         handed to views and tools; may be null, else must outlive the session
        @param fileSystem   where projects are; null for the disk, else must outlive the session */
    explicit EditorSession(JobSystem* jobs = nullptr, FileSystem* fileSystem = nullptr);

    ~EditorSession();
    EditorSession(const EditorSession&) = delete;
    EditorSession& operator=(const EditorSession&) = delete;

    /** Opens the project in a folder in place of the present one, whose unsaved changes are lost: an open group is closed, the
        change log is emptied, handlers are forgotten, subscriptions to @ref watch() stay. What a save that was cut short left behind is completed or
        rolled back first.

        A project that cannot be read prints a warning with file, place and reason; then everything is as before. In the folder
        nothing changes but what was left behind. */
    bool open(Containers::StringView folder);

    /** Keeps other programs from saving the project in a folder, until another one is open or the session ends: to be called before @ref open() by who is
        about to change the project and to save it. Prints a warning and fails where another program does so. */
    bool lock(Containers::StringView folder);

    /** As @ref lock() , for as long as the user likes: makes the project's folder `.editor`, where it can be made, and prints no warning.
        @param refusal  set on failure; its reason says in words who has the project
        @return false only where another program has it */
    bool tryLock(Containers::StringView folder, FileError& refusal);

    /** Whether the open project is locked for this session. */
    bool isLocked() const;

    /** Makes the open project's folder `.editor` for layouts and the like, which version control is told to ignore, where it can
        be made. */
    void makeEditorFolder();

    /** Writes the files of the project whose content changed, all or none. On failure prints a warning with file and reason; then
        the files on disk and the document are as before, and changes are still unsaved. An open group stays open. Fails where somebody
        else has changed a file that would be written or removed; a project that is gone is written anew. */
    bool save();

    /** Looks whether somebody else has changed the files of the project. Cheap enough for once a second. That the project is gone is a
        warning when it is first seen, and all of it is unsaved as long as it is.
        @param changed  receives the path of the first file that was changed, and how many more were */
    DiskState lookAtDisk(Containers::String* changed = nullptr);

    /** Lets the next @ref save() write over what somebody else has done to the files until now; so the project is unsaved. */
    void keepDocument();

    /** Whether the document differs from what was last loaded or saved. A document changed back by hand may count as changed; one
        that differs never counts as saved, and an undo back to the saved state counts as saved. Costs nothing while the revision
        stands still. */
    bool hasUnsavedChanges();

    /** Whether a document is what was last loaded or saved. Writes all of it out in memory. */
    bool isAsSaved(const rapidjson::Document& document) const;

    /** Names what was last loaded or saved: a fingerprint of 16 characters, the same where the contents are. */
    Containers::StringView savedState() const;

    /** Publishes the revision; called once a frame, before any view is drawn. */
    void beginFrame();

    /** One step back or forward in the log; nothing where there is none, or while a group is open. */
    void undo();
    void redo();

    /** Takes over another document, as @ref open() does, in the folder of the present project. It is unsaved where it differs
        from what that folder holds; without a folder it counts as saved. */
    void replaceDocument(rapidjson::Document&& document);

    /** Resets the change manager, whose handlers may be code of modules that are about to go; the log goes with them. Subscriptions to
        @ref watch() stay. */
    void forgetHandlers();

    ProjectFile& project() { return _project; }
    ChangeManager& changes() { return _changes; }
    ProjectWatch& watch() { return _watch; }
    EditorState& state() { return _state; }
    EditorData& data() { return _data; }
    QuorvaneEditor& editor() { return _editor; }

    /** The folder of the open project: absolute, with forward slashes, NUL-terminated; empty where there is none. */
    Containers::StringView folder() const { return _folder; }

private:
    void takeOver(rapidjson::Document&& document);
    void markSaved();
    void numberResources();

    /** What the last applied change set, null where there is none. */
    const rapidjson::Value* lastValue();

    ProjectFile _project;
    ChangeManager _changes;
    ProjectWatch _watch;
    EditorState _state;
    EditorData _data;
    Containers::String _folder;
    QuorvaneEditor _editor;
    Containers::Pointer<ProjectStorage> _storage;
    std::vector<ProjectWatch::Subscription> _numbering;

    /** Revisions at which the document was known to be as saved, and known to differ. */
    Int _savedRevision = 0;
    Int _changedRevision = -1;

    /** The project's files are not there. */
    bool _isGone = false;

    /** @ref lastValue() when the document was saved; compared, never read. A merged edit replaces it. */
    const rapidjson::Value* _savedValue = nullptr;
};

}
