#pragma once

#include <vector>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/StringView.h>

#include "FileNotice.h"
#include "LanguageMapping.h"
#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Of which languages files of terms were found, those among them that nobody asked for, and what mappings were good for. */
class QUORVANE_API FoundLanguages {
public:
    /** @param map      must outlive this object, as must @p languages
        @param languages    indices into @ref AllLanguages of those that are asked for; empty for all */
    explicit FoundLanguages(
        Containers::ArrayView<const LanguageMapping> map, Containers::ArrayView<const UnsignedInt> languages)
        : _map{map}, _languages{languages}, _isMapped(map.size()) {}

    /** Asked before the table of languages. */
    Containers::ArrayView<const LanguageMapping> map() const { return _map; }

    /** The language of a folder or file, an index into @ref AllLanguages ; -1 for a code that neither the map nor the table has. */
    Int find(Containers::StringView code) const;

    bool isAskedFor(UnsignedInt language) const;

    /** Holds that there is a file of a language.
        @param code     what the file or its folder is called; is known */
    void add(Containers::StringView code, UnsignedInt language);

    /** Those that were added and are not asked for, each once, in the order in which they came. */
    Containers::ArrayView<const UnsignedInt> others() const { return {_others.data(), _others.size()}; }

    /** Adds a notice for every mapping of a code that was not added.
        @return whether there is one */
    bool noticeUnusedMappings(Containers::Array<FileNotice>& notices) const;

private:
    Containers::ArrayView<const LanguageMapping> _map;
    Containers::ArrayView<const UnsignedInt> _languages;
    /** By mapping. */
    std::vector<bool> _isMapped;
    std::vector<UnsignedInt> _others;
};

}
