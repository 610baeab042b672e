#include "TermTree.h"

#include <algorithm>

#include <Corrade/Containers/GrowableArray.h>

#include "TermKey.h"

namespace QuorvaneEngine {

namespace {

std::uint32_t hashOf(const UnsignedInt parent, const Containers::StringView segment) {
    return HashIndex::hash(segment) ^ (parent * 0x9e3779b9u);
}

}

TermTree::TermTree() { Containers::arrayAppend(_nodes, Node{}); }

TermTree::~TermTree() = default;

TermConflict TermTree::insert(const Containers::StringView key, const Int term, Int& other) {
    Gap gap;
    const TermConflict conflict = locate(key, other, gap);
    if(conflict != TermConflict::None) return conflict;
    UnsignedInt parent = append(gap.parent, key, gap.segment);
    while(gap.rest.data()) {
        const Containers::StringView segment = TermKey::takeSegment(gap.rest, gap.rest);
        parent = append(parent, key, segment);
    }
    _nodes[parent].term = term;
    _last = parent;
    return TermConflict::None;
}

TermConflict TermTree::check(const Containers::StringView key, Int& other) const {
    Gap gap;
    return locate(key, other, gap);
}

TermConflict TermTree::locate(const Containers::StringView key, Int& other, Gap& gap) const {
    other = -1;
    if(TermKey::segmentCount(key) > TermKey::MaxSegments) return TermConflict::TooDeep;

    auto [parent, below, rest] = startNear(_last, key);
    Containers::StringView segment;
    UnsignedInt found = None;
    do {
        segment = TermKey::takeSegment(rest, rest);
        if(_nodes[parent].term != -1) {
            other = _nodes[parent].term;
            return TermConflict::LeafAndBranch;
        }
        found = child(parent, segment);
        if(found != None) parent = found;
    } while(found != None && rest.data());
    if(found != None) {
        other = anyTermBelow(found);
        return _nodes[found].term == -1 ? TermConflict::LeafAndBranch : TermConflict::SamePath;
    }

    const bool isElement = TermKey::elementIndex(segment) >= 0;
    if(parent == Root && isElement) return TermConflict::RootElement;
    if(_nodes[parent].firstChild != None && _nodes[parent].isArray != isElement) {
        other = anyTermBelow(parent);
        return TermConflict::MemberAndElement;
    }
    gap = {parent, segment, rest};
    return TermConflict::None;
}

TermTree::Start TermTree::startNear(const UnsignedInt other, const Containers::StringView key) const {
    const Containers::StringView path = this->path(other);
    const std::size_t common =
        std::size_t(std::mismatch(path.begin(), path.end(), key.begin(), key.end()).second - key.begin());
    Start start{other, None, key.data() ? key : Containers::StringView{""}};
    for(; start.node != Root; start.node = _nodes[start.node].parent) {
        const std::size_t end = _nodes[start.node].offset + _nodes[start.node].segment.size();
        if(end <= common && end < key.size() && key[end] == '.') {
            start.rest = key.exceptPrefix(end + 1);
            break;
        }
        start.below = start.node;
    }
    return start;
}

UnsignedInt TermTree::child(const UnsignedInt parent, const Containers::StringView segment) const {
    const std::uint32_t found = _places.find(hashOf(parent, segment),
        [&](const std::uint32_t index) { return _nodes[index].parent == parent && _nodes[index].segment == segment; });
    if(found != HashIndex::None || _crowded.empty()) return found;
    const auto crowded = _crowded.find(Place{parent, segment});
    return crowded == _crowded.end() ? None : crowded->second;
}

UnsignedInt TermTree::append(
    const UnsignedInt parent, const Containers::StringView key, const Containers::StringView segment) {
    const UnsignedInt index = nodeCount();
    Node node;
    node.segment = segment;
    node.offset = UnsignedInt(segment.data() - key.data());
    node.parent = parent;
    node.isPlain = !segment.contains('%');
    Containers::arrayAppend(_nodes, node);

    Node& above = _nodes[parent];
    if(above.firstChild == None) {
        above.firstChild = index;
        above.isArray = TermKey::elementIndex(segment) >= 0;
    } else _nodes[above.lastChild].next = index;
    above.lastChild = index;
    if(!_places.insert(hashOf(parent, segment), index)) _crowded.emplace(Place{parent, segment}, index);
    return index;
}

Int TermTree::anyTermBelow(UnsignedInt index) const {
    while(_nodes[index].term == -1 && _nodes[index].firstChild != None) index = _nodes[index].firstChild;
    return _nodes[index].term;
}

}
