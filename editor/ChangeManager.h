#pragma once

#include <vector>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/Pointer.h>

#include "Change.h"
#include "ChangeHandler.h"
#include "FunctionChangeHandler.h"
#include "StaticMap.h"

namespace QuorvaneEngine {

/** The only way in which the project document is changed.

    Every edit is a @ref Change , appended to a linear log, applied to the document at once, told to the handlers, and can be
    undone and redone. A run of edits of one value can be merged into one entry, and several changes can be collected in a group
    (@ref ChangeGroup) that is undone, redone and told as one. Entries behind the last applied change are the redo history, which
    the next push that does not merge discards. Belongs to the GUI thread.

    What is created below containers that are missing makes these containers: an array for every token that is a number, filled
    with nulls up to it, and an object for any other; the last one is an object where the table of default values knows a plain
    value at the path. As the JSON library has it, a number that is no index ("007", "-0", more than 32 bits) turns an array into
    an object, with all that it held, and "-" appends to an array, which undo does not find again. What is removed takes the
    containers along that it leaves empty, up to the members of the root. An undone removal comes back as the last member.

    Broken preconditions print a message and abort: undo in an open group, a path that is no JSON Pointer, an index out of the log,
    a creation at a negative index, one at an index of an array where an element that is no array stands already, and one that
    would fill arrays with more than 1048576 nulls. */
class ChangeManager {
public:
    /** One without a project, which every change needs: @ref reset() comes first, and @ref allocator() is not there before. */
    ChangeManager();

    /** @param project  must outlive the manager, or the next @ref reset() */
    explicit ChangeManager(ProjectFile& project);

    ~ChangeManager();
    ChangeManager(const ChangeManager&) = delete;
    ChangeManager& operator=(const ChangeManager&) = delete;

    /** Forgets the log and all handlers and turns to another project, or to the same one anew: the values of the log lie in the
        document's allocator, so this follows every `ProjectFile::replace()`. The saved mark and an open group are left as they
        are. */
    void reset(ProjectFile& project);

    /** Records and applies a change.
        @param path     JSON Pointer (RFC 6901), beginning with "/"
        @param value    the new value, copied; null removes the value at the path
        @param merge    whether the change may be merged into the latest one of the same path, of the run of changes of the
            current group that ends the log. Such an entry keeps its old value and trades places with the last one; redo history
            and saved mark stay as they are. The first entry of the log never merges. */
    void pushChange(Containers::String&& path, const rapidjson::Value* value, bool merge);

    void pushChange(Containers::StringView path, const rapidjson::Value& value, bool merge);

    /** Records and applies a change without merging, and without a copy for the document.
        @param value    taken over; all of it must lie in @ref allocator() */
    void pushChange(Containers::String&& path, rapidjson::Value&& value);

    /** Sets a JSON string. */
    void pushChange(Containers::StringView path, Containers::StringView value, bool merge);

    /** Sets an array of x, y and z as doubles. */
    void pushChange(Containers::StringView path, const Magnum::Vector3& value, bool merge);

    /** Sets an array of x, y, z and w as doubles, the scalar last. */
    void pushChange(Containers::StringView path, const Magnum::Quaternion& value, bool merge);

    /** Sets `translation`, `rotation` and `scaling` below @p path, in this order, to the parts of a matrix. */
    void pushTransformChange(Containers::StringView path, const Magnum::Matrix4& transform, bool merge);

    void pushRemoval(Containers::StringView path);

    /** Sets the value at @p path, which must exist, to itself with a string appended; what is no array counts as an empty one. */
    void pushAppend(Containers::StringView path, Containers::StringView value);

    /** Opens a group: what is pushed until @ref commit() is one step. Ids start at 1 and never repeat. A group that is already
        open is a broken precondition.
        @return the group's id */
    Int openGroup();

    /** Closes the open group and tells the handlers of its changes. Without an open group, the handlers of the changes since the
        last group are told again. */
    void commit();

    /** Whether a group is being collected. */
    bool isGroupOpen() const { return _group != -1; }

    void undoLast();
    void redoLastUndo();

    /** Applies the reverse of a change, which should be the last one, and steps back in the log, where there must be a change
        left. */
    void undo(const Change& change);

    Change reverse(const Change& change);

    /** The last applied change; there must be one. */
    Change& lastChange();

    bool canUndo() const { return _lastChange != -1; }
    bool canRedo() const { return _lastChange + 1 < Int(_changes.size()); }

    /** The log, with the redo history at its end. */
    Containers::ArrayView<const Change> changes() const { return {_changes.data(), _changes.size()}; }

    /** Index of the last applied change in @ref changes() , -1 for none. */
    Int lastChangeIndex() const { return _lastChange; }

    /** Marks the state of now as saved. */
    void markSave() { _savedChange = _lastChange; }

    /** Whether the log stands elsewhere than when it was marked. An edit that merged with the marked entry does not show. A mark
        that was never set or was discarded is that of the empty log, so one in which all is undone counts as saved. */
    bool hasUnsavedChanges() const { return _savedChange != _lastChange; }

    /** Registers a handler, which must not be null, for changes whose path has @p key, which must not be empty, as a component,
        until the next @ref reset() . Two handlers with one key: only one of them is ever called. */
    void addChangeHandler(Containers::StringView key, Containers::Pointer<ChangeHandler>&& handler);

    /** Registers a callable, which must not be empty.
        @param userData     handed to the callable as it is */
    void addChangeHandler(Containers::StringView key, FunctionChangeHandler::Callable&& function, void* userData);

    /** The allocator of the project document. */
    rapidjson::MemoryPoolAllocator<rapidjson::CrtAllocator>& allocator();

private:
    ProjectFile& project() const;
    Int mergeTarget(Containers::StringView path) const;
    void assertLastChange() const;
    Containers::Pointer<rapidjson::Value> copy(const rapidjson::Value* value);

    void push(Containers::String&& path, rapidjson::Value* value, bool merge);
    void redoNext();

    /** Writes a change into the document.
        @param exists   whether it sets what was there before
        @param value    moved into the document; null removes */
    void apply(const Containers::String& path, bool exists, rapidjson::Value* value);

    void notify(const Change& change);

    /** Whether a handler listens to a component of a path. */
    bool isHeard(Containers::StringView path);

    Int _lastChange = -1;
    Int _savedChange = -1;
    Int _group = -1;
    Int _lastGroup = 0;
    ProjectFile* _project = nullptr;
    /* Views push from libraries of their own, which are unloaded before the log ends: a growable array of Containers would keep
       the address of its deleter in the one that grew it last. */
    std::vector<Change> _changes;
    StaticMap<Containers::Pointer<ChangeHandler>> _handlers;
};

}
