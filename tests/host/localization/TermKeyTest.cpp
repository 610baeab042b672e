#include "TermKey.h"

#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "TestProject.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

TEST(TermKey, EscapesWhatSeparatesInANameAndNothingElse) {
    EXPECT_EQ(TermKey::memberSegment("file"), "file");
    EXPECT_EQ(TermKey::memberSegment("a.b:c%d#e"), "a%2Eb%3Ac%25d%23e");
    EXPECT_EQ(TermKey::memberSegment("[0]"), "%5B0]");
    EXPECT_EQ(TermKey::memberSegment("a[0]"), "a[0]");
    EXPECT_EQ(TermKey::memberSegment("a\nb\x7f\0"_s), "a%0Ab%7F%00");
    EXPECT_EQ(TermKey::memberSegment("a/b~c ä日"), "a/b~c ä日");
    EXPECT_EQ(TermKey::memberSegment(""), "");
}

TEST(TermKey, NameComesBackFromItsSegment) {
    for(const Containers::StringView name: {""_s, "a.b:c%d#e"_s, "[0]"_s, "[["_s, "%2E"_s, "%"_s, "%%25"_s,
            "Status: Loading..."_s, "\0\n\x1f"_s, "日本"_s})
        EXPECT_EQ(TermKey::memberName(TermKey::memberSegment(name)), name);
}

TEST(TermKey, WhatIsNoEscapeStandsForItself) {
    EXPECT_EQ(TermKey::memberName("100%"), "100%");
    EXPECT_EQ(TermKey::memberName("%zz%2"), "%zz%2");
    EXPECT_EQ(TermKey::memberName("%41"), "%41");
    EXPECT_EQ(TermKey::memberName("%ff"), "%ff");
    EXPECT_EQ(TermKey::memberName("%2e%2E"), "..");
    EXPECT_EQ(TermKey::memberName("a%5B"), "a%5B");
}

TEST(TermKey, ElementsAreDecimalNumbersInBrackets) {
    EXPECT_EQ(TermKey::elementSegment(0), "[0]");
    EXPECT_EQ(TermKey::elementSegment(65535), "[65535]");
    EXPECT_EQ(TermKey::elementIndex("[0]"), 0);
    EXPECT_EQ(TermKey::elementIndex("[65535]"), 65535);
    for(const char* const name: {"", "[", "[]", "0", "[00]", "[01]", "[-1]", "[+1]", "[1", "1]", "[a]", "[65536]",
            "[4294967296]", "[99999]", "[1]]", "%5B0]"})
        EXPECT_EQ(TermKey::elementIndex(name), -1) << name;
}

TEST(TermKey, SplitsAtEveryDotAndKeepsEmptySegments) {
    const auto split = [](Containers::StringView key) {
        std::vector<std::string> segments;
        do segments.push_back(copied(TermKey::takeSegment(key, key)));
        while(key.data());
        return segments;
    };
    EXPECT_EQ(split("a.b.c"), (std::vector<std::string>{"a", "b", "c"}));
    EXPECT_EQ(split(""), (std::vector<std::string>{""}));
    EXPECT_EQ(split("."), (std::vector<std::string>{"", ""}));
    EXPECT_EQ(split("a.."), (std::vector<std::string>{"a", "", ""}));
    EXPECT_EQ(TermKey::segmentCount(""), 1u);
    EXPECT_EQ(TermKey::segmentCount("a..b"), 3u);
}

TEST(TermKey, CanonicalKeyOfAnyText) {
    EXPECT_EQ(TermKey::canonical("menu.file"), "menu.file");
    EXPECT_EQ(TermKey::canonical("100%"), "100%25");
    EXPECT_EQ(TermKey::canonical("a%2eb"), "a%2Eb");
    EXPECT_EQ(TermKey::canonical("a:b##c"), "a%3Ab%23%23c");
    EXPECT_EQ(TermKey::canonical("list.[0].[x]"), "list.[0].%5Bx]");
    EXPECT_EQ(TermKey::canonical("list.[99999]"), "list.%5B99999]");
    EXPECT_EQ(TermKey::canonical(""), "");
    EXPECT_EQ(TermKey::canonical("123"), "123");
}

TEST(TermKey, CanonicalKeyIsItsOwn) {
    std::mt19937 random{7};
    const std::string characters = "ab.[]0%2E5Be:#\n~/\xc3\xa4";
    for(int i = 0; i != 20000; ++i) {
        std::string key;
        for(unsigned size = random() % 12; size != 0; --size) key += characters[random() % characters.size()];
        const Containers::String canonical = TermKey::canonical(viewed(key));
        EXPECT_EQ(TermKey::canonical(canonical), canonical) << key;
        EXPECT_TRUE(TermKey::isCanonical(canonical)) << key;
        EXPECT_EQ(TermKey::isCanonical(viewed(key)), canonical == viewed(key)) << key;
    }
}

TEST(TermKey, TenKilobytesAreAKeyLikeAnyOther) {
    const std::string key(10240, 'k');
    EXPECT_EQ(TermKey::canonical(viewed(key)), viewed(key));
    const std::string dots(10240, '.');
    EXPECT_EQ(TermKey::segmentCount(viewed(dots)), 10241u);
    EXPECT_TRUE(TermKey::isCanonical(viewed(dots)));
}

namespace {

/** "namespace|path", "|path" for the default namespace. */
std::string split(const Containers::StringView key) {
    Containers::StringView path;
    const Containers::StringView written = TermKey::takeNamespace(key, path);
    return (written.data() ? copied(TermKey::namespaceName(written)) : "") + '|' + copied(path);
}

}

TEST(TermKey, NamespaceStandsBeforeTheFirstColon) {
    EXPECT_EQ(split("menu:file.open"), "menu|file.open");
    EXPECT_EQ(split("menu:a:b"), "menu|a:b");
    EXPECT_EQ(split("menu:"), "menu|");
    EXPECT_EQ(split("in%20game%2Etexts:x"), "in game.texts|x");
    EXPECT_EQ(split("file.open"), "|file.open");
    EXPECT_EQ(split("a%3Ab"), "|a%3Ab");
    EXPECT_EQ(split(""), "|");
}

TEST(TermKey, DefaultNamespaceHasNoNameInAKey) {
    EXPECT_EQ(split("translation:x"), "|x");
    EXPECT_EQ(TermKey::withNamespace(DefaultNamespace, "x"), "x");
    EXPECT_EQ(TermKey::namespaceName({}), "translation");
}

TEST(TermKey, WhatNamesNoFileIsNoNamespace) {
    for(const char* const key: {"Status: Loading...", ":x", "a b:x", "http/a:x", ".hidden:x", "%2Ehidden:x", "..:x",
            "a%00:x", "a%0Ab:x", "a\\b:x", "translation: x"})
        EXPECT_EQ(split(key), std::string{"|"} + key);
}

TEST(TermKey, NamespaceAndPathComeBackFromTheirKey) {
    for(const Containers::StringView name: {"menu"_s, "in game"_s, "a:b.c%d"_s, "[0]"_s, "日本"_s, "%20"_s, " x"_s})
        for(const Containers::StringView path:
            {"a.b"_s, ""_s, " x"_s, "%2520x"_s, " "_s, "[0]"_s, " [0]"_s, "a. b"_s}) {
            EXPECT_TRUE(TermKey::canTakeNamespace(name));
            const Containers::String key = TermKey::withNamespace(name, path);
            Containers::StringView rest;
            EXPECT_EQ(TermKey::namespaceName(TermKey::takeNamespace(key, rest)), name) << copied(key);
            EXPECT_EQ(TermKey::canonical(rest), path) << copied(key);
        }
    EXPECT_EQ(TermKey::withNamespace("menu", " x"), "menu:%20x");
    for(const Containers::StringView name: {""_s, ".x"_s, "a/b"_s, "a\\b"_s, "a\n"_s})
        EXPECT_FALSE(TermKey::canTakeNamespace(name));
    const std::string longest(TermKey::MaxNamespaceSize, 'n');
    EXPECT_TRUE(TermKey::canTakeNamespace(viewed(longest)));
    EXPECT_FALSE(TermKey::canTakeNamespace(viewed(longest + 'n')));
}

TEST(TermKey, FlatPathIsOneNameWithItsDots) {
    EXPECT_EQ(TermKey::flatKey("menu%2Efile"), "menu.file");
    EXPECT_EQ(TermKey::flatKey("Status%3A Loading%2E%2E%2E"), "Status%3A Loading...");
    EXPECT_EQ(TermKey::flatPath("menu.file"), "menu%2Efile");
    EXPECT_EQ(TermKey::flatPath("menu%2Efile"), "menu%2Efile");
    EXPECT_EQ(TermKey::flatPath("[0]"), "%5B0]");
    EXPECT_EQ(TermKey::flatPath("%20x"), " x");
    for(const Containers::StringView name:
        {""_s, "."_s, "a.b"_s, "%2E"_s, "[0]"_s, " x"_s, "100% of: #1\n"_s, "%20"_s}) {
        const Containers::String key = TermKey::memberSegment(name);
        EXPECT_EQ(TermKey::flatPath(TermKey::flatKey(key)), key);
        const Containers::String term = TermKey::withNamespace("flat", TermKey::flatKey(key));
        Containers::StringView path;
        TermKey::takeNamespace(term, path);
        EXPECT_EQ(TermKey::flatPath(path), key);
    }
}

}
