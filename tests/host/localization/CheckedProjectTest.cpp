#include "CheckedProject.h"

#include "Findings.h"

namespace QuorvaneEngine {

TEST(CheckedProject, KnowsThePluralsOfEveryNamespace) {
    TestProject project{translated({{"a_one", "{{x}}"}, {"a_other", "{{y}} {{x}}"}, {"common:b_ordinal_one", "B"},
                                       {"common:b_ordinal_other", "C"}, {"file_other", "D"}},
        {})};
    const CheckedProject checked{project.project().document(), "en"};
    ASSERT_EQ(checked.plurals().size(), 2u);
    EXPECT_EQ(checked.plurals()[0].kind, PluralKind::Cardinal);
    EXPECT_EQ(checked.plurals()[0].otherTerm(), 1u);
    EXPECT_EQ(checked.plurals()[0].terms[1], 0);
    EXPECT_EQ(checked.plurals()[0].terms[3], -1);
    ASSERT_EQ(checked.plurals()[0].names.size(), 2u);
    EXPECT_EQ(checked.plurals()[0].names[1], "y");
    EXPECT_EQ(checked.plurals()[1].kind, PluralKind::Ordinal);
    EXPECT_EQ(checked.plurals()[1].otherTerm(), 3u);

    EXPECT_EQ(checked.pluralOf(0), &checked.plurals()[0]);
    EXPECT_EQ(checked.pluralOf(3), &checked.plurals()[1]);
    EXPECT_EQ(checked.pluralOf(4), nullptr);
    PluralCategory category{};
    EXPECT_EQ(checked.pluralOf("a_few", category), &checked.plurals()[0]);
    EXPECT_EQ(category, PluralCategory::Few);
    EXPECT_EQ(checked.pluralOf("common:b_ordinal_two", category), &checked.plurals()[1]);
    EXPECT_EQ(checked.pluralOf("common:a_few", category), nullptr);
    EXPECT_EQ(checked.pluralOf("gone:a_few", category), nullptr);
    EXPECT_EQ(checked.pluralOf("a", category), nullptr);
}

TEST(CheckedProject, SaysLanguagesByName) {
    EXPECT_EQ(languageNameOf("pt-BR"), "Portuguese (Brazil)");
    EXPECT_EQ(languageNameOf("no code"), "no code");
}

TEST(CheckedProject, KnowsTheReasonsOfSilencings) {
    TestProject project{R"({"localization": {"checks": {"outer-blanks": "never"}, "terms": {
        "a": {}, "b": {"silenced": {"same-source": "once", "outer-blanks": "twice", "x": "y"}}, "c": {}}}})"};
    const CheckedProject checked{project.project().document(), "en"};
    EXPECT_EQ(checked.silenced(CheckKind::OuterBlanks, 0), "never");
    EXPECT_EQ(checked.silenced(CheckKind::OuterBlanks, 1), "twice");
    EXPECT_EQ(checked.silenced(CheckKind::OuterBlanks, CheckedProject::NoTerm), "never");
    EXPECT_EQ(checked.silenced(CheckKind::SameSource, 0), "");
    EXPECT_EQ(checked.silenced(CheckKind::SameSource, 1), "once");
    EXPECT_EQ(checked.silenced(CheckKind::SameSource, 2), "");
    ASSERT_EQ(checked.voidSilencings().size(), 1u);
    EXPECT_EQ(checked.voidSilencings()[0].term, 1u);
    EXPECT_EQ(checked.voidSilencings()[0].name, "x");
    EXPECT_EQ(checked.voidSilencings()[0].kind, CheckKind::UnknownCheck);
}

TEST(CheckedProject, KnowsWhereNestingsLead) {
    TestProject project{translated({{"a.b", "A"}, {"common:c_male_one", "C"}}, {})};
    const CheckedProject checked{project.project().document(), "en"};
    EXPECT_TRUE(checked.isNestingTarget("a.b", 0));
    EXPECT_TRUE(checked.isNestingTarget("a.b", 1));
    EXPECT_TRUE(checked.isNestingTarget("c", 1));
    EXPECT_TRUE(checked.isNestingTarget("common:c_male", 0));
    EXPECT_FALSE(checked.isNestingTarget("c", 0));
    EXPECT_FALSE(checked.isNestingTarget("a", 0));
    EXPECT_FALSE(checked.isNestingTarget("", 0));
}

TEST(CheckedProject, AKeyOfManySuffixesIsNoBurden) {
    const std::string key(100000, '_');
    TestProject project{translated({{"x" + key, "A"}}, {})};
    const CheckedProject checked{project.project().document(), "en"};
    EXPECT_TRUE(checked.isNestingTarget(viewed("x" + key), 0));
    EXPECT_FALSE(checked.isNestingTarget("x", 0));
}

TEST(CheckedProject, TermsInConflictAreFormsOfAPluralAsInAnImport) {
    TestProject project{translated({{"a_one", "A"}, {"a_other.x", "B"}, {"a_other", "C"}}, {})};
    const CheckedProject checked{project.project().document(), "en"};
    ASSERT_EQ(checked.conflicts().size(), 1u);
    EXPECT_EQ(checked.conflicts()[0].term, 2u);
    EXPECT_EQ(checked.conflicts()[0].other, 1);
    EXPECT_EQ(checked.plurals().size(), 1u);
}

}
