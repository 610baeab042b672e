#pragma once

#include <unordered_map>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"
#include "Utils/StrHash.h"

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

/** Keys as the nested members that a file holds them in. */
class QUORVANE_API TermTree {
public:
    static constexpr UnsignedInt None = ~UnsignedInt{};
    static constexpr UnsignedInt Root = 0;

    struct Node {
        /** The segment; views the key that made the node. */
        Containers::StringView segment;
        UnsignedInt firstChild = None;
        UnsignedInt lastChild = None;
        UnsignedInt next = None;
        /** What was handed to @ref insert(), -1 for a branch. */
        Int term = -1;
        /** Whether the children are elements. */
        bool isArray = false;
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

    const Node& node(UnsignedInt index) const { return _nodes[index]; }

    /** The child with this segment, @ref None where there is none. */
    UnsignedInt child(UnsignedInt parent, Containers::StringView segment) const;

private:
    struct Place {
        UnsignedInt parent;
        Containers::StringView segment;
        bool operator==(const Place& other) const { return parent == other.parent && segment == other.segment; }
    };
    struct PlaceHash {
        std::size_t operator()(const Place& place) const {
            return StrHash{}(place.segment) ^ (place.parent * std::size_t{0x9e3779b97f4a7c15u});
        }
    };

    UnsignedInt append(UnsignedInt parent, Containers::StringView segment);
    Int anyTermBelow(UnsignedInt index) const;

    Containers::Array<Node> _nodes;
    std::unordered_map<Place, UnsignedInt, PlaceHash> _places;
};

}
