#pragma once

#include <unordered_map>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"
#include "Utils/StrHash.h"

namespace QuorvaneEngine {

/** A term as it stands in the project. Views are of the project document. */
struct ProjectTerm {
    /** As the project has it. */
    Containers::StringView key;

    /** Where its text comes from; empty where the project does not say. */
    Containers::StringView sourceText;

    /** Its text in the default language; null data where the source is gone. */
    Containers::StringView source;

    bool isTranslatable = false;
};

/** The terms of a project, in its order, found by the key under which they are exchanged. Valid until the next change. */
class QUORVANE_API ProjectTerms {
public:
    explicit ProjectTerms(ProjectFile& project);
    ~ProjectTerms();
    ProjectTerms(const ProjectTerms&) = delete;
    ProjectTerms& operator=(const ProjectTerms&) = delete;

    Containers::ArrayView<const ProjectTerm> terms() const { return _terms; }

    /** The key of a term in exchanged files; see @ref TermKey::canonical() . */
    Containers::StringView canonicalKey(std::size_t term) const;

    /** The term that is exchanged under a canonical key, the first one where several would be; -1 where there is none. */
    Int find(Containers::StringView canonicalKey) const;

private:
    Containers::Array<ProjectTerm> _terms;
    /** Of the terms whose key in the project is not canonical; nodes, so that views stay valid. */
    std::unordered_map<std::size_t, Containers::String> _canonicalKeys;
    std::unordered_map<Containers::StringView, Int, StrHash, StrEq> _indices;
};

/** The text of a term in a language, of `/localization/translations/<code>`; empty where it has none.
    @param translations     that object, or null or any other value */
QUORVANE_API Containers::StringView translatedText(
    ProjectFile& project, rapidjson::Value* translations, Containers::StringView term);

/** `/localization/translations/<code>`, or null. */
QUORVANE_API rapidjson::Value* translationsOf(ProjectFile& project, Containers::StringView code);

}
