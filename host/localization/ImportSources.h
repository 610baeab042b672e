#pragma once

#include <vector>

#include <Corrade/Containers/StringView.h>

#include "ImportFiles.h"
#include "ImportedValues.h"
#include "QuorvaneEditor/Host.h"
#include "TextArena.h"
#include "TextDigest.h"
#include "TextIndex.h"

namespace QuorvaneEngine {

class ImportTerms;
class LocalizationReport;
class ProjectEdit;

/** What the files of the default language bring: new terms, other source texts, and values that are kept. */
class QUORVANE_API ImportSources {
public:
    /** @param root     the project's document; must outlive this object, and stay as it is
        @param terms    receives what is new; must outlive this object
        @param language the default one, index into @ref AllLanguages */
    explicit ImportSources(const rapidjson::Value& root, ImportTerms& terms, UnsignedInt language);
    ~ImportSources();
    ImportSources(const ImportSources&) = delete;
    ImportSources& operator=(const ImportSources&) = delete;

    /** Compares a file of the default language.
        @param file     must outlive this object and @ref ImportTerms */
    void compare(const ImportedFile& file, LocalizationReport& report);

    /** Tells the terms what their texts are going to be. To be called once, behind all files. */
    void finish();

    bool isEmpty() const;

    /** What the project has now in the place of all that changes. */
    TextDigest replaced() const;

    /** Wants the changes of an edit; this object must outlive its push. */
    void collect(ProjectEdit& edit);

    const ImportedValues& values() const { return _values; }

private:
    struct Source {
        Containers::StringView sourceText;
        Containers::StringView text;
    };

    struct File;

    /** Whether the project has nothing of a namespace. */
    bool isNew(UnsignedInt nameSpace) const;

    Int findTerm(const File& file, Containers::StringView fileKey);
    void compareText(const File& file, const CatalogueEntry& entry);
    void compareValue(const File& file, const CatalogueEntry& entry);
    void changeSource(const File& file, std::size_t term, const CatalogueEntry& entry);
    void dropValues(const File& file);
    void noticeSentences(const File& file);
    void noticeHidden(const File& file);
    Containers::StringView pathOf(Containers::StringView sourceText);

    const rapidjson::Value& _root;
    ImportTerms& _terms;
    UnsignedInt _language;
    ImportedValues _values;
    TextArena _memory;
    /** Paths of sources that the files have texts for, and these texts by the paths' numbers. */
    TextIndex _paths;
    std::vector<Containers::StringView> _texts;
    /** Sources that get another text. */
    std::vector<Source> _changes;
    TextDigest _replaced;
    /** Of the terms that the project has, those that were found. */
    std::vector<bool> _isFound;
    /** Where the order of terms in a file is that of the project, the term that was found last. */
    Int _last = -1;
};

}
