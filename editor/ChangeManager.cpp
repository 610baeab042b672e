#include "ChangeManager.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Containers/String.h>
#include <Corrade/Utility/Debug.h>
#include <Magnum/Math/Matrix4.h>
#include <Magnum/Math/Quaternion.h>
#include <rapidjson/document.h>

#include "DeepCopy.h"
#include "DocumentWriter.h"
#include "PathParts.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "TransformParts.h"

namespace QuorvaneEngine {

namespace {

using Corrade::Utility::Error;

constexpr std::size_t ReservedChanges = 64;
constexpr std::size_t HandlerGrowth = 16;

/** What is wrong in the program ends it. */
[[noreturn]] void fail(const char* const message) {
    Error{} << message;
    std::abort();
}

[[noreturn]] void fail(const char* const before, const Containers::StringView path, const char* const after) {
    Error{} << before << Error::nospace << path << Error::nospace << after;
    std::abort();
}

}

ChangeManager::ChangeManager() { _changes.reserve(ReservedChanges); }

ChangeManager::ChangeManager(ProjectFile& project): ChangeManager{} { _project = &project; }

ChangeManager::~ChangeManager() = default;

void ChangeManager::reset(ProjectFile& project) {
    _project = &project;
    _changes.clear();
    _lastChange = -1;
    _handlers.clear();
}

void ChangeManager::pushChange(Containers::String&& path, const rapidjson::Value* const value, const bool merge) {
    if(!isPointer(path)) fail("ChangeManager::pushChange(): \"", path, "\" is no JSON Pointer");

    // The value may belong to the redo history, or to the very entry that it is merged into.
    rapidjson::Value copied;
    if(value) deepCopy(copied, *value, allocator());
    push(std::move(path), value ? &copied : nullptr, merge);
}

void ChangeManager::pushChange(Containers::String&& path, rapidjson::Value&& value) {
    if(!isPointer(path)) fail("ChangeManager::pushChange(): \"", path, "\" is no JSON Pointer");
    push(std::move(path), &value, false);
}

void ChangeManager::push(Containers::String&& path, rapidjson::Value* const value, const bool merge) {
    const Int match = merge ? mergeTarget(path) : -1;
    if(match != -1) {
        if(match != _lastChange) std::swap(_changes[match], _changes[_lastChange]);
        assertLastChange();
    } else {
        ++_lastChange;
        _changes.erase(_changes.begin() + _lastChange, _changes.end());
        _changes.emplace_back();
        if(_savedChange == _lastChange) _savedChange = -1;
        assertLastChange();
        Change& change = _changes[_lastChange];
        change.path = std::move(path);
        rapidjson::Value* const old = project().getValue(change.path, false);
        // What is set anew would be lost; what is removed is still to be found.
        if(old && value) change.oldValue = Containers::Pointer<rapidjson::Value>{Corrade::InPlaceInit, std::move(*old)};
        else change.oldValue = copy(old);
    }
    Change& change = _changes[_lastChange];
    change.newValue = {};
    if(value) sharingCopy(change.newValue.emplace(), *value, allocator());
    change.group = _group;
    apply(change.path, bool(change.oldValue), value);
    if(_group < 0) notify(change);
}

void ChangeManager::pushChange(const Containers::StringView path, const rapidjson::Value& value, const bool merge) {
    pushChange(Containers::String{path}, &value, merge);
}

void ChangeManager::pushChange(
    const Containers::StringView path, const Containers::StringView value, const bool merge) {
    rapidjson::Value json;
    json.SetString(value.data() ? value.data() : "", rapidjson::SizeType(value.size()), allocator());
    pushChange(path, json, merge);
}

void ChangeManager::pushChange(const Containers::StringView path, const Magnum::Vector3& value, const bool merge) {
    rapidjson::Value json{rapidjson::kArrayType};
    for(Int i = 0; i != 3; ++i) json.PushBack(double(value[i]), allocator());
    pushChange(path, json, merge);
}

void ChangeManager::pushChange(const Containers::StringView path, const Magnum::Quaternion& value, const bool merge) {
    rapidjson::Value json{rapidjson::kArrayType};
    for(Int i = 0; i != 3; ++i) json.PushBack(double(value.vector()[i]), allocator());
    json.PushBack(double(value.scalar()), allocator());
    pushChange(path, json, merge);
}

void ChangeManager::pushTransformChange(
    const Containers::StringView path, const Magnum::Matrix4& transform, const bool merge) {
    const TransformParts parts = transformParts(transform);
    pushChange(path + "/translation", parts.translation, merge);
    pushChange(path + "/rotation", parts.rotation, merge);
    pushChange(path + "/scaling", parts.scaling, merge);
}

void ChangeManager::pushRemoval(const Containers::StringView path) {
    pushChange(Containers::String{path}, nullptr, false);
}

void ChangeManager::pushAppend(const Containers::StringView path, const Containers::StringView value) {
    const rapidjson::Value* const current = project().getValue(path, false);
    if(!current) fail("ChangeManager::pushAppend(): nothing at \"", path, "\"");
    rapidjson::Value array;
    if(current->IsArray()) deepCopy(array, *current, allocator());
    else array.SetArray();
    rapidjson::Value json;
    json.SetString(value.data() ? value.data() : "", rapidjson::SizeType(value.size()), allocator());
    array.PushBack(json, allocator());
    pushChange(path, array, false);
}

Int ChangeManager::openGroup() {
    if(_group != -1) fail("ChangeManager::openGroup(): a group is open. Forgot commit()?");
    return _group = ++_lastGroup;
}

void ChangeManager::commit() {
    const Int group = std::exchange(_group, -1);
    if(_lastChange < 0 || _changes[_lastChange].group != group) return;
    const Int last = _lastChange;
    Int first = last;
    while(first > 0 && _changes[first - 1].group == group) --first;
    for(Int i = first; i <= last; ++i) notify(_changes[i]);
}

void ChangeManager::undoLast() {
    if(_group != -1) fail("ChangeManager::undoLast(): Can't undo/redo changes in group. Forgot commit()?");
    if(_lastChange == -1) return;
    assertLastChange();
    const Int group = std::max(_changes[_lastChange].group, 0);
    do undo(_changes[_lastChange]);
    while(_lastChange != -1 && _changes[_lastChange].group == group);
}

void ChangeManager::redoLastUndo() {
    if(_group != -1) fail("ChangeManager::redoLastUndo(): Can't undo/redo changes in group. Forgot commit()?");
    if(!canRedo()) return;
    redoNext();
    const Int group = std::max(_changes[_lastChange].group, 0);
    while(canRedo() && _changes[_lastChange + 1].group == group) redoNext();
}

void ChangeManager::redoNext() {
    ++_lastChange;
    assertLastChange();
    const Change& change = _changes[_lastChange];
    Containers::Pointer<rapidjson::Value> value = copy(change.newValue.get());
    apply(change.path, bool(change.oldValue), value.get());
    if(_group < 0) notify(change);
}

void ChangeManager::undo(const Change& change) {
    if(!isPointer(change.path)) fail("ChangeManager::undo(): \"", change.path, "\" is no JSON Pointer");
    assertLastChange();
    Containers::Pointer<rapidjson::Value> value = copy(change.oldValue.get());
    apply(change.path, bool(change.newValue), value.get());
    // Copies of both values, which nobody needs where nobody listens.
    if(_group < 0 && isHeard(change.path)) notify(reverse(change));
    --_lastChange;
}

Change ChangeManager::reverse(const Change& change) {
    Change reversed;
    reversed.path = change.path;
    reversed.oldValue = copy(change.newValue.get());
    reversed.newValue = copy(change.oldValue.get());
    return reversed;
}

Change& ChangeManager::lastChange() {
    assertLastChange();
    return _changes[_lastChange];
}

void ChangeManager::addChangeHandler(const Containers::StringView key, Containers::Pointer<ChangeHandler>&& handler) {
    if(!handler) fail("ChangeManager::addChangeHandler(): the handler of \"", key, "\" is null");
    if(_handlers.size() == _handlers.capacity()) _handlers.grow(HandlerGrowth);
    _handlers.put(key, std::move(handler));
    _handlers.compile();
}

void ChangeManager::addChangeHandler(
    const Containers::StringView key, FunctionChangeHandler::Callable&& function, void* const userData) {
    if(!function) fail("ChangeManager::addChangeHandler(): the callable of \"", key, "\" is empty");
    addChangeHandler(key, Containers::Pointer<ChangeHandler>{new FunctionChangeHandler{std::move(function), userData}});
}

rapidjson::MemoryPoolAllocator<rapidjson::CrtAllocator>& ChangeManager::allocator() { return project().allocator(); }

ProjectFile& ChangeManager::project() const {
    if(!_project) fail("ChangeManager::project(): there is none. Forgot reset()?");
    return *_project;
}

Int ChangeManager::mergeTarget(const Containers::StringView path) const {
    if(_lastChange == -1 || _lastChange == 0 || _changes[_lastChange].group != _group) return -1;
    for(Int i = _lastChange;; --i) {
        if(_changes[i].path == path) return i;
        if(i == 1 || _changes[i - 1].group != _group) return -1;
    }
}

void ChangeManager::assertLastChange() const {
    if(_lastChange < 0 || std::size_t(_lastChange) >= _changes.size())
        fail("Assertion _lastChange >= 0 && _lastChange < int(_changes.size()) failed at ChangeManager:369");
}

Containers::Pointer<rapidjson::Value> ChangeManager::copy(const rapidjson::Value* const value) {
    if(!value) return {};
    Containers::Pointer<rapidjson::Value> copied{Corrade::InPlaceInit};
    deepCopy(*copied, *value, allocator());
    return copied;
}

void ChangeManager::apply(const Containers::String& path, const bool exists, rapidjson::Value* const value) {
    DocumentWriter writer{*_project};
    if(!value) writer.remove(path);
    else if(exists) writer.set(path, *value);
    else writer.add(path, *value);
    _project->noteChange(path);
}

bool ChangeManager::isHeard(const Containers::StringView path) {
    for(std::size_t begin = 0, end; _handlers.size() && begin <= path.size(); begin = end + 1) {
        end = std::find(path.begin() + begin, path.end(), '/') - path.begin();
        if(_handlers.find(path.slice(begin, end))) return true;
    }
    return false;
}

void ChangeManager::notify(const Change& change) {
    // Splitting allocates, and most changes concern nobody.
    if(!isHeard(change.path)) return;
    Containers::Array<Containers::StringView> pieces;
    const Containers::StringView path = change.path;
    std::size_t begin = 0;
    for(std::size_t i = 0; i <= path.size(); ++i) {
        if(i != path.size() && path[i] != '/') continue;
        Containers::arrayAppend(pieces, path.slice(begin, i));
        begin = i + 1;
    }
    for(const Containers::StringView piece: pieces)
        if(Containers::Pointer<ChangeHandler>* const handler = _handlers.find(piece))
            (*handler)->handle(change, pieces);
}

}
