#include "ValueRows.h"

#include <utility>

#include <Corrade/Containers/StringStl.h>
#include <QuorvaneEditor/ProjectFile.h>
#include <rapidjson/document.h>

#include "DocumentTree.h"

namespace InspectorPlugin {

namespace {

using rapidjson::Value;

std::string counted(const std::size_t count, const char* const one, const char* const many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

/** Of a value that no widget edits. */
std::string textOf(const Value& value) {
    if(value.IsNull()) return "null";
    if(value.IsBool()) return value.GetBool() ? "true" : "false";
    if(value.IsDouble()) return std::to_string(value.GetDouble());
    if(value.IsUint64()) return std::to_string(value.GetUint64());
    if(value.IsInt64()) return std::to_string(value.GetInt64());
    if(value.IsString()) return "a text with zero bytes";
    if(value.IsArray()) return value.Empty() ? "no elements" : counted(value.Size(), "element", "elements");
    return value.ObjectEmpty() ? "no members" : counted(value.MemberCount(), "member", "members");
}

}

bool ValueRows::update(ProjectFile& project, const std::string& selected) {
    if(_revision == project.revision() && _selected == selected) return false;
    _revision = project.revision();
    _selected = selected;
    _rows.clear();
    const std::string member = selected.substr(selected.rfind('/') + 1);
    if(const Value* const value = project.getValue(selected, false)) read(*value, selected, member, 0);
    return true;
}

void ValueRows::read(
    const Value& value, const std::string& path, const Containers::StringView member, const int depth) {
    if(value.IsArray()) {
        // What is known of the array's name holds for its elements.
        const Hint* const hint = hintFor(member);
        for(rapidjson::SizeType i = 0; i != value.Size(); ++i) add(value[i], path, std::to_string(i), hint, depth);
        return;
    }
    if(!value.IsObject()) return;
    for(const Value::Member& one: value.GetObject()) {
        const Containers::StringView key{one.name.GetString(), one.name.GetStringLength()};
        // Stands above all rows.
        if(depth == 0 && key == "name" && one.value.IsString()) continue;
        add(one.value, path, key, hintFor(key), depth);
    }
}

void ValueRows::add(
    const Value& value, const std::string& parent, const std::string& label, const Hint* const hint, const int depth) {
    Row row;
    row.path = childPath(parent, label);
    row.parent = parent;
    row.token = row.path.substr(parent.size() + 1);
    row.widget = isReachable(label) ? widgetFor(value, hint) : Widget::None;
    row.hint = hint;
    row.depth = depth;
    if(value.IsArray()) row.size = value.Size();
    if(row.widget == Widget::None || row.widget == Widget::Section) row.text = textOf(value);
    row.isOpen = row.widget == Widget::Section && _open.count(row.path) != 0;
    row.label = label;
    const std::string path = row.path;
    const bool isOpen = row.isOpen;
    _rows.push_back(std::move(row));
    if(isOpen) read(value, path, label, depth + 1);
}

void ValueRows::toggle(const Row& section) {
    if(!_open.erase(section.path)) _open.insert(section.path);
    _revision = -1;
}

}
