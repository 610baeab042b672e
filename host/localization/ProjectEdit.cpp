#include "ProjectEdit.h"

#include <cstring>
#include <unordered_map>
#include <utility>
#include <vector>

#include <Corrade/Containers/String.h>
#include <rapidjson/document.h>

#include "ChangeGroup.h"
#include "ChangeManager.h"
#include "DeepCopy.h"
#include "JsonPath.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "QuorvaneEditor/QuorvaneEditor.h"
#include "Utils/StrHash.h"

namespace QuorvaneEngine {

using Allocator = ProjectEdit::Allocator;

namespace {

/** Fewer members than this are set one by one, and so are those that make out no more than this part of their object. */
constexpr std::size_t FewMembers = 32;
constexpr std::size_t SmallPart = 4;

Containers::StringView viewOf(const rapidjson::Value& text) { return {text.GetString(), text.GetStringLength()}; }

rapidjson::SizeType sizeOf(const Containers::StringView text) { return rapidjson::SizeType(text.size()); }

void key(rapidjson::Document& out, const Containers::StringView name, const bool isCopied = true) {
    out.Key(name.isEmpty() ? "" : name.data(), sizeOf(name), isCopied);
}

/** Makes a value in the project's memory, of exactly the size that it needs: the library would grow objects by half, from 16
    members on. */
template <class Make> void pushMade(ChangeManager& changes, Containers::String&& path, Make&& make) {
    rapidjson::Document made{&changes.allocator()};
    auto makeOne = [&](rapidjson::Document& out) {
        make(out);
        return true;
    };
    made.Populate(makeOne);
    changes.pushChange(std::move(path), static_cast<rapidjson::Value&&>(made));
}

/** Members that are wanted of one object. */
class Object {
public:
    struct Single {
        Containers::String name;
        rapidjson::Value value;
    };

    void push(ChangeManager& changes, ProjectFile& project) {
        // How many names lead to the topmost container that is missing or empty; more than there are where none is.
        rapidjson::Value* object = &project.document();
        std::size_t depth = 0;
        while(depth++ != names.size()) {
            rapidjson::Value* const next = project.member(*object, names[depth - 1]);
            if(!next || (next->IsObject() && next->ObjectEmpty())) break;
            object = next;
        }
        if(depth <= names.size()) create(changes, depth);
        else if(isMuchOf(*object)) change(changes, project, *object);
        else setEach(changes);
    }

    std::vector<Containers::String> names;
    std::vector<Single> singles;
    std::vector<ProjectEdit::Members> members;

private:
    std::size_t count() const {
        std::size_t count = singles.size();
        for(const ProjectEdit::Members& some: members) count += some.count;
        return count;
    }

    bool isMuchOf(const rapidjson::Value& object) const {
        return count() >= FewMembers && count() * SmallPart >= object.MemberCount();
    }

    Containers::String path(const std::size_t depth) const {
        std::vector<Containers::StringView> views{names.begin(), names.begin() + std::ptrdiff_t(depth)};
        return jsonPath(Containers::arrayView(views.data(), views.size()));
    }

    void create(ChangeManager& changes, const std::size_t depth) {
        pushMade(changes, path(depth), [&](rapidjson::Document& out) {
            for(std::size_t i = depth; i != names.size(); ++i) {
                out.StartObject();
                key(out, names[i]);
            }
            out.StartObject();
            for(const ProjectEdit::Members& some: members)
                for(std::size_t i = 0; i != some.count; ++i) make(out, some, i);
            for(const Single& single: singles) make(out, single);
            out.EndObject(rapidjson::SizeType(count()));
            for(std::size_t i = depth; i != names.size(); ++i) out.EndObject(1);
        });
    }

    static void make(rapidjson::Document& out, const ProjectEdit::Members& some, const std::size_t i) {
        const Containers::StringView name = some.name(i);
        key(out, name, !ProjectEdit::isShared(name));
        some.make(i, out);
    }

    static void make(rapidjson::Document& out, const Single& single) {
        key(out, single.name);
        putCopy(out, single.value, false);
    }

    /** Sets the whole object, with those of its members that stay as they are. */
    void change(ChangeManager& changes, ProjectFile& project, rapidjson::Value& object) {
        struct Change {
            const ProjectEdit::Members* members = nullptr;
            std::size_t index = 0;
            const Single* single = nullptr;
        };
        std::vector<Change> changed(object.MemberCount());
        std::vector<Change> added;
        for(const ProjectEdit::Members& some: members)
            for(std::size_t i = 0; i != some.count; ++i) {
                const Int position = some.position(i);
                (position == -1 ? added.emplace_back() : changed[std::size_t(position)]) = {&some, i, nullptr};
            }
        for(const Single& single: singles) {
            const rapidjson::Value* const value = project.member(object, single.name);
            (value ? changed[positionOf(object, *value)] : added.emplace_back()) = {nullptr, 0, &single};
        }

        const auto makeChanged = [](rapidjson::Document& out, const Change& change) {
            if(change.single) make(out, *change.single);
            else make(out, *change.members, change.index);
        };
        pushMade(changes, path(names.size()), [&](rapidjson::Document& out) {
            out.StartObject();
            std::size_t position = 0;
            for(const auto& member: object.GetObject()) {
                const Change& change = changed[position++];
                if(change.single || change.members) makeChanged(out, change);
                else {
                    const Containers::StringView name = viewOf(member.name);
                    key(out, name, name.size() < MinSharedText);
                    putCopy(out, member.value, true);
                }
            }
            for(const Change& change: added) makeChanged(out, change);
            out.EndObject(rapidjson::SizeType(changed.size() + added.size()));
        });
    }

    static std::size_t positionOf(const rapidjson::Value& object, const rapidjson::Value& value) {
        const auto bytes =
            reinterpret_cast<const char*>(&value) - reinterpret_cast<const char*>(&object.MemberBegin()->value);
        return std::size_t(bytes) / sizeof(rapidjson::Value::Member);
    }

    void setEach(ChangeManager& changes) {
        const Containers::String path = this->path(names.size());
        for(const ProjectEdit::Members& some: members)
            for(std::size_t i = 0; i != some.count; ++i)
                pushMade(
                    changes, path + jsonPath({some.name(i)}), [&](rapidjson::Document& out) { some.make(i, out); });
        for(const Single& single: singles) changes.pushChange(path + jsonPath({single.name}), &single.value, false);
    }
};

}

struct ProjectEdit::Data {
    explicit Data(QuorvaneEditor& editor): editor{editor} {}

    struct Replacement {
        Containers::String path;
        rapidjson::Value value;
    };

    /** The object at a place; null, with nothing wanted, where it cannot be one. */
    Object* object(const Containers::ArrayView<const Containers::StringView> names) {
        rapidjson::Value* container = &editor.project().document();
        for(const Containers::StringView name: names) {
            if(!container->IsObject()) return nullptr;
            container = editor.project().member(*container, name);
            if(!container) break;
        }
        if(container && !container->IsObject()) return nullptr;
        const auto [place, isNew] = places.emplace(jsonPath(names), objects.size());
        if(isNew) {
            objects.emplace_back();
            objects.back().names.assign(names.begin(), names.end());
        }
        return &objects[place->second];
    }

    QuorvaneEditor& editor;
    Allocator memory;
    /** In the order in which they were wanted. */
    std::vector<Object> objects;
    std::unordered_map<Containers::String, std::size_t, StrHash, StrEq> places;
    std::vector<Replacement> replacements;
};

ProjectEdit::ProjectEdit(QuorvaneEditor& editor): _data{Corrade::InPlaceInit, editor} {}

ProjectEdit::~ProjectEdit() = default;

bool ProjectEdit::set(const Containers::ArrayView<const Containers::StringView> names, rapidjson::Value&& value) {
    Object* const object = _data->object(names.exceptSuffix(1));
    if(object) object->singles.push_back({Containers::String{names.back()}, std::move(value)});
    return object;
}

bool ProjectEdit::set(const std::initializer_list<Containers::StringView> names, rapidjson::Value&& value) {
    return set(Containers::ArrayView<const Containers::StringView>{names.begin(), names.size()}, std::move(value));
}

bool ProjectEdit::setText(
    const std::initializer_list<Containers::StringView> names, const Containers::StringView text) {
    return set(names, this->text(text));
}

bool ProjectEdit::setMembers(const std::initializer_list<Containers::StringView> names, Members&& members) {
    if(members.count == 0) return true;
    Object* const object =
        _data->object(Containers::ArrayView<const Containers::StringView>{names.begin(), names.size()});
    if(object) object->members.push_back(std::move(members));
    return object;
}

void ProjectEdit::replace(const Containers::StringView path, rapidjson::Value&& value) {
    _data->replacements.push_back({Containers::String{path}, std::move(value)});
}

Containers::StringView ProjectEdit::keep(const Containers::StringView text) {
    if(!isShared(text)) return text;
    char* const kept = static_cast<char*>(_data->editor.changeManager().allocator().Malloc(text.size() + 1));
    std::memcpy(kept, text.data(), text.size());
    kept[text.size()] = '\0';
    return {kept, text.size()};
}

rapidjson::Value ProjectEdit::text(const Containers::StringView text) {
    return rapidjson::Value{text.isEmpty() ? "" : text.data(), rapidjson::SizeType(text.size()), _data->memory};
}

Allocator& ProjectEdit::allocator() { return _data->memory; }

bool ProjectEdit::isEmpty() const { return _data->objects.empty() && _data->replacements.empty(); }

Int ProjectEdit::push() {
    if(isEmpty()) return -1;
    ChangeManager& changes = _data->editor.changeManager();
    {
        const ChangeGroup group{changes};
        for(Object& object: _data->objects) {
            object.push(changes, _data->editor.project());
            for(const Members& members: object.members)
                if(members.finish) members.finish();
        }
        for(Data::Replacement& one: _data->replacements) changes.pushChange(std::move(one.path), &one.value, false);
    }
    _data->objects.clear();
    _data->places.clear();
    _data->replacements.clear();
    return changes.lastChange().group;
}

}
