#pragma once

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

class Catalogue;
class TermTree;

/** What one language has for the terms of a @ref TermTree , by the numbers that the tree has for them. */
struct TermTexts {
    /** Empty for a term without text. Has as many elements as the highest number requires. */
    Containers::ArrayView<const Containers::StringView> texts;

    /** What stands in the place of a text, null for a text; numbers beyond the view have none, so it may be empty. A value counts
        before a text. */
    Containers::ArrayView<const rapidjson::Value* const> values;
};

/** Writes one file of i18next JSON v4: UTF-8 without byte order mark, nested by two spaces, LF, one final newline, characters as
    they are but for control characters. Terms with neither text nor value are left out, and branches that hold nothing with
    them; elements missing from an array before its last one are null. May run on several threads with one tree.

    Numbers are written as @ref spellingOf() has them, or else in the fewest digits that read back as the same; where @p order has the same number at the same place, they
    are written as they are there.
    @param tree     holds every key that any language has
    @param order    the file as it stands, whose order is kept: what is new there comes after its nearest neighbour in the tree
        before it. Entries need no text, and may be leaf and branch at once. Null for the tree's own order. */
QUORVANE_API Containers::String writeI18Next(const TermTree& tree, const TermTexts& texts, const Catalogue* order);

}
