#include "TermLayout.h"

#include "PluralSets.h"
#include "TestProject.h"

namespace QuorvaneEngine {

namespace {

std::string project(const std::vector<const char*>& keys) {
    std::string terms;
    for(const char* const key: keys)
        terms += (terms.empty() ? "\"" : ",\"") + std::string{key} + R"(":{"translatable":true})";
    return R"({"localization":{"terms":{)" + terms + "}}}";
}

/** The keys of a layout in the order of their numbers, with blanks between, and conflicts behind. */
std::string layout(const std::string& json, const std::vector<const char*>& others = {},
    const std::vector<const char*>& values = {}, const UnsignedInt nameSpace = 0) {
    TestProject project{json};
    const ProjectTerms terms{project.project()};
    const PluralSets plurals{terms.fileKeys(nameSpace), "en"};
    const auto keysOf = [](const std::vector<const char*>& keys) {
        std::vector<TermLayout::Key> found;
        for(const char* const key: keys) found.push_back({key, key});
        return found;
    };
    const std::vector<TermLayout::Key> otherKeys = keysOf(others), valueKeys = keysOf(values);
    std::vector<LayoutConflict> conflicts;
    const TermLayout layout{terms, nameSpace, plurals, {otherKeys.data(), otherKeys.size()},
        {valueKeys.data(), valueKeys.size()}, conflicts};
    std::string text;
    Int last = -1;
    for(std::size_t i = 0; i != layout.size(); ++i) {
        text += (i ? " " : "") + copied(layout.key(i));
        EXPECT_EQ(layout.find(layout.fileKey(i), last), Int(i));
    }
    for(std::size_t i = 0; i != terms.terms().size(); ++i)
        if(const Int number = layout.term(i); number != -1) {
            EXPECT_EQ(copied(layout.key(std::size_t(number))), copied(terms.terms()[i].key));
        }
    for(const LayoutConflict& conflict: conflicts)
        text += "; " + copied(conflict.key) + " or " + copied(conflict.other);
    return text;
}

}

TEST(TermLayout, HasTheTranslatableTermsOfANamespaceInTheirOrder) {
    const std::string json = R"({"localization":{"terms":{"b":{"translatable":true},"menu:x":{"translatable":true},
        "hidden":{"translatable":false},"a":{"translatable":true}}}})";
    EXPECT_EQ(layout(json), "b a");
    EXPECT_EQ(layout(json, {}, {}, 1), "menu:x");
}

TEST(TermLayout, FormsStandWithTheirGroupInTheOrderOfTheCategories) {
    EXPECT_EQ(layout(project({"a_one", "a_other", "b"}), {"a_many", "a_few", "a_zero", "a_few"}),
        "a_zero a_one a_few a_many a_other b");
    // Also where the group lies apart.
    EXPECT_EQ(layout(project({"a_one", "b", "a_other"}), {"a_few"}), "a_one b a_few a_other");
}

TEST(TermLayout, FormsStandBehindAGroupThatHasAnotherOrder) {
    EXPECT_EQ(layout(project({"a_other", "a_one", "b"}), {"a_many", "a_few"}), "a_other a_one a_few a_many b");
}

TEST(TermLayout, WhatIsNoFormOfATranslatablePluralHasNoPlace) {
    EXPECT_EQ(layout(project({"a_other", "b"}), {"a_few", "c_few", "d"}), "a_other b");
    EXPECT_EQ(layout(R"({"localization":{"terms":{"a_one":{"translatable":true},"a_other":{"translatable":false}}}})",
                  {"a_few"}),
        "a_one");
}

TEST(TermLayout, ValuesStandBehindTheTermsAndTakeTheirPlaces) {
    EXPECT_EQ(layout(project({"a", "b"}), {}, {"n", "a", "n", "m"}), "a b n m");
}

TEST(TermLayout, ValuesHaveNoPlaceWhereATermIsNotTranslatable) {
    const std::string json =
        R"({"localization":{"terms":{"a":{"translatable":true},"hidden":{"translatable":false}}}})";
    EXPECT_EQ(layout(json, {}, {"hidden", "n"}), "a n");
}

TEST(TermLayout, ConflictsAreToldWithBothKeys) {
    EXPECT_EQ(layout(project({"menu", "menu.file", "x.[0]", "x.y"}), {}, {"menu.n", "x"}),
        "menu x.[0]; menu.file or menu; x.y or x.[0]; menu.n or menu; x or x.[0]");
    EXPECT_EQ(layout(project({"a: ", "a%3A ", "[0]"})), "a: ; a%3A  or a: ; [0] or ");
}

TEST(TermLayout, TermsComeBeforeFormsThatTheyLieBelow) {
    EXPECT_EQ(layout(project({"a_one", "a_other", "a_few.b", "a_few.c"}), {"a_few", "a_many", "a_few"}),
        "a_one a_many a_other a_few.b a_few.c; a_few or a_few.c");
}

}
