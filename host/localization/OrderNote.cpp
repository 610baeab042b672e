#include "OrderNote.h"

#include <algorithm>
#include <cstddef>

#include <rapidjson/document.h>

#include "DocumentLookup.h"
#include "FileOrder.h"
#include "TermKey.h"
#include "TermTree.h"

namespace QuorvaneEngine {

namespace {

/** Numbers the nodes of a tree in the order in which a file has them. */
struct Ranking {
    const TermTree& tree;
    FileOrder order;
    std::vector<UnsignedInt>& ranks;
    UnsignedInt next = 0;
    std::vector<UnsignedInt> siblings = {};

    Int element(const UnsignedInt node) const { return TermKey::elementIndex(tree.node(node).segment); }

    // As deep as keys have segments, which the tree limits.
    void run(const UnsignedInt node) {
        ranks[node] = next++;
        const std::size_t begin = siblings.size();
        for(UnsignedInt i = tree.node(node).firstChild; i != TermTree::None; i = tree.node(i).next)
            siblings.push_back(i);
        // Elements are ordered by their numbers in every file.
        const std::size_t end = siblings.size();
        if(tree.node(node).isArray)
            std::sort(siblings.begin() + std::ptrdiff_t(begin), siblings.end(),
                [this](const UnsignedInt a, const UnsignedInt b) { return element(a) < element(b); });
        else if(!order.isTrees()) order.sort(siblings.data() + begin, end - begin);
        for(std::size_t i = begin; i != end; ++i) run(siblings[i]);
        siblings.resize(begin);
    }
};

}

Containers::Optional<Catalogue> OrderNote::read(
    const rapidjson::Value* const notes, const Containers::StringView code) {
    const rapidjson::Value* const note = memberOf(notes, code);
    if(!note || !note->IsArray()) return {};
    Catalogue keys;
    for(const rapidjson::Value& key: note->GetArray())
        if(key.IsString()) keys.add({key.GetString(), key.GetStringLength()}, {});
    return Containers::Optional<Catalogue>{std::move(keys)};
}

OrderNote::OrderNote(const TermTree& tree, const Catalogue* const order): _tree{tree}, _ranks(tree.nodeCount()) {
    Ranking{tree, FileOrder{tree, order}, _ranks}.run(TermTree::Root);
    for(UnsignedInt i = 0; i != tree.nodeCount(); ++i) {
        const Int term = tree.node(i).term;
        if(term == -1) continue;
        if(_nodes.size() <= std::size_t(term)) _nodes.resize(std::size_t(term) + 1, TermTree::None);
        _nodes[std::size_t(term)] = i;
    }
}

OrderNote::~OrderNote() = default;

bool OrderNote::isInOrder(const Containers::ArrayView<const UnsignedInt> terms) const {
    for(std::size_t i = 1; i < terms.size(); ++i)
        if(_ranks[_nodes[terms[i]]] < _ranks[_nodes[terms[i - 1]]]) return false;
    return true;
}

std::vector<UnsignedInt> OrderNote::make(const Containers::ArrayView<const UnsignedInt> terms) const {
    // Of each node that the file has: its first text there; and whether its members are out of order, as far as they are seen.
    std::vector<UnsignedInt> firstTexts(_tree.nodeCount(), TermTree::None);
    std::vector<UnsignedInt> lastMembers(_tree.nodeCount(), TermTree::None);
    std::vector<bool> isOutOfOrder(_tree.nodeCount());
    for(UnsignedInt position = 0; position != terms.size(); ++position)
        for(UnsignedInt node = _nodes[terms[position]]; node != TermTree::Root && firstTexts[node] == TermTree::None;
            node = _tree.node(node).parent) {
            firstTexts[node] = position;
            const UnsignedInt parent = _tree.node(node).parent;
            const UnsignedInt last = lastMembers[parent];
            if(last != TermTree::None && _ranks[node] < _ranks[last] && !_tree.node(parent).isArray)
                isOutOfOrder[parent] = true;
            lastMembers[parent] = node;
        }

    std::vector<bool> isNoted(terms.size());
    for(UnsignedInt node = 1; node < _tree.nodeCount(); ++node)
        if(firstTexts[node] != TermTree::None && isOutOfOrder[_tree.node(node).parent])
            isNoted[firstTexts[node]] = true;
    std::vector<UnsignedInt> noted;
    for(std::size_t i = 0; i != terms.size(); ++i)
        if(isNoted[i]) noted.push_back(terms[i]);
    return noted;
}

}
