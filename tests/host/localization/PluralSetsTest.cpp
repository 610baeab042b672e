#include "PluralSets.h"

#include <initializer_list>
#include <random>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "TestProject.h"
#include "support/CpuTime.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

std::string formOf(const Containers::StringView key) {
    PluralForm form;
    if(!parsePluralForm(key, form)) return "none";
    return copied(form.base) + (form.kind == PluralKind::Ordinal ? " ordinal " : " ") +
        copied(pluralCategoryName(form.category));
}

struct ProvenSets {
    explicit ProvenSets(const Containers::StringView code, const std::initializer_list<Containers::StringView> keys)
        : keys{keys}, sets{{this->keys.data(), this->keys.size()}, code} {}

    /** All sets with their forms: "base one other, ...". */
    std::string text() const {
        std::string out;
        for(const PluralSet& set: sets.sets()) {
            out += (out.empty() ? "" : ", ") + copied(set.base);
            if(set.kind == PluralKind::Ordinal) out += " ordinal";
            for(const PluralCategory category: AllPluralCategories) {
                if(set.form(category) == -1) continue;
                EXPECT_EQ(keys[std::size_t(set.form(category))], pluralKey(set.base, set.kind, category));
                out += ' ' + copied(pluralCategoryName(category));
            }
        }
        return out;
    }

    std::vector<Containers::StringView> keys;
    PluralSets sets;
};

std::string proven(const Containers::StringView code, const std::initializer_list<Containers::StringView> keys) {
    return ProvenSets{code, keys}.text();
}

}

TEST(PluralForm, IsTheSuffixOfTheLastSegment) {
    EXPECT_EQ(formOf("apples_one"), "apples one");
    EXPECT_EQ(formOf("menu.apples_zero"), "menu.apples zero");
    EXPECT_EQ(formOf("menu_other.apples_few"), "menu_other.apples few");
    EXPECT_EQ(formOf("menu%2Eapples_many"), "menu%2Eapples many");
    EXPECT_EQ(formOf("apples__two"), "apples_ two");
    EXPECT_EQ(formOf("apples_one_other"), "apples_one other");
    EXPECT_EQ(formOf("friend_male_one"), "friend_male one");
    EXPECT_EQ(formOf("You have one_one"), "You have one one");
}

TEST(PluralForm, OfAnOrdinalHasTheWordBefore) {
    EXPECT_EQ(formOf("floor_ordinal_one"), "floor ordinal one");
    EXPECT_EQ(formOf("menu.floor_ordinal_other"), "menu.floor ordinal other");
    EXPECT_EQ(formOf("floor_ordinal"), "none");
    EXPECT_EQ(formOf("ordinal_one"), "ordinal one");
    EXPECT_EQ(formOf("_ordinal_one"), "_ordinal one");
    EXPECT_EQ(formOf("menu._ordinal_one"), "menu._ordinal one");
}

TEST(PluralForm, NeedsANameAndAWholeSuffix) {
    for(const char* const key: {"", "one", "_one", "menu._one", "menu.one", "booking_0", "apples_One", "apples_plural",
            "apples-one", "apples_one ", "apples_one.text", "apples_other.[0]", "none", "apples_another", "apples_"})
        EXPECT_EQ(formOf(key), "none") << key;
}

TEST(PluralForm, ComesBackFromItsKey) {
    for(const Containers::StringView base: {"a"_s, "menu.apples"_s, "a_b_"_s, "ä b%2E"_s})
        for(const PluralKind kind: {PluralKind::Cardinal, PluralKind::Ordinal})
            for(const PluralCategory category: AllPluralCategories) {
                PluralForm form;
                ASSERT_TRUE(parsePluralForm(pluralKey(base, kind, category), form));
                EXPECT_EQ(form.kind, kind);
                EXPECT_EQ(form.category, category);
            }
    EXPECT_EQ(pluralKey("a", PluralKind::Cardinal, PluralCategory::Few), "a_few");
    EXPECT_EQ(pluralKey("a", PluralKind::Ordinal, PluralCategory::Few), "a_ordinal_few");
}

TEST(PluralSets, AreProvenByOtherAndOneMoreForm) {
    EXPECT_EQ(proven("en", {"door_one", "door_other"}), "door one other");
    EXPECT_EQ(proven("en", {"door_other", "x", "door_one", "door"}), "door one other");
    EXPECT_EQ(proven("en", {"door_zero", "door_other"}), "door zero other");
    EXPECT_EQ(proven("en", {"a.door_one", "b.door_other"}), "");
    EXPECT_EQ(proven("en", {"door_one"}), "");
    EXPECT_EQ(proven("en", {"door_zero", "door_one"}), "");
    EXPECT_EQ(proven("en", {}), "");
}

TEST(PluralSets, ASuffixThatMeansSomethingElseProvesNothing) {
    EXPECT_EQ(proven("en", {"file_other", "file_image", "file_video"}), "");
    EXPECT_EQ(proven("en", {"file_other"}), "");
    EXPECT_EQ(proven("en", {"booking_0", "booking_1", "booking_other"}), "");
    EXPECT_EQ(proven("en", {"a_few", "a_other"}), "");
    EXPECT_EQ(proven("en", {"a_few", "a_many", "a_one", "a_other"}), "");
    EXPECT_EQ(proven("en", {"step_one", "step_two", "step_other"}), "");
    EXPECT_EQ(proven("en", {"apples", "apples_plural"}), "");
}

TEST(PluralSets, AContextIsPartOfTheBase) {
    EXPECT_EQ(proven("en", {"friend_male_one", "friend_male_other", "friend_female_one", "friend_female_other"}),
        "friend_male one other, friend_female one other");
    EXPECT_EQ(proven("en", {"friend_one", "friend_other", "friend_male_one", "friend_male_other", "friend_male"}),
        "friend one other, friend_male one other");
    EXPECT_EQ(proven("en", {"friend_male", "friend_female", "friend_other"}), "");
}

TEST(PluralSets, OrdinalsAreApartFromCardinals) {
    EXPECT_EQ(proven("en",
                  {"floor_one", "floor_ordinal_one", "floor_ordinal_few", "floor_other", "floor_ordinal_two",
                      "floor_ordinal_other"}),
        "floor one other, floor ordinal one two few other");
    EXPECT_EQ(proven("en", {"floor_ordinal_one", "floor_other"}), "");
    EXPECT_EQ(proven("en", {"floor_two", "floor_ordinal_two", "floor_ordinal_other"}), "floor ordinal two other");
    EXPECT_EQ(proven("it", {"floor_ordinal_many", "floor_ordinal_other"}), "floor ordinal many other");
    EXPECT_EQ(proven("it", {"floor_ordinal_one", "floor_ordinal_other"}), "");
}

TEST(PluralSets, FormsAreThoseOfTheDefaultLanguage) {
    EXPECT_EQ(proven("pl", {"a_one", "a_few", "a_many", "a_other"}), "a one few many other");
    EXPECT_EQ(proven("pl", {"a_one", "a_two", "a_other"}), "");
    EXPECT_EQ(
        proven("ar", {"a_zero", "a_one", "a_two", "a_few", "a_many", "a_other"}), "a zero one two few many other");
    EXPECT_EQ(proven("fr", {"a_one", "a_many", "a_other"}), "a one many other");
    EXPECT_EQ(proven("pt-BR", {"a_many", "a_other"}), "a many other");
}

TEST(PluralSets, WithOtherAloneALanguageProvesThemByIt) {
    EXPECT_EQ(proven("ja", {"door_other", "x", "doors_x"}), "door other");
    EXPECT_EQ(proven("ja", {"door_zero", "door_other"}), "door zero other");
    EXPECT_EQ(proven("ja", {"file_image", "file_other"}), "");
    EXPECT_EQ(proven("ja", {"file_one", "file_other"}), "");
    EXPECT_EQ(proven("ja", {"file_other", "file_image.title"}), "");
    EXPECT_EQ(proven("ja", {"friend_other", "friend_male_other", "friend_female_other"}),
        "friend other, friend_male other, friend_female other");
    EXPECT_EQ(proven("ja", {"a.file_other", "b.file_image"}), "a.file other");
    EXPECT_EQ(proven("de", {"floor_ordinal_other", "floor_x", "wall_other"}), "floor ordinal other");
    EXPECT_EQ(proven("de", {"floor_ordinal_other", "floor_ordinal_x"}), "");
}

TEST(PluralSets, NoRulesProveNothing) {
    EXPECT_EQ(proven("la", {"door_one", "door_other"}), "");
    EXPECT_EQ(proven("", {"door_one", "door_other"}), "");
}

TEST(PluralSets, FindTheSetOfAnyFormThatAKeyWouldBe) {
    const ProvenSets proven{"en", {"x_other", "door_one", "door_other", "floor_ordinal_few", "floor_ordinal_other"}};
    for(const char* const key: {"door_zero", "door_one", "door_two", "door_few", "door_many", "door_other"})
        EXPECT_EQ(proven.sets.find(key), 0) << key;
    EXPECT_EQ(proven.sets.find("floor_ordinal_many"), 1);
    for(const char* const key: {"door", "door_", "door_male", "door_ordinal_one", "floor_one", "floor_ordinal",
            "x_other", "x_few", "a.door_few", ""})
        EXPECT_EQ(proven.sets.find(key), -1) << key;
}

TEST(PluralSets, StayTheSameWhenMoved) {
    ProvenSets proven{"en", {"door_one", "door_other"}};
    const PluralSets moved = std::move(proven.sets);
    EXPECT_EQ(moved.find("door_few"), 0);
    EXPECT_EQ(moved.sets()[0].form(PluralCategory::Other), 1);
}

TEST(PluralSets, AreThoseOfTheDefinitionInAnyCatalogue) {
    std::mt19937 random{5};
    const std::vector<std::string> words{"a", "b", "a_x", "m.a", "a_one", "a_ordinal", "m"};
    const std::vector<std::string> suffixes{"", "_zero", "_one", "_two", "_few", "_many", "_other", "_ordinal_other",
        "_ordinal_one", "_ordinal_few", "_x", ".t"};
    std::size_t provenCount = 0, unprovenCount = 0;
    for(const char* const code: {"en", "ja", "pl", "de", "it", "la"})
        for(int round = 0; round != 300; ++round) {
            std::set<std::string> keys;
            for(unsigned i = random() % 12; i != 0; --i)
                keys.insert(words[random() % words.size()] + suffixes[random() % suffixes.size()]);
            std::vector<Containers::StringView> views;
            for(const std::string& key: keys) views.push_back(viewed(key));
            const PluralSets sets{{views.data(), views.size()}, code};

            for(const Containers::StringView key: views) {
                PluralForm form;
                if(!parsePluralForm(key, form)) {
                    EXPECT_EQ(sets.find(key), -1);
                    continue;
                }
                const PluralCategories rules = pluralCategories(code, form.kind);
                const auto isAllowed = [&](const PluralForm& other) {
                    return bool((pluralCategories(code, other.kind) | PluralCategory::Zero) & other.category);
                };
                bool hasOther = false, hasMore = false, areAllowed = bool(rules), hasOtherKey = false;
                const Containers::String others = pluralKey(form.base, form.kind, PluralCategory::Other);
                for(const Containers::StringView second: views) {
                    PluralForm other;
                    const bool isForm = parsePluralForm(second, other);
                    if(isForm && other.base == form.base && other.kind == form.kind) {
                        (other.category == PluralCategory::Other ? hasOther : hasMore) = true;
                        areAllowed = areAllowed && isAllowed(other);
                    } else if(second.hasPrefix(others.exceptSuffix(5)) && !(isForm && isAllowed(other)))
                        hasOtherKey = true;
                }
                const bool isProven =
                    hasOther && areAllowed && (hasMore || (rules == PluralCategory::Other && !hasOtherKey));
                EXPECT_EQ(sets.find(key) != -1, isProven) << code << ' ' << copied(key);
                ++(isProven ? provenCount : unprovenCount);
            }
        }
    EXPECT_GT(provenCount, 500u);
    EXPECT_GT(unprovenCount, 500u);
}

TEST(PluralSets, ManyKeysOfUnderscoresTakeNoTimeOfTheirSquare) {
    std::vector<std::string> keys;
    for(int i = 0; i != 20000; ++i)
        keys.push_back(std::string(200, '_') + std::to_string(i) + (i % 2 ? "_other" : "_x"));
    std::vector<Containers::StringView> views;
    for(const std::string& key: keys) views.push_back(viewed(key));
    const double start = cpuTime();
    const PluralSets sets{{views.data(), views.size()}, "ja"};
    EXPECT_LT(cpuTime() - start, 2.0);
    EXPECT_EQ(sets.sets().size(), 10000u);
}

}
