#include "TextComparison.h"

#include "TestProject.h"

namespace QuorvaneEngine {

namespace {

std::string placeholders(const char* const source, const char* const translation) {
    return copied(TextComparison::placeholders(Placeholders{source}, Placeholders{translation}));
}

std::string formats(const char* const source, const char* const translation) {
    return copied(TextComparison::formats(Placeholders{source}, Placeholders{translation}));
}

std::string nestings(const char* const source, const char* const translation) {
    return copied(TextComparison::nestings(Placeholders{source}, Placeholders{translation}));
}

}

TEST(TextComparison, PlaceholdersAreComparedByName) {
    EXPECT_EQ(placeholders("a", "b"), "");
    EXPECT_EQ(placeholders("{{a}}", "{{ a, number }}{{- a}}"), "");
    EXPECT_EQ(placeholders("{{a}}{{b}}", "{{b}}{{a}}{{b}}"), "");
    EXPECT_EQ(placeholders("{{a.b}}", "{{a.c}}"),
        "lacks {{a.b}} of the source, and has {{a.c}}, which the source does not have");
    EXPECT_EQ(placeholders("{{c}} {{a}} {{b, x}}", ""), "lacks {{a}}, {{b, x}} and {{c}} of the source");
    EXPECT_EQ(placeholders("", "{{a}}{{b}}"), "has {{a}} and {{b}}, which the source does not have");
    EXPECT_EQ(placeholders("{{a}}{{b}}{{c}}{{d}}{{e}}{{f}}{{g}}", ""),
        "lacks {{a}}, {{b}}, {{c}}, {{d}}, {{e}} and 2 more of the source");
    EXPECT_EQ(placeholders("{{count}}", ""), "lacks {{count}} of the source");
}

TEST(TextComparison, FormsOfAPluralShareTheirPlaceholders) {
    std::vector<Containers::StringView> names;
    const Placeholders one{"One {{x}}"}, other{"{{count}} {{y}} {{x}}"};
    TextComparison::addNames(one, names);
    TextComparison::addNames(other, names);
    ASSERT_EQ(names.size(), 3u);
    EXPECT_EQ(names[0], "count");
    EXPECT_EQ(names[2], "y");
    EXPECT_EQ(TextComparison::placeholders(one, Placeholders{"{{count}} {{x}} {{y}}"}, &names), "");
    EXPECT_EQ(
        TextComparison::placeholders(other, Placeholders{"{{y}}"}, &names), "lacks {{count}} and {{x}} of the source");
    EXPECT_EQ(TextComparison::placeholders(other, Placeholders{"{{y}}"}, &names, true), "lacks {{x}} of the source");
    EXPECT_EQ(TextComparison::placeholders(one, Placeholders{"{{z}} {{x}}"}, &names),
        "has {{z}}, which the source does not have");
}

TEST(TextComparison, NamesInOtherThanTwoBracesArePlainText) {
    const auto braces = [](const char* const source, const char* const text,
                            const std::vector<Containers::StringView>* const forms = nullptr) {
        return copied(TextComparison::wrongBraces(source, Placeholders{source}, text, Placeholders{text}, forms));
    };
    EXPECT_EQ(braces("{{a}} {{b}}", "{ a } {b, number} {c} {"),
        "has { a } and {b, number} as plain text, as a placeholder has two braces on each side");
    EXPECT_EQ(braces("{{a}}", "{{a}"), "has {{a} as plain text, as a placeholder has two braces on each side");
    EXPECT_EQ(braces("{{a}}", "{a}}"), "has {a}} as plain text, as a placeholder has two braces on each side");
    EXPECT_EQ(braces("{{a}}", "{a} {{a}}"), "");
    EXPECT_EQ(braces("{{a}}: {a}", "{a}"), "");
    EXPECT_EQ(braces("a", "{a} {}"), "");
    EXPECT_EQ(
        braces("{{a}}", "{{{{a } b {a"), "has {{{{a } as plain text, as a placeholder has two braces on each side");
    const std::vector<Containers::StringView> forms{"count"};
    EXPECT_EQ(braces("One key", "{count}", &forms),
        "has {count} as plain text, as a placeholder has two braces on each side");
}

TEST(TextComparison, FormatsAreComparedWithoutBlanks) {
    EXPECT_EQ(formats("{{a, b(c: d)}}", "{{a,b( c:d )}}"), "");
    EXPECT_EQ(formats("{{a}}", "{{a}}"), "");
    EXPECT_EQ(formats("{{a, b}}", "{{a, c}}"), "has {{a, c}} where the source has {{a, b}}");
    EXPECT_EQ(formats("{{a}}", "{{- a}}"), "has {{- a}} where the source has {{a}}");
    EXPECT_EQ(formats("{{a}}", "{{a}} {{a, b}}"), "has {{a, b}}, which the source does not have");
    EXPECT_EQ(formats("{{a}} {{a, b}}", "{{a}}"), "lacks {{a, b}} of the source");
    // Names are another matter.
    EXPECT_EQ(formats("{{a, b}}", "{{c, d}}"), "");
}

TEST(TextComparison, NestingsAreComparedByKey) {
    EXPECT_EQ(nestings("$t(a)", "$t( a )$t(a, {\"x\": 1})"), "");
    EXPECT_EQ(nestings("$t(a, {\"x\": 1}) $t(b)", "$t(c)"),
        "lacks $t(a, {\"x\": 1}) and $t(b) of the source, and has $t(c), which the source does not have");
}

TEST(TextComparison, UnknownNestingsAreThoseOfATextAlone) {
    const auto isTarget = [](const Containers::StringView key) { return key == "known"; };
    EXPECT_EQ(TextComparison::unknownNestings(Placeholders{"$t(known) $t(a) $t(a) $t(b_{{x}})"}, nullptr, isTarget),
        "has $t(a), and no exported term has this key");
    const Placeholders source{"$t(a)"};
    EXPECT_EQ(TextComparison::unknownNestings(Placeholders{"$t(a)"}, &source, isTarget), "");
    EXPECT_EQ(TextComparison::unknownNestings(Placeholders{"a"}, nullptr, isTarget), "");
}

TEST(TextComparison, MissingFormsAreNamedInTheirOrder) {
    EXPECT_EQ(TextComparison::missingForms(PluralCategory::Few, "Russian"),
        "lacks the form few, which Russian has numbers for");
    EXPECT_EQ(TextComparison::missingForms(PluralCategory::Zero | PluralCategory::Few, "Arabic"),
        "lacks the forms zero and few, which Arabic has numbers for");
    EXPECT_EQ(
        TextComparison::missingForms(PluralCategory::One | PluralCategory::Other | PluralCategory::Few, "Russian"),
        "lacks the forms one, few and other, which Russian has numbers for");
}

TEST(TextComparison, OuterBlanksAreShownAsTheyAre) {
    EXPECT_EQ(TextComparison::outerBlanks("a b", "c  d"), "");
    EXPECT_EQ(TextComparison::outerBlanks(" a", "\u3000b"), "begins with \"\\u3000\" where the source has \" \"");
    EXPECT_EQ(TextComparison::outerBlanks("a\t", "b\r\n"), "ends with \"\\r\\n\" where the source has \"\\t\"");
    EXPECT_EQ(TextComparison::outerBlanks("a", "  "), "begins with \"  \" where the source has no blank");
    const std::string blanks(100, ' ');
    EXPECT_EQ(copied(TextComparison::outerBlanks("a", viewed(blanks + "b"))),
        "begins with \"" + std::string(60, ' ') + "...\" where the source has no blank");
}

TEST(TextComparison, LettersAreThoseForReaders) {
    for(const char* const text: {"a", "É", "東", "ж", "1 a", "<b>a</b>", "{{a}} b", "&lt;a"})
        EXPECT_TRUE(TextComparison::hasLetters(text)) << text;
    for(const char* const text: {"", "1", "%", "{{a}}", "$t(a)", "<b>1</b>", "&amp;", "\\n", "👍", "\xff", "…"})
        EXPECT_FALSE(TextComparison::hasLetters(text)) << text;
}

TEST(TextComparison, LongValuesAreShownInPart) {
    EXPECT_EQ(TextComparison::shown("a\nb"), "a\\nb");
    const std::string text(60, 'a');
    EXPECT_EQ(copied(TextComparison::shown(viewed(text))), text);
    EXPECT_EQ(copied(TextComparison::shown(viewed(text + 'b'))), text + "...");
    // No character is cut in two.
    EXPECT_EQ(copied(TextComparison::shown(viewed(text.substr(1) + "é"))), text.substr(1) + "...");
}

}
