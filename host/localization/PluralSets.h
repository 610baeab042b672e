#pragma once

#include <unordered_map>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>

#include "PluralRules.h"
#include "Utils/StrHash.h"

namespace QuorvaneEngine {

/** A key as a form of a plural: `menu.apples_few` is the form `few` of `menu.apples`, `floor_ordinal_two` the form `two` of the
    ordinal of `floor`. */
struct PluralForm {
    /** The key less the suffix; views the key. */
    Containers::StringView base;

    PluralKind kind;
    PluralCategory category;
};

/** Whether a key ends like a plural form (i18next JSON v4): `_zero`, `_one`, `_two`, `_few`, `_many` or `_other`, before it `_ordinal`
    where numbers are ordinal, and a name that is not empty before that. Many keys do that mean something else (`file_other`), so
    this alone proves nothing: see @ref PluralSets . What stands in an array has no form.
    @param key      the key of a file, see @ref TermKey
    @param form     receives the form where the answer is true */
QUORVANE_API bool parsePluralForm(Containers::StringView key, PluralForm& form);

/** The key of a plural form. */
QUORVANE_API Containers::String pluralKey(Containers::StringView base, PluralKind kind, PluralCategory category);

/** The forms of one text for different numbers. A context is part of the base: `friend_male_one` and `friend_male_other` are forms of
    `friend_male`. */
struct PluralSet {
    /** What the keys of all forms begin with; views one of the keys. */
    Containers::StringView base;

    PluralKind kind;

    /** Where the key of each form is in the keys that were handed over, in the order of @ref AllPluralCategories ; -1 for a form that
        there is none of. There always is one for `other`. */
    Int forms[PluralCategoryCount];

    Int form(const PluralCategory category) const { return forms[pluralCategoryIndex(category)]; }
};

/** The plurals among the keys of one namespace, as the default language proves them. A suffix can mean anything, so keys with one
    base are forms of a plural only where

    -   `other` is one of them,
    -   each is a category that the default language has for this kind of number, or `zero`, which every language may have,
    -   and there is at least one beside `other`. A default language that has no category but `other` (Japanese) cannot prove it
        that way: there `other` is enough, unless another key begins with the base and "_" and is no such form itself.

    So with English as default `door_one`, `door_other` is a plural, and `file_other`, `booking_0`, or `a_few` with `a_other`, is none.
    Where CLDR gives the default language no rules there are none at all. */
class QUORVANE_API PluralSets {
public:
    /** Takes time in proportion to the size of all keys, with a default language that has `other` alone also for sorting
        them.
        @param keys         those of the default language in one namespace, as its file has them; each once. They must outlive this
                            object; the array need not
        @param defaultCode  BCP 47 */
    explicit PluralSets(Containers::ArrayView<const Containers::StringView> keys, Containers::StringView defaultCode);
    ~PluralSets();
    PluralSets(const PluralSets&) = delete;
    PluralSets& operator=(const PluralSets&) = delete;
    PluralSets(PluralSets&&) noexcept;
    PluralSets& operator=(PluralSets&&) noexcept;

    /** In the order of their first keys. */
    Containers::ArrayView<const PluralSet> sets() const { return _sets; }

    /** The set that a key is a form of, or would be, as another language may have forms that the default one lacks; -1 where there is
        none. */
    Int find(Containers::StringView key) const;

    /** The same for a key that was parsed already. */
    Int find(const PluralForm& form) const;

private:
    using Indices = std::unordered_map<Containers::StringView, Int, StrHash, StrEq>;

    Indices& indices(PluralKind kind) { return kind == PluralKind::Ordinal ? _ordinal : _cardinal; }

    Containers::Array<PluralSet> _sets;
    /** Sets by their bases. */
    Indices _cardinal, _ordinal;
};

}
