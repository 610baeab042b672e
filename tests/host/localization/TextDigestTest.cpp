#include "TextDigest.h"

#include <initializer_list>

#include <gtest/gtest.h>

namespace QuorvaneEngine {

namespace {

TextDigest digest(const std::initializer_list<Containers::StringView> texts) {
    TextDigest digest;
    for(const Containers::StringView text: texts) digest.add(text);
    return digest;
}

}

TEST(TextDigest, IsTheSameForTheSameTextsInTheirOrder) {
    EXPECT_EQ(digest({}), digest({}));
    EXPECT_EQ(digest({"a", "b"}), digest({"a", "b"}));
    EXPECT_FALSE(digest({"a", "b"}) == digest({"b", "a"}));
    EXPECT_FALSE(digest({"a", "b"}) == digest({"ab"}));
    EXPECT_FALSE(digest({"a"}) == digest({"a", ""}));
    EXPECT_FALSE(digest({}) == digest({""}));
}

TEST(TextDigest, TakesWhatAnotherOneHas) {
    TextDigest one = digest({"a"}), other = digest({"a"});
    one.add(digest({"b"}));
    EXPECT_FALSE(one == other);
    other.add(digest({"b"}));
    EXPECT_EQ(one, other);
}

}
