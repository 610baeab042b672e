#include "QuorvaneEditor/JsonObject.h"

#include <gtest/gtest.h>

#include "TestDocument.h"

namespace QuorvaneEngine {

namespace {

std::string at(rapidjson::Document& document, Containers::StringView path) {
    return printed(JsonObject::valueByPointer(document, path));
}

}

// The examples of RFC 6901, section 5.
TEST(JsonObject, PointerFindsTheExamplesOfItsStandard) {
    rapidjson::Document document =
        parsed(R"({"foo":["bar","baz"],"":0,"a/b":1,"c%d":2,"e^f":3,"g|h":4,"i\\j":5,"k\"l":6," ":7,"m~n":8})");
    EXPECT_EQ(JsonObject::valueByPointer(document, ""), &document);
    EXPECT_EQ(at(document, "/foo"), R"(["bar","baz"])");
    EXPECT_EQ(at(document, "/foo/0"), R"("bar")");
    EXPECT_EQ(at(document, "/"), "0");
    EXPECT_EQ(at(document, "/a~1b"), "1");
    EXPECT_EQ(at(document, "/c%d"), "2");
    EXPECT_EQ(at(document, "/e^f"), "3");
    EXPECT_EQ(at(document, "/g|h"), "4");
    EXPECT_EQ(at(document, "/i\\j"), "5");
    EXPECT_EQ(at(document, "/k\"l"), "6");
    EXPECT_EQ(at(document, "/ "), "7");
    EXPECT_EQ(at(document, "/m~0n"), "8");
}

TEST(JsonObject, PointerThatIsNotValidFindsNothing) {
    rapidjson::Document document = parsed(R"({"a":1,"~":2,"a~":3,"#":4})");
    for(const char* path: {"a", "#/a", "/~", "/a~", "/~2", "/a~/b", "/%7", "a/b"})
        EXPECT_EQ(at(document, path), "nothing") << path;
}

TEST(JsonObject, NumericTokenIsAnIndexInArraysAndAKeyInObjects) {
    rapidjson::Document document = parsed(R"({"array":[10,11,12],"object":{"1":"one","01":"zero one"}})");
    EXPECT_EQ(at(document, "/array/0"), "10");
    EXPECT_EQ(at(document, "/array/2"), "12");
    EXPECT_EQ(at(document, "/object/1"), R"("one")");
    EXPECT_EQ(at(document, "/object/01"), R"("zero one")");
    for(const char* path: {"/array/3", "/array/01", "/array/00", "/array/-", "/array/-1", "/array/+1", "/array/1 ",
            "/array/", "/array/1e0", "/array/4294967296", "/array/18446744073709551617", "/array/99999999999999999999"})
        EXPECT_EQ(at(document, path), "nothing") << path;
}

TEST(JsonObject, PointerThroughAScalarFindsNothing) {
    rapidjson::Document document = parsed(R"({"number":1,"text":"abc","null":null})");
    for(const char* path: {"/number/0", "/text/0", "/null/a", "/number/", "/missing/a"})
        EXPECT_EQ(at(document, path), "nothing") << path;
}

TEST(JsonObject, PointerNeverChangesTheDocument) {
    rapidjson::Document document = parsed(R"({"a":{}})");
    at(document, "/a/123/en");
    EXPECT_EQ(printed(document), R"({"a":{}})");
}

struct Kind {
    const char* json;
    bool asBool;
    const char* asString;
    std::size_t size;
    bool isObject;
};

class JsonObjectOfEachType: public testing::TestWithParam<Kind> {};

TEST_P(JsonObjectOfEachType, AnswersEveryQuestion) {
    rapidjson::Document document = parsed(GetParam().json);
    const JsonObject object{&document};
    EXPECT_EQ(object.value(), &document);
    EXPECT_EQ(object.asBool(), GetParam().asBool);
    EXPECT_EQ(object.asString(), GetParam().asString);
    EXPECT_TRUE(object.asString().flags() & Containers::StringViewFlag::NullTerminated);
    EXPECT_EQ(object.size(), GetParam().size);
    EXPECT_EQ(object.isObject(), GetParam().isObject);
}

INSTANTIATE_TEST_SUITE_P(Types, JsonObjectOfEachType,
    testing::Values(Kind{"null", false, "", 0, false}, Kind{"true", true, "", 0, false},
        Kind{"false", false, "", 0, false}, Kind{"0", false, "", 0, false}, Kind{"1", false, "", 0, false},
        Kind{"1.5", false, "", 0, false}, Kind{R"("")", false, "", 0, false},
        Kind{R"("true")", false, "true", 0, false}, Kind{"[]", false, "", 0, false},
        Kind{R"(["text",true])", false, "", 2, false}, Kind{"{}", false, "", 0, true},
        Kind{R"({"a":1,"b":2})", false, "", 2, true}));

TEST(JsonObject, MissingValueAnswersWithTheEmptyValue) {
    const JsonObject missing;
    EXPECT_EQ(missing.value(), nullptr);
    EXPECT_FALSE(missing.asBool());
    EXPECT_EQ(missing.asString(), "");
    EXPECT_TRUE(missing.asString().flags() & Containers::StringViewFlag::NullTerminated);
    EXPECT_EQ(missing.size(), 0u);
    EXPECT_FALSE(missing.isObject());
}

TEST(JsonObject, TextMayHoldZeroBytes) {
    rapidjson::Document document = parsed(R"("a\u0000b")");
    EXPECT_EQ(JsonObject{&document}.asString().size(), 3u);
}

}
