#pragma once

#include <unordered_map>
#include <vector>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/String.h>

#include "FileNotice.h"
#include "QuorvaneEditor/Host.h"
#include "Utils/StrHash.h"

namespace QuorvaneEngine {

/** Codes of files that no language has, with what they may be meant for: see @ref nearestLanguage() and, for the languages that a
    project has, @ref sameLanguage() . */
class QUORVANE_API UnknownCodes {
public:
    /** @param known    languages of the project, indices into @ref AllLanguages ; must outlive this object */
    explicit UnknownCodes(Containers::ArrayView<const UnsignedInt> known): _known{known} {}

    bool isEmpty() const { return _codes.empty(); }

    /** Forgets all codes. */
    void clear();

    /** Whether one of them may be meant for a language. */
    bool hasLanguages();

    /** The language that a code comes near to, -1 where there is none. No more than a hundred codes are looked up, as each takes its
        time, and an archive may hold thousands of names. */
    Int nearest(Containers::StringView code);

    /** @param file     relative path of a file whose texts are of that code's language */
    void add(Containers::StringView code, Containers::StringView file);

    /** Adds a notice for each code, in the order in which they came.
        @param taken    languages that other files are of, which are not suggested */
    void describe(Containers::ArrayView<const UnsignedInt> taken, Containers::Array<FileNotice>& notices);

private:
    struct Code {
        Containers::String code;
        Containers::String firstFile;
        UnsignedInt moreFiles;
    };

    Containers::ArrayView<const UnsignedInt> _known;
    std::vector<Code> _codes;
    std::unordered_map<Containers::String, std::size_t, StrHash, StrEq> _indices;
    std::unordered_map<Containers::String, Int, StrHash, StrEq> _nearest;
};

}
