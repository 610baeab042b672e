#pragma once

#include <vector>

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/StringView.h>

#include "ProjectTerms.h"
#include "QuorvaneEditor/Host.h"
#include "TextArena.h"

namespace QuorvaneEngine {

/** What `/localization/translations/<code>` has for a key. Views are of the document. */
struct QUORVANE_API ProjectTranslation {
    /** Of any type; null where there is none. */
    const rapidjson::Value* value = nullptr;

    /** Among the members of the language, -1 where there is none. */
    Int position = -1;

    /** Empty where the term is not translated. */
    Containers::StringView text() const { return parts().text; }

    struct Parts {
        /** Empty where the term is not translated. */
        Containers::StringView text;

        /** The fingerprint of the source text that it is a translation of; empty where nobody has said that. */
        Containers::StringView source;
    };

    /** Both, in one pass. */
    Parts parts() const;
};

/** What a project has in one language beside the default one, found by the numbers of its terms, in time that is proportional to
    its translations. Valid until the next change. Reads the document and no index of the project. */
class QUORVANE_API ProjectTranslations {
public:
    /** A translation under a key that no term has: a plural form that only this language needs, for one. */
    struct Other {
        Containers::StringView key;
        TermPlace place;
        ProjectTranslation translation;
    };

    /** @param code     BCP 47 */
    explicit ProjectTranslations(const rapidjson::Value& root, const ProjectTerms& terms, Containers::StringView code);
    ~ProjectTranslations();
    ProjectTranslations(const ProjectTranslations&) = delete;
    ProjectTranslations& operator=(const ProjectTranslations&) = delete;
    ProjectTranslations(ProjectTranslations&&) noexcept;
    ProjectTranslations& operator=(ProjectTranslations&&) noexcept;

    /** @param term     index into the terms; one that was added to them later has none */
    ProjectTranslation operator[](const std::size_t term) const {
        return term < _byTerm.size() ? _byTerm[term] : ProjectTranslation{};
    }

    /** Forgets all of them. */
    void clear();

    /** In the project's order, those in namespaces that are known. */
    Containers::ArrayView<const Other> others() const { return {_others.data(), _others.size()}; }

    /** Of these, the one with a key, -1 where there is none. */
    Int findOther(Containers::StringView key) const;

private:
    TextArena _memory;
    std::vector<ProjectTranslation> _byTerm;
    std::vector<Other> _others;
    TextIndex _otherKeys;
};

}
