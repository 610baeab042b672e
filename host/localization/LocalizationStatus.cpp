#include "LocalizationStatus.h"

#include <array>
#include <vector>

#include <Corrade/Containers/String.h>
#include <rapidjson/document.h>

#include "Fingerprint.h"
#include "Parallel.h"
#include "PluralSets.h"
#include "ProjectTerms.h"
#include "ProjectTranslations.h"
#include "QuorvaneEditor/AllLanguages.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

Containers::StringView textMember(const rapidjson::Value& object, const char* const name) {
    const auto found = object.FindMember(name);
    return found != object.MemberEnd() && found->value.IsString()
        ? Containers::StringView{found->value.GetString(), found->value.GetStringLength()}
        : Containers::StringView{};
}

/** A plural with the terms of its forms, -1 where a form has none. */
struct Plural {
    PluralKind kind;
    std::array<Int, PluralCategoryCount> terms;

    Int other() const { return terms[pluralCategoryIndex(PluralCategory::Other)]; }
};

/** The plurals of one namespace. */
struct NamespacePlurals {
    PluralSets sets;
    /** The number of the first one among the plurals of all namespaces. */
    std::size_t first;
};

class StatusCounter {
public:
    StatusCounter(const rapidjson::Value& root, const Containers::StringView defaultCode): _root{root}, _terms{root} {
        readSources();
        readPlurals(defaultCode);
    }

    void countSources(LanguageStatus& status) const {
        for(const Containers::String& source: _fingerprints)
            if(!source.isEmpty()) add(status, TranslationState::Done);
    }

    void countTranslations(LanguageStatus& status) const {
        const Containers::StringView code = AllLanguages[status.language].code;
        const PluralCategories rules[2]{
            pluralCategories(code, PluralKind::Cardinal), pluralCategories(code, PluralKind::Ordinal)};
        const ProjectTranslations translations{_root, _terms, code};
        for(std::size_t i = 0; i != _fingerprints.size(); ++i) {
            const PluralCategories wanted = rules[std::size_t(_forms[i].kind)];
            if(_fingerprints[i].isEmpty() || (wanted && !((wanted | PluralCategory::Zero) & _forms[i].category)))
                continue;
            add(status, translationState(translations[i].value, _fingerprints[i]));
        }

        const std::vector<const rapidjson::Value*> formsWithoutTerm = findFormsWithoutTerm(translations);
        for(std::size_t i = 0; i != formsWithoutTerm.size(); ++i) {
            const Plural& plural = _plurals[i / PluralCategoryCount];
            const std::size_t category = i % PluralCategoryCount;
            const Containers::String& source = _fingerprints[std::size_t(plural.other())];
            if(plural.terms[category] != -1 || source.isEmpty() ||
                !(rules[std::size_t(plural.kind)] & AllPluralCategories[category]))
                continue;
            add(status, translationState(formsWithoutTerm[i], source));
        }
    }

private:
    /** A term that is no form of a plural has the category that every language may have. */
    struct Form {
        PluralKind kind = PluralKind::Cardinal;
        PluralCategory category = PluralCategory::Zero;
    };

    static void add(LanguageStatus& status, const TranslationState state) { ++status.counts[std::size_t(state)]; }

    void readSources() {
        _fingerprints.reserve(_terms.terms().size());
        for(const ProjectTerm& term: _terms.terms())
            _fingerprints.push_back(
                term.isTranslatable && !term.source.isEmpty() ? fingerprint(term.source) : Containers::String{});
    }

    void readPlurals(const Containers::StringView defaultCode) {
        std::vector<std::vector<Containers::StringView>> keys(_terms.namespaces().size());
        std::vector<std::vector<UnsignedInt>> indices(keys.size());
        Int last = -1;
        for(std::size_t i = 0; i != _terms.terms().size(); ++i) {
            const ProjectTerm& term = _terms.terms()[i];
            // Of several terms with one place in a file, one is exchanged.
            if(_terms.find(term.nameSpace, term.fileKey, last) != Int(i)) continue;
            keys[term.nameSpace].push_back(term.fileKey);
            indices[term.nameSpace].push_back(UnsignedInt(i));
        }
        _forms.resize(_terms.terms().size());
        for(std::size_t nameSpace = 0; nameSpace != keys.size(); ++nameSpace) {
            PluralSets sets{{keys[nameSpace].data(), keys[nameSpace].size()}, defaultCode};
            const std::size_t first = _plurals.size();
            for(const PluralSet& set: sets.sets()) {
                Plural plural{set.kind, {}};
                for(const PluralCategory category: AllPluralCategories) {
                    Int& term = plural.terms[pluralCategoryIndex(category)];
                    term = set.form(category);
                    if(term == -1) continue;
                    term = Int(indices[nameSpace][std::size_t(term)]);
                    _forms[std::size_t(term)] = {set.kind, category};
                }
                _plurals.push_back(plural);
            }
            _namespaces.push_back({std::move(sets), first});
        }
    }

    /** For every plural and every category the translation under a key that no term has, null for none. */
    std::vector<const rapidjson::Value*> findFormsWithoutTerm(const ProjectTranslations& translations) const {
        std::vector<const rapidjson::Value*> found(_plurals.size() * PluralCategoryCount);
        for(const ProjectTranslations::Other& other: translations.others()) {
            PluralForm form;
            if(!parsePluralForm(other.place.fileKey, form)) continue;
            const NamespacePlurals& plurals = _namespaces[std::size_t(other.place.nameSpace)];
            const Int set = plurals.sets.find(form);
            if(set == -1) continue;
            const rapidjson::Value*& value =
                found[(plurals.first + std::size_t(set)) * PluralCategoryCount + pluralCategoryIndex(form.category)];
            if(!value) value = other.translation.value;
        }
        return found;
    }

    const rapidjson::Value& _root;
    ProjectTerms _terms;
    /** Of the source texts of terms; empty where there is nothing to translate. */
    std::vector<Containers::String> _fingerprints;
    /** What each term is a form of. */
    std::vector<Form> _forms;
    std::vector<Plural> _plurals;
    std::vector<NamespacePlurals> _namespaces;
};

}

Containers::StringView translationStateName(const TranslationState state) {
    constexpr Containers::StringView Names[TranslationStateCount]{
        "missing"_s, "stale"_s, "draft"_s, "review"_s, "done"_s};
    return Names[std::size_t(state)];
}

TranslationState translationState(const rapidjson::Value* const translation, const Containers::StringView fingerprint) {
    if(!translation || !translation->IsObject() || textMember(*translation, "text").isEmpty())
        return TranslationState::Missing;
    if(textMember(*translation, "source") != fingerprint) return TranslationState::Stale;
    const Containers::StringView state = textMember(*translation, "state");
    return state == "draft"_s ? TranslationState::Draft
        : state == "review"_s ? TranslationState::Review
                              : TranslationState::Done;
}

Containers::Array<LanguageStatus> localizationStatus(const rapidjson::Value& root,
    const Containers::ArrayView<const UnsignedInt> languages, const UnsignedInt defaultLanguage) {
    const StatusCounter counter{root, AllLanguages[defaultLanguage].code};
    Containers::Array<LanguageStatus> all{Corrade::ValueInit, languages.size()};
    forEachInParallel(languages.size(), [&](const std::size_t i) {
        all[i].language = languages[i];
        if(languages[i] == defaultLanguage) counter.countSources(all[i]);
        else counter.countTranslations(all[i]);
    });
    return all;
}

}
