#pragma once

#include <vector>

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/StringView.h>

#include "ProjectTerms.h"
#include "QuorvaneEditor/Host.h"
#include "TextArena.h"

namespace QuorvaneEngine {

/** What the files of a language hold that is no text, or stands where the default language has no text: the project keeps it in
    `/localization/values/<code>/<key>` and gives it back as it is. It is no term: nobody sees, translates or counts it. */
class QUORVANE_API KeptValues {
public:
    struct Entry {
        /** As the project has it. */
        Containers::StringView key;
        TermPlace place;
        /** In the document; never null. */
        const rapidjson::Value* value;
        /** Among the members of the language. */
        Int position;
    };

    /** Reads the document and no index of the project. Values in namespaces that are not known, and null, are passed over.
        @param code     BCP 47 */
    explicit KeptValues(const rapidjson::Value& root, const ProjectTerms& terms, Containers::StringView code);
    ~KeptValues();
    KeptValues(const KeptValues&) = delete;
    KeptValues& operator=(const KeptValues&) = delete;
    KeptValues(KeptValues&&) noexcept;
    KeptValues& operator=(KeptValues&&) noexcept;

    /** In the project's order. */
    Containers::ArrayView<const Entry> entries() const { return {_entries.data(), _entries.size()}; }

    /** The entry with a key of the project, -1 where there is none. */
    Int find(Containers::StringView key) const { return _keys.find(key); }

private:
    TextArena _memory;
    std::vector<Entry> _entries;
    TextIndex _keys;
};

/** The digits of a number that a file writes in another way than we would, such as "1.50": it is kept as an object with the one member
    "number". Empty for any other value. */
QUORVANE_API Containers::StringView spellingOf(const rapidjson::Value& kept);

/** Whether two values are of the same type and the same bytes in a file. Containers are compared by type alone.
    @param a    a text, a number, a bool or an empty container, as @p b is */
QUORVANE_API bool isSameValue(const rapidjson::Value& a, const rapidjson::Value& b);

}
