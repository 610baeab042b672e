#include "ImportTranslations.h"

#include <cstring>
#include <utility>

#include <Corrade/Containers/String.h>
#include <Corrade/Utility/Format.h>
#include <rapidjson/document.h>

#include "DocumentLookup.h"
#include "I18NextVersion3.h"
#include "ImportTerms.h"
#include "LocalizationReport.h"
#include "PluralSets.h"
#include "ProjectEdit.h"
#include "QuorvaneEditor/AllLanguages.h"
#include "TermFilePath.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;
using Corrade::Utility::format;

namespace {

constexpr Containers::StringView SecondTime = "stands in the file a second time, with dots in a name"_s;

}

struct ImportTranslations::File {
    /** Keys that no term has, as version 3 of the format names plural forms. */
    struct OldForms {
        Containers::String first;
        UnsignedInt count = 0;
    };

    const ImportedFile& file;
    UnsignedInt nameSpace;
    LocalizationReport& report;
    KeptNotice& values;
    KeptNotice& texts;
    OldForms& oldForms;

    void add(
        const TermOutcome outcome, const Containers::StringView key, const Containers::StringView reason = {}) const {
        report.add(file.language, outcome, key, reason, file.path);
    }
};

ImportTranslations::ImportTranslations(const rapidjson::Value& root, const ImportTerms& terms,
    const Containers::ArrayView<const LocalizationReport::KeptTerm> kept, const UnsignedInt language,
    const bool isConfirming)
    : _terms{terms},
      _kept{kept},
      _language{language},
      _isConfirming{isConfirming},
      _categories{pluralCategories(AllLanguages[language].code, PluralKind::Cardinal),
          pluralCategories(AllLanguages[language].code, PluralKind::Ordinal)},
      _known{root, terms.terms(), AllLanguages[language].code},
      _values{root, terms.terms(), AllLanguages[language].code},
      _isFound(terms.terms().terms().size()) {}

ImportTranslations::~ImportTranslations() = default;

void ImportTranslations::compare(const ImportedFile& imported, LocalizationReport& report) {
    KeptNotice values;
    KeptNotice texts;
    File::OldForms oldForms;
    const File file{
        imported, UnsignedInt(_terms.terms().findNamespace(imported.nameSpace)), report, values, texts, oldForms};
    if(!_terms.hasNamespace(file.nameSpace)) return skipFile(file);
    _last = -1;
    _changes.reserve(_changes.size() + imported.catalogue.entries().size());
    for(const CatalogueEntry& entry: imported.catalogue.entries()) {
        if(entry.value) compareValue(file, entry);
        else compareText(file, entry);
    }
    values.report(report, _language, imported.path);
    texts.report(report, _language, imported.path);
    report.addAll(_language, TermOutcome::Skipped, oldForms.count, oldForms.first,
        oldForms.count == 1
            ? Containers::String{"no term has this key"_s}
            : format("no term has this key, nor those of {} more plural forms of version 3 of the format",
                  oldForms.count - 1),
        imported.path);
}

/** Skips all texts of a namespace that the default language does not have: it is one file that is missing, and not so many terms. */
void ImportTranslations::skipFile(const File& file) {
    UnsignedInt count = 0;
    for(const CatalogueEntry& entry: file.file.catalogue.entries()) {
        if(!entry.value && entry.text.isEmpty()) {
            file.add(TermOutcome::Empty, {});
            continue;
        }
        _skipped.insert(&entry);
        ++count;
    }
    file.report.addAll(_language, TermOutcome::Skipped, count, {},
        format("the project has nothing of the default language's {}, so {} skipped",
            TermFilePath::make(AllLanguages[_terms.defaultLanguage()].code, file.file.nameSpace),
            count == 1 ? Containers::String{"this text is"_s} : format("all {} texts are", count)),
        file.file.path);
}

void ImportTranslations::finish(LocalizationReport& report) {
    for(const KeptValues::Entry& kept: _values.known()) {
        const UnsignedInt nameSpace = UnsignedInt(kept.place.nameSpace);
        const Int term = _terms.terms().find(nameSpace, kept.place.fileKey);
        if(term != -1) takeKept(kept, std::size_t(term), report);
        else if(!_terms.hasValue(_terms.key(nameSpace, kept.place.fileKey))) leaveKept(kept, report);
    }
}

/** Makes a text that was kept a translation, where the default language has a text now. */
void ImportTranslations::takeKept(const KeptValues::Entry& kept, const std::size_t term, LocalizationReport& report) {
    const bool isNew = term >= _terms.knownCount();
    if(!isNew || !kept.value->IsString() || _isFound[term] || _keptKeys.find(kept.key) != -1 ||
        !_known[term].text().isEmpty())
        return;
    const Containers::StringView text{kept.value->GetString(), kept.value->GetStringLength()};
    if(text.isEmpty() || !_values.drop(kept.key)) return;
    _takenKept.push_back({kept.place.fileKey, text, nullptr});
    _changes.push_back({&_takenKept.back(), UnsignedInt(term)});
    _replaced.add(_terms.fingerprint(term));
    report.addLanguage(_language);
    report.add(_language, TermOutcome::Added, key(term), "was kept while the default language had no text here"_s);
}

/** Tells of what is kept where the default language has nothing any more, and lets go of it where a file has something else there. */
void ImportTranslations::leaveKept(const KeptValues::Entry& kept, LocalizationReport& report) {
    if(_found.empty()) readFound();
    const UnsignedInt nameSpace = UnsignedInt(kept.place.nameSpace);
    Int other = -1;
    const TermConflict conflict = _found[nameSpace].check(kept.place.fileKey, other);
    if(conflict == TermConflict::LeafAndBranch || conflict == TermConflict::MemberAndElement) {
        if(_values.drop(kept.key))
            report.add(_language, TermOutcome::Notice, kept.key,
                "was kept, and gives its place to what the file has there now"_s);
    } else if(_terms.isDropped(_terms.key(nameSpace, kept.place.fileKey))) {
        report.addLanguage(_language);
        report.add(_language, TermOutcome::Notice, kept.key,
            "is kept, and in no file: the default language has something else there now"_s);
    }
}

void ImportTranslations::readFound() {
    _found = std::vector<TermTree>(_terms.terms().namespaces().size());
    Int other = -1;
    for(std::size_t i = 0; i != _isFound.size(); ++i) {
        const ProjectTerm& term = _terms.terms().terms()[i];
        if(_isFound[i]) _found[term.nameSpace].insert(term.fileKey, 0, other);
    }
    for(const Containers::StringView key: _keptKeys.texts()) {
        const TermPlace place = _terms.terms().place(key, _memory);
        if(place.nameSpace != -1) _found[std::size_t(place.nameSpace)].insert(place.fileKey, 0, other);
    }
}

void ImportTranslations::compareText(const File& file, const CatalogueEntry& entry) {
    const Int found = _terms.find(file.nameSpace, entry.key, _last);
    if(found == -1) {
        const Containers::String key = _terms.key(file.nameSpace, entry.key);
        if(entry.text.isEmpty()) file.add(TermOutcome::Empty, key);
        else if(_terms.hasValue(key) && !hasForm(file, entry, key))
            keep(file, entry, key, file.texts, "stands where the default language has no text"_s);
        else if(!compareForm(file, entry, key)) skipUnknown(file, entry, key, {});
        return;
    }
    const ProjectTerm& term = _terms.terms().terms()[std::size_t(found)];
    if(entry.text.isEmpty()) file.add(TermOutcome::Empty, term.key);
    else if(!term.isTranslatable) skip(file, entry, term.key, "is not translatable"_s);
    else if(isSecond(file, entry, std::size_t(found))) skip(file, entry, term.key, SecondTime);
    else {
        _isFound[std::size_t(found)] = true;
        translate(file, entry, std::size_t(found));
    }
}

void ImportTranslations::compareValue(const File& file, const CatalogueEntry& entry) {
    const Containers::StringView what = describeValue(*entry.value);
    const Int found = _terms.find(file.nameSpace, entry.key, _last);
    if(found == -1) {
        const Containers::String key = _terms.key(file.nameSpace, entry.key);
        if(!_terms.hasValue(key)) return skipUnknown(file, entry, key, format("{}, and ", what));
        if(hasForm(file, entry, key)) return skip(file, entry, key, format("{}, and the term has a translation", what));
        return keep(file, entry, key, file.values, what);
    }
    const ProjectTerm& term = _terms.terms().terms()[std::size_t(found)];
    if(!term.isTranslatable) return skip(file, entry, term.key, "is not translatable"_s);
    if(isSecond(file, entry, std::size_t(found))) return skip(file, entry, term.key, SecondTime);
    if(!_known[std::size_t(found)].text().isEmpty())
        return skip(file, entry, term.key, format("{}, and the term has a translation", what));
    keep(file, entry, term.key, file.values, what);
}

/** Whether the file has something else for a term: the i18next library takes the key itself before one of another shape. */
bool ImportTranslations::isSecond(const File& file, const CatalogueEntry& entry, const std::size_t term) const {
    const Containers::StringView own = _terms.terms().terms()[term].fileKey;
    return _isFound[term] || (own != entry.key && file.file.catalogue.find(own) != -1);
}

void ImportTranslations::keep(const File& file, const CatalogueEntry& entry, const Containers::StringView key,
    KeptNotice& notice, const Containers::StringView reason) {
    const Containers::String other = _terms.otherShape(file.nameSpace, entry.key);
    const bool isInOtherShape = _terms.terms().namespaces()[file.nameSpace].isFlat && !other.isEmpty();
    if((isInOtherShape && file.file.catalogue.find(other) != -1) || _keptKeys.find(key) != -1)
        return skip(file, entry, key, SecondTime);
    _keptKeys.add(_memory.add(key));
    const TermOutcome outcome = _values.keep(key, file.nameSpace, entry, file.file.catalogue.spelling(entry));
    file.add(outcome, key);
    if(outcome != TermOutcome::Unchanged) notice.add(key, reason);
}

/** Whether the project has a translation of a plural form, which an export prefers to a value. */
bool ImportTranslations::hasForm(
    const File& file, const CatalogueEntry& entry, const Containers::StringView key) const {
    const Int known = _known.findOther(key);
    PluralForm form;
    return known != -1 && !_known.others()[std::size_t(known)].translation.text().isEmpty() &&
        parsePluralForm(entry.key, form) && _terms.plurals(file.nameSpace).find(form) != -1;
}

bool ImportTranslations::compareForm(const File& file, const CatalogueEntry& entry, const Containers::StringView key) {
    PluralForm form;
    if(!parsePluralForm(entry.key, form)) return false;
    const PluralSets& plurals = _terms.plurals(file.nameSpace);
    const Int set = plurals.find(form);
    if(set == -1) return false;
    // Of a language without rules nobody knows which forms it needs.
    const PluralCategories categories = _categories[std::size_t(form.kind)];
    if(categories && form.category != PluralCategory::Zero && !(categories & form.category)) {
        skip(file, entry, key, format("is a plural form that {} does not have", AllLanguages[_language].name));
        return true;
    }
    const std::size_t other = _terms.terms().termAt(
        file.nameSpace, std::size_t(plurals.sets()[std::size_t(set)].form(PluralCategory::Other)));
    if(!_terms.terms().terms()[other].isTranslatable) {
        skip(file, entry, key, "is not translatable"_s);
        return true;
    }
    if(!_terms.hasPlace(file.nameSpace, entry.key)) return false;
    const Int known = _known.findOther(key);
    _forms.push_back({_memory.add(key), {Int(file.nameSpace), entry.key}, other,
        known == -1 ? ProjectTranslation{} : _known.others()[std::size_t(known)].translation});
    translate(file, entry, _terms.terms().terms().size() + _forms.size() - 1);
    return true;
}

void ImportTranslations::skip(const File& file, const CatalogueEntry& entry, const Containers::StringView key,
    const Containers::StringView reason) {
    _skipped.insert(&entry);
    file.add(TermOutcome::Skipped, key, reason);
}

void ImportTranslations::skipUnknown(const File& file, const CatalogueEntry& entry, const Containers::StringView key,
    const Containers::StringView beginning) {
    bool isConflict = false;
    const Containers::String reason = beginning + _terms.reasonForNone(file.nameSpace, entry.key, isConflict);
    const bool isOldForm = !entry.value && isVersion3Form(file.file.catalogue, entry.key);
    if(!isConflict && !isOldForm) return skip(file, entry, key, reason);
    _skipped.insert(&entry);
    if(!isConflict) {
        if(file.oldForms.count++ == 0) file.oldForms.first = key;
        return;
    }
    file.report.addConflict(_language, key, reason, file.file.path);
}

void ImportTranslations::translate(const File& file, const CatalogueEntry& entry, const std::size_t target) {
    const Containers::StringView before = known(target).text();
    // What was kept here would come back if the text were ever emptied.
    _values.drop(key(target));
    const TermOutcome outcome = before == entry.text ? TermOutcome::Unchanged
        : before.isEmpty()                           ? TermOutcome::Added
                                                     : TermOutcome::Changed;
    const bool isStale = outcome == TermOutcome::Unchanged && this->isStale(target);
    const bool isConfirmed = _isConfirming && isStale;
    if(isStale && !isConfirmed) file.report.addStale(_language);
    if(outcome != TermOutcome::Unchanged || isConfirmed) {
        _changes.push_back({&entry, UnsignedInt(target)});
        _replaced.add(before);
        _replaced.add(_terms.fingerprint(sourceOf(target)));
    }
    if(target < _kept.size()) file.report.add(_language, outcome, _kept[target], {}, file.file.path);
    else file.add(outcome, key(target));
    if(outcome == TermOutcome::Changed) file.report.addTexts(before, entry.text);
    if(isConfirmed) file.add(TermOutcome::Notice, key(target), "was stale, and is confirmed"_s);
}

TextDigest ImportTranslations::replaced() const {
    TextDigest all = _replaced;
    all.add(_values.replaced());
    return all;
}

void ImportTranslations::appendForms(const UnsignedInt nameSpace, std::vector<TermLayout::Key>& forms) const {
    for(const Form& form: _forms)
        if(form.place.nameSpace == Int(nameSpace)) forms.push_back({form.key, form.place.fileKey});
}

Containers::StringView ImportTranslations::key(const std::size_t target) const {
    const auto terms = _terms.terms().terms();
    return target < terms.size() ? terms[target].key : _forms[target - terms.size()].key;
}

ProjectTranslation ImportTranslations::known(const std::size_t target) const {
    const std::size_t count = _terms.terms().terms().size();
    return target < count ? _known[target] : _forms[target - count].known;
}

/** The term whose text it is a translation of. */
std::size_t ImportTranslations::sourceOf(const std::size_t target) const {
    const std::size_t count = _terms.terms().terms().size();
    return target < count ? target : _forms[target - count].source;
}

/** Whether what the project has is not a translation of what the source is going to be. */
bool ImportTranslations::isStale(const std::size_t target) const {
    const std::size_t source = sourceOf(target);
    return !_terms.terms().terms()[source].source.isEmpty() &&
        known(target).parts().source != _terms.fingerprint(source);
}

void ImportTranslations::collect(ProjectEdit& edit, ImportTerms& terms, std::function<void()>&& release) {
    const std::size_t count = terms.terms().terms().size();
    for(const Change& change: _changes) terms.keep(sourceOf(change.target), edit);
    for(Form& form: _forms) form.key = edit.keep(form.key);
    std::function<void()> finish;
    if(_values.isEmpty())
        finish = [this, release = std::move(release)] {
            _changes = std::vector<Change>{};
            _known.clear();
            release();
        };
    edit.setMembers({"localization"_s, "translations"_s, AllLanguages[_language].code},
        {_changes.size(),
            [this, count](const std::size_t i) {
                const std::size_t target = _changes[i].target;
                return target < count ? _terms.keptKey(target) : key(target);
            },
            [this](const std::size_t i) { return known(_changes[i].target).position; },
            [this](const std::size_t i, rapidjson::Document& out) { make(_changes[i], out); }, std::move(finish)});
    _values.collect(edit);
}

void ImportTranslations::make(const Change& change, rapidjson::Document& out) const {
    rapidjson::SizeType count = 0;
    const auto write = [&](const char* const name, const Containers::StringView text, const bool isCopied = true) {
        if(!text.data()) return;
        out.Key(name, rapidjson::SizeType(std::strlen(name)), true);
        out.String(text.isEmpty() ? "" : text.data(), rapidjson::SizeType(text.size()), isCopied);
        ++count;
    };
    out.StartObject();
    const Containers::StringView fingerprint = _terms.keptFingerprint(sourceOf(change.target));
    const auto writeFingerprint = [&] { write("source", fingerprint, !ProjectEdit::isShared(fingerprint)); };
    const rapidjson::Value* const known = this->known(change.target).value;
    bool hasText = false;
    bool hasFingerprint = false;
    if(known && known->IsObject())
        for(const auto& member: known->GetObject()) {
            const Containers::StringView name{member.name.GetString(), member.name.GetStringLength()};
            if(name == "text"_s) {
                hasText = true;
                write("text", change.entry->text);
            } else if(name == "source"_s) {
                hasFingerprint = true;
                writeFingerprint();
            } else {
                out.Key(name.data(), member.name.GetStringLength(), true);
                member.value.Accept(out);
                ++count;
            }
        }
    if(!hasText) write("text", change.entry->text);
    if(!hasFingerprint) writeFingerprint();
    out.EndObject(count);
}

}
