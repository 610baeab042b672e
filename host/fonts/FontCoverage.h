#pragma once

#include <cstddef>
#include <vector>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"
#include "fonts/LanguageLetters.h"

namespace QuorvaneEngine {

/** Which languages of a project have texts that the fonts cannot draw. Goes through the project in steps, so that nobody waits for it. */
class QUORVANE_API FontCoverage {
public:
    /** @param drawn    letters that can be drawn; ASCII always can. Must outlive this object */
    explicit FontCoverage(const LetterSet& drawn): _drawn{&drawn} {}

    /** Takes other languages, and begins with all of them. What was found of a language stays until it has been looked at.
        @param languages    indices into @ref AllLanguages ; the texts of a default language are the source texts of the terms */
    void restart(Containers::ArrayView<const UnsignedInt> languages);

    /** Looks at all texts of a language once more, after what is being looked at. Does nothing for a language that was not given. */
    void touch(UnsignedInt language);

    /** Touches the languages that the project marks as default. */
    void touchSources(ProjectFile& project);

    /** Takes one more text of a language into account, at once. Letters that texts do not have any more are only forgotten by
        @ref touch() .
        @return whether the language looked well before */
    bool add(UnsignedInt language, Containers::StringView text);

    bool isFinished() const { return !_isRunning && _touchedCount == 0; }

    /** Goes on. A project that has changed in between may need @ref touch() .
        @param bytes    of texts to look at in this step, each text counting some more; the last one is looked at to its end */
    void advance(ProjectFile& project, std::size_t bytes);

    /** Of each language, in the order in which they were given. */
    Containers::ArrayView<const LanguageLetters> languages() const { return {_found.data(), _found.size()}; }

    /** Counts what may have changed @ref languages() . */
    UnsignedInt revision() const { return _revision; }

    /** The members of the project's root that the source texts are below, as far as they were met. */
    Containers::ArrayView<const Containers::String> sourceMembers() const {
        return {_sourceMembers.data(), _sourceMembers.size()};
    }

private:
    std::size_t find(UnsignedInt language) const;
    bool beginNext();
    void learnSourceMember(Containers::StringView sourceText);

    const LetterSet* _drawn;
    std::vector<LanguageLetters> _found;
    /** One for each language, and how many are set. */
    std::vector<bool> _touched;
    std::size_t _touchedCount = 0;
    /** The language that is looked at, its place in @ref _found , and the position of a text in it. */
    bool _isRunning = false;
    LanguageLetters _running;
    std::size_t _place = 0;
    std::size_t _text = 0;
    UnsignedInt _revision = 0;
    std::vector<Containers::String> _sourceMembers;
};

/** The letters of languages at once, on all cores. May run on any thread while nobody changes the project.
    @param root             the project's document, of any content
    @param languages        indices into @ref AllLanguages
    @param defaultLanguage  whose texts are the source texts of the terms
    @param drawn            letters that can be drawn; ASCII always can
    @return for each of @p languages its own, in their order */
QUORVANE_API Containers::Array<LanguageLetters> lettersOf(const rapidjson::Value& root,
    Containers::ArrayView<const UnsignedInt> languages, UnsignedInt defaultLanguage, const LetterSet& drawn);

}
