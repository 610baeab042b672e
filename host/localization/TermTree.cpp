#include "TermTree.h"

#include <Corrade/Containers/GrowableArray.h>

#include "TermKey.h"

namespace QuorvaneEngine {

TermTree::TermTree() { Containers::arrayAppend(_nodes, Node{}); }

TermTree::~TermTree() = default;

TermConflict TermTree::insert(const Containers::StringView key, const Int term, Int& other) {
    other = -1;
    if(TermKey::segmentCount(key) > TermKey::MaxSegments) return TermConflict::TooDeep;

    // As far as the path exists already.
    UnsignedInt parent = Root;
    Containers::StringView rest = key;
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

    parent = append(parent, segment);
    while(rest.data()) parent = append(parent, TermKey::takeSegment(rest, rest));
    _nodes[parent].term = term;
    return TermConflict::None;
}

UnsignedInt TermTree::child(const UnsignedInt parent, const Containers::StringView segment) const {
    const auto found = _places.find(Place{parent, segment});
    return found == _places.end() ? None : found->second;
}

UnsignedInt TermTree::append(const UnsignedInt parent, const Containers::StringView segment) {
    const UnsignedInt index = UnsignedInt(_nodes.size());
    Node node;
    node.segment = segment;
    Containers::arrayAppend(_nodes, node);

    Node& above = _nodes[parent];
    if(above.firstChild == None) {
        above.firstChild = index;
        above.isArray = TermKey::elementIndex(segment) >= 0;
    } else _nodes[above.lastChild].next = index;
    above.lastChild = index;
    _places.emplace(Place{parent, segment}, index);
    return index;
}

Int TermTree::anyTermBelow(UnsignedInt index) const {
    while(_nodes[index].term == -1 && _nodes[index].firstChild != None) index = _nodes[index].firstChild;
    return _nodes[index].term;
}

}
