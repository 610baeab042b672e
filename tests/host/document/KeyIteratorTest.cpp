#include "QuorvaneEditor/KeyIterator.h"

#include <gtest/gtest.h>

#include "TestDocument.h"

namespace QuorvaneEngine {

TEST(KeyIterator, WalksKeysInDocumentOrder) {
    const rapidjson::Document document = parsed(R"({"b":1,"":2,"a/~":3})");
    KeyIterator key{&document, 0};
    EXPECT_EQ(*key, "b");
    ++key;
    EXPECT_EQ(*key, "");
    EXPECT_EQ(*++key, "a/~");
    EXPECT_TRUE(++key == (KeyIterator{&document, 3}));
    EXPECT_FALSE(key != (KeyIterator{&document, 3}));
}

TEST(KeyIterator, KeyIsTerminated) {
    const rapidjson::Document document = parsed(R"({"key":1})");
    EXPECT_TRUE((*KeyIterator{&document, 0}).flags() & Containers::StringViewFlag::NullTerminated);
}

TEST(KeyIterator, BeyondTheEndAndWithoutAnObjectKeysAreEmpty) {
    const rapidjson::Document object = parsed(R"({"key":1})");
    const rapidjson::Document array = parsed(R"(["key"])");
    EXPECT_EQ((*KeyIterator{&object, 1}), "");
    EXPECT_EQ((*KeyIterator{&array, 0}), "");
    EXPECT_EQ((*KeyIterator{nullptr, 0}), "");
    EXPECT_TRUE((*KeyIterator{nullptr, 0}).flags() & Containers::StringViewFlag::NullTerminated);
}

}
