#pragma once

#include <map>
#include <vector>

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/StringView.h>

#include "../document/HashIndex.h"
#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Numbers different texts from 0 up, in the order in which they come, and finds the number of a text. While nobody adds, any number
    of threads may ask. Takes time in proportion to the texts, also where they were made to share their hashes. */
class QUORVANE_API TextIndex {
public:
    TextIndex();
    ~TextIndex();
    TextIndex(const TextIndex&) = delete;
    TextIndex& operator=(const TextIndex&) = delete;
    TextIndex(TextIndex&&) noexcept;
    TextIndex& operator=(TextIndex&&) noexcept;

    /** @param count    of texts that will come */
    void reserve(std::size_t count);

    /** The number of a text: a new one where it is not there yet, which is then what @ref size() was.
        @param text     must outlive the index */
    UnsignedInt add(Containers::StringView text);

    /** The number of a text, -1 where it is not there. */
    Int find(Containers::StringView text) const;

    /** The same, faster for texts that are asked for in the order in which they were added.
        @param last     what was found before, -1 in the beginning; becomes what is found, and stays where nothing is */
    Int find(Containers::StringView text, Int& last) const;

    /** By number. */
    Containers::ArrayView<const Containers::StringView> texts() const { return {_texts.data(), _texts.size()}; }

    Containers::StringView operator[](std::size_t number) const { return _texts[number]; }
    std::size_t size() const { return _texts.size(); }

private:
    std::vector<Containers::StringView> _texts;
    HashIndex _index;
    /** Those for which the index has no room, by malice. */
    std::map<Containers::StringView, Int> _crowded;
};

}
