#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

class Catalogue;
class TermTree;

/** The order of a tree's nodes in a file that is there already: those of the file as they are there, and each of the others behind
    the one that it follows in the tree. */
class QUORVANE_API FileOrder {
public:
    /** @param tree     must outlive this object, and stay as it is
        @param file     only its keys matter; may be null for the order of the tree */
    explicit FileOrder(const TermTree& tree, const Catalogue* file);
    ~FileOrder();

    /** Whether it is that of the tree. */
    bool isTrees() const { return _ranks.empty(); }

    /** Puts all children of a node, which are in the order of the tree, into that of the file. Not to be called where that is the order
        of the tree. */
    void sort(UnsignedInt* siblings, std::size_t count);

private:
    void rank(const TermTree& tree, const Catalogue& file);

    /** By node, from 1 on; 0 for one that is new. Empty where nothing is to be sorted. */
    std::vector<UnsignedInt> _ranks;
    std::vector<std::pair<std::uint64_t, UnsignedInt>> _places;
};

}
