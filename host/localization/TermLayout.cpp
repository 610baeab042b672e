#include "TermLayout.h"

#include <algorithm>
#include <tuple>

#include "PluralSets.h"

namespace QuorvaneEngine {

namespace {

/** A plural form that is no term, and the term that it is put before or behind. */
struct PlacedForm {
    UnsignedInt term;
    bool isBehind;
    std::size_t category;
    TermLayout::Key key;
};

class FormPlaces {
public:
    FormPlaces(const ProjectTerms& terms, const UnsignedInt nameSpace, const PluralSets& plurals)
        : _terms{terms}, _nameSpace{nameSpace}, _plurals{plurals} {}

    /** @return whether the form has a place */
    bool find(const TermLayout::Key& key, PlacedForm& placed) const {
        PluralForm form;
        const Int number = parsePluralForm(key.fileKey, form) ? _plurals.find(form) : -1;
        if(number == -1) return false;
        const PluralSet& set = _plurals.sets()[std::size_t(number)];
        const std::size_t category = pluralCategoryIndex(form.category);
        if(set.forms[category] != -1 || !_terms.terms()[term(set, PluralCategory::Other)].isTranslatable) return false;

        // The group in the order of the categories, as far as it is so; and its last term.
        bool isSorted = true;
        UnsignedInt last = 0;
        UnsignedInt next = 0;
        bool hasNext = false;
        for(const PluralCategory other: AllPluralCategories) {
            if(set.form(other) == -1) continue;
            const UnsignedInt at = term(set, other);
            isSorted = isSorted && at >= last;
            last = std::max(last, at);
            if(!hasNext && pluralCategoryIndex(other) > category) {
                hasNext = true;
                next = at;
            }
        }
        placed = {isSorted ? next : last, !isSorted, category, key};
        return true;
    }

private:
    UnsignedInt term(const PluralSet& set, const PluralCategory category) const {
        return _terms.termAt(_nameSpace, std::size_t(set.form(category)));
    }

    const ProjectTerms& _terms;
    UnsignedInt _nameSpace;
    const PluralSets& _plurals;
};

/** Removes forms that a term lies below: no language may lose a term because another one has a form. */
void removeBranches(const ProjectTerms& terms, const UnsignedInt nameSpace, std::vector<PlacedForm>& forms,
    std::vector<LayoutConflict>& conflicts) {
    if(forms.empty()) return;
    TextIndex keys;
    for(const PlacedForm& form: forms) keys.add(form.key.fileKey);
    // Terms, by the numbers of the forms that they lie below.
    std::vector<Int> below(keys.size(), -1);
    for(std::size_t i = 0; i != terms.terms().size(); ++i) {
        const ProjectTerm& term = terms.terms()[i];
        if(term.nameSpace != nameSpace || !term.isTranslatable) continue;
        for(std::size_t size = 1; size < term.fileKey.size(); ++size) {
            PluralForm form;
            const Containers::StringView above = term.fileKey.prefix(size);
            if(term.fileKey[size] != '.' || !parsePluralForm(above, form)) continue;
            if(const Int found = keys.find(above); found != -1) below[std::size_t(found)] = Int(i);
        }
    }
    std::vector<bool> isTold(keys.size());
    std::erase_if(forms, [&](const PlacedForm& form) {
        const std::size_t number = std::size_t(keys.find(form.key.fileKey));
        if(below[number] == -1) return false;
        if(!isTold[number])
            conflicts.push_back(
                {TermConflict::LeafAndBranch, form.key.key, terms.terms()[std::size_t(below[number])].key});
        isTold[number] = true;
        return true;
    });
}

}

TermLayout::TermLayout(const ProjectTerms& terms, const UnsignedInt nameSpace, const PluralSets& plurals,
    const Containers::ArrayView<const Key> others, const Containers::ArrayView<const Key> values,
    std::vector<LayoutConflict>& conflicts) {
    const FormPlaces places{terms, nameSpace, plurals};
    std::vector<PlacedForm> forms;
    for(const Key& key: others)
        if(PlacedForm placed; places.find(key, placed)) forms.push_back(placed);
    removeBranches(terms, nameSpace, forms, conflicts);
    std::stable_sort(forms.begin(), forms.end(), [](const PlacedForm& a, const PlacedForm& b) {
        return std::tuple{a.term, a.isBehind, a.category} < std::tuple{b.term, b.isBehind, b.category};
    });

    _byTerm.assign(terms.terms().size(), -1);
    _keys.reserve(terms.fileKeys(nameSpace).size() + forms.size() + values.size());
    auto form = forms.begin();
    const auto addForms = [&](const std::size_t term, const bool isBehind) {
        for(; form != forms.end() && form->term == term && form->isBehind == isBehind; ++form) {
            Int last = -1;
            if(find(form->key.fileKey, last) == -1) add(form->key.key, form->key.fileKey, conflicts);
        }
    };
    for(std::size_t i = 0; i != terms.terms().size(); ++i) {
        const ProjectTerm& term = terms.terms()[i];
        if(term.nameSpace != nameSpace) continue;
        addForms(i, false);
        if(term.isTranslatable) _byTerm[i] = add(term.key, term.fileKey, conflicts);
        addForms(i, true);
    }
    Int last = -1;
    Int lastTerm = -1;
    for(const Key& key: values) {
        const Int term = terms.find(nameSpace, key.fileKey, lastTerm);
        const bool isHidden = term != -1 && !terms.terms()[std::size_t(term)].isTranslatable;
        if(!isHidden && find(key.fileKey, last) == -1) add(key.key, key.fileKey, conflicts);
    }
}

TermLayout::~TermLayout() = default;

Int TermLayout::add(
    const Containers::StringView key, const Containers::StringView fileKey, std::vector<LayoutConflict>& conflicts) {
    Int other = -1;
    const TermConflict conflict = _tree.insert(fileKey, Int(_keys.size()), other);
    if(conflict != TermConflict::None) {
        conflicts.push_back({conflict, key, other == -1 ? Containers::StringView{} : _projectKeys[std::size_t(other)]});
        return -1;
    }
    _projectKeys.push_back(key);
    return Int(_keys.add(fileKey));
}

}
