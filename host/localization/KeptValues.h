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

    /** Reads the document and no index of the project. Values in namespaces that are not known are passed over, and null has
        no entry: an import sets it where nothing is kept any more, as a member that is taken out would come back last when that is undone.
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

    /** The place of a key of the project among the members of the language, also where null tells that nothing is kept there any
        more; -1 where there is no such member. */
    Int position(Containers::StringView key) const;

private:
    TextArena _memory;
    std::vector<Entry> _entries;
    TextIndex _keys;
    /** Members that are null, and their places. */
    TextIndex _emptyKeys;
    std::vector<Int> _emptyPositions;
};

/** The digits of a number that a file writes in another way than we would, such as "1.50": it is kept as an object with the one member
    "number". Empty for any other value. */
QUORVANE_API Containers::StringView spellingOf(const rapidjson::Value& kept);

/** Whether two values are of the same type and the same bytes in a file. Containers are compared by type alone.
    @param a    a text, a number, a bool or an empty container, as @p b is */
QUORVANE_API bool isSameValue(const rapidjson::Value& a, const rapidjson::Value& b);

}
