#include "app/TermSearch.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "ChangeManager.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "document/EditorSession.h"
#include "support/Allocations.h"

namespace QuorvaneEngine {
namespace {

constexpr char Small[] = R"({"hello": "Hello, friend!", "number": 7, "objects": {"door": {"text": "An oaken door."}},
    "localization": {"terms": {
        "menu.start": {"sourceText": "hello"},
        "menu.start.again": {"sourceText": "/objects/door/text"},
        "gone": {"sourceText": "/objects/window/text"},
        "odd": {"sourceText": "number"},
        "none": {}, "text": "no object"}}})";

std::string large(const std::size_t terms) {
    std::string texts, members;
    for(std::size_t i = 0; i != terms; ++i) {
        const std::string number = std::to_string(i);
        texts += (i ? ",\"t" : "\"t") + number + "\":\"What somebody says who is number " + number + "\"";
        members += (i ? ",\"term." : "\"term.") + number + "\":{\"sourceText\":\"/texts/t" + number + "\"}";
    }
    return "{\"texts\":{" + texts + "},\"localization\":{\"terms\":{" + members + "}}}";
}

class TermSearchTest: public testing::Test {
protected:
    void load(const std::string& json) {
        rapidjson::Document document;
        document.Parse(json.data(), json.size());
        ASSERT_FALSE(document.HasParseError());
        session.replaceDocument(std::move(document));
    }

    /** @return in how many frames it was done */
    int finish() {
        int frames = 1;
        for(search.update(); search.isSearching(); ++frames) search.update();
        return frames;
    }

    std::vector<std::string> keys(const char* text) {
        search.start(text);
        finish();
        std::vector<std::string> keys;
        for(const TermSearch::Found& found: search.found()) keys.emplace_back(found.key.data(), found.key.size());
        return keys;
    }

    using Keys = std::vector<std::string>;

    EditorSession session;
    TermSearch search{session.project()};
};

TEST_F(TermSearchTest, ATermIsFoundByItsKeyAndByItsText) {
    load(Small);
    EXPECT_EQ(keys("mestart"), (Keys{"menu.start", "menu.start.again"}));
    EXPECT_EQ(keys("OAKEN"), Keys{"menu.start.again"});
    EXPECT_EQ(search.found()[0].text, "An oaken door.");
    EXPECT_EQ(search.found()[0].source, "/objects/door/text");
    EXPECT_EQ(keys("friend"), Keys{"menu.start"});
    EXPECT_EQ(search.found()[0].source, "hello");
}

TEST_F(TermSearchTest, TermsWithoutATextAreFoundByTheirKeys) {
    load(Small);
    EXPECT_EQ(keys("gone"), Keys{"gone"});
    EXPECT_TRUE(search.found()[0].text.isEmpty());
    EXPECT_EQ(keys("odd"), Keys{"odd"});
    EXPECT_EQ(keys("none"), Keys{"none"});
    EXPECT_EQ(keys("text"), Keys{"text"});
}

TEST_F(TermSearchTest, NothingIsFoundByBlanksAndWhereThereAreNoTerms) {
    load(Small);
    EXPECT_EQ(keys("xyz"), Keys{});
    EXPECT_EQ(keys(" "), Keys{});
    EXPECT_FALSE(search.isSearching());
    for(const char* const project: {"{}", R"({"localization": []})", R"({"localization": {"terms": 5}})"}) {
        load(project);
        EXPECT_EQ(keys("a"), Keys{}) << project;
    }
}

TEST_F(TermSearchTest, TheBestComeFirstAndOfEqualOnesTheShorter) {
    load(R"({"localization": {"terms": {"xaxb": {}, "ab.longer": {}, "ab": {}, "ba ab": {}, "ab.c": {}}}})");
    EXPECT_EQ(keys("ab"), (Keys{"ab", "ab.c", "ba ab", "ab.longer", "xaxb"}));
}

TEST_F(TermSearchTest, OfALongTextTheBeginningIsSearched) {
    load("{\"a\": \"" + std::string(TermSearch::MaxSearched - 1, '.') +
        "xy\", \"localization\": {\"terms\": {\"1\": {\"sourceText\": \"a\"}}}}");
    EXPECT_EQ(keys("x"), Keys{"1"});
    EXPECT_EQ(keys("xy"), Keys{});
}

TEST_F(TermSearchTest, AChangeOfTheProjectBeginsTheSearchAnew) {
    load(Small);
    EXPECT_EQ(keys("start"), (Keys{"menu.start", "menu.start.again"}));
    EXPECT_FALSE(search.update());
    session.changes().pushRemoval("/localization/terms/menu.start");
    EXPECT_TRUE(search.update());
    ASSERT_EQ(search.found().size(), 1u);
    EXPECT_EQ(search.found()[0].key, "menu.start.again");
    session.undo();
    session.changes().pushChange("/objects/door/text", Containers::StringView{"A start"}, false);
    EXPECT_TRUE(search.update());
    ASSERT_EQ(search.found().size(), 2u);
    EXPECT_EQ(search.found()[0].text, "A start");
    load("{}");
    EXPECT_TRUE(search.update());
    EXPECT_TRUE(search.found().isEmpty());
}

TEST_F(TermSearchTest, ALargeProjectIsSearchedInPartsAndKnownFromThenOn) {
    constexpr std::size_t Terms = 24000;
    load(large(Terms));
    search.start("number 5432");
    search.update();
    EXPECT_TRUE(search.isSearching());
    EXPECT_LT(session.project().lookupCount(), Terms);
    EXPECT_GT(finish(), 3);
    ASSERT_FALSE(search.found().isEmpty());
    EXPECT_EQ(search.found()[0].key, "term.5432");
    EXPECT_LE(search.found().size(), TermSearch::MaxCount);

    const std::uint64_t lookups = session.project().lookupCount();
    search.start("somebody");
    const int frames = finish();
    EXPECT_EQ(search.found().size(), TermSearch::MaxCount);
    EXPECT_EQ(search.found()[0].key, "term.0");
    EXPECT_LT(session.project().lookupCount() - lookups, std::uint64_t(4 * frames));
}

TEST_F(TermSearchTest, WhatIsDoneCostsNothingMore) {
    load(large(1000));
    search.start("nobody 1");
    finish();
    const std::uint64_t lookups = session.project().lookupCount();
    const QuorvaneEngine::Test::Allocations counter;
    for(int i = 0; i != 100; ++i) EXPECT_FALSE(search.update());
    EXPECT_EQ(counter.count(), 0u);
    EXPECT_EQ(session.project().lookupCount(), lookups);
}

}
}
