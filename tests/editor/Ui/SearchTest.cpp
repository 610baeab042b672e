#include <cstring>
#include <string>
#include <vector>

#include <Corrade/Containers/GrowableArray.h>
#include <gtest/gtest.h>

#include "QuorvaneEditor/ProjectFile.h"
#include "Ui/Ui.h"
#include "support/Json.h"

namespace QuorvaneEngine {
namespace {

using Containers::Array;
using Containers::StringView;
using Test::load;

using Found = std::vector<std::string>;
using enum Ui::SearchFlag;

class UiSearch: public testing::Test {
protected:
    Found found() const {
        Found keys;
        for(const StringView key: results) keys.emplace_back(key.data(), key.size());
        return keys;
    }

    static Array<char> buffer(const std::string& text) {
        Array<char> buffer{Corrade::ValueInit, 64};
        std::memcpy(buffer.data(), text.data(), text.size());
        return buffer;
    }

    Found resources(StringView collection, StringView field, const std::string& text) {
        ui.performResourceSearch(collection, field, buffer(text), results);
        return found();
    }

    Found entries(StringView collection, const std::string& text, Ui::SearchFlags flags) {
        ui.performSearch(collection, buffer(text), results, flags);
        return found();
    }

    ProjectFile project;
    Ui ui{&project};
    Array<StringView> results;
};

// By a field

class UiResourceSearch: public UiSearch {
protected:
    UiResourceSearch() {
        load(project,
            R"({"textures":{"t9":{"name":"Grass"},"t1":{"name":"Rock"},"t5":{"name":"tall grass","file":"x"}}})");
    }
};

TEST_F(UiResourceSearch, AnEmptyTextFindsAllInDocumentOrder) {
    EXPECT_EQ(resources("textures", "name", ""), (Found{"t9", "t1", "t5"}));
}

TEST_F(UiResourceSearch, ATextIsSearchedInTheFieldWithoutRegardToCase) {
    EXPECT_EQ(resources("textures", "name", "GRASS"), (Found{"t9", "t5"}));
    EXPECT_EQ(resources("textures", "name", "ock"), (Found{"t1"}));
    EXPECT_EQ(resources("textures", "name", "t9"), Found{});
}

TEST_F(UiResourceSearch, AnyFieldCanBeSearched) {
    EXPECT_EQ(resources("textures", "file", "x"), (Found{"t5"}));
    EXPECT_EQ(resources("textures", "/textures/t1/name", "rock"), Found{});
}

TEST_F(UiResourceSearch, ACollectionThatDoesNotExistHasNoEntries) {
    results = Array<StringView>{Corrade::ValueInit, 3};
    EXPECT_EQ(resources("meshes", "name", ""), Found{});
    EXPECT_EQ(resources("meshes", "name", "grass"), Found{});
}

TEST_F(UiResourceSearch, FormerResultsAreForgotten) {
    resources("textures", "name", "");
    EXPECT_EQ(resources("textures", "name", "rock"), (Found{"t1"}));
    EXPECT_EQ(resources("textures", "name", "no such name"), Found{});
}

TEST_F(UiResourceSearch, ACollectionCanBeAPath) {
    load(project, R"({"a":{"b":{"x":{"name":"Rock"}}}})");
    EXPECT_EQ(resources("/a/b", "name", "rock"), (Found{"x"}));
}

TEST_F(UiResourceSearch, TheTextEndsAtItsFirstZeroByte) {
    EXPECT_EQ(resources("textures", "name", std::string{"rock\0grass", 10}), (Found{"t1"}));
}

TEST_F(UiResourceSearch, ABufferMayBeFullOrHaveNoBytes) {
    Array<char> full{Corrade::NoInit, 4};
    std::memcpy(full.data(), "rock", 4);
    ui.performResourceSearch("textures", "name", full, results);
    EXPECT_EQ(found(), (Found{"t1"}));
    ui.performResourceSearch("textures", "name", {}, results);
    EXPECT_EQ(found(), (Found{"t9", "t1", "t5"}));
}

TEST_F(UiResourceSearch, EntriesWithoutTheFieldAreFoundByAnEmptyTextAlone) {
    load(project, R"({"textures":{"a":{},"b":7,"c":null,"d":[{"name":"x"}],"e":{"name":5},"f":"x","g":{"name":"x"}}})");
    EXPECT_EQ(resources("textures", "name", ""), (Found{"a", "b", "c", "d", "e", "f", "g"}));
    EXPECT_EQ(resources("textures", "name", "x"), (Found{"g"}));
}

TEST_F(UiResourceSearch, ACollectionThatIsNoObjectHasNoEntries) {
    for(const char* const json: {R"({"c":[{"name":"x"}]})", R"({"c":"x"})", R"({"c":null})", R"({"c":1})"}) {
        load(project, json);
        EXPECT_EQ(resources("c", "name", ""), Found{}) << json;
        EXPECT_EQ(resources("c", "name", "x"), Found{}) << json;
    }
}

TEST_F(UiResourceSearch, KeysMayHoldAnyByte) {
    load(project, R"({"c":{"":{"name":"x"},"a/b~":{"name":"x"},"a\u0000b":{"name":"x"},"##":{"name":"x\u0000y"}}})");
    EXPECT_EQ(resources("c", "name", "x"), (Found{"", "a/b~", std::string{"a\0b", 3}, "##"}));
    EXPECT_EQ(resources("c", "name", "y"), (Found{"##"}));
}

TEST_F(UiResourceSearch, TheSameKeyTwiceIsTwoEntries) {
    load(project, R"({"c":{"a":{"name":"x"},"a":{"name":"y"}}})");
    EXPECT_EQ(resources("c", "name", "y"), (Found{"a"}));
    EXPECT_EQ(resources("c", "name", ""), (Found{"a", "a"}));
}

TEST_F(UiResourceSearch, AnArrayThatAViewHasGrownIsFilled) {
    for(int i = 0; i != 10; ++i) Containers::arrayAppend(results, StringView{"x"});
    EXPECT_EQ(resources("textures", "name", "rock"), (Found{"t1"}));
}

TEST_F(UiResourceSearch, ResultsKeepNoAddressOfTheLibraryThatFoundThem) {
    resources("textures", "name", "rock");
    EXPECT_EQ(results.deleter(), nullptr);
}

TEST_F(UiResourceSearch, ALargeCollectionIsWalkedOnce) {
    std::string json = R"({"c":{)";
    for(int i = 0; i != 20000; ++i)
        json += (i ? ",\"" : "\"") + std::to_string(i) + R"(":{"name":"n)" + std::to_string(i) + "\"}";
    load(project, json + "}}");
    resources("c", "name", "");
    EXPECT_EQ(results.size(), 20000u);
    const std::uint64_t before = project.lookupCount();
    EXPECT_EQ(resources("c", "name", "n19999"), (Found{"19999"}));
    // The collection and each entry's name.
    EXPECT_LE(project.lookupCount() - before, 20010u);
}

// By keys and values

class UiEntrySearch: public UiSearch {
protected:
    UiEntrySearch() {
        load(project, R"({"terms":{"xABCx":"first","second":"the abc","third":"none"},"x":{"y":"Hello","n":5}})");
    }
};

TEST_F(UiEntrySearch, KeysAreSearchedWithoutRegardToCase) {
    EXPECT_EQ(entries("terms", "abc", Keys), (Found{"xABCx"}));
}

TEST_F(UiEntrySearch, ValuesAreSearchedAndKeysIgnored) {
    EXPECT_EQ(entries("terms", "abc", Values), (Found{"second"}));
}

TEST_F(UiEntrySearch, BothFindEachEntryOnce) {
    load(project, R"({"terms":{"b":"n","abc":"abc","a":"abc","ABCD":"x"}})");
    EXPECT_EQ(entries("terms", "abc", Ui::SearchFlags{Keys} | Values), (Found{"abc", "a", "ABCD"}));
}

TEST_F(UiEntrySearch, WithoutAFlagATextFindsNothing) {
    EXPECT_EQ(entries("terms", "abc", {}), Found{});
    EXPECT_EQ(entries("terms", "abc", FollowReferences), Found{});
}

TEST_F(UiEntrySearch, AnEmptyTextFindsAllWhateverTheFlagsAre) {
    for(const Ui::SearchFlags flags: {Ui::SearchFlags{}, Ui::SearchFlags{Keys}, Ui::SearchFlags{Values}})
        EXPECT_EQ(entries("terms", "", flags), (Found{"xABCx", "second", "third"}));
}

TEST_F(UiEntrySearch, AReferenceStandsForTheStringThere) {
    load(project, R"({"terms":{"a":"/x/y","b":"/x/z"},"x":{"y":"Hello"}})");
    const Ui::SearchFlags followed = Ui::SearchFlags{Values} | FollowReferences;
    EXPECT_EQ(entries("terms", "hell", followed), (Found{"a"}));
    // The text of the path is another one now, but for the path that leads nowhere.
    EXPECT_EQ(entries("terms", "/x/", followed), (Found{"b"}));
    EXPECT_EQ(entries("terms", "/x/", Values), (Found{"a", "b"}));
    EXPECT_EQ(entries("terms", "hell", Values), Found{});
}

TEST_F(UiEntrySearch, WhatDoesNotBeginWithASlashIsNoReference) {
    load(project, R"({"terms":{"a":"x","b":"","c":" /x","d":"x/y"},"x":"Hello"})");
    const Ui::SearchFlags followed = Ui::SearchFlags{Values} | FollowReferences;
    EXPECT_EQ(entries("terms", "hello", followed), Found{});
    EXPECT_EQ(entries("terms", "x", followed), (Found{"a", "c", "d"}));
}

TEST_F(UiEntrySearch, AReferenceIsFollowedOneLevel) {
    load(project, R"({"terms":{"a":"/r"},"r":"/s","s":"Hello"})");
    const Ui::SearchFlags followed = Ui::SearchFlags{Values} | FollowReferences;
    EXPECT_EQ(entries("terms", "hello", followed), Found{});
    EXPECT_EQ(entries("terms", "/s", followed), (Found{"a"}));
}

TEST_F(UiEntrySearch, AReferenceToWhatIsNoStringIsAnEmptyText) {
    load(project, R"({"terms":{"a":"/x","b":"/terms","c":"/no~path"},"x":5})");
    const Ui::SearchFlags followed = Ui::SearchFlags{Values} | FollowReferences;
    EXPECT_EQ(entries("terms", "/", followed), (Found{"c"}));
    EXPECT_EQ(entries("terms", "5", followed), Found{});
}

TEST_F(UiEntrySearch, ValuesThatAreNoStringsAreEmptyTexts) {
    load(project, R"({"terms":{"a":5,"b":null,"c":{"t":"x"},"d":["x"],"e":"x"}})");
    EXPECT_EQ(entries("terms", "x", Values), (Found{"e"}));
    EXPECT_EQ(entries("terms", "c", Keys), (Found{"c"}));
}

TEST_F(UiEntrySearch, WhatIsNoCollectionHasNoEntries) {
    for(const char* const json:
        {R"({})", R"({"terms":["x"]})", R"({"terms":"x"})", R"({"terms":null})", "[1]", "null"}) {
        load(project, json);
        results = Array<StringView>{Corrade::ValueInit, 3};
        EXPECT_EQ(entries("terms", "", Keys), Found{}) << json;
        EXPECT_EQ(entries("terms", "x", Keys), Found{}) << json;
    }
}

}
}
