#include "ProjectEdit.h"

#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include <Corrade/Containers/String.h>
#include <rapidjson/document.h>

#include "ChangeGroup.h"
#include "ChangeManager.h"
#include "JsonPath.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "QuorvaneEditor/QuorvaneEditor.h"
#include "Utils/StrHash.h"

namespace QuorvaneEngine {

struct ProjectEdit::Data {
    explicit Data(QuorvaneEditor& editor): editor{editor} {}

    struct Wanted {
        Containers::String path;
        rapidjson::Value value;
    };

    QuorvaneEditor& editor;
    rapidjson::MemoryPoolAllocator<rapidjson::CrtAllocator> memory;
    std::vector<Wanted> wanted;
    /** Those of @ref wanted that are containers being made, by path. */
    std::unordered_map<Containers::String, std::size_t, StrHash, StrEq> containers;
};

namespace {

rapidjson::Value copyOf(const Containers::StringView text, rapidjson::MemoryPoolAllocator<>& memory) {
    return rapidjson::Value{text.isEmpty() ? "" : text.data(), rapidjson::SizeType(text.size()), memory};
}

rapidjson::Value& memberContainer(
    rapidjson::Value& object, const Containers::StringView name, rapidjson::MemoryPoolAllocator<>& memory) {
    for(rapidjson::SizeType i = 0; i != object.MemberCount(); ++i)
        if(rapidjson::Value::Member& member = object.MemberBegin()[i];
            Containers::StringView{member.name.GetString(), member.name.GetStringLength()} == name)
            return member.value;
    object.AddMember(copyOf(name, memory), rapidjson::Value{rapidjson::kObjectType}, memory);
    return (object.MemberEnd() - 1)->value;
}

}

ProjectEdit::ProjectEdit(QuorvaneEditor& editor): _data{Corrade::InPlaceInit, editor} {}

ProjectEdit::~ProjectEdit() = default;

bool ProjectEdit::set(const Containers::ArrayView<const Containers::StringView> names, rapidjson::Value&& value) {
    // How many names lead to the topmost container that is missing or empty; all of them where none is.
    std::size_t depth = 1;
    rapidjson::Value* container = &_data->editor.project().document();
    for(; depth != names.size(); ++depth) {
        if(!container->IsObject()) return false;
        rapidjson::Value* const next = _data->editor.project().member(*container, names[depth - 1]);
        if(!next || (next->IsObject() && next->ObjectEmpty())) break;
        container = next;
    }
    if(depth == names.size()) {
        if(!container->IsObject()) return false;
        _data->wanted.push_back({jsonPath(names), std::move(value)});
        return true;
    }

    const Containers::String path = jsonPath(names.prefix(depth));
    const auto [place, isNew] = _data->containers.emplace(path, _data->wanted.size());
    if(isNew) _data->wanted.push_back({path, rapidjson::Value{rapidjson::kObjectType}});
    rapidjson::Value* made = &_data->wanted[place->second].value;
    for(; depth + 1 != names.size(); ++depth) made = &memberContainer(*made, names[depth], _data->memory);
    made->AddMember(copyOf(names.back(), _data->memory), std::move(value), _data->memory);
    return true;
}

bool ProjectEdit::set(const std::initializer_list<Containers::StringView> names, rapidjson::Value&& value) {
    return set(Containers::ArrayView<const Containers::StringView>{names.begin(), names.size()}, std::move(value));
}

bool ProjectEdit::setText(
    const std::initializer_list<Containers::StringView> names, const Containers::StringView text) {
    return set(names, this->text(text));
}

void ProjectEdit::replace(const Containers::StringView path, rapidjson::Value&& value) {
    _data->wanted.push_back({Containers::String{path}, std::move(value)});
}

rapidjson::Value ProjectEdit::text(const Containers::StringView text) { return copyOf(text, _data->memory); }

rapidjson::MemoryPoolAllocator<rapidjson::CrtAllocator>& ProjectEdit::allocator() { return _data->memory; }

bool ProjectEdit::isEmpty() const { return _data->wanted.empty(); }

void ProjectEdit::push() {
    if(isEmpty()) return;
    {
        ChangeManager& changes = _data->editor.changeManager();
        const ChangeGroup group{changes};
        for(Data::Wanted& one: _data->wanted) changes.pushChange(std::move(one.path), &one.value, false);
    }
    _data->wanted.clear();
    _data->containers.clear();
}

}
