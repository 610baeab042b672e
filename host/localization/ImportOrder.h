#pragma once

#include <memory>
#include <vector>

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/StringView.h>

#include "ImportFiles.h"
#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

class ImportSources;
class ImportTerms;
class ImportTranslations;
class ProjectEdit;

/** What a project has to note of namespaces that an import brings: whether they are flat, and how their files were ordered; see
    @ref OrderNote . A language's order is noted when its first texts in a namespace come, never later. */
class QUORVANE_API ImportOrder {
public:
    /** @param root     the project's document; must outlive this object, and stay as it is
        @param terms    must outlive this object
        @param defaultLanguage  index into @ref AllLanguages */
    explicit ImportOrder(const rapidjson::Value& root, const ImportTerms& terms, UnsignedInt defaultLanguage);
    ~ImportOrder();
    ImportOrder(const ImportOrder&) = delete;
    ImportOrder& operator=(const ImportOrder&) = delete;

    /** To be called once, when all languages have been compared. All that is handed over must outlive this object.
        @param files        in the order of @ref ImportedFiles::files */
    void compare(Containers::ArrayView<const ImportedFile> files, const ImportSources& sources,
        Containers::ArrayView<const std::unique_ptr<ImportTranslations>> translations);

    bool isEmpty() const;

    /** Wants the changes of an edit; this object must outlive its push. */
    void collect(ProjectEdit& edit) const;

private:
    struct Namespace;

    struct Note {
        UnsignedInt nameSpace;
        UnsignedInt language;
        std::vector<Containers::StringView> fileKeys;
    };

    void compareNamespaces(Containers::ArrayView<const ImportedFile> files);
    /** Whether files beside those of the default namespace are exported, which is then not written by itself. */
    bool hasOthers(Containers::ArrayView<const ImportedFile> files) const;
    void compareDefault(Containers::ArrayView<const ImportedFile> files);
    std::vector<Note> compare(Containers::ArrayView<const ImportedFile> files, const ImportTranslations& translations);

    Namespace& layOut(UnsignedInt nameSpace);
    /** Numbers of what an export gives back of a file.
        @param translations     that the file was compared by; null for one of the default language */
    std::vector<UnsignedInt> exported(
        const Namespace& in, const ImportedFile& file, const ImportTranslations* translations) const;
    std::vector<bool> namespacesWithTexts(const ImportTranslations& translations) const;

    const rapidjson::Value& _root;
    const ImportTerms& _terms;
    UnsignedInt _defaultLanguage;
    const ImportSources* _sources = nullptr;
    Containers::ArrayView<const std::unique_ptr<ImportTranslations>> _translations;
    /** Those that the project had nothing of before. */
    std::vector<bool> _isNew;
    std::vector<std::unique_ptr<Namespace>> _namespaces;
    std::vector<UnsignedInt> _emptyNamespaces;
    std::vector<UnsignedInt> _changedShapes;
    std::vector<Note> _notes;
};

}
