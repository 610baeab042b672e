#pragma once

#include <deque>
#include <functional>
#include <unordered_set>
#include <vector>

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/StringView.h>

#include "ImportFiles.h"
#include "ImportedValues.h"
#include "LocalizationReport.h"
#include "PluralRules.h"
#include "ProjectTranslations.h"
#include "QuorvaneEditor/Host.h"
#include "TextArena.h"
#include "TextDigest.h"
#include "TextIndex.h"

namespace QuorvaneEngine {

class ImportTerms;
class ProjectEdit;

/** What the files of a language beside the default one bring: translations, plural forms that the default language does not have,
    and values that are kept. Each language may be compared on a thread of its own. */
class QUORVANE_API ImportTranslations {
public:
    /** @param root     the project's document; must outlive this object, and stay as it is
        @param terms    finished; must outlive this object
        @param kept     all of them, as the report has kept them to which that of this language will be appended; @ref compare()
            needs it
        @param language index into @ref AllLanguages
        @param isConfirming see @ref ImportOptions::isConfirming */
    explicit ImportTranslations(const rapidjson::Value& root, const ImportTerms& terms,
        Containers::ArrayView<const LocalizationReport::KeptTerm> kept, UnsignedInt language,
        bool isConfirming = false);
    ~ImportTranslations();
    ImportTranslations(const ImportTranslations&) = delete;
    ImportTranslations& operator=(const ImportTranslations&) = delete;

    /** Compares a file of the language.
        @param file     must outlive this object */
    void compare(const ImportedFile& file, LocalizationReport& report);

    /** Looks at what the project keeps of the language under keys that the default language has something else under now. To be called
        once, behind all files. */
    void finish(LocalizationReport& report);

    bool isEmpty() const { return _changes.empty() && _values.isEmpty(); }

    /** What the project has now in the place of all that changes, and the source texts of that. */
    TextDigest replaced() const;

    /** Wants the changes of an edit; this object must outlive its push.
        @param terms    those that this object has
        @param release  called when the files that were compared are no longer needed; not called where values of theirs are kept */
    void collect(ProjectEdit& edit, ImportTerms& terms, std::function<void()>&& release);

    UnsignedInt language() const { return _language; }
    /** Appends the plural forms of a namespace that are no terms. */
    void appendForms(UnsignedInt nameSpace, std::vector<TermLayout::Key>& forms) const;

    /** Whether a text or value of a file that was compared is not taken over. */
    bool isSkipped(const CatalogueEntry& entry) const { return _skipped.contains(&entry); }

    const ProjectTranslations& known() const { return _known; }
    const ImportedValues& values() const { return _values; }

private:
    /** There are as many as texts in the files. */
    struct Change {
        const CatalogueEntry* entry;
        /** Index of the term, or into the forms behind the terms. */
        UnsignedInt target;
    };

    /** A plural form that is no term. */
    struct Form {
        Containers::StringView key;
        TermPlace place;
        /** The term whose text it is a translation of. */
        std::size_t source;
        ProjectTranslation known;
    };

    struct File;

    void takeKept(const KeptValues::Entry& kept, std::size_t term, LocalizationReport& report);
    void leaveKept(const KeptValues::Entry& kept, LocalizationReport& report);
    void readFound();
    void skipFile(const File& file);
    void compareText(const File& file, const CatalogueEntry& entry);
    void compareValue(const File& file, const CatalogueEntry& entry);
    bool isSecond(const File& file, const CatalogueEntry& entry, std::size_t term) const;
    void keep(const File& file, const CatalogueEntry& entry, Containers::StringView key, KeptNotice& notice,
        Containers::StringView reason);
    bool hasForm(const File& file, const CatalogueEntry& entry, Containers::StringView key) const;
    bool compareForm(const File& file, const CatalogueEntry& entry, Containers::StringView key);
    void translate(const File& file, const CatalogueEntry& entry, std::size_t target);
    void skip(const File& file, const CatalogueEntry& entry, Containers::StringView key, Containers::StringView reason);
    void skipUnknown(
        const File& file, const CatalogueEntry& entry, Containers::StringView key, Containers::StringView beginning);

    Containers::StringView key(std::size_t target) const;
    ProjectTranslation known(std::size_t target) const;
    std::size_t sourceOf(std::size_t target) const;
    bool isStale(std::size_t target) const;
    void make(const Change& change, rapidjson::Document& out) const;

    const ImportTerms& _terms;
    Containers::ArrayView<const LocalizationReport::KeptTerm> _kept;
    UnsignedInt _language;
    bool _isConfirming;
    PluralCategories _categories[2];
    ProjectTranslations _known;
    ImportedValues _values;
    TextArena _memory;
    std::vector<Change> _changes;
    TextDigest _replaced;
    std::vector<Form> _forms;
    std::vector<bool> _isFound;
    /** Of values that the files have. */
    TextIndex _keptKeys;
    std::unordered_set<const CatalogueEntry*> _skipped;
    /** Texts that were kept and are translations now; stay where they are. */
    std::deque<CatalogueEntry> _takenKept;
    /** By namespace, the places of what the files have that is taken over; empty until they are asked for first. */
    std::vector<TermTree> _found;
    /** Where the order of terms in a file is that of the project, the term that was found last. */
    Int _last = -1;
};

}
