#pragma once

#include <vector>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"
#include "TextArena.h"
#include "TextIndex.h"

namespace QuorvaneEngine {

/** A term as it stands in the project. Views are of the project document, or of the @ref ProjectTerms that hands it out. */
struct ProjectTerm {
    /** As the project has it. */
    Containers::StringView key;

    /** Index into @ref ProjectTerms::namespaces() . */
    UnsignedInt nameSpace = 0;

    /** Canonical key in the files of its namespace; see @ref TermKey . */
    Containers::StringView fileKey;

    /** Where its text comes from; empty where the project does not say. */
    Containers::StringView sourceText;

    /** Its text in the default language; null data where the source is gone. */
    Containers::StringView source;

    bool isTranslatable = false;
};

/** A namespace of terms: a file for each language. */
struct TermNamespace {
    /** As files are called. */
    Containers::StringView name;

    /** Whether all texts are members of the root. */
    bool isFlat = false;

    /** What the project notes of the order in files, of any type; null for nothing. See @ref OrderNote . */
    const rapidjson::Value* order = nullptr;

    /** Whether the project speaks of the namespace itself, with or without terms. */
    bool isNoted = false;
};

/** A place in an exchanged file. */
struct TermPlace {
    /** Index into @ref ProjectTerms::namespaces() , -1 for one that is not there. */
    Int nameSpace;

    /** Canonical key in the file. */
    Containers::StringView fileKey;
};

/** The terms of a project, in its order, found by their keys in the project and in files. Valid until the next change; while nobody
    adds to it, any number of threads may read it. */
class QUORVANE_API ProjectTerms {
public:
    explicit ProjectTerms(ProjectFile& project);

    /** Reads the document and no index of the project: may run on any thread while nobody changes the project. */
    explicit ProjectTerms(const rapidjson::Value& root);
    ~ProjectTerms();
    ProjectTerms(const ProjectTerms&) = delete;
    ProjectTerms& operator=(const ProjectTerms&) = delete;

    Containers::ArrayView<const ProjectTerm> terms() const { return {_terms.data(), _terms.size()}; }

    /** The default namespace first, also where it has no term; then those of terms, of notes, and of values that are no texts. */
    Containers::ArrayView<const TermNamespace> namespaces() const { return {_namespaces.data(), _namespaces.size()}; }

    /** The namespace with a plain name, -1 where there is none. */
    Int findNamespace(Containers::StringView name) const { return _namespaceNames.find(name); }

    /** The term with this key in the project, -1 where there is none.
        @param last     see @ref TextIndex::find() */
    Int findKey(Containers::StringView key, Int& last) const { return _keys.find(key, last); }

    /** The term that is exchanged under a file key, the first one that is translatable where several would be, or the first one;
        -1 where there is none.
        @param last     see @ref TextIndex::find() */
    Int find(UnsignedInt nameSpace, Containers::StringView fileKey, Int& last) const;
    Int find(UnsignedInt nameSpace, Containers::StringView fileKey) const;

    /** The file keys of a namespace's terms, each once, in the order of the terms. */
    Containers::ArrayView<const Containers::StringView> fileKeys(const UnsignedInt nameSpace) const {
        return _indices[nameSpace].fileKeys.texts();
    }

    /** The term that @ref find() answers for one of @ref fileKeys() . */
    UnsignedInt termAt(const UnsignedInt nameSpace, const std::size_t fileKey) const {
        return _indices[nameSpace].terms[fileKey];
    }

    /** Where a key of the project has its place in files.
        @param memory   receives the file key where it is written in another way than the key */
    TermPlace place(Containers::StringView key, TextArena& memory) const;

    /** The key that a new term has in the project.
        @param fileKey  canonical; of one segment where the namespace is flat */
    Containers::StringView projectKey(UnsignedInt nameSpace, Containers::StringView fileKey, TextArena& memory) const;

    /** Adds a namespace that the project does not have.
        @param name     copied */
    UnsignedInt addNamespace(Containers::StringView name, bool isFlat);

    /** Says of a namespace that has no terms whether it is flat. */
    void setFlat(UnsignedInt nameSpace, bool isFlat) { _namespaces[nameSpace].isFlat = isFlat; }

    /** Tells what a term's text is going to be.
        @param source   must outlive this object */
    void setSource(std::size_t term, Containers::StringView source) { _terms[term].source = source; }

    /** Adds a translatable term that the project does not have, behind all others.
        @param fileKey  canonical, must outlive this object, as @p source must
        @return its index */
    UnsignedInt addTerm(UnsignedInt nameSpace, Containers::StringView fileKey, Containers::StringView source);

private:
    /** Terms by their file keys in one namespace. */
    struct Index {
        TextIndex fileKeys;
        /** By number of the file key. */
        std::vector<UnsignedInt> terms;
    };

    void readNamespaces(const rapidjson::Value* localization);
    void readTerms(const rapidjson::Value& root, const rapidjson::Value* localization);
    void noteNamespace(Containers::StringView key);
    void add(const ProjectTerm& term);

    TextArena _memory;
    std::vector<ProjectTerm> _terms;
    std::vector<TermNamespace> _namespaces;
    TextIndex _namespaceNames;
    TextIndex _keys;
    /** By namespace. */
    std::vector<Index> _indices;
};

}
