#include "TranslationChecks.h"

#include <algorithm>
#include <initializer_list>
#include <vector>

#include <Corrade/Utility/Format.h>
#include <rapidjson/document.h>

#include "../document/ProjectStorage.h"
#include "DocumentLookup.h"
#include "JsonPath.h"
#include "LocalizationStatus.h"
#include "NameSearch.h"
#include "Placeholders.h"
#include "ProjectTypes.h"
#include "TextBlanks.h"
#include "TextComparison.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;
using Corrade::Utility::format;

namespace {

/** A form of a plural that the default language does not have. */
struct OwnForm {
    Containers::StringView key;
    Containers::StringView text;
    bool isStale;
    const CheckedPlural* plural;
    PluralCategory category;
};

Containers::StringView viewOf(const rapidjson::Value& text) { return {text.GetString(), text.GetStringLength()}; }

Containers::StringView baseLanguage(const Containers::StringView code) {
    return code.prefix(code.findOr('-', code.end()).begin());
}

bool isBlank(const Containers::StringView text) { return TextBlanks::trimmed(text).isEmpty(); }

/** A text that is checked, and where. */
struct Translation {
    Containers::StringView key;
    Containers::StringView text;
    Containers::StringView source;

    /** Whether it is not marked as a translation of this source. */
    bool isStale;

    /** The term whose silencings count. */
    UnsignedInt term;

    /** Null for what is no form of a plural. */
    const CheckedPlural* plural;

    /** Whether it is a form of a plural for one number. */
    bool isOneNumber;
};

class TranslationChecks {
public:
    explicit TranslationChecks(
        const CheckedProject& project, const Containers::StringView code, LocalizationFindings& findings)
        : _project{project},
          _findings{findings},
          _code{findings.texts().add(code)},
          _isFile{ProjectStorage::isLanguageCode(code)},
          _isVariant{baseLanguage(code) == baseLanguage(project.defaultCode())},
          _categories{pluralCategories(code, PluralKind::Cardinal), pluralCategories(code, PluralKind::Ordinal)},
          _texts(project.terms().terms().size()),
          _areStale(project.terms().terms().size()),
          _pluralForms(project.plurals().size()) {
        if(!project.plurals().empty())
            for(const PluralKind kind: {PluralKind::Cardinal, PluralKind::Ordinal})
                _singleNumbers[std::size_t(kind)] = singleNumberCategories(code, kind);
        _file = _isFile ? findings.texts().add(format("localization/{}.json", code)) : "project.json"_s;
        if(!_isFile) _folder = jsonPath({"localization"_s, "translations"_s, code});
    }

    void run() {
        checkTypes();
        readTranslations();
        for(UnsignedInt i = 0; i != _texts.size(); ++i) {
            if(_texts[i].isEmpty()) continue;
            const ProjectTerm& term = _project.term(i);
            const CheckedPlural* const plural = _project.pluralOf(i);
            PluralForm form;
            const bool isForm = plural && parsePluralForm(term.fileKey, form);
            checkText({term.key, _texts[i], term.source, _areStale[i], i, plural,
                isForm && isOneNumber(*plural, form.category)});
            if(isForm) checkForm(*plural, form.category, term.key, i);
        }
        for(const OwnForm& form: _ownForms) {
            const UnsignedInt other = form.plural->otherTerm();
            checkText({form.key, form.text, _project.term(other).source, form.isStale, other, form.plural,
                isOneNumber(*form.plural, form.category)});
            checkForm(*form.plural, form.category, form.key, other);
        }
        for(std::size_t i = 0; i != _pluralForms.size(); ++i) checkPlural(_project.plurals()[i], _pluralForms[i]);
    }

private:
    void checkTypes() {
        Int last = -1;
        ProjectTypes::checkTranslations(_project.root(), _code,
            [&](const std::vector<Containers::StringView>& names, const char* const is, const char* const mustBe) {
                constexpr std::size_t KeyPlace = 3;
                const Containers::StringView key = names[KeyPlace];
                const Int term = _project.terms().findKey(key, last);
                const Containers::String path =
                    jsonPath(Containers::arrayView(names.data() + KeyPlace + 1, names.size() - KeyPlace - 1));
                add(CheckKind::WrongType, _file, format("{}{}", pathOf({key}), path), key,
                    term == -1 ? CheckedProject::NoTerm : UnsignedInt(term), ProjectTypes::wrongType(path, is, mustBe));
            });
    }

    void checkState(const rapidjson::Value& translation, const Containers::StringView key, const UnsignedInt term) {
        const rapidjson::Value* const state = memberOf(&translation, "state"_s);
        if(!state || !state->IsString() || !state->GetStringLength()) return;
        std::vector<Containers::StringView> names;
        for(const TranslationState known: {TranslationState::Draft, TranslationState::Review, TranslationState::Done})
            names.push_back(translationStateName(known));
        const Containers::StringView name = viewOf(*state);
        if(std::find(names.begin(), names.end(), name) != names.end()) return;
        const Containers::StringView nearest = nearestName(name, Containers::arrayView(names.data(), names.size()));
        Containers::String message =
            format("has the state {}, which does not exist, and counts as done", TextComparison::shown(name));
        if(!nearest.isEmpty()) message = format("{}; did you mean {}?", message, nearest);
        add(CheckKind::StateUnknown, _file, pathOf({key, "state"_s}), key, term, message);
    }

    void readTranslations() {
        const rapidjson::Value* const all = memberOf(memberOf(&_project.root(), "localization"_s), "translations"_s);
        const rapidjson::Value* const translations = memberOf(all, _code);
        if(!translations || !translations->IsObject()) return;
        Int last = -1;
        for(const auto& member: translations->GetObject()) {
            const Containers::StringView key = viewOf(member.name);
            const Int term = _project.terms().findKey(key, last);
            checkState(member.value, key, term == -1 ? CheckedProject::NoTerm : UnsignedInt(term));
            const rapidjson::Value* const text = memberOf(&member.value, "text"_s);
            if(!text || !text->IsString() || !text->GetStringLength()) continue;
            if(term == -1) addOwnForm(key, member.value, viewOf(*text));
            else if(_project.isTranslated(_project.term(std::size_t(term))))
                addText(std::size_t(term), member.value, viewOf(*text));
        }
    }

    bool isStale(const rapidjson::Value& translation, const std::size_t term) const {
        return translationState(&translation, _project.fingerprint(term)) == TranslationState::Stale;
    }

    void addText(const std::size_t term, const rapidjson::Value& translation, const Containers::StringView text) {
        _texts[term] = text;
        _areStale[term] = isStale(translation, term);
        PluralForm form;
        const CheckedPlural* const plural = _project.pluralOf(term);
        if(plural && parsePluralForm(_project.term(term).fileKey, form)) formsOf(*plural) |= form.category;
    }

    void addOwnForm(
        const Containers::StringView key, const rapidjson::Value& translation, const Containers::StringView text) {
        OwnForm form{key, text, false, nullptr, {}};
        form.plural = _project.pluralOf(key, form.category);
        if(!form.plural) add(CheckKind::TermUnknown, key, CheckedProject::NoTerm, "no term has this key"_s);
        if(!form.plural || !_project.isTranslated(_project.term(form.plural->otherTerm()))) return;
        add(CheckKind::LeafAndBranch, key, form.plural->otherTerm(), _project.formConflict(key));
        formsOf(*form.plural) |= form.category;
        form.isStale = isStale(translation, form.plural->otherTerm());
        _ownForms.push_back(form);
    }

    PluralCategories& formsOf(const CheckedPlural& plural) {
        return _pluralForms[std::size_t(&plural - _project.plurals().data())];
    }

    /** The path in its file of what members lead to from a language's translations. */
    Containers::String pathOf(const std::initializer_list<Containers::StringView> names) const {
        return format("{}{}", _folder, jsonPath(names));
    }

    void add(const CheckKind kind, const Containers::StringView key, const UnsignedInt term,
        const Containers::StringView message) {
        if(message.isEmpty()) return;
        add(kind, _file, pathOf({key}), key, term, message);
    }

    void add(const CheckKind kind, const Containers::StringView file, const Containers::StringView path,
        const Containers::StringView key, const UnsignedInt term, const Containers::StringView message) {
        LocalizationFinding place;
        place.file = file;
        place.path = _findings.texts().add(path);
        place.term = _findings.texts().add(key);
        place.language = _code;
        _project.add(_findings, kind, place, message, term);
    }

    void checkText(const Translation& one) {
        checkWording(one);
        if(one.isStale)
            add(CheckKind::Stale, one.key, one.term, "is not marked as a translation of today's source text"_s);
    }

    void checkWording(const Translation& one) {
        if(one.text == one.source) {
            if(!_isVariant && TextComparison::hasLetters(one.text))
                add(CheckKind::SameAsSource, one.key, one.term,
                    format("is the same as the source: {}", TextComparison::shown(one.text)));
            return;
        }
        if(isBlank(one.text)) {
            if(!isBlank(one.source))
                add(CheckKind::OnlyBlanks, one.key, one.term, "has nothing but blanks, and shows nothing"_s);
            return;
        }
        add(CheckKind::OuterBlanks, one.key, one.term, TextComparison::outerBlanks(one.source, one.text));
        _places.read(one.text);
        _sourcePlaces.read(one.source);
        const bool areInForms = one.plural && !one.plural->names.empty();
        if(_places.isEmpty() && _sourcePlaces.isEmpty() && !areInForms) return;
        checkPlaceholders(one);
        add(CheckKind::FormatDiffers, one.key, one.term, TextComparison::formats(_sourcePlaces, _places));
        add(CheckKind::NestingDiffers, one.key, one.term, TextComparison::nestings(_sourcePlaces, _places));
        // What the source has is found there.
        add(CheckKind::NestingUnknown, one.key, one.term,
            TextComparison::unknownNestings(_places, &_sourcePlaces, [&](const Containers::StringView key) {
                return _project.isNestingTarget(key, _project.term(one.term).nameSpace);
            }));
    }

    void checkPlaceholders(const Translation& one) {
        const std::vector<Containers::StringView>* const forms = one.plural ? &one.plural->names : nullptr;
        Containers::String message = TextComparison::placeholders(_sourcePlaces, _places, forms, one.isOneNumber);
        const Containers::String braces =
            TextComparison::wrongBraces(one.source, _sourcePlaces, one.text, _places, forms);
        if(message.isEmpty()) message = braces;
        else if(!braces.isEmpty()) message = format("{}; it {}", message, braces);
        add(CheckKind::PlaceholderDiffers, one.key, one.term, message);
    }

    /** Whether a form can do without the number, as "one apple" does. */
    bool isOneNumber(const CheckedPlural& plural, const PluralCategory category) const {
        const PluralCategories always = PluralCategory::Zero | PluralCategory::One | PluralCategory::Two;
        return bool((_singleNumbers[std::size_t(plural.kind)] | always) & category);
    }

    void checkForm(const CheckedPlural& plural, const PluralCategory category, const Containers::StringView key,
        const UnsignedInt term) {
        const PluralCategories used = _categories[std::size_t(plural.kind)];
        if(!used || category == PluralCategory::Zero || (used & category)) return;
        add(CheckKind::PluralExtra, key, term,
            format("is the form {}, which {} has no number for", pluralCategoryName(category), languageNameOf(_code)));
    }

    /** @param forms    that have a text */
    void checkPlural(const CheckedPlural& plural, const PluralCategories forms) {
        // No language is asked for forms of what is not translatable, and no import takes them.
        if(!_project.term(plural.otherTerm()).isTranslatable) return;
        // One without any text is not translated yet.
        const PluralCategories needed = _categories[std::size_t(plural.kind)] & ~plural.untranslated;
        const PluralCategories missing = forms ? needed & ~forms : PluralCategories{};
        if(!missing) return;
        const UnsignedInt other = plural.otherTerm();
        const Containers::StringView key = _project.term(other).key;
        const Containers::String message = TextComparison::missingForms(missing, languageNameOf(_code));
        if(!_texts[other].isEmpty()) add(CheckKind::PluralMissing, key, other, message);
        // What is missing is no place to look at.
        else
            add(CheckKind::PluralMissing, "project.json"_s, jsonPath({"localization"_s, "terms"_s, key}), key, other,
                message);
    }

    const CheckedProject& _project;
    LocalizationFindings& _findings;
    Containers::StringView _code;
    Containers::StringView _file;
    /** Where translations are in their file. */
    Containers::String _folder;
    /** Whether the language has a file of its own. */
    bool _isFile;
    /** Whether the language is one that the sources are written in, in another country. */
    bool _isVariant;
    /** What the language needs, by kind. */
    PluralCategories _categories[2];
    /** Of these, those for one number, by kind. */
    PluralCategories _singleNumbers[2];
    /** By term. */
    std::vector<Containers::StringView> _texts;
    /** By term. */
    std::vector<bool> _areStale;
    std::vector<OwnForm> _ownForms;
    /** By plural, those that have a text. */
    std::vector<PluralCategories> _pluralForms;
    Placeholders _places, _sourcePlaces;
};

}

void checkTranslations(
    const CheckedProject& project, const Containers::StringView code, LocalizationFindings& findings) {
    TranslationChecks{project, code, findings}.run();
}

}
