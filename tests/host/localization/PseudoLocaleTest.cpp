#include "PseudoLocale.h"

#include <string>

#include <gtest/gtest.h>

#include "LanguageLookup.h"
#include "Placeholders.h"
#include "TestProject.h"
#include "support/CpuTime.h"

namespace QuorvaneEngine {

namespace {

std::string pseudo(const std::string& text) { return copied(PseudoLocale::text(viewed(text))); }

}

TEST(PseudoLocale, IsAccentedLongerAndBracketed) {
    EXPECT_EQ(pseudo("Save {{name}}"), "[Šåṽé {{name}} ~]");
    EXPECT_EQ(pseudo("Open the door"), "[Öṕéñ ţĥé ďööŕ ~~~~~]");
    EXPECT_EQ(pseudo("abcdefghijklmnopqrstuvwxyz"), "[åƀçďéƒĝĥîĵķļṁñöṕɋŕšţûṽŵẋýž ~~~~~ ~~~~]");
    EXPECT_EQ(pseudo("ABCDEFGHIJKLMNOPQRSTUVWXYZ"), "[ÅƁÇĎÉƑĜĤÎĴĶĻṀÑÖṔɊŔŠŢÛṼŴẊÝŽ ~~~~~ ~~~~]");
    EXPECT_EQ(PseudoLocale::text("Save"), PseudoLocale::text("Save"));
}

TEST(PseudoLocale, OfNothingIsNothing) {
    EXPECT_EQ(pseudo(""), "");
    EXPECT_EQ(PseudoLocale::text({}), "");
}

TEST(PseudoLocale, HasTheCodeOfNoLanguage) {
    EXPECT_STREQ(PseudoLocale::Code, "en-XA");
    EXPECT_EQ(findLanguage(PseudoLocale::Code), -1);
}

TEST(PseudoLocale, IsTwoFifthsLongerRoundedUp) {
    // Characters and what comes behind them
    const std::size_t data[][2]{{1, 1}, {2, 1}, {3, 2}, {4, 2}, {5, 2}, {6, 3}, {10, 4}, {11, 5}, {15, 6}, {100, 40}};
    for(const auto& [characters, more]: data) {
        const std::string text(characters, '1');
        EXPECT_EQ(pseudo(text).size(), characters + more + 2) << characters;
    }
    EXPECT_EQ(pseudo("1"), "[1~]");
    EXPECT_EQ(pseudo("123"), "[123 ~]");
    EXPECT_EQ(pseudo(std::string(15, '1')), '[' + std::string(15, '1') + " ~~~~~]");
    EXPECT_EQ(pseudo(std::string(18, '1')), '[' + std::string(18, '1') + " ~~~~~ ~]");
}

TEST(PseudoLocale, LengthIsThatOfTheWordsAlone) {
    EXPECT_EQ(pseudo("{{name}}"), "[{{name}}]");
    EXPECT_EQ(pseudo("$t(menu.quit)"), "[$t(menu.quit)]");
    EXPECT_EQ(pseudo("<b>1</b>"), "[<b>1</b>~]");
    EXPECT_EQ(pseudo("&nbsp;"), "[&nbsp;]");
}

TEST(PseudoLocale, LeavesWhatIsNotForReaders) {
    const struct {
        const char* text;
        const char* expected;
    } data[]{
        {"a{{a}}a", "[å{{a}}å~]"},
        {"{{a, number(style: percent)}}a", "[{{a, number(style: percent)}}å~]"},
        {"{{- html}}a", "[{{- html}}å~]"},
        {"$t(a, { \"count\": {{n}} })a", "[$t(a, { \"count\": {{n}} })å~]"},
        {"$t(a {{b) c}}d", "[$t(a {{b) c}}ď~]"},
        {"<b>a</b>", "[<b>å</b>~]"},
        {"<br/>a", "[<br/>å~]"},
        {"<1>a</1>", "[<1>å</1>~]"},
        {"<a title=\"b > c\">d</a>", "[<a title=\"b > c\">ď</a>~]"},
        {"<a href='{{url, with(\">\")}}'>d</a>", "[<a href='{{url, with(\">\")}}'>ď</a>~]"},
        {"<!-- a -->b", "[<!-- a -->ƀ~]"},
        {"a < b", "[å < ƀ ~]"},
        {"<a", "[<å~]"},
        {"<a <b>c", "[<å <b>ç ~]"},
        {"<3 isn't <b>a</b>", "[<3 îšñ'ţ <b>å</b> ~~~]"},
        {"<", "[<~]"},
        {"a&amp;b", "[å&amp;ƀ~]"},
        {"&#39;&#x1F;&frac12;b", "[&#39;&#x1F;&frac12;ƀ~]"},
        {"a & b;", "[å & ƀ; ~~]"},
        {"&;&#;&#x;&#g;&1a;", "[&;&#;&#ẋ;&#ĝ;&1å; ~~~~~~]"},
        {"&b", "[&ƀ~]"},
        {"a\\nb\\u00e9c\\x41d\\\\e", "[å\\nƀ\\u00e9ç\\x41ď\\\\é ~]"},
        {"\\{{a}}", "[\\{{a}}]"},
        {"\\<b>a", "[\\<b>å~]"},
        {"\\", "[\\]"},
        {"a {{b", "[å {{ƀ ~]"},
    };
    for(const auto& row: data) EXPECT_EQ(pseudo(row.text), row.expected) << row.text;
}

TEST(PseudoLocale, LeavesOtherLettersAndCombiningSequences) {
    EXPECT_EQ(pseudo("Tür 東京 מפתח"), "[Ţüŕ 東京 מפתח ~~~~]");
    // Letters with combining acute; each counts once.
    EXPECT_EQ(pseudo("e\u0301a\u0301o\u0301"), "[e\u0301a\u0301o\u0301 ~]");
    EXPECT_EQ(pseudo("ee\u0301\u0323e"), "[ée\u0301\u0323é ~]");
    EXPECT_EQ(pseudo("👩\u200d"), "[👩\u200d~]");
    EXPECT_EQ(pseudo("a\xff"), "[å\xff~]");
}

TEST(PseudoLocale, PlaceholdersComeOutAsTheyWentIn) {
    const char* const parts[]{"{{name}}", "{{- a, b(c, d)}}", "$t(x, {\"count\": {{n}} })", "text ", "<b>", "&lt;",
        "\\n", "{{", "}}", "$t(", ")", "é", "e\u0301", "\"", "'", "<", ">"};
    std::uint32_t state = 7;
    for(int round = 0; round != 5000; ++round) {
        std::string text;
        for(int i = round % 9; i--;) {
            state = state * 1664525u + 1013904223u;
            text += parts[(state >> 16) % (sizeof(parts) / sizeof(*parts))];
        }
        const std::string accented = pseudo(text);
        const Placeholders before{viewed(text)};
        const Placeholders after{viewed(accented)};
        ASSERT_EQ(after.placeholders().size(), before.placeholders().size()) << text;
        for(std::size_t i = 0; i != before.placeholders().size(); ++i)
            EXPECT_EQ(after.placeholders()[i].text, before.placeholders()[i].text) << text;
        ASSERT_EQ(after.nestings().size(), before.nestings().size()) << text;
        for(std::size_t i = 0; i != before.nestings().size(); ++i)
            EXPECT_EQ(after.nestings()[i].text, before.nestings()[i].text) << text;
    }
}

TEST(PseudoLocale, TakesTimeInProportionWhateverTheText) {
    for(const char* const part: {"<a", "<a=\"", "<a='\"", "&a", "\\", "{{a}}", "$t(a)", "e\u0301", "<a=\"<a='"}) {
        std::string text;
        while(text.size() < 1u << 20) text += part;
        const double begin = cpuTime();
        pseudo(text);
        EXPECT_LT(cpuTime() - begin, 5.0) << part;
    }
}

}
