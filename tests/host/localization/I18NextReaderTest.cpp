#include "I18NextReader.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "Catalogue.h"
#include "JsonReader.h"
#include "TestProject.h"

namespace QuorvaneEngine {

namespace {

/** "key=text" and "key:=value" of every entry, then "key: reason" of notices, or "line:column: reason" of a refusal. */
std::vector<std::string> read(const std::string& bytes) {
    Catalogue catalogue;
    JsonError error;
    if(!readI18Next(viewed(bytes), catalogue, error))
        return {std::to_string(error.line) + ':' + std::to_string(error.column) + ": " + copied(error.reason)};
    std::vector<std::string> lines;
    for(const CatalogueEntry& entry: catalogue.entries()) {
        rapidjson::StringBuffer value;
        rapidjson::Writer<rapidjson::StringBuffer> writer{value};
        if(entry.value) entry.value->Accept(writer);
        lines.push_back(copied(entry.key) + (entry.value ? ":=" : "=") + copied(entry.text) + value.GetString());
    }
    for(const CatalogueNotice& one: catalogue.notices()) lines.push_back(copied(one.key) + ": " + copied(one.reason));
    return lines;
}

using Lines = std::vector<std::string>;

}

TEST(I18NextReader, NestedMembersAreJoinedByDots) {
    EXPECT_EQ(read(R"({"menu": {"file": {"open": "Open"}, "edit": "Edit"}, "title": "T"})"),
        (Lines{"menu.file.open=Open", "menu.edit=Edit", "title=T"}));
}

TEST(I18NextReader, FlatKeysKeepTheirDots) {
    EXPECT_EQ(read(R"({"menu.file": "F", "Status: Loading...": "L", "50% #1": "P"})"),
        (Lines{"menu%2Efile=F", "Status%3A Loading%2E%2E%2E=L", "50%25 %231=P"}));
}

TEST(I18NextReader, ElementsOfArraysAreNumbered) {
    EXPECT_EQ(read(R"({"list": ["a", ["b"], {"c": "d"}, null], "[0]": "name"})"),
        (Lines{"list.[0]=a", "list.[1].[0]=b", "list.[2].c=d", "list.[3]=", "%5B0]=name"}));
}

TEST(I18NextReader, NullIsNoText) { EXPECT_EQ(read(R"({"a": null, "b": ""})"), (Lines{"a=", "b="})); }

TEST(I18NextReader, WhatIsNoTextIsKeptInItsPlace) {
    EXPECT_EQ(read(R"({"n": 1.5, "t": true, "f": false, "o": {}, "l": {"a": []}, "x": "X", "list": [-2, [], {}]})"),
        (Lines{"n:=1.5", "t:=true", "f:=false", "o:={}", "l.a:=[]", "x=X", "list.[0]:=-2", "list.[1]:=[]",
            "list.[2]:={}"}));
}

TEST(I18NextReader, NamesThatProgramsLoseAreKeptAndNoticed) {
    EXPECT_EQ(read(R"({"__proto__": {"a": "x"}, "b": {"constructor": "y", "prototype": ""}, "proto": "z"})"),
        (Lines{"__proto__.a=x", "b.constructor=y", "b.prototype=", "proto=z",
            "__proto__: is lost where the i18next library merges a file into another one",
            "b.constructor: is lost where the i18next library merges a file into another one",
            "b.prototype: is lost in many programs that merge files, though not in the i18next library"}));
}

TEST(I18NextReader, EmptyObjectHasNoTexts) { EXPECT_EQ(read("{}"), Lines{}); }

TEST(I18NextReader, ByteOrderMarkIsAccepted) {
    EXPECT_EQ(read("\xef\xbb\xbf{\"a\": \"ä\"}"), Lines{"a=ä"});
    EXPECT_EQ(read("\xef\xbb\xbf\xef\xbb\xbf{}"), Lines{"1:1: this is no value"});
    EXPECT_EQ(read("\xef\xbb\xbf []"), Lines{"1:2: the file holds no object"});
}

TEST(I18NextReader, KeysMayHoldAnything) {
    EXPECT_EQ(read(R"({"": "empty", "123": "number", "a/b": "slash", "~": "tilde", "\u0000": "zero"})"),
        (Lines{"=empty", "123=number", "a/b=slash", "~=tilde", "%00=zero"}));
    const std::string key(10240, 'k');
    EXPECT_EQ(read("{\"" + key + "\": \"x\"}"), Lines{key + "=x"});
}

TEST(I18NextReader, EscapesAreText) {
    EXPECT_EQ(read(R"({"a": "line\nline\t\"q\" \u00e4 \ud83d\ude00 \/"})"), Lines{"a=line\nline\t\"q\" ä 😀 /"});
}

TEST(I18NextReader, FileThatHoldsNoObjectIsRefused) {
    for(const char* const bytes: {"[]", "[{\"a\": \"b\"}]", "\"text\"", "null", "12"})
        EXPECT_EQ(read(bytes), Lines{"1:1: the file holds no object"}) << bytes;
}

// The words of these refusals belong to the JSON reader; place and fact are ours.
TEST(I18NextReader, RefusalsHaveLineAndColumn) {
    const auto place = [](const std::string& bytes) {
        const Lines lines = read(bytes);
        return lines.size() == 1 ? lines[0].substr(0, lines[0].find(": ")) : "accepted";
    };
    EXPECT_EQ(place("{\n  \"a\": \"x\",\n  \"ä\" \"y\"\n}"), "3:7");
    EXPECT_EQ(place("{\n  \"a\": \"x\",\n  \"a\": \"y\"\n}"), "3:3");
    EXPECT_NE(place("{\"a\": {\"b\": \"x\"}, \"a\": {\"c\": \"y\"}}"), "accepted");
    EXPECT_NE(place("{\"a\": \"\xff\"}"), "accepted");
    EXPECT_NE(place("{\"a\": \"\\udc00\"}"), "accepted");
    EXPECT_NE(place("{\"a\": 1e99999999999}"), "accepted");
    EXPECT_NE(place(""), "accepted");
}

TEST(I18NextReader, NestingIsLimitedWithoutHarm) {
    const auto nested = [](const int levels) {
        std::string bytes;
        for(int i = 0; i != levels; ++i) bytes += "{\"a\":";
        return bytes + "\"x\"" + std::string(std::size_t(levels), '}');
    };
    EXPECT_EQ(read(nested(256)).at(0).substr(0, 4), "a.a.");
    EXPECT_EQ(read(nested(257)).at(0).substr(0, 2), "1:");
    EXPECT_EQ(read(nested(100000)).at(0).substr(0, 2), "1:");
}

TEST(I18NextReader, ArrayBeyondTheLimitIsRefused) {
    std::string bytes = "{\"a\": [\"0\"";
    for(int i = 1; i != 65536; ++i) bytes += ",\"x\"";
    EXPECT_EQ(read(bytes + "]}").size(), 65536u);
    EXPECT_EQ(read(bytes + ",\n\"x\"]}"), Lines{"2:4: an array has too many elements"});
    EXPECT_EQ(read(bytes + ",\nnull]}").size(), 1u);
}

TEST(I18NextReader, KeysThatRepeatLongNamesMoreThanAnyFileDoesAreRefused) {
    // Each of the inner keys repeats the outer name.
    const auto file = [](const std::size_t count) {
        std::string bytes = "{\"" + std::string(5000, 'n') + "\": {\"0\": \"x\"";
        for(std::size_t i = 1; i != count; ++i) bytes += ", \"" + std::to_string(i) + "\": \"x\"";
        return bytes + "}}";
    };
    EXPECT_EQ(read(file(20)).size(), 20u);
    EXPECT_EQ(read(file(2000)), Lines{"1:6203: too many keys repeat long names around them"});
    std::string dropped = file(10);
    for(int i = 0; i != 12; ++i) dropped = "{\"constructor\": " + dropped + '}';
    EXPECT_EQ(read(dropped).size(), 22u);
}

TEST(I18NextReader, FileCutAtAnyByteIsRefused) {
    const std::string whole = "\xef\xbb\xbf{\"menu\": {\"öffnen\": \"Öffnen\\n😀\", \"list\": [\"a\", null]}}";
    EXPECT_EQ(read(whole).size(), 3u);
    for(std::size_t size = 0; size != whole.size(); ++size) {
        const Lines lines = read(whole.substr(0, size));
        ASSERT_EQ(lines.size(), 1u) << size;
        EXPECT_EQ(lines[0].substr(0, 2), "1:") << lines[0];
    }
}

}
