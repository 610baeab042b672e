#include "FileOrder.h"

#include <algorithm>

#include "Catalogue.h"
#include "TermKey.h"
#include "TermTree.h"

namespace QuorvaneEngine {

namespace {

bool isOrderOf(const TermTree& tree, const Catalogue& file) {
    const CatalogueEntry* next = file.entries().begin();
    UnsignedInt node = TermTree::Root;
    // As far as the keys of the file are found one behind the other, whatever is between them in the tree.
    while(next != file.entries().end()) {
        if(tree.node(node).term != -1 && tree.path(node) == next->key) ++next;
        if(tree.node(node).firstChild != TermTree::None) node = tree.node(node).firstChild;
        else {
            while(node != TermTree::Root && tree.node(node).next == TermTree::None) node = tree.node(node).parent;
            if(node == TermTree::Root) break;
            node = tree.node(node).next;
        }
    }
    return next == file.entries().end();
}

}

FileOrder::FileOrder(const TermTree& tree, const Catalogue* const file) {
    if(file && !isOrderOf(tree, *file)) rank(tree, *file);
}

FileOrder::~FileOrder() = default;

void FileOrder::sort(UnsignedInt* const siblings, const std::size_t count) {
    UnsignedInt anchor = 0;
    bool isInOrder = true;
    for(std::size_t i = 0; i != count && isInOrder; ++i) {
        const UnsignedInt rank = _ranks[siblings[i]];
        isInOrder = rank == 0 || anchor < rank;
        if(rank != 0) anchor = rank;
    }
    if(isInOrder) return;

    _places.clear();
    anchor = 0;
    for(std::size_t i = 0; i != count; ++i) {
        if(const UnsignedInt rank = _ranks[siblings[i]]) anchor = rank;
        _places.emplace_back(std::uint64_t{anchor} << 32 | i, siblings[i]);
    }
    std::sort(_places.begin(), _places.end());
    for(std::size_t i = 0; i != count; ++i) siblings[i] = _places[i].second;
}

void FileOrder::rank(const TermTree& tree, const Catalogue& file) {
    _ranks.resize(tree.nodeCount());
    UnsignedInt count = 0;
    UnsignedInt last = TermTree::Root;
    for(const CatalogueEntry& entry: file.entries()) {
        auto [node, below, rest] = tree.startNear(last, entry.key);
        // What comes next in the file is what comes next in the tree, more often than not.
        UnsignedInt guess = below == TermTree::None ? tree.node(node).firstChild : tree.node(below).next;
        while(rest.data()) {
            const Containers::StringView segment = TermKey::takeSegment(rest, rest);
            const bool isRight = guess != TermTree::None && tree.node(guess).segment == segment;
            const UnsignedInt child = isRight ? guess : tree.child(node, segment);
            if(child == TermTree::None) break;
            if(_ranks[child] == 0) _ranks[child] = ++count;
            node = child;
            guess = tree.node(node).firstChild;
        }
        last = node;
    }
}

}
