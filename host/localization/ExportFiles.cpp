#include "ExportFiles.h"

#include <algorithm>
#include <string>
#include <utility>

#include <Corrade/Containers/Optional.h>
#include <Corrade/Utility/Format.h>
#include <rapidjson/document.h>

#include "../document/JsonReader.h"
#include "../document/JsonText.h"
#include "Catalogue.h"
#include "ExportTexts.h"
#include "I18NextReader.h"
#include "I18NextWriter.h"
#include "KeptValues.h"
#include "LocalizationReport.h"
#include "OrderNote.h"
#include "Parallel.h"
#include "Progress.h"
#include "PseudoLocale.h"
#include "QuorvaneEditor/AllLanguages.h"
#include "TermConflicts.h"
#include "TermFilePath.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;
using Corrade::Utility::format;

namespace {

/** As a file has it. */
std::string printed(const rapidjson::Value& kept) {
    const Containers::StringView spelling = spellingOf(kept);
    std::string text{spelling.data(), spelling.size()};
    if(text.empty()) appendJson(text, kept);
    return text;
}

std::string printed(const CatalogueEntry& entry, const Catalogue& catalogue) {
    const Containers::StringView spelling = catalogue.spelling(entry);
    std::string text{spelling.data(), spelling.size()};
    if(!text.empty()) return text;
    if(entry.value) appendJson(text, *entry.value);
    else appendJsonString(text, {entry.text.data(), entry.text.size()});
    return text;
}

/** The files of one language. */
class LanguageExport {
public:
    /** @param files    those of the language, with the bytes that are there already */
    LanguageExport(const ExportTexts& texts, const UnsignedInt language, const UnsignedInt defaultLanguage,
        const Containers::ArrayView<ExportFile> files, LocalizationReport& report)
        : _texts{texts}, _language{language}, _defaultLanguage{defaultLanguage}, _files{files}, _report{report} {}

    void make() {
        _report.addLanguage(_language);
        const std::vector<ExportTexts::File> texts = _texts.files(_language);
        for(std::size_t i = 0; i != texts.size(); ++i) {
            make(texts[i], _files[i]);
            _report.addStale(_language, texts[i].staleCount);
        }
        if(_language == _defaultLanguage) reportSources();
        for(const Containers::StringView key: _texts.keysWithoutPlace(_language))
            _report.add(
                _language, TermOutcome::Skipped, key, "the default language has neither a text nor a value here"_s);
    }

    /** Writes the default language's files in the pseudo-locale. */
    void makePseudo() {
        std::vector<ExportTexts::File> texts = _texts.files(_defaultLanguage);
        for(std::size_t i = 0; i != texts.size(); ++i) {
            std::vector<Containers::String> pseudo;
            pseudo.reserve(texts[i].texts.size());
            std::size_t count = 0;
            for(Containers::StringView& text: texts[i].texts) {
                pseudo.push_back(PseudoLocale::text(text));
                count += !text.isEmpty();
                text = pseudo.back();
            }
            Catalogue catalogue;
            replace(texts[i], _files[i], catalogue);
            _report.add(LocalizationReport::NoLanguage, TermOutcome::Notice, {},
                format("has {} texts in a made-up language", count), _files[i].path);
        }
    }

private:
    void make(const ExportTexts::File& texts, ExportFile& file) {
        Catalogue existing;
        const bool isThere = !file.bytes.isEmpty();
        if(!replace(texts, file, existing)) {
            for(const Containers::StringView text: texts.texts)
                if(!text.isEmpty()) _report.add(_language, TermOutcome::Unchanged, {});
            for(const rapidjson::Value* const value: texts.values)
                if(value) _report.add(_language, TermOutcome::Unchanged, {});
        } else if(file.refusal.path.isEmpty()) {
            const bool isSame = compare(texts, existing, file.path);
            if(isSame && isThere && file.isChanged)
                _report.add(
                    _language, TermOutcome::Notice, {}, "holds the same as before, and is laid out anew"_s, file.path);
        }
    }

    /** Puts texts in the place of what a file holds, in the order that it has.
        @param existing     must be empty; receives what the file holds
        @return false, with nothing received, where the file holds just that, in the project's order */
    bool replace(const ExportTexts::File& texts, ExportFile& file, Catalogue& existing) const {
        const Containers::String before = std::move(file.bytes);
        file.bytes = write(texts, nullptr);
        file.isChanged = file.bytes != before;
        if(!file.isChanged || before.isEmpty()) return file.isChanged;
        JsonError error;
        if(!readI18Next(before, existing, error)) {
            file.refusal = {format("{}:{}:{}", file.path, error.line, error.column), error.reason};
            return true;
        }
        file.bytes = write(texts, &existing);
        file.isChanged = file.bytes != before;
        return true;
    }

    /** @param existing     the file that is there already; null for none, or where its order is that of the project */
    Containers::String write(const ExportTexts::File& file, const Catalogue* const existing) const {
        const TermTexts texts{{file.texts.data(), file.texts.size()}, {file.values.data(), file.values.size()}};
        const TermTree& tree = _texts.layout(file.nameSpace).tree();
        if(existing) return writeI18Next(tree, texts, existing);
        const rapidjson::Value* const notes = _texts.terms().namespaces()[file.nameSpace].order;
        Containers::Optional<Catalogue> order = OrderNote::read(notes, AllLanguages[_language].code);
        if(!order) order = OrderNote::read(notes, AllLanguages[_defaultLanguage].code);
        return writeI18Next(tree, texts, order ? &*order : nullptr);
    }

    /** @return whether the file holds the same as before */
    bool compare(const ExportTexts::File& file, const Catalogue& existing, const Containers::StringView path) {
        const TermLayout& layout = _texts.layout(file.nameSpace);
        // Numbers of the texts that are there; the order of both is the same, more often than not.
        std::vector<const CatalogueEntry*> before(file.texts.size());
        bool isAllSame = true;
        Int last = -1;
        for(const CatalogueEntry& entry: existing.entries()) {
            const Int number = layout.find(entry.key, last);
            const bool isWritten = number != -1 &&
                (!file.texts[std::size_t(number)].isEmpty() ||
                    (std::size_t(number) < file.values.size() && file.values[std::size_t(number)]));
            if(isWritten) before[std::size_t(number)] = &entry;
            else if(entry.value || !entry.text.isEmpty()) {
                reportLoss(file.nameSpace, entry, number, path);
                isAllSame = false;
            }
        }
        for(std::size_t i = 0; i != file.texts.size(); ++i) {
            if(file.texts[i].isEmpty()) continue;
            const bool isAdded = !before[i] || before[i]->value || before[i]->text.isEmpty();
            const bool isSame = !isAdded && before[i]->text == file.texts[i];
            _report.add(_language,
                isAdded      ? TermOutcome::Added
                    : isSame ? TermOutcome::Unchanged
                             : TermOutcome::Changed,
                layout.key(i), {}, path);
            if(!isAdded && !isSame) _report.addTexts(before[i]->text, file.texts[i]);
            isAllSame = isAllSame && isSame;
        }
        for(std::size_t i = 0; i != file.values.size(); ++i)
            if(file.values[i] && !compareValue(*file.values[i], layout.key(i), before[i], existing, path))
                isAllSame = false;
        return isAllSame;
    }

    /** @param before   what the file has in the place of the value, may be null
        @return whether that is the same */
    bool compareValue(const rapidjson::Value& value, const Containers::StringView key,
        const CatalogueEntry* const before, const Catalogue& existing, const Containers::StringView path) {
        const bool isAdded = !before || (!before->value && before->text.isEmpty());
        const std::string after = printed(value);
        const std::string found = isAdded ? std::string{} : printed(*before, existing);
        const bool isSame = !isAdded && found == after;
        _report.add(_language,
            isAdded      ? TermOutcome::Added
                : isSame ? TermOutcome::Unchanged
                         : TermOutcome::Changed,
            key, {}, path);
        if(!isAdded && !isSame) _report.addTexts({found.data(), found.size()}, {after.data(), after.size()});
        return isSame;
    }

    void reportLoss(
        const UnsignedInt nameSpace, const CatalogueEntry& entry, const Int number, const Containers::StringView path) {
        const ProjectTerms& terms = _texts.terms();
        TextArena memory;
        const Int term = terms.find(nameSpace, entry.key);
        const Containers::StringView reason = number != -1 ? "the project has no text here"_s
            : term == -1                                   ? "no term has this key"_s
                                                           : "is not translatable"_s;
        _report.add(_language, TermOutcome::Skipped, terms.projectKey(nameSpace, entry.key, memory),
            format("{}, and it is no longer in the file", reason), path);
    }

    void reportSources() {
        const ProjectTerms& terms = _texts.terms();
        for(std::size_t i = 0; i != terms.terms().size(); ++i) {
            const ProjectTerm& term = terms.terms()[i];
            if(!term.source.data() && _texts.layout(term.nameSpace).term(i) != -1)
                _report.add(_language, TermOutcome::Skipped, term.key, "its source is gone"_s);
        }
    }

    const ExportTexts& _texts;
    UnsignedInt _language;
    UnsignedInt _defaultLanguage;
    Containers::ArrayView<ExportFile> _files;
    LocalizationReport& _report;
};

}

bool makeExportFiles(const rapidjson::Value& root, const UnsignedInt defaultLanguage,
    const Containers::ArrayView<const UnsignedInt> languages, const bool isPseudo, const ReadExportFile& read,
    std::vector<ExportFile>& files, LocalizationReport& report, Progress* const progress) {
    std::vector<UnsignedInt> known;
    for(const UnsignedInt language: languages)
        if(language < LanguageCount && std::find(known.begin(), known.end(), language) == known.end())
            known.push_back(language);
    const ExportTexts texts{root, defaultLanguage, {known.data(), known.size()}};
    for(const LayoutConflict& conflict: texts.conflicts())
        report.addConflict(LocalizationReport::NoLanguage, conflict.key, describe(conflict.conflict, conflict.other));

    std::vector<Containers::StringView> codes;
    codes.reserve(known.size() + 1);
    for(const UnsignedInt language: known) codes.push_back(AllLanguages[language].code);
    if(isPseudo) codes.emplace_back(PseudoLocale::Code);
    const std::size_t count = texts.namespaces().size();
    std::vector<bool> isWritten;
    for(const Containers::StringView code: codes)
        for(const UnsignedInt nameSpace: texts.namespaces()) {
            ExportFile file;
            file.path = TermFilePath::make(code, texts.terms().namespaces()[nameSpace].name);
            if(!read(file.path, file.bytes)) return false;
            isWritten.push_back(!texts.isHidden(nameSpace) || !file.bytes.isEmpty());
            files.push_back(std::move(file));
        }

    std::vector<LocalizationReport> reports(codes.size());
    for(LocalizationReport& one: reports) one.keepTexts(report.keepsTexts());
    const bool isDone = forEachInParallel(
        codes.size(),
        [&](const std::size_t i) {
            const bool isLanguage = i != known.size();
            LanguageExport language{texts, isLanguage ? known[i] : defaultLanguage, defaultLanguage,
                Containers::ArrayView<ExportFile>{files.data() + i * count, count}, reports[i]};
            if(isLanguage) language.make();
            else language.makePseudo();
        },
        progress);
    for(LocalizationReport& one: reports) report.append(std::move(one));
    std::vector<ExportFile> written;
    for(std::size_t i = 0; i != files.size(); ++i)
        if(isWritten[i]) written.push_back(std::move(files[i]));
    files = std::move(written);
    return isDone;
}

}
