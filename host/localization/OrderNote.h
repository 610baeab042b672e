#pragma once

#include <vector>

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/Optional.h>

#include "Catalogue.h"
#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

class TermTree;

/** How the files of a language were ordered when they first came, so that a first export writes them as they were. The project
    keeps it in `/localization/namespaces/<name>/order/<code>`, and only for files that an export by itself would order in another
    way; where a file stands already, its own order counts instead.

    A note is a list of file keys, those of a part of the file's texts in the file's order: of every object whose members stand
    otherwise than an export by itself would have them, one text of each member, the first one in it. What it does not name
    follows what it stands behind by itself, see @ref FileOrder . An empty note tells that the order is the export's own where the
    default language's is not. */
class QUORVANE_API OrderNote {
public:
    /** The note of a language, nothing where there is none.
        @param notes    those of a namespace, by codes; null or any value */
    static Containers::Optional<Catalogue> read(const rapidjson::Value* notes, Containers::StringView code);

    /** Finds notes for files of one namespace.
        @param tree     what an export writes: must stay as it is, and outlive this object
        @param order    of the export by itself; null for that of the tree */
    explicit OrderNote(const TermTree& tree, const Catalogue* order);
    ~OrderNote();
    OrderNote(const OrderNote&) = delete;
    OrderNote& operator=(const OrderNote&) = delete;

    /** Whether texts stand in the order that the export by itself gives them.
        @param terms    numbers in the tree, in the order of the file */
    bool isInOrder(Containers::ArrayView<const UnsignedInt> terms) const;

    /** The note for texts in their order: numbers of some of them, none where they are in order. */
    std::vector<UnsignedInt> make(Containers::ArrayView<const UnsignedInt> terms) const;

private:
    const TermTree& _tree;
    /** By node, in the order of the export. */
    std::vector<UnsignedInt> _ranks;
    /** Nodes by the numbers of terms. */
    std::vector<UnsignedInt> _nodes;
};

}
