#include "DocumentWriter.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <utility>

#include <Corrade/Containers/String.h>
#include <Corrade/Utility/Debug.h>
#include <rapidjson/document.h>
#include <rapidjson/pointer.h>

#include "PathParts.h"
#include "QuorvaneEditor/ProjectFile.h"

namespace QuorvaneEngine {

namespace {

using Corrade::Utility::Error;

/** How many nulls a change may fill arrays with: some 16 MB of them. */
constexpr std::uint64_t MaxPadding = 1048576;

bool isContainerOf(const rapidjson::Value& value, const rapidjson::SizeType count) {
    return (value.IsObject() && value.MemberCount() == count) || (value.IsArray() && value.Size() == count);
}

/** Erases the value that @p value is found at, which is a child of @p container: the iterator follows from the address. */
void eraseChild(rapidjson::Value& container, const rapidjson::Value* const value) {
    if(container.IsArray()) {
        container.Erase(container.Begin() + (value - container.Begin()));
        return;
    }
    const auto first = container.MemberBegin();
    const auto bytes = reinterpret_cast<const char*>(value) - reinterpret_cast<const char*>(&first->value);
    container.EraseMember(first + bytes / std::ptrdiff_t(sizeof(*first)));
}

}

void DocumentWriter::set(const Containers::StringView path, rapidjson::Value& value) {
    create(path, nullptr) = std::move(value);
}

rapidjson::Value* DocumentWriter::find(const Containers::StringView path) {
    return path.isEmpty() ? &_project.document() : _project.getValue(path, false);
}

rapidjson::Value* DocumentWriter::child(rapidjson::Value& container, const Containers::StringView token) {
    if(container.IsObject()) return _project.member(container, unescaped(token));
    if(!container.IsArray()) return nullptr;
    const TokenIndex index = tokenIndex(token);
    return index.isElement && index.value < container.Size() ? &container[rapidjson::SizeType(index.value)] : nullptr;
}

void DocumentWriter::remove(const Containers::StringView path) {
    // Of the values that go, each the only one of the next container up, the highest takes the others along.
    rapidjson::Value* erased = nullptr;
    rapidjson::Value* erasedFrom = nullptr;
    rapidjson::Value* container = &_project.document();
    std::size_t depth = 1;
    for(std::size_t begin = 1, end; begin <= path.size(); begin = end + 1, ++depth) {
        end = std::find(path.begin() + begin, path.end(), '/') - path.begin();
        rapidjson::Value* const value = child(*container, path.slice(begin, end));
        if(!value && end != path.size()) return;
        // A member of the root stays, even when it is empty.
        const bool isEmptied = depth > 2 && isContainerOf(*container, value ? 1 : 0);
        if(!value && !isEmptied) return;
        if(!isEmptied) {
            erased = value;
            erasedFrom = container;
        }
        if(!value) break;
        container = value;
    }
    if(erasedFrom) eraseChild(*erasedFrom, erased);
}

void DocumentWriter::add(const Containers::String& path, rapidjson::Value& value) {
    const Containers::StringView pathView = path;
    const std::size_t slash = lastSlash(pathView);
    const Containers::StringView parentPath = pathView.prefix(slash);
    const bool isIndex = tokenIndex(pathView.exceptPrefix(slash + 1)).valid;
    const rapidjson::Value* const parent = find(parentPath);
    bool isInserted = isIndex && parent && !parent->IsObject();
    if(!parent) {
        const rapidjson::Value* const preset = _project.getValue(path, true);
        if(preset && !preset->IsObject() && !preset->IsArray()) create(parentPath, nullptr).SetObject();
        else isInserted = isIndex;
    }
    if(isInserted) insert(path, value);
    else create(path, nullptr) = std::move(value);
}

rapidjson::Value& DocumentWriter::create(const Containers::StringView path, bool* const existed) {
    rapidjson::Value* const found = find(path);
    if(existed) *existed = found;
    if(found) return *found;

    const std::size_t slash = lastSlash(path);
    rapidjson::Value* const parent = find(path.prefix(slash));
    const Containers::StringView tail = path.exceptPrefix(slash);
    if(parent && parent->IsObject()) {
        const Containers::String key = unescaped(tail.exceptPrefix(1));
        rapidjson::Value name;
        name.SetString(key.data(), rapidjson::SizeType(key.size()), _project.allocator());
        parent->AddMember(name, rapidjson::Value{}, _project.allocator());
        return (parent->MemberEnd() - 1)->value;
    }
    assertPadding(path);
    // An array is extended, anything else replaced.
    if(parent) return rapidjson::Pointer{tail.data(), tail.size()}.Create(*parent, _project.allocator());
    return rapidjson::Pointer{path.data(), path.size()}.Create(_project.document(), _project.allocator());
}

void DocumentWriter::assertPadding(const Containers::StringView path) {
    rapidjson::Value* container = &_project.document();
    std::uint64_t padding = 0;
    for(std::size_t begin = 1, end; begin <= path.size(); begin = end + 1) {
        end = std::find(path.begin() + begin, path.end(), '/') - path.begin();
        const Containers::StringView token = path.slice(begin, end);
        const TokenIndex index = tokenIndex(token);
        if(index.isElement && !(container && container->IsObject())) {
            const rapidjson::SizeType size = container && container->IsArray() ? container->Size() : 0;
            if(index.value > size) padding += index.value - size;
        }
        if(padding > MaxPadding) {
            Error{} << "ChangeManager::applyChange(): index" << index.value << "in \"" << Error::nospace << path
                    << Error::nospace << "\" is too far behind the end of its array";
            std::abort();
        }
        if(container) container = child(*container, token);
    }
}

void DocumentWriter::insert(const Containers::String& path, rapidjson::Value& value) {
    const Containers::StringView pathView = path;
    const TokenIndex position = tokenIndex(pathView.exceptPrefix(lastSlash(pathView) + 1));
    if(position.negative) {
        Error{} << "ChangeManager::applyChange(): negative index in \"" << Error::nospace << path << Error::nospace
                << "\"";
        std::abort();
    }

    // The container is the value at the full path, not its parent.
    bool existed;
    rapidjson::Value& container = create(Containers::StringView{path.data()}, &existed);
    if(!existed) container.SetArray();
    if(!container.IsArray()) {
        Error{} << "Assertion value.IsArray() failed at ChangeManager:281";
        std::abort();
    }
    if(container.Size() <= position.value) {
        create(path, nullptr) = std::move(value);
        return;
    }

    container.PushBack(value, _project.allocator());
    for(rapidjson::SizeType i = container.Size() - 1; i != position.value; --i) container[i].Swap(container[i - 1]);
}

}
