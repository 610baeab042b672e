#pragma once

#include <map>
#include <utility>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/StringView.h>

#include "../document/HashIndex.h"
#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Why a key has no place in a file beside the others. */
enum class TermConflict {
    None,
    /** Another term has the same path. */
    SamePath,
    /** One of two keys is a text, and the other lies below it. */
    LeafAndBranch,
    /** Below one place there would be names and elements. */
    MemberAndElement,
    /** The file itself would be an array. */
    RootElement,
    /** More segments than @ref TermKey::MaxSegments . */
    TooDeep
};

/** Keys as the nested members that a file holds them in. While nobody inserts, any number of threads may read it. */
class QUORVANE_API TermTree {
public:
    static constexpr UnsignedInt None = ~UnsignedInt{};
    static constexpr UnsignedInt Root = 0;

    struct Node {
        /** The segment; views the key that made the node. */
        Containers::StringView segment;
        /** How much of that key is before the segment. */
        UnsignedInt offset = 0;
        /** @ref None of the root. */
        UnsignedInt parent = None;
        UnsignedInt firstChild = None;
        UnsignedInt lastChild = None;
        UnsignedInt next = None;
        /** What was handed to @ref insert(), -1 for a branch. */
        Int term = -1;
        /** Whether the children are elements. */
        bool isArray = false;
        /** Whether the segment is the name that it stands for. */
        bool isPlain = true;
    };

    TermTree();
    ~TermTree();
    TermTree(const TermTree&) = delete;
    TermTree& operator=(const TermTree&) = delete;

    /** Puts a key into its place, behind all others there. A key in conflict changes nothing.
        @param key      canonical; must outlive the tree
        @param term     0 or more
        @param other    receives one of the terms that the key is in conflict with, where there is any */
    TermConflict insert(Containers::StringView key, Int term, Int& other);

    /** What @ref insert() would say of a key, which changes nothing. */
    TermConflict check(Containers::StringView key, Int& other) const;

    const Node& node(UnsignedInt index) const { return _nodes[index]; }

    /** One more than the highest index of a node. */
    UnsignedInt nodeCount() const { return UnsignedInt(_nodes.size()); }

    /** The key of a node's place, the root's being empty; views the key that made the node. */
    Containers::StringView path(UnsignedInt index) const {
        const Node& node = _nodes[index];
        return {node.segment.data() - node.offset, node.offset + node.segment.size()};
    }

    /** The child with this segment, @ref None where there is none. */
    UnsignedInt child(UnsignedInt parent, Containers::StringView segment) const;

    /** Where the search for a key begins that is likely to be near another one. */
    struct Start {
        /** The last node on the way to the other one that is on the way to the key, too. */
        UnsignedInt node;
        /** The next one on the way to the other one; @ref None where the node is that itself. */
        UnsignedInt below;
        /** What follows of the key, never null data. */
        Containers::StringView rest;
    };
    Start startNear(UnsignedInt other, Containers::StringView key) const;

private:
    using Place = std::pair<UnsignedInt, Containers::StringView>;

    /** As far as a key's path exists: its last node there, the first segment that is not there, and what follows that. */
    struct Gap {
        UnsignedInt parent;
        Containers::StringView segment;
        Containers::StringView rest;
    };
    TermConflict locate(Containers::StringView key, Int& other, Gap& gap) const;

    UnsignedInt append(UnsignedInt parent, Containers::StringView key, Containers::StringView segment);
    Int anyTermBelow(UnsignedInt index) const;

    Containers::Array<Node> _nodes;
    /** The last one that was inserted: the next key is likely to be like it. */
    UnsignedInt _last = Root;
    /** Nodes by the hash of @ref Place . */
    HashIndex _places;
    /** Those for which the index has no room, by malice. */
    std::map<Place, UnsignedInt> _crowded;
};

}
