#pragma once

#include <memory>
#include <vector>

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/String.h>

#include "KeptValues.h"
#include "PluralSets.h"
#include "ProjectTerms.h"
#include "ProjectTranslations.h"
#include "QuorvaneEditor/Host.h"
#include "TermLayout.h"

namespace QuorvaneEngine {

/** What a project writes into exchanged files: the places, which all languages share, are found once, and then each language gives
    its texts. Reads the document and no index of the project. Valid until the next change; any number of threads may ask. */
class QUORVANE_API ExportTexts {
public:
    /** The texts and values of one file, by their numbers in its layout. */
    struct File {
        UnsignedInt nameSpace;
        std::vector<Containers::StringView> texts;
        std::vector<const rapidjson::Value*> values;

        /** How many of the texts are not translations of today's source texts. */
        UnsignedInt staleCount = 0;
    };

    /** @param root     the project's document
        @param languages    those that will be asked for, indices into @ref AllLanguages */
    explicit ExportTexts(
        const rapidjson::Value& root, UnsignedInt defaultLanguage, Containers::ArrayView<const UnsignedInt> languages);
    ~ExportTexts();
    ExportTexts(const ExportTexts&) = delete;
    ExportTexts& operator=(const ExportTexts&) = delete;

    const ProjectTerms& terms() const { return _terms; }

    /** Those that have files: each that has terms or something else to write, or that the project speaks of; the default one where
        there is none. */
    Containers::ArrayView<const UnsignedInt> namespaces() const { return {_exported.data(), _exported.size()}; }

    /** Whether a namespace has terms, but none that is translatable: a file that is there already loses them, and no other is made.
        Some namespace is not hidden. */
    bool isHidden(const UnsignedInt nameSpace) const { return _isHidden[nameSpace]; }

    const TermLayout& layout(const UnsignedInt nameSpace) const { return *_layouts[nameSpace]; }

    /** Keys that have no place in their files. */
    Containers::ArrayView<const LayoutConflict> conflicts() const { return {_conflicts.data(), _conflicts.size()}; }

    /** Keys of what the project keeps of a language that is in no file: the default language has neither a text nor a value there. */
    Containers::ArrayView<const Containers::StringView> keysWithoutPlace(UnsignedInt language) const;

    /** The files of a language, one for each of @ref namespaces() . A term that has a text does not give its place to a value. */
    std::vector<File> files(UnsignedInt language) const;

private:
    struct Language {
        UnsignedInt language;
        std::unique_ptr<ProjectTranslations> translations;
        std::unique_ptr<KeptValues> values;
        std::vector<Containers::StringView> withoutPlace;
    };

    const Language* find(UnsignedInt language) const;
    void readFingerprints();
    bool isStale(const ProjectTranslation::Parts& translation, std::size_t source) const;
    bool isStale(const ProjectTranslations::Other& form) const;

    UnsignedInt _defaultLanguage;
    ProjectTerms _terms;
    struct Fingerprint {
        /** Zeros where the term has no text. */
        char digits[16]{};
    };

    /** Of the terms' source texts; none where the default language alone is asked for. */
    std::vector<Fingerprint> _fingerprints;
    std::vector<Language> _languages;
    /** By namespace. */
    std::vector<std::unique_ptr<PluralSets>> _plurals;
    std::vector<std::unique_ptr<TermLayout>> _layouts;
    std::vector<UnsignedInt> _exported;
    /** By namespace. */
    std::vector<bool> _isHidden;
    std::vector<LayoutConflict> _conflicts;
};

}
