#include "DocumentTree.h"

#include <algorithm>
#include <charconv>

#include <Corrade/Containers/StringStl.h>
#include <Corrade/Containers/StringStlView.h>
#include <PathParts.h>
#include <QuorvaneEditor/ProjectFile.h>
#include <QuorvaneEditor/Utils.h>
#include <rapidjson/document.h>

namespace InspectorPlugin {

namespace {

using rapidjson::Value;

std::string_view textOf(const Value& value) {
    return value.IsString() ? std::string_view{value.GetString(), value.GetStringLength()} : std::string_view{};
}

std::size_t sizeOf(const Value& value) { return value.IsObject() ? value.MemberCount() : value.Size(); }

bool isContainer(const Value& value) { return value.IsObject() || value.IsArray(); }

/** Those that the tree shows. An array of numbers or texts is one value; the first element tells. */
bool isNode(const Value& value) {
    return value.IsObject() || (value.IsArray() && !value.Empty() && isContainer(value[0]));
}

const Value& childOf(const Value& value, const std::size_t index) {
    return value.IsObject() ? value.MemberBegin()[std::ptrdiff_t(index)].value : value[rapidjson::SizeType(index)];
}

/** The key of a member. */
std::string_view keyOf(const Value& object, const std::size_t index) {
    return textOf(object.MemberBegin()[std::ptrdiff_t(index)].name);
}

/** Members that a row looks at; who has more may have an arrow with nothing behind it. */
constexpr std::size_t LookAt = 64;

bool hasNodes(const Value& value) {
    const std::size_t size = sizeOf(value);
    for(std::size_t i = 0; i != std::min(size, LookAt); ++i)
        if(isNode(childOf(value, i)) && (value.IsArray() || isReachable(keyOf(value, i)))) return true;
    return size > LookAt;
}

std::string nameOf(const Value& value) {
    if(!value.IsObject()) return {};
    for(std::size_t i = 0; i != std::min(sizeOf(value), LookAt); ++i)
        if(keyOf(value, i) == "name") return std::string{textOf(childOf(value, i))};
    return {};
}

bool contains(const std::string_view text, const std::string_view search) {
    return Utils::caseInsensitiveSearch(text, search) != -1;
}

/** The tokens of a pointer. */
std::vector<std::string> tokensOf(const std::string& path) {
    std::vector<std::string> tokens;
    for(std::size_t at = 0; at < path.size();) {
        const std::size_t end = std::min(path.find('/', at + 1), path.size());
        tokens.push_back(path.substr(at + 1, end - at - 1));
        at = end;
    }
    return tokens;
}

}

bool isReachable(const std::string_view key) { return !key.empty() && key.find('\0') == std::string_view::npos; }

std::string childPath(const std::string& path, const std::string_view key) {
    return path + "/" + std::string{escaped(key)};
}

/** A value that is unfolded. */
struct DocumentTree::Node {
    const Value* value;
    std::string path;
    int depth;

    /** Positions of the members that have rows. */
    std::vector<std::uint32_t> children;

    /** Those that are unfolded, by position among @ref children , ascending. */
    std::vector<std::pair<std::size_t, std::unique_ptr<Node>>> open;

    std::size_t rows = 0;

    std::string childsKey(const std::size_t child) const {
        return value->IsObject() ? std::string{keyOf(*value, children[child])} : std::to_string(children[child]);
    }
    std::string childsPath(const std::size_t child) const { return childPath(path, childsKey(child)); }
};

std::unique_ptr<DocumentTree::Node> DocumentTree::read(
    ProjectFile& project, const Value& value, std::string path, const Open& open, const int depth) {
    auto node = std::make_unique<Node>(Node{&value, std::move(path), depth, {}, {}, 0});
    const std::size_t size = sizeOf(value);
    for(std::size_t i = 0; i != size; ++i)
        if(isNode(childOf(value, i)) && (value.IsArray() || isReachable(keyOf(value, i))))
            node->children.push_back(std::uint32_t(i));
    node->rows = node->children.size();
    if(open.children.empty() || node->children.empty()) return node;

    const auto* const first = reinterpret_cast<const char*>(&childOf(value, 0));
    const std::size_t step = value.IsObject() ? sizeof(Value::Member) : sizeof(Value);
    for(const auto& [token, below]: open.children) {
        const std::string childsPath = node->path + "/" + token;
        const Value* const child = project.getValue(childsPath, false);
        if(!child || !isNode(*child)) continue;
        const auto index = std::uint32_t(std::size_t(reinterpret_cast<const char*>(child) - first) / step);
        const auto found = std::lower_bound(node->children.begin(), node->children.end(), index);
        if(found == node->children.end() || *found != index) continue;
        node->open.emplace_back(
            std::size_t(found - node->children.begin()), read(project, *child, childsPath, below, depth + 1));
        node->rows += node->open.back().second->rows;
    }
    std::sort(node->open.begin(), node->open.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    return node;
}

void DocumentTree::find(const Value& value, const std::string& path, const int depth, const std::string_view search) {
    for(std::size_t i = 0; i != sizeOf(value); ++i) {
        const Value& child = childOf(value, i);
        if(!isNode(child) || (value.IsObject() && !isReachable(keyOf(value, i)))) continue;
        const std::string index = value.IsArray() ? std::to_string(i) : std::string{};
        const std::string_view key = value.IsArray() ? std::string_view{index} : keyOf(value, i);
        const std::string childsPath = childPath(path, key);
        if(contains(key, search) || contains(nameOf(child), search))
            _found.push_back({childsPath, std::string{key}, nameOf(child), sizeOf(child), 0, false, false});
        find(child, childsPath, depth + 1, search);
    }
}

bool DocumentTree::update(ProjectFile& project, const std::string& search) {
    if(!_isStale && _revision == project.revision() && _search == search) return false;
    _isStale = false;
    _revision = project.revision();
    _search = search;
    _found.clear();
    _root = nullptr;
    if(!project.document().IsObject()) return true;
    if(search.empty()) _root = read(project, project.document(), {}, _open, 0);
    else find(project.document(), {}, 0, search);
    return true;
}

std::size_t DocumentTree::size() const { return _root ? _root->rows : _found.size(); }

DocumentTree::Row DocumentTree::row(std::size_t index) const {
    if(!_root) return _found[index];
    const Node* node = _root.get();
    std::size_t child = index;
    for(bool isFound = false; !isFound;) {
        isFound = true;
        child = index;
        for(const auto& [position, below]: node->open) {
            if(child <= position) break;
            if(child <= position + below->rows) {
                index = child - position - 1;
                node = below.get();
                isFound = false;
                break;
            }
            child -= below->rows;
        }
    }

    const Value& value = childOf(*node->value, node->children[child]);
    const bool isOpen =
        std::any_of(node->open.begin(), node->open.end(), [child](const auto& one) { return one.first == child; });
    return {node->childsPath(child), node->childsKey(child), nameOf(value), sizeOf(value), node->depth, isOpen,
        hasNodes(value)};
}

void DocumentTree::setOpen(const std::string& path, const bool open) {
    std::vector<std::string> tokens = tokensOf(path);
    if(tokens.empty()) return;
    const std::string last = std::move(tokens.back());
    tokens.pop_back();
    Open* at = &_open;
    for(const std::string& token: tokens) at = &at->children[token];
    if(open) at->children[last];
    else at->children.erase(last);
    _isStale = true;
}

void DocumentTree::reveal(const std::string& path) {
    const std::size_t end = path.rfind('/');
    if(end != std::string::npos && end != 0) setOpen(path.substr(0, end), true);
}

std::size_t DocumentTree::rowOf(const std::string& path) const {
    for(std::size_t i = 0; !_root && i != _found.size(); ++i)
        if(_found[i].path == path) return i;
    const Node* node = _root.get();
    std::size_t row = 0;
    while(node) {
        const Node* next = nullptr;
        std::size_t before = 0;
        for(const auto& [position, below]: node->open) {
            if(path.size() > below->path.size() && path.compare(0, below->path.size(), below->path) == 0 &&
                path[below->path.size()] == '/') {
                row += position + before + 1;
                next = below.get();
                break;
            }
            before += below->rows;
        }
        if(next) {
            node = next;
            continue;
        }
        for(std::size_t i = 0; i != node->children.size(); ++i) {
            std::size_t above = 0;
            for(const auto& [position, below]: node->open)
                if(position < i) above += below->rows;
            if(node->childsPath(i) == path) return row + i + above;
        }
        break;
    }
    return size();
}

}
