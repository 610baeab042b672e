#include "QuorvaneEditor/Utils.h"

#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "AllocationCounter.h"

namespace QuorvaneEngine {

namespace {

std::ptrdiff_t search(const std::string& haystack, const std::string& needle) {
    return Utils::caseInsensitiveSearch({haystack.data(), haystack.size()}, {needle.data(), needle.size()});
}

}

TEST(Utils, SearchFindsTheEmptyNeedleAtZero) {
    EXPECT_EQ(search("", ""), 0);
    EXPECT_EQ(search("abc", ""), 0);
    EXPECT_EQ(Utils::caseInsensitiveSearch(nullptr, nullptr), 0);
    EXPECT_EQ(Utils::caseInsensitiveSearch(nullptr, "a"), -1);
}

struct SearchCase {
    const char* haystack;
    const char* needle;
    std::ptrdiff_t position;
};

class UtilsSearch: public testing::TestWithParam<SearchCase> {};

TEST_P(UtilsSearch, FoldsCaseByUnicode) {
    EXPECT_EQ(search(GetParam().haystack, GetParam().needle), GetParam().position)
        << GetParam().haystack << " / " << GetParam().needle;
}

INSTANTIATE_TEST_SUITE_P(Ascii, UtilsSearch,
    testing::Values(SearchCase{"", "a", -1}, SearchCase{"German", "GER", 0}, SearchCase{"GERMAN", "man", 3},
        SearchCase{"abc", "abcd", -1}, SearchCase{"abc", "d", -1}, SearchCase{"aaab", "AAB", 1},
        SearchCase{"a-b", "A-B", 0}, SearchCase{"@[`{", "`", 2}, SearchCase{"@", "`", -1}, SearchCase{"[", "{", -1},
        SearchCase{"ababac", "abac", 2}, SearchCase{"aabaabaaab", "aabaaab", 3}));

INSTANTIATE_TEST_SUITE_P(Position, UtilsSearch,
    testing::Values(SearchCase{"äÖx", "X", 4}, SearchCase{"äÖx", "ö", 2}, SearchCase{"日本語", "語", 6},
        SearchCase{"ＡＢ", "ｂ", 3}, SearchCase{"\xF0\x90\x90\x80 deseret", "\xF0\x90\x90\xA8 D", 0}));

INSTANTIATE_TEST_SUITE_P(SharpS, UtilsSearch,
    testing::Values(SearchCase{"straße", "STRAẞE", 0}, SearchCase{"STRAẞE", "straße", 0},
        SearchCase{"straße", "STRASSE", -1}, SearchCase{"strasse", "ß", -1}, SearchCase{"Straße!", "E!", 6}));

INSTANTIATE_TEST_SUITE_P(DottedAndDotlessI, UtilsSearch,
    testing::Values(SearchCase{"İstanbul", "İ", 0}, SearchCase{"İstanbul", "i", -1}, SearchCase{"İstanbul", "ı", -1},
        SearchCase{"Iğdır", "i", 0}, SearchCase{"Iğdır", "ı", 4}, SearchCase{"ıI", "i", 2}));

INSTANTIATE_TEST_SUITE_P(KelvinAndLongS, UtilsSearch,
    testing::Values(SearchCase{"300 \u212A", "k", 4}, SearchCase{"300 \u212A", "K", 4},
        SearchCase{"kelvin", "\u212A", 0}, SearchCase{"\u212Aelvin x", "N X", 7}, SearchCase{"Waſſer", "wASS", 0}));

INSTANTIATE_TEST_SUITE_P(Ligature, UtilsSearch,
    testing::Values(SearchCase{"oﬃce", "ﬃ", 1}, SearchCase{"oﬃce", "ffi", -1}, SearchCase{"oﬃce", "CE", 4}));

INSTANTIATE_TEST_SUITE_P(FinalSigma, UtilsSearch,
    testing::Values(SearchCase{"ὈΔΟΣ", "δος", 3}, SearchCase{"οδος", "ΟΔΟΣ", 0}, SearchCase{"οδος", "οδοσ", 0}));

INSTANTIATE_TEST_SUITE_P(CombiningMarks, UtilsSearch,
    testing::Values(SearchCase{"caf\u0065\u0301", "E\u0301", 3}, SearchCase{"caf\u0065\u0301", "e", 3},
        SearchCase{"caf\u0065\u0301", "\u00E9", -1}, SearchCase{"caf\u00E9", "\u00C9", 3},
        SearchCase{"caf\u00E9", "e\u0301", -1}));

INSTANTIATE_TEST_SUITE_P(InvalidUtf8, UtilsSearch,
    testing::Values(SearchCase{"a\xFF"
                               "B",
                        "\xFF"
                        "b",
                        1},
        SearchCase{"\xFF", "\xFE", -1}, SearchCase{"Ö", "\x96", -1}, SearchCase{"\xC3", "Ö", -1},
        SearchCase{"abc\xC3", "\xC3", 3}, SearchCase{"\xE2\x84x", "X", 2}, SearchCase{"\xED\xA0\x80", "\xA0", 1},
        SearchCase{"\xC0\xAF", "/", -1}, SearchCase{"\xF4\x90\x80\x80", "\x80", 2},
        SearchCase{"\xF0\x9F\x90", "\x9F\x90", 1}));

TEST(Utils, SearchMayHoldZeroBytes) {
    EXPECT_EQ(search(std::string{"a\0B", 3}, std::string{"\0b", 2}), 1);
    EXPECT_EQ(search("ab", std::string{"b\0", 2}), -1);
}

TEST(Utils, LongNeedlesAreFoundToo) {
    const std::string needle(1000, 'X');
    EXPECT_EQ(search("y" + std::string(1000, 'x'), needle), 1);
    EXPECT_EQ(search("y" + std::string(999, 'x'), needle), -1);
    EXPECT_EQ(search(std::string(255, 'a') + "b", std::string(255, 'A') + "B"), 0);
    EXPECT_EQ(search(std::string(256, 'a') + "b", std::string(256, 'A') + "B"), 0);
}

TEST(Utils, ShortNeedlesAllocateNothing) {
    const std::string haystack(5000, 'a'), needle = std::string(254, 'A') + "ß";
    const std::size_t before = allocationCount();
    const std::ptrdiff_t position = search(haystack, needle);
    EXPECT_EQ(allocationCount(), before);
    EXPECT_EQ(position, -1);
    EXPECT_EQ(needle.size(), 256u);
}

TEST(Utils, RandomTextsAgreeWithComparingAtEveryPlace) {
    // Each character with its folded form.
    const std::vector<std::pair<std::string, std::string>> letters{{"a", "a"}, {"A", "a"}, {"b", "b"}, {"k", "k"},
        {"K", "k"}, {"\u212A", "k"}, {"s", "s"}, {"ſ", "s"}, {"ß", "ß"}, {"ẞ", "ß"}, {"σ", "σ"}, {"ς", "σ"}, {"Σ", "σ"},
        {"İ", "İ"}, {"ﬃ", "ﬃ"}, {"\xFF", "\xFF"}, {"🐉", "🐉"}};
    std::mt19937 random{5};
    std::size_t found = 0;
    for(int run = 0; run != 50000; ++run) {
        const std::size_t kinds = 1 + random() % letters.size();
        std::vector<std::size_t> haystack, needle;
        for(std::size_t i = random() % 20; i; --i) haystack.push_back(random() % kinds);
        for(std::size_t i = 1 + random() % 4; i; --i) needle.push_back(random() % kinds);

        std::string text, searched;
        for(const std::size_t letter: haystack) text += letters[letter].first;
        for(const std::size_t letter: needle) searched += letters[letter].first;
        std::ptrdiff_t expected = -1, bytes = 0;
        for(std::size_t i = 0; i + needle.size() <= haystack.size() && expected == -1; ++i) {
            bool isEqual = true;
            for(std::size_t j = 0; j != needle.size(); ++j)
                isEqual = isEqual && letters[haystack[i + j]].second == letters[needle[j]].second;
            if(isEqual) expected = bytes;
            bytes += std::ptrdiff_t(letters[haystack[i]].first.size());
        }
        ASSERT_EQ(search(text, searched), expected) << text << " / " << searched;
        found += expected >= 0;
    }
    EXPECT_GT(found, 5000u);
    EXPECT_LT(found, 45000u);
}

}
