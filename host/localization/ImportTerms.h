#pragma once

#include <memory>
#include <vector>

#include <Corrade/Containers/Optional.h>
#include <Corrade/Containers/String.h>

#include "PluralSets.h"
#include "ProjectTerms.h"
#include "QuorvaneEditor/Host.h"
#include "TermTree.h"
#include "TextArena.h"
#include "TextIndex.h"

namespace QuorvaneEngine {

class ProjectEdit;

/** The terms of a project as an import meets them, with those that it brings itself. First the default language adds what it
    has; after @ref finish() any number of threads may ask for the other languages. */
class QUORVANE_API ImportTerms {
public:
    /** @param defaultLanguage  index into @ref AllLanguages */
    explicit ImportTerms(const rapidjson::Value& root, UnsignedInt defaultLanguage);
    ~ImportTerms();
    ImportTerms(const ImportTerms&) = delete;
    ImportTerms& operator=(const ImportTerms&) = delete;

    const ProjectTerms& terms() const { return _terms; }

    /** How many of the terms the project has; those behind come with the import. */
    std::size_t knownCount() const { return _knownCount; }

    /** A namespace by its plain name, which is added where the project does not have it. */
    UnsignedInt addNamespace(Containers::StringView name) { return _terms.addNamespace(name, false); }

    /** Says of a namespace without terms whether it is flat. */
    void setFlat(const UnsignedInt nameSpace, const bool isFlat) { _terms.setFlat(nameSpace, isFlat); }

    /** Adds a term.
        @param fileKey  must outlive this object, as @p source must
        @param reason   receives the end of a sentence where the key has no place beside the others
        @return whether it was added */
    bool addTerm(UnsignedInt nameSpace, Containers::StringView fileKey, Containers::StringView source,
        Containers::String& reason);

    /** Adds the key of a value that the default language has; see @ref addTerm() . */
    bool addValue(UnsignedInt nameSpace, Containers::StringView fileKey, Containers::String& reason);

    /** Tells what a term's text is going to be. */
    void setSource(const std::size_t term, const Containers::StringView source) { _terms.setSource(term, source); }

    /** Nothing is added any more. */
    void finish();

    /** The term that a key of a file means, -1 where there is none. Where the default language has neither a term nor a value under the
        key itself it is the one that the i18next library would take, which looks for "a.b" as the member "b" of "a" and as the
        member "a.b".
        @param last     see @ref TextIndex::find() */
    Int find(UnsignedInt nameSpace, Containers::StringView fileKey, Int& last) const;

    /** The other shape of a key that the i18next library takes for the same, "a%2Eb" for "a.b" or the other way round; empty where
        there is none. */
    Containers::String otherShape(UnsignedInt nameSpace, Containers::StringView fileKey) const;

    /** The key that a term or value at a place in files has in the project. */
    Containers::String key(UnsignedInt nameSpace, Containers::StringView fileKey) const;

    /** Whether the default language has a term or a value in a namespace. After @ref finish() . */
    bool hasNamespace(const UnsignedInt nameSpace) const {
        return !_terms.fileKeys(nameSpace).isEmpty() || (nameSpace < _values.size() && !_values[nameSpace].empty());
    }

    UnsignedInt defaultLanguage() const { return _defaultLanguage; }

    /** Whether the default language has a value under a key of the project. */
    bool hasValue(Containers::StringView key) const;

    /** Forgets the value that the default language had under a key. */
    void dropValue(Containers::StringView key);

    /** Whether an import has changed what the kept values of other languages stand for: there are new terms, or values were dropped. */
    bool hasNewPlaces() const { return _terms.terms().size() != _knownCount || !_isValueDropped.empty(); }

    /** Whether the default language had a value under a key of the project that was dropped. */
    bool isDropped(Containers::StringView key) const;

    /** Whether a key has no place in a file beside terms and values that were added, or is the key of one. */
    bool givesPlace(UnsignedInt nameSpace, Containers::StringView fileKey) const;

    /** Whether a key that no term has would have a place in a file beside the terms and the values of the default language; such a value
        may stand there. After @ref finish() . */
    bool hasPlace(UnsignedInt nameSpace, Containers::StringView fileKey) const;

    /** Why no term has a key: the end of a sentence. After @ref finish() .
        @param isConflict   receives whether it has no place beside the keys of terms */
    Containers::String reasonForNone(UnsignedInt nameSpace, Containers::StringView fileKey, bool& isConflict) const;

    /** The plurals that the default language proves. */
    const PluralSets& plurals(UnsignedInt nameSpace) const;

    /** The fingerprint of a term's text as it is going to be; empty where it has none. After @ref finish() . */
    Containers::StringView fingerprint(const std::size_t term) const { return _fingerprints[term]; }

    /** Keeps the key and the fingerprint of a term in the project's memory, once for all languages; to be called on one thread. */
    void keep(std::size_t term, ProjectEdit& edit);

    /** What @ref keep() kept. */
    Containers::StringView keptKey(const std::size_t term) const { return _kept[term].key; }
    Containers::StringView keptFingerprint(const std::size_t term) const { return _kept[term].fingerprint; }

private:
    struct Namespace;

    struct Kept {
        Containers::StringView key;
        Containers::StringView fingerprint;
    };

    /** A value of the default language, by its number among @ref _valueKeys . */
    struct Value {
        UnsignedInt number;
        Containers::StringView fileKey;
    };

    /** Translations of one namespace that no term has, when they are asked for first. */
    struct Others {
        TextIndex fileKeys;
        Containers::Optional<PluralSets> plurals;
    };

    void addValueKey(UnsignedInt nameSpace, Containers::StringView key, Containers::StringView fileKey);
    Namespace& withTree(UnsignedInt nameSpace) const;
    void insertValues(UnsignedInt nameSpace, Namespace& in) const;
    Containers::StringView formAbove(UnsignedInt nameSpace, Containers::StringView fileKey);
    void readOthers();
    bool insert(
        UnsignedInt nameSpace, Containers::StringView key, Containers::StringView fileKey, Containers::String& reason);

    const rapidjson::Value& _root;
    UnsignedInt _defaultLanguage;
    ProjectTerms _terms;
    std::size_t _knownCount;
    TextArena _memory;
    TextIndex _valueKeys;
    /** By namespace. */
    std::vector<std::vector<Value>> _values;
    /** Of @ref _valueKeys , as far as the last one. */
    std::vector<bool> _isValueDropped;
    /** By namespace; empty until they are asked for first. */
    std::vector<Others> _others;
    bool _isFinished = false;
    std::vector<Containers::StringView> _fingerprints;
    /** By terms; empty before the first. */
    std::vector<Kept> _kept;
    /** What is made when it is asked for first. */
    mutable std::vector<std::unique_ptr<Namespace>> _namespaces;
};

}
