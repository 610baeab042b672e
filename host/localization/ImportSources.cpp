#include "ImportSources.h"

#include <algorithm>

#include <Corrade/Utility/Format.h>
#include <rapidjson/document.h>

#include "../document/PathTokens.h"
#include "DocumentLookup.h"
#include "ImportTerms.h"
#include "LocalizationReport.h"
#include "ProjectEdit.h"
#include "QuorvaneEditor/AllLanguages.h"
#include "TermKey.h"
#include "TermSource.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;
using Corrade::Utility::format;

namespace {

constexpr Containers::StringView StringsPath = "/localization/strings/"_s;

/** Whether a key reads like a sentence, whose "." and ":" the i18next library would take for separators. */
bool readsLikeSentence(const Containers::StringView fileKey) {
    return fileKey.contains("%3A "_s) || fileKey.contains("%2E "_s) || fileKey.hasSuffix("%3A"_s) ||
        fileKey.hasSuffix("%2E"_s);
}

/** Whether a file says what its namespace is like: without texts an export of it is an empty object, which has no shape. */
bool hasTexts(const Catalogue& catalogue) {
    return std::any_of(catalogue.entries().begin(), catalogue.entries().end(),
        [](const CatalogueEntry& entry) { return entry.value || !entry.text.isEmpty(); });
}

void writeText(rapidjson::Document& out, const Containers::StringView text) {
    out.String(text.isEmpty() ? "" : text.data(), rapidjson::SizeType(text.size()), true);
}

/** A text below "/localization/strings". */
struct StringChange {
    Containers::StringView key;
    Containers::StringView text;
    Int position;
};

}

struct ImportSources::File {
    const ImportedFile& file;
    UnsignedInt nameSpace;
    LocalizationReport& report;
    KeptNotice& kept;

    void add(const UnsignedInt language, const TermOutcome outcome, const Containers::StringView key,
        const Containers::StringView reason = {}) const {
        report.add(language, outcome, key, reason, file.path);
    }
};

ImportSources::ImportSources(const rapidjson::Value& root, ImportTerms& terms, const UnsignedInt language)
    : _root{root},
      _terms{terms},
      _language{language},
      _values{root, terms.terms(), AllLanguages[language].code},
      _isFound(terms.knownCount()) {}

ImportSources::~ImportSources() = default;

void ImportSources::compare(const ImportedFile& imported, LocalizationReport& report) {
    KeptNotice kept;
    const File file{imported, _terms.addNamespace(imported.nameSpace), report, kept};
    if(isNew(file.nameSpace) && hasTexts(imported.catalogue)) {
        _terms.setFlat(file.nameSpace, imported.catalogue.isFlat());
        // It may be a copy that somebody has put aside, which only people can tell. In a project without terms all are new.
        if(_terms.knownCount() != 0)
            file.add(_language, TermOutcome::Notice, {}, format("the namespace {} is new", imported.nameSpace));
    }
    noticeSentences(file);
    noticeHidden(file);
    _last = -1;
    for(const CatalogueEntry& entry: imported.catalogue.entries()) {
        if(entry.value) compareValue(file, entry);
        else compareText(file, entry);
    }
    kept.report(report, _language, imported.path);
    dropValues(file);
}

void ImportSources::dropValues(const File& file) {
    for(const KeptValues::Entry& entry: _values.known()) {
        if(entry.place.nameSpace != Int(file.nameSpace)) continue;
        const Int found = file.file.catalogue.find(entry.place.fileKey);
        if(found != -1 && file.file.catalogue.entries()[std::size_t(found)].value) continue;
        if(!_terms.givesPlace(file.nameSpace, entry.place.fileKey) || !_values.drop(entry.key)) continue;
        _terms.dropValue(_terms.key(file.nameSpace, entry.place.fileKey));
        file.add(_language, TermOutcome::Notice, entry.key,
            "was no text, and gives its place to what the file has there now"_s);
    }
}

bool ImportSources::isNew(const UnsignedInt nameSpace) const {
    const auto values = _values.known();
    return _terms.terms().fileKeys(nameSpace).isEmpty() &&
        std::none_of(values.begin(), values.end(),
            [nameSpace](const KeptValues::Entry& value) { return value.place.nameSpace == Int(nameSpace); });
}

Int ImportSources::findTerm(const File& file, const Containers::StringView fileKey) {
    // What is new has one shape, that of the file. A known term that the file has in two shapes is found once.
    const Int term = _terms.find(file.nameSpace, fileKey, _last);
    if(term == -1 || std::size_t(term) >= _terms.knownCount() || _isFound[std::size_t(term)]) return -1;
    // The library takes the key itself before one of another shape.
    const Containers::StringView own = _terms.terms().terms()[std::size_t(term)].fileKey;
    if(own != fileKey && file.file.catalogue.find(own) != -1) return -1;
    _isFound[std::size_t(term)] = true;
    return term;
}

void ImportSources::compareText(const File& file, const CatalogueEntry& entry) {
    const Int term = findTerm(file, entry.key);
    if(term != -1 && !entry.text.isEmpty()) return changeSource(file, std::size_t(term), entry);
    const Containers::String key = term == -1 ? _terms.key(file.nameSpace, entry.key)
                                              : Containers::String{_terms.terms().terms()[std::size_t(term)].key};
    Containers::String reason;
    if(entry.text.isEmpty()) file.add(_language, TermOutcome::Empty, key);
    else if(_terms.addTerm(file.nameSpace, entry.key, entry.text, reason)) file.add(_language, TermOutcome::Added, key);
    else file.report.addConflict(_language, key, reason, file.file.path);
}

void ImportSources::compareValue(const File& file, const CatalogueEntry& entry) {
    const Int term = findTerm(file, entry.key);
    if(term != -1) {
        file.add(_language, TermOutcome::Skipped, _terms.terms().terms()[std::size_t(term)].key,
            format("{}, and the project has a term here", describeValue(*entry.value)));
        return;
    }
    const Containers::String key = _terms.key(file.nameSpace, entry.key);
    Containers::String reason;
    if(!_terms.addValue(file.nameSpace, entry.key, reason))
        return file.report.addConflict(_language, key, reason, file.file.path);
    const TermOutcome outcome = _values.keep(key, file.nameSpace, entry, file.file.catalogue.spelling(entry));
    file.add(_language, outcome, key);
    if(outcome != TermOutcome::Unchanged) file.kept.add(key, describeValue(*entry.value));
}

void ImportSources::changeSource(const File& file, const std::size_t index, const CatalogueEntry& entry) {
    const ProjectTerm& term = _terms.terms().terms()[index];
    const auto add = [&](const TermOutcome outcome, const Containers::StringView reason = {}) {
        file.add(_language, outcome, term.key, reason);
    };
    if(!term.isTranslatable) return add(TermOutcome::Skipped, "is not translatable"_s);
    if(!term.source.data())
        return add(TermOutcome::Skipped,
            term.sourceText.isEmpty() ? Containers::String{"has no source"_s}
                                      : format("its source {} is gone", term.sourceText));
    const UnsignedInt path = _paths.add(pathOf(term.sourceText));
    const bool isNew = path == _texts.size();
    if(isNew) _texts.push_back(entry.text);
    if(_texts[path] != entry.text)
        return add(TermOutcome::Skipped,
            format("shares its source {} with another term, which has another text", term.sourceText));
    if(term.source == entry.text) return add(TermOutcome::Unchanged);
    if(isNew) {
        _changes.push_back({term.sourceText, entry.text});
        _replaced.add(term.source);
    }
    add(TermOutcome::Changed);
    file.report.addTexts(term.source, entry.text);
}

void ImportSources::noticeSentences(const File& file) {
    std::size_t count = 0;
    const CatalogueEntry* first = nullptr;
    for(const CatalogueEntry& entry: file.file.catalogue.entries())
        if(readsLikeSentence(entry.key) && ++count == 1) first = &entry;
    if(count == 0) return;
    const Containers::StringView reason =
        "reads like a sentence: only an application that switches both separators off is sure to find it"_s;
    file.add(_language, TermOutcome::Notice, _terms.key(file.nameSpace, first->key),
        count == 1 ? Containers::String{reason} : format("{}, and {} more like it", reason, count - 1));
}

void ImportSources::noticeHidden(const File& file) {
    for(const CatalogueEntry& entry: file.file.catalogue.entries()) {
        if(!entry.key.contains("%2E"_s)) continue;
        const Containers::String other = _terms.otherShape(file.nameSpace, entry.key);
        if(!other.isEmpty() && file.file.catalogue.find(other) != -1)
            file.add(_language, TermOutcome::Notice, _terms.key(file.nameSpace, entry.key),
                format("the i18next library finds {} in its place", _terms.key(file.nameSpace, other)));
    }
}

Containers::StringView ImportSources::pathOf(const Containers::StringView sourceText) {
    return sourceText.hasPrefix('/') ? sourceText : _memory.add(TermSource::path(sourceText));
}

void ImportSources::finish() {
    if(!_changes.empty())
        for(std::size_t i = 0; i != _terms.knownCount(); ++i) {
            const ProjectTerm& term = _terms.terms().terms()[i];
            const Int path = term.source.data() ? _paths.find(pathOf(term.sourceText)) : -1;
            if(path != -1) _terms.setSource(i, _texts[std::size_t(path)]);
        }
    _terms.finish();
}

TextDigest ImportSources::replaced() const {
    TextDigest all = _replaced;
    all.add(_values.replaced());
    return all;
}

bool ImportSources::isEmpty() const {
    return _changes.empty() && _values.isEmpty() && _terms.knownCount() == _terms.terms().terms().size();
}

void ImportSources::collect(ProjectEdit& edit) {
    const ProjectTerms& terms = _terms.terms();
    const std::size_t first = _terms.knownCount();
    for(std::size_t i = first; i != terms.terms().size(); ++i) _terms.keep(i, edit);
    edit.setMembers({"localization"_s, "terms"_s},
        {terms.terms().size() - first, [this, first](const std::size_t i) { return _terms.keptKey(first + i); },
            [](std::size_t) { return -1; },
            [&terms, first](const std::size_t i, rapidjson::Document& out) {
                out.StartObject();
                out.Key("sourceText", 10, true);
                writeText(out, TermSource::stringsPath(terms.terms()[first + i].key));
                out.Key("translatable", 12, true);
                out.Bool(true);
                out.EndObject(2);
            }});

    // Texts that belong to no object lie side by side.
    TextIndex strings;
    const rapidjson::Value* const known = memberOf(memberOf(&_root, "localization"_s), "strings"_s);
    if(known && known->IsObject())
        for(const auto& member: known->GetObject())
            strings.add({member.name.GetString(), member.name.GetStringLength()});
    std::vector<StringChange> changes;
    for(const Source& change: _changes) {
        PathTokens tokens{change.sourceText};
        Containers::StringView token;
        const bool isString = change.sourceText.hasPrefix(StringsPath) && tokens.next(token) && tokens.next(token) &&
            tokens.next(token) && strings.find(token) != -1;
        const Int position = isString ? strings.find(token) : -1;
        if(isString && !tokens.next(token))
            changes.push_back({edit.keep(strings[std::size_t(position)]), change.text, position});
        else edit.replace(TermSource::path(change.sourceText), edit.text(change.text));
    }
    for(std::size_t i = first; i != terms.terms().size(); ++i) {
        const ProjectTerm& term = terms.terms()[i];
        changes.push_back({_terms.keptKey(i), term.source, strings.find(term.key)});
    }
    const std::size_t count = changes.size();
    const auto shared = std::make_shared<const std::vector<StringChange>>(std::move(changes));
    edit.setMembers({"localization"_s, "strings"_s},
        {count, [shared](const std::size_t i) { return (*shared)[i].key; },
            [shared](const std::size_t i) { return (*shared)[i].position; },
            [shared](const std::size_t i, rapidjson::Document& out) { writeText(out, (*shared)[i].text); }});
    _values.collect(edit);
}

}
