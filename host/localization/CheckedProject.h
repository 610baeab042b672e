#pragma once

#include <mutex>
#include <string>
#include <unordered_set>
#include <vector>

#include "KeptValues.h"
#include "LocalizationChecks.h"
#include "PluralSets.h"
#include "ProjectTerms.h"
#include "TermTree.h"

namespace QuorvaneEngine {

/** The checks, in the order of @ref localizationChecks() . */
enum class CheckKind : unsigned char {
    PlaceholderDiffers,
    FormatDiffers,
    NestingDiffers,
    NestingUnknown,
    PluralMissing,
    PluralExtra,
    LeafAndBranch,
    ReservedKey,
    SameAsSource,
    OuterBlanks,
    OnlyBlanks,
    Stale,
    SourceGone,
    SameSource,
    TranslatableMissing,
    TermUnknown,
    ValueUnknown,
    StateUnknown,
    WrongType,
    LanguageUnknown,
    LanguageUnlisted,
    DefaultTwice,
    SilencedWithoutReason,
    UnknownCheck
};

/** A language as messages say it: its English name, or the code where no language has it. */
QUORVANE_API Containers::StringView languageNameOf(Containers::StringView code);

/** A plural among the terms. */
struct CheckedPlural {
    PluralKind kind;

    /** By category; indices of terms, -1 where the default language has no such form. There is one for `other`. */
    Int terms[PluralCategoryCount];

    /** Forms that are terms and not translatable: in no file, and asked of no language. */
    PluralCategories untranslated;

    /** Of the placeholders in all forms, in byte order. */
    std::vector<Containers::StringView> names;

    UnsignedInt otherTerm() const { return UnsignedInt(terms[pluralCategoryIndex(PluralCategory::Other)]); }
};

/** What several checks have to know of a project. Once made it is only read, by any number of threads. */
class QUORVANE_API CheckedProject {
public:
    static constexpr UnsignedInt NoTerm = ~UnsignedInt{};

    /** A term whose key has no place beside another. */
    struct Conflict {
        UnsignedInt term;
        TermConflict conflict;
        /** -1 where no other term is to blame. */
        Int other;
    };

    /** A value of the default language whose key has no place beside another. */
    struct ValueConflict {
        Containers::StringView key;
        TermConflict conflict;
        /** The other key; may be empty. */
        Containers::StringView other;
    };

    /** A silencing that does not silence. */
    struct VoidSilencing {
        /** @ref NoTerm for the whole project. */
        UnsignedInt term;
        Containers::StringView name;
        CheckKind kind;
    };

    /** @param root     must outlive this object, and stay as it is */
    explicit CheckedProject(const rapidjson::Value& root, Containers::StringView defaultCode);
    ~CheckedProject();
    CheckedProject(const CheckedProject&) = delete;
    CheckedProject& operator=(const CheckedProject&) = delete;

    const rapidjson::Value& root() const { return _root; }
    const ProjectTerms& terms() const { return _terms; }
    const ProjectTerm& term(const std::size_t index) const { return _terms.terms()[index]; }

    /** The fingerprint of a term's own text; empty where its translations are not looked at. */
    Containers::StringView fingerprint(const std::size_t term) const { return _fingerprints[term]; }

    Containers::StringView defaultCode() const { return _defaultCode; }

    /** Whether translations of a term are looked at. */
    bool isTranslated(const ProjectTerm& term) const { return term.isTranslatable && !term.source.isEmpty(); }

    /** In the order of terms. */
    const std::vector<Conflict>& conflicts() const { return _conflicts; }
    /** In the project's order. */
    const std::vector<ValueConflict>& valueConflicts() const { return _valueConflicts; }

    /** Whether the default language has a value under a key of the project. */
    bool hasValue(const Containers::StringView key) const { return _values.find(key) != -1; }

    /** Why a plural form that no term has finds no place beside the keys of terms and of values of the default language: the end of a
        sentence, empty where it has one. */
    Containers::String formConflict(Containers::StringView key) const;

    const std::vector<VoidSilencing>& voidSilencings() const { return _voidSilencings; }

    const std::vector<CheckedPlural>& plurals() const { return _plurals; }

    /** The plural that a term is a form of, null for any other. */
    const CheckedPlural* pluralOf(std::size_t term) const;

    /** The plural that a key would be a form of which is no term's; null where there is none.
        @param category     receives the form */
    const CheckedPlural* pluralOf(Containers::StringView key, PluralCategory& category) const;

    /** Whether a nesting would find a text.
        @param nameSpace    of the term whose text has the nesting */
    bool isNestingTarget(Containers::StringView key, UnsignedInt nameSpace) const;

    /** Why findings of a check are silenced, empty where they are not.
        @param term     index, or @ref NoTerm */
    Containers::StringView silenced(CheckKind kind, UnsignedInt term) const;

    /** Adds what a check has found.
        @param place    with file, path, term and language, which stay with the caller
        @param message  is copied
        @param term     which silences it: index, or @ref NoTerm */
    void add(LocalizationFindings& findings, CheckKind kind, LocalizationFinding place, Containers::StringView message,
        UnsignedInt term) const;

private:
    struct Silencing {
        UnsignedInt term;
        CheckKind kind;
        Containers::StringView reason;
    };

    void readSilencings();
    void readSilencings(const rapidjson::Value* silenced, UnsignedInt term);
    void findConflicts();
    void findPlurals();
    Containers::StringView keyAt(Int number) const;
    void findNestingTargets() const;
    void addNestingTarget(UnsignedInt nameSpace, Containers::StringView fileKey) const;

    const rapidjson::Value& _root;
    Containers::StringView _defaultCode;
    ProjectTerms _terms;
    std::vector<Containers::String> _fingerprints;
    /** Of the default language. */
    KeptValues _values;
    /** By namespace; numbers of terms, and behind them those of values. */
    std::vector<TermTree> _trees;
    std::vector<Conflict> _conflicts;
    std::vector<ValueConflict> _valueConflicts;
    std::vector<Silencing> _silencings;
    std::vector<VoidSilencing> _voidSilencings;
    /** By namespace. */
    std::vector<PluralSets> _pluralSets;
    /** Where the first set of a namespace is among all plurals. */
    std::vector<std::size_t> _firstPlurals;
    std::vector<CheckedPlural> _plurals;
    /** By term, indices of plurals or -1. */
    std::vector<Int> _pluralsOfTerms;

    mutable std::once_flag _haveNestingTargets;
    /** Namespace, ":" and path as the library looks it up. */
    mutable std::unordered_set<std::string> _nestingTargets;
};

}
