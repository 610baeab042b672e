#include "MemoryFileSystem.h"

#include <cerrno>

namespace QuorvaneEngine {

namespace {

std::string text(Containers::StringView view) { return {view.data(), view.size()}; }

std::string parentOf(const std::string& path) { return path.substr(0, path.rfind('/')); }

Containers::String string(const std::string& text) { return {text.data(), text.size()}; }

}

void MemoryFileSystem::put(const std::string& path, const std::string& bytes) {
    putFolder(parentOf(path));
    _names[path] = _syncedNames[path] = std::make_shared<Node>(Node{false, bytes, bytes, ++_time});
    touchParent(path);
}

void MemoryFileSystem::putFolder(const std::string& path) {
    if(path.empty() || _names.contains(path)) return;
    putFolder(parentOf(path));
    _names[path] = _syncedNames[path] = std::make_shared<Node>(Node{true, {}, {}});
}

std::map<std::string, std::string> MemoryFileSystem::files() const {
    std::map<std::string, std::string> all;
    for(const auto& [path, node]: _names)
        if(!node->isFolder && path.find("/.editor/") == std::string::npos) all[path] = node->bytes;
    return all;
}

void MemoryFileSystem::failAt(std::size_t step, int error, bool isLasting) {
    _failAt = _steps + step;
    _error = error;
    _isLasting = isLasting;
}

void MemoryFileSystem::behave() { _lossAfter = _failAt = ~std::size_t{}; }

void MemoryFileSystem::powerOn(Kept kept, unsigned seed) {
    std::mt19937 random{seed};
    const auto isKept = [&](Kept all) {
        return kept == Kept::Everything || kept == all || (kept == Kept::AnyPart && random() % 2);
    };
    Names names = _syncedNames;
    for(const Step& step: _unsynced)
        if(step.isSynced || isKept(Kept::Names)) apply(step, names);

    std::set<Node*> seen;
    for(auto& [path, node]: names)
        if(seen.insert(node.get()).second) {
            if(!isKept(Kept::Contents)) node->bytes = node->syncedBytes;
            node->syncedBytes = node->bytes;
        }
    // What lies in a folder whose name was lost is lost, too.
    std::erase_if(names, [&](const auto& entry) {
        for(std::string parent = parentOf(entry.first); !parent.empty(); parent = parentOf(parent))
            if(!names.contains(parent)) return true;
        return false;
    });
    _names = _syncedNames = names;
    _unsynced.clear();
    behave();
}

void MemoryFileSystem::apply(const Step& step, Names& names) {
    if(!step.from.empty()) {
        const auto found = names.find(step.from);
        if(found == names.end() || found->second != step.node) return;
        names.erase(found);
    }
    if(!step.to.empty()) names[step.to] = step.node;
}

int MemoryFileSystem::begin() {
    if(_steps == _lossAfter) throw PowerLoss{};
    const std::size_t step = _steps++;
    return step == _failAt || (_isLasting && step > _failAt) ? _error : 0;
}

void MemoryFileSystem::change(const Step& step) {
    ++changes;
    apply(step, _names);
    touchParent(step.from);
    touchParent(step.to);
    _unsynced.push_back(step);
}

void MemoryFileSystem::touchParent(const std::string& path) {
    if(Node* const folder = path.empty() ? nullptr : find(parentOf(path))) folder->changed = ++_time;
}

MemoryFileSystem::Node* MemoryFileSystem::find(const std::string& path) const {
    const auto found = _names.find(path);
    return found == _names.end() ? nullptr : found->second.get();
}

int MemoryFileSystem::parentError(const std::string& path) const {
    const std::string parent = parentOf(path);
    if(parent.empty()) return 0;
    const Node* const node = find(parent);
    if(!node) {
        const int error = parentError(parent);
        return error ? error : ENOENT;
    }
    return node->isFolder ? 0 : ENOTDIR;
}

int MemoryFileSystem::readFile(Containers::StringView path, Containers::String& bytes, std::size_t maxSize) {
    if(const int error = begin()) return error;
    if(const int error = parentError(text(path))) return error;
    const Node* const node = find(text(path));
    if(!node) return ENOENT;
    if(node->isFolder) return EISDIR;
    if(node->bytes.size() > maxSize) return EFBIG;
    bytes = string(node->bytes);
    return 0;
}

int MemoryFileSystem::writeFile(Containers::StringView path, Containers::StringView bytes, Containers::StringView) {
    const bool isLoss = _steps == _lossAfter;
    const int error = isLoss ? 0 : begin();
    const std::string name = text(path);
    if(const int parent = parentError(name)) return parent;
    if(find(name) && find(name)->isFolder) return EISDIR;
    if(!find(name)) change({{}, name, std::make_shared<Node>(Node{false, {}, {}}), false});
    ++changes;
    find(name)->changed = ++_time;
    find(name)->bytes = text(bytes).substr(0, isLoss || error ? bytes.size() / 2 : bytes.size());
    if(isLoss) throw PowerLoss{};
    return error;
}

int MemoryFileSystem::syncFile(Containers::StringView path) {
    if(const int error = begin()) return error;
    Node* const node = find(text(path));
    if(!node) return ENOENT;
    node->syncedBytes = node->bytes;
    return 0;
}

int MemoryFileSystem::syncFolder(Containers::StringView path) {
    if(const int error = begin()) return error;
    const std::string folder = text(path);
    if(!find(folder)) return ENOENT;
    if(!find(folder)->isFolder) return ENOTDIR;
    for(Step& step: _unsynced)
        if((!step.from.empty() && parentOf(step.from) == folder) || (!step.to.empty() && parentOf(step.to) == folder))
            step.isSynced = true;
    return 0;
}

int MemoryFileSystem::linkFile(Containers::StringView path, Containers::StringView name) {
    if(const int error = begin()) return error;
    if(linkError) return linkError;
    if(const int error = parentError(text(path))) return error;
    const auto found = _names.find(text(path));
    if(found == _names.end()) return ENOENT;
    if(found->second->isFolder) return EPERM;
    if(find(text(name))) return EEXIST;
    change({{}, text(name), found->second, false});
    return 0;
}

int MemoryFileSystem::renameFile(Containers::StringView from, Containers::StringView to) {
    if(const int error = begin()) return error;
    if(const int error = parentError(text(to))) return error;
    const auto found = _names.find(text(from));
    if(found == _names.end()) return ENOENT;
    const Node* const old = find(text(to));
    if(old && old->isFolder) return EISDIR;
    if(old == found->second.get()) return 0;
    change({text(from), text(to), found->second, false});
    return 0;
}

int MemoryFileSystem::removeFile(Containers::StringView path) {
    if(const int error = begin()) return error;
    if(const int error = parentError(text(path))) return error;
    const auto found = _names.find(text(path));
    if(found == _names.end()) return ENOENT;
    if(found->second->isFolder) return EISDIR;
    change({text(path), {}, found->second, false});
    return 0;
}

int MemoryFileSystem::makeFolder(Containers::StringView path) {
    if(const int error = begin()) return error;
    if(const int error = parentError(text(path))) return error;
    if(find(text(path))) return EEXIST;
    change({{}, text(path), std::make_shared<Node>(Node{true, {}, {}}), false});
    return 0;
}

int MemoryFileSystem::removeFolder(Containers::StringView path) {
    if(const int error = begin()) return error;
    const auto found = _names.find(text(path));
    if(found == _names.end()) return ENOENT;
    if(!found->second->isFolder) return ENOTDIR;
    const auto next = std::next(found);
    if(next != _names.end() && next->first.starts_with(text(path) + "/")) return ENOTEMPTY;
    change({text(path), {}, found->second, false});
    return 0;
}

int MemoryFileSystem::listFolder(Containers::StringView path, Containers::Array<Containers::String>& names) {
    if(const int error = begin()) return error;
    if(const int error = parentError(text(path))) return error;
    const Node* const node = find(text(path));
    if(!node) return ENOENT;
    if(!node->isFolder) return ENOTDIR;
    std::vector<std::string> found;
    for(const auto& [name, child]: _names)
        if(parentOf(name) == text(path)) found.push_back(name.substr(path.size() + 1));
    names = Containers::Array<Containers::String>{Corrade::ValueInit, found.size()};
    for(std::size_t i = 0; i != found.size(); ++i) names[i] = string(found[i]);
    return 0;
}

bool MemoryFileSystem::isLink(Containers::StringView path) { return links.contains(text(path)); }

int MemoryFileSystem::stampOf(Containers::StringView path, FileStamp& stamp) {
    if(const int error = parentError(text(path))) return error;
    const Node* const node = find(text(path));
    if(!node) return ENOENT;
    const auto changed = std::int64_t(node->changed);
    stamp = {0, std::uint64_t(reinterpret_cast<std::uintptr_t>(node)), node->bytes.size(), changed, changed};
    return 0;
}

}
