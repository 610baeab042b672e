#pragma once

#include <vector>

#include <Corrade/Containers/String.h>

#include "KeptValues.h"
#include "LocalizationReport.h"
#include "QuorvaneEditor/Host.h"
#include "TermLayout.h"
#include "TextArena.h"
#include "TextDigest.h"

namespace QuorvaneEngine {

class ProjectEdit;
struct CatalogueEntry;

/** What the files of one language bring to be kept as it is; see @ref KeptValues . */
class QUORVANE_API ImportedValues {
public:
    /** @param root     must outlive this object, and stay as it is
        @param code     BCP 47; must outlive this object */
    explicit ImportedValues(const rapidjson::Value& root, const ProjectTerms& terms, Containers::StringView code);
    ~ImportedValues();
    ImportedValues(const ImportedValues&) = delete;
    ImportedValues& operator=(const ImportedValues&) = delete;

    /** Keeps a value, or a text.
        @param key      as the project has it; copied
        @param nameSpace    index among the terms' namespaces
        @param entry    must outlive this object
        @param spelling     of a number, as @ref Catalogue::spelling() has it; must outlive this object
        @return whether it is new, changed, or as it was */
    TermOutcome keep(Containers::StringView key, UnsignedInt nameSpace, const CatalogueEntry& entry,
        Containers::StringView spelling = {});

    /** Lets go of a value that the project has, where what it stood for is something else now.
        @param key  as the project has it
        @return whether there was one */
    bool drop(Containers::StringView key);

    /** Those that the project has. */
    Containers::ArrayView<const KeptValues::Entry> known() const { return _known.entries(); }

    /** Appends the keys of a namespace that are kept when the import is done. */
    void appendKeys(UnsignedInt nameSpace, std::vector<TermLayout::Key>& keys) const;

    bool isEmpty() const { return _changes.empty(); }

    /** What the project has now in the place of all that changes. */
    TextDigest replaced() const;

    /** Wants the changes of an edit; this object must outlive its push. */
    void collect(ProjectEdit& edit);

private:
    struct Change {
        Containers::StringView key;
        /** Null where nothing is kept any more. */
        const CatalogueEntry* entry;
        UnsignedInt nameSpace;
        Int position;
        /** Of a number that we would write in another way; empty for any other value. */
        Containers::StringView spelling;
    };

    Containers::StringView _code;
    KeptValues _known;
    TextArena _memory;
    std::vector<Change> _changes;
    /** Of those that the project has; empty until one is. */
    std::vector<bool> _isDropped;
};

/** What of a file is kept for one reason: a report has one notice for all of it, however much it is. */
class QUORVANE_API KeptNotice {
public:
    /** @param key      as the project has it
        @param reason   why it is kept; that of the first is told */
    void add(Containers::StringView key, Containers::StringView reason);

    /** Adds the notice, where anything is kept. */
    void report(LocalizationReport& report, UnsignedInt language, Containers::StringView file) const;

private:
    Containers::String _key, _reason;
    UnsignedInt _count = 0;
};

/** What a value is: "is a number and no text". */
QUORVANE_API Containers::StringView describeValue(const rapidjson::Value& value);

}
