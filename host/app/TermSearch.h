#pragma once

#include <cstddef>
#include <vector>

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"
#include "app/FuzzyPattern.h"

namespace QuorvaneEngine {

/** Finds terms of the open project by letters of their keys and of their texts in the default language, some thousand terms in each
    frame. What it knows of the terms is views into the document, which are gathered anew where the project has changed since. */
class QUORVANE_API TermSearch {
public:
    /** Views of the document, until its next change. */
    struct Found {
        Containers::StringView key;

        /** Empty where the source is gone. */
        Containers::StringView text;

        /** Where the text stands: a JSON Pointer, or the key of a member of the root. */
        Containers::StringView source;

        Int score;

        /** How many bytes the key or text has that fits. */
        std::size_t size;

        /** Place among the project's terms. */
        UnsignedInt number;
    };

    /** How many terms are found; those that fit best. */
    static constexpr std::size_t MaxCount = 50;

    /** Of a longer text the beginning is searched, in bytes. */
    static constexpr std::size_t MaxSearched = 1024;

    /** What is done in a frame, in bytes that are compared with a character: a few milliseconds. */
    static constexpr std::size_t FrameWork = 2'400'000;

    /** @param project  must outlive this object */
    explicit TermSearch(ProjectFile& project);

    /** Begins a search from the first term.
        @param search   copied; nothing but blanks finds no term */
    void start(Containers::StringView search);

    /** Goes on searching, and begins anew where the project has changed. Costs and allocates nothing where there is nothing left to
        do. Once a frame, before what is found is read.
        @return whether what is found may have changed */
    bool update();

    bool isSearching() const { return _isSearching; }

    /** What has been found so far: the best first, of equal ones that with the shorter key or text, then in the order of the project.
        Valid until the next @ref update(), and as long as the project does not change. */
    Containers::ArrayView<const Found> found() const { return {_found.data(), _found.size()}; }

private:
    struct Term {
        Containers::StringView key;
        Containers::StringView text;
    };

    const rapidjson::Value* terms() const;
    void begin();
    void learn(Containers::StringView key, const rapidjson::Value& term);
    std::size_t look(const rapidjson::Value& term);
    std::size_t rate(Containers::StringView text, Found& found);
    void add(const Found& found);

    ProjectFile* _project;
    FuzzyPattern _pattern;

    /** Of the terms that have been looked at since the project changed last. */
    std::vector<Term> _terms;
    Int _revision = -1;

    std::vector<Found> _found;
    UnsignedInt _next = 0;
    bool _isSearching = false;
};

}
