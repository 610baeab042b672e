#pragma once

#include <functional>

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/Pointer.h>
#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"
#include "TextDigest.h"

namespace QuorvaneEngine {

class LocalizationReport;
class ProjectEdit;
struct ImportedFile;
struct LanguageMapping;
struct Progress;

/** What files of terms would change in a project: first the default language is compared, which may bring terms, then the others, each
    on a thread of its own, then the order of files that are new to the project. Reads the document and no index of the project:
    may run on any thread while nobody changes the project. */
class QUORVANE_API ImportComparison {
public:
    /** @param root     the project's document; must outlive this object, and stay as it is
        @param defaultLanguage  index into @ref AllLanguages
        @param files    in the order of @ref ImportedFiles::files ; must outlive this object
        @param isConfirming see @ref ImportOptions::isConfirming */
    explicit ImportComparison(const rapidjson::Value& root, UnsignedInt defaultLanguage,
        Containers::ArrayView<const ImportedFile> files, bool isConfirming = false);
    ~ImportComparison();
    ImportComparison(const ImportComparison&) = delete;
    ImportComparison& operator=(const ImportComparison&) = delete;

    /** To be called once.
        @param report   receives what becomes of every text, the default language's first
        @param refusals receives why the project cannot take the files
        @param progress may be null
        @return whether it can; false without refusals where @p progress was cancelled */
    bool run(LocalizationReport& report, Containers::Array<Containers::String>& refusals, Progress* progress);

    /** Notices languages that the project has in another form, "de" where files bring "de-DE".
        @param map      languages that are meant as they are */
    void noticeNewLanguages(Containers::ArrayView<const LanguageMapping> map, LocalizationReport& report) const;

    /** Whether nothing would change. */
    bool isEmpty() const;

    /** See @ref Import::replaced() . */
    TextDigest replaced() const;

    /** Wants the changes of an edit; this object must outlive its push.
        @param release  called while the edit is pushed, for a language whose files are no longer needed */
    void collect(ProjectEdit& edit, const std::function<void(UnsignedInt language)>& release);

private:
    struct Data;

    Containers::Pointer<Data> _data;
};

}
