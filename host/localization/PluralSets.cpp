#include "PluralSets.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include <Corrade/Containers/GrowableArray.h>

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

constexpr Containers::StringView OrdinalSuffix = "_ordinal"_s;

bool endsWithName(const Containers::StringView base) { return !base.isEmpty() && base.back() != '.'; }

/** The keys that are no plural forms. Most catalogues never ask, so they are sorted for the first question. */
class OtherKeys {
public:
    /** @param allowed     by kind, what a plural form may be */
    explicit OtherKeys(
        const Containers::ArrayView<const Containers::StringView> keys, const PluralCategories (&allowed)[2])
        : _all{keys}, _allowed{allowed} {}

    bool hasOneThatBeginsWith(const Containers::StringView beginning) {
        if(!_isSorted) sort();
        const std::string_view text{beginning.data(), beginning.size()};
        const auto found = std::lower_bound(_keys.begin(), _keys.end(), text);
        return found != _keys.end() && found->starts_with(text);
    }

private:
    void sort() {
        PluralForm form;
        for(const Containers::StringView key: _all)
            if(!parsePluralForm(key, form) || !(_allowed[std::size_t(form.kind)] & form.category))
                _keys.emplace_back(key.data(), key.size());
        std::sort(_keys.begin(), _keys.end());
        _isSorted = true;
    }

    Containers::ArrayView<const Containers::StringView> _all;
    const PluralCategories (&_allowed)[2];
    std::vector<std::string_view> _keys;
    bool _isSorted = false;
};

PluralCategories categoriesOf(const PluralSet& set) {
    PluralCategories categories;
    for(const PluralCategory category: AllPluralCategories)
        if(set.form(category) != -1) categories |= category;
    return categories;
}

}

bool parsePluralForm(const Containers::StringView key, PluralForm& form) {
    for(const PluralCategory category: AllPluralCategories) {
        const Containers::StringView name = pluralCategoryName(category);
        if(!key.hasSuffix(name)) continue;
        const Containers::StringView before = key.exceptSuffix(name.size());
        if(!before.hasSuffix('_') || !endsWithName(before.exceptSuffix(1))) return false;
        form = {before.exceptSuffix(1), PluralKind::Cardinal, category};
        if(form.base.hasSuffix(OrdinalSuffix) && endsWithName(form.base.exceptSuffix(OrdinalSuffix.size()))) {
            form.base = form.base.exceptSuffix(OrdinalSuffix.size());
            form.kind = PluralKind::Ordinal;
        }
        return true;
    }
    return false;
}

Containers::String pluralKey(const Containers::StringView base, const PluralKind kind, const PluralCategory category) {
    return base + (kind == PluralKind::Ordinal ? OrdinalSuffix : ""_s) + "_"_s + pluralCategoryName(category);
}

PluralSets::PluralSets(
    const Containers::ArrayView<const Containers::StringView> keys, const Containers::StringView defaultCode) {
    const PluralCategories rules[2]{
        pluralCategories(defaultCode, PluralKind::Cardinal), pluralCategories(defaultCode, PluralKind::Ordinal)};
    if(!rules[0]) return;
    const PluralCategories allowed[2]{rules[0] | PluralCategory::Zero, rules[1] | PluralCategory::Zero};

    Containers::Array<PluralSet> candidates;
    for(std::size_t i = 0; i != keys.size(); ++i) {
        PluralForm form;
        if(!parsePluralForm(keys[i], form)) continue;
        const auto [place, isNew] = indices(form.kind).emplace(form.base, Int(candidates.size()));
        if(isNew) Containers::arrayAppend(candidates, PluralSet{form.base, form.kind, {-1, -1, -1, -1, -1, -1}});
        candidates[std::size_t(place->second)].forms[pluralCategoryIndex(form.category)] = Int(i);
    }

    OtherKeys others{keys, allowed};
    for(const PluralSet& candidate: candidates) {
        const PluralCategories forms = categoriesOf(candidate);
        const std::size_t kind = std::size_t(candidate.kind);
        bool isProven = forms >= PluralCategory::Other && allowed[kind] >= forms;
        if(isProven && forms == PluralCategory::Other) {
            const Containers::StringView key = keys[std::size_t(candidate.form(PluralCategory::Other))];
            const Containers::StringView beginning = key.exceptSuffix(pluralCategoryName(PluralCategory::Other).size());
            isProven = rules[kind] == PluralCategory::Other && !others.hasOneThatBeginsWith(beginning);
        }
        if(!isProven) {
            indices(candidate.kind).erase(candidate.base);
            continue;
        }
        indices(candidate.kind).at(candidate.base) = Int(_sets.size());
        Containers::arrayAppend(_sets, candidate);
    }
}

PluralSets::~PluralSets() = default;
PluralSets::PluralSets(PluralSets&&) noexcept = default;
PluralSets& PluralSets::operator=(PluralSets&&) noexcept = default;

Int PluralSets::find(const Containers::StringView key) const {
    PluralForm form;
    return parsePluralForm(key, form) ? find(form) : -1;
}

Int PluralSets::find(const PluralForm& form) const {
    const Indices& indices = form.kind == PluralKind::Ordinal ? _ordinal : _cardinal;
    const auto found = indices.find(form.base);
    return found == indices.end() ? -1 : found->second;
}

}
