#pragma once

#include <vector>

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/StringView.h>

#include "ProjectTerms.h"
#include "QuorvaneEditor/Host.h"
#include "TermTree.h"
#include "TextIndex.h"

namespace QuorvaneEngine {

class PluralSets;

/** A key that cannot stand where it should in a file. */
struct LayoutConflict {
    TermConflict conflict;

    /** As the project has it. */
    Containers::StringView key;

    /** The key that it is in conflict with, empty where there is none. */
    Containers::StringView other;
};

/** What an export writes into the files of one namespace, whatever the language, and where: the translatable terms in the project's
    order; plural forms that other languages need and the default one does not, which stand with their group, in the order of the
    categories where the group has it; and values that are no texts, behind all others. Each has a number, from 0 up. */
class QUORVANE_API TermLayout {
public:
    /** A key that is no term's, to be given a place. */
    struct Key {
        /** As the project has it. */
        Containers::StringView key;
        Containers::StringView fileKey;
    };

    /** All views must outlive this object.
        @param plurals  those among the file keys of the namespace's terms
        @param others   keys of translations. Those that are no forms of a translatable plural, or lie above a term, get no place, and
            those that come twice get one
        @param values   keys of values. Those that are keys of terms, or come twice, get one place
        @param conflicts    receives those that should have a place and have none */
    explicit TermLayout(const ProjectTerms& terms, UnsignedInt nameSpace, const PluralSets& plurals,
        Containers::ArrayView<const Key> others, Containers::ArrayView<const Key> values,
        std::vector<LayoutConflict>& conflicts);
    ~TermLayout();
    TermLayout(const TermLayout&) = delete;
    TermLayout& operator=(const TermLayout&) = delete;

    const TermTree& tree() const { return _tree; }

    /** How many numbers there are. */
    std::size_t size() const { return _keys.size(); }

    /** The number of a term, -1 for one that is not exported. */
    Int term(const std::size_t term) const { return term < _byTerm.size() ? _byTerm[term] : -1; }

    /** The number of a file key, -1 where it has no place.
        @param last     see @ref TextIndex::find() */
    Int find(const Containers::StringView fileKey, Int& last) const { return _keys.find(fileKey, last); }

    Containers::StringView fileKey(const std::size_t number) const { return _keys[number]; }

    /** The key with a number, as the project has it. */
    Containers::StringView key(const std::size_t number) const { return _projectKeys[number]; }

private:
    Int add(Containers::StringView key, Containers::StringView fileKey, std::vector<LayoutConflict>& conflicts);

    TermTree _tree;
    /** In files, by number. */
    TextIndex _keys;
    std::vector<Containers::StringView> _projectKeys;
    std::vector<Int> _byTerm;
};

}
