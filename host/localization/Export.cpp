#include "Export.h"

#include <cerrno>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Utility/Format.h>
#include <Corrade/Utility/Path.h>
#include <rapidjson/document.h>

#include "../document/FileSystem.h"
#include "../document/FolderLock.h"
#include "../document/JsonReader.h"
#include "ArchiveReader.h"
#include "ArchiveWriter.h"
#include "Catalogue.h"
#include "I18NextReader.h"
#include "I18NextWriter.h"
#include "LocalizationReport.h"
#include "ProjectTerms.h"
#include "QuorvaneEditor/AllLanguages.h"
#include "StagedFiles.h"
#include "TermConflicts.h"
#include "TermFilePath.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

namespace Path = Corrade::Utility::Path;

/** What stands in the place of a text. */
Containers::StringView reasonOf(const rapidjson::Value& value) {
    return value.IsNumber() ? "is a number and no text"_s
        : value.IsBool()    ? "is true or false and no text"_s
        : value.IsArray()   ? "is an empty array"_s
                            : "is an empty object"_s;
}

/** Terms as they are exported to every language. */
struct Exported {
    ProjectTerms terms;
    /** Indices of those that have a place in the files. They are in the project's order, but those that lie in one object of the
        files together: so the order does not depend on which terms a language has. */
    std::vector<std::size_t> indices;

    Exported(ProjectFile& project, LocalizationReport& report): terms{project} {
        TermTree tree;
        for(std::size_t i = 0; i != terms.terms().size(); ++i) {
            if(!terms.terms()[i].isTranslatable) continue;
            Int other = -1;
            const TermConflict conflict = tree.insert(terms.canonicalKey(i), Int(i), other);
            if(conflict != TermConflict::None)
                report.add(LocalizationReport::NoLanguage, TermOutcome::Skipped, terms.terms()[i].key,
                    describe(conflict, other < 0 ? ""_s : terms.terms()[std::size_t(other)].key));
        }
        collect(tree, TermTree::Root);
    }

    // As deep as keys have segments, which the tree limits.
    void collect(const TermTree& tree, const UnsignedInt node) {
        if(tree.node(node).term != -1) indices.push_back(std::size_t(tree.node(node).term));
        for(UnsignedInt i = tree.node(node).firstChild; i != TermTree::None; i = tree.node(i).next) collect(tree, i);
    }
};

/** The file as it was, empty where there is none. False where it is there and cannot be read. */
using ReadExisting = std::function<bool(const Containers::String& path, Containers::String& bytes)>;

class Exporting {
public:
    Exporting(const Export& request, LocalizationReport& report)
        : _request{request}, _report{report}, _exported{request.project, report} {}

    /** The files that every language gives, and whether each differs from the existing one. */
    bool make(const ReadExisting& readExisting) {
        for(const UnsignedInt language: _request.languages) {
            if(language >= LanguageCount) continue;
            StagedFile file;
            file.path = TermFilePath::make(AllLanguages[language].code, DefaultNamespace);
            if(has(file.path)) continue;
            Containers::String existing;
            if(!readExisting(file.path, existing)) return false;
            _report.addLanguage(language);
            file.bytes = text(language, existing);
            isChanged.push_back(file.bytes != existing);
            Containers::arrayAppend(files, std::move(file));
        }
        return true;
    }

    bool has(const Containers::StringView path) const {
        for(const StagedFile& file: files)
            if(file.path == path) return true;
        return false;
    }

    Containers::Array<StagedFile> files;
    std::vector<bool> isChanged;

private:
    Containers::String text(const UnsignedInt language, const Containers::StringView existingBytes) {
        Catalogue existing;
        const bool hasOrder = !existingBytes.isEmpty() && readOrder(language, existingBytes, existing);

        Catalogue catalogue;
        const bool isDefault = language == _request.defaultLanguage;
        rapidjson::Value* const translations =
            isDefault ? nullptr : translationsOf(_request.project, AllLanguages[language].code);
        for(const std::size_t i: _exported.indices) {
            const ProjectTerm& term = _exported.terms.terms()[i];
            if(isDefault && !term.source.data())
                _report.add(language, TermOutcome::Skipped, term.key, "its source is gone"_s);
            const Containers::StringView text =
                isDefault ? term.source : translatedText(_request.project, translations, term.key);
            if(!text.isEmpty()) catalogue.add(_exported.terms.canonicalKey(i), text);
        }
        compare(language, catalogue, existing);

        TermTree tree;
        std::vector<Containers::StringView> texts;
        for(const CatalogueEntry& entry: catalogue.entries()) {
            Int other = -1;
            tree.insert(entry.key, Int(texts.size()), other);
            texts.push_back(entry.text);
        }
        return writeI18Next(tree, {{texts.data(), texts.size()}, {}}, hasOrder ? &existing : nullptr);
    }

    bool readOrder(const UnsignedInt language, const Containers::StringView bytes, Catalogue& existing) {
        JsonError error;
        if(readI18Next(Containers::String{bytes}, existing, error)) {
            for(const CatalogueEntry& entry: existing.entries())
                if(entry.value)
                    _report.add(language, TermOutcome::Skipped, entry.key,
                        Corrade::Utility::format("{}, and is no longer in the file", reasonOf(*entry.value)));
            return true;
        }
        _report.add(language, TermOutcome::Skipped, {},
            Corrade::Utility::format("the file that was there is replaced, its order is lost: {}:{}: {}", error.line,
                error.column, error.reason));
        existing = Catalogue{};
        return false;
    }

    void compare(const UnsignedInt language, const Catalogue& catalogue, const Catalogue& existing) {
        for(const CatalogueEntry& entry: catalogue.entries()) {
            const Int before = existing.find(entry.key);
            _report.add(language,
                before == -1                                                     ? TermOutcome::Added
                    : existing.entries()[std::size_t(before)].text == entry.text ? TermOutcome::Unchanged
                                                                                 : TermOutcome::Changed,
                entry.key);
        }
        for(const CatalogueEntry& entry: existing.entries())
            if(!entry.text.isEmpty() && _exported.terms.find(entry.key) == -1)
                _report.add(language, TermOutcome::Skipped, entry.key,
                    "no term has this key, and it is no longer in the file"_s);
    }

    const Export& _request;
    LocalizationReport& _report;
    Exported _exported;
};

bool fail(FileError& error, const Containers::StringView path, const Containers::StringView reason) {
    error.path = path;
    error.reason = reason;
    return false;
}

}

bool Export::toFolder(const Containers::StringView path, LocalizationReport& report, FileError& error) const {
    FolderLock lock;
    if(!lockExport(fileSystem, folderName(path), lock, error) || !finishStaged(fileSystem, folderName(path), error))
        return false;
    Exporting exporting{*this, report};
    const bool isMade = exporting.make([&](const Containers::String& name, Containers::String& bytes) {
        const Containers::String file = Path::join(path, name);
        const int result = fileSystem.readFile(file, bytes);
        if(result == EISDIR) return fail(error, file, "is a folder where a file is needed"_s);
        // What is a file instead of a folder is said when the folder is made.
        return result == 0 || result == ENOENT || result == ENOTDIR ||
            fail(error, file, systemReason("read"_s, result));
    });
    if(!isMade) return false;

    Containers::Array<StagedFile> changed;
    for(std::size_t i = 0; i != exporting.files.size(); ++i)
        if(exporting.isChanged[i]) Containers::arrayAppend(changed, std::move(exporting.files[i]));
    return putInPlace(fileSystem, folderName(path), changed, lock, error);
}

bool Export::toArchive(const Containers::StringView path, LocalizationReport& report, FileError& error) const {
    Containers::String target{path};
    Containers::Array<Containers::String> names;
    if(fileSystem.listFolder(path, names) == 0 || path.hasSuffix('/')) target = Path::join(path, "localization.zip"_s);

    Containers::String existing;
    const int result = fileSystem.readFile(target, existing);
    if(result == EISDIR) return fail(error, target, "is a folder where a file is needed"_s);
    // What is a file instead of a folder is said when the folder is made.
    if(result != 0 && result != ENOENT && result != ENOTDIR) return fail(error, target, systemReason("read"_s, result));
    ArchiveReader archive;
    ArchiveRefusal refusal;
    const bool isArchive = result == 0 && archive.open(existing, refusal);
    if(result == 0 && !isArchive) return fail(error, target, "is a file, but no ZIP archive that could be replaced"_s);

    Exporting exporting{*this, report};
    const bool isMade = exporting.make([&](const Containers::String& name, Containers::String& bytes) {
        for(std::size_t i = 0; isArchive && i != archive.entries().size(); ++i)
            if(archive.entries()[i].name == name && !archive.read(i, bytes, refusal))
                return fail(error, target, Corrade::Utility::format("{}: {}", refusal.entry, refusal.reason));
        return true;
    });
    if(!isMade) return false;
    for(const ArchiveDirectory::Entry& entry: archive.entries())
        if(isArchive && !entry.name.isEmpty() && !exporting.has(entry.name))
            report.add(LocalizationReport::NoLanguage, TermOutcome::Skipped, {},
                Corrade::Utility::format("{}: is no longer in the archive", entry.name));
    StagedFile file;
    Containers::String reason;
    if(!writeArchive(exporting.files, file.bytes, reason)) return fail(error, target, reason);
    if(file.bytes == existing) return true;
    file.path = Path::filename(target);
    FolderLock lock;
    return putInPlace(fileSystem, Path::path(target), Containers::arrayView(&file, 1), lock, error);
}

}
