#include "TextIndex.h"

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace QuorvaneEngine {

namespace {

Containers::StringView viewed(const std::string& text) { return {text.data(), text.size()}; }

}

TEST(TextIndex, NumbersDifferentTextsInTheirOrder) {
    TextIndex index;
    EXPECT_EQ(index.find("a"), -1);
    EXPECT_EQ(index.add("b"), 0u);
    EXPECT_EQ(index.add("a"), 1u);
    EXPECT_EQ(index.add("b"), 0u);
    EXPECT_EQ(index.add(""), 2u);
    EXPECT_EQ(index.size(), 3u);
    EXPECT_EQ(index[1], "a");
    EXPECT_EQ(index.find("a"), 1);
    EXPECT_EQ(index.find(""), 2);
    EXPECT_EQ(index.find("c"), -1);
}

TEST(TextIndex, FindsTextsInAnyOrder) {
    std::vector<std::string> texts;
    for(int i = 0; i != 5000; ++i) texts.push_back("key" + std::to_string(i * 7919 % 5000));
    TextIndex index;
    index.reserve(100);
    for(const std::string& text: texts) index.add(viewed(text));
    const TextIndex moved{std::move(index)};
    Int last = -1;
    for(std::size_t i = 0; i != texts.size(); ++i) {
        EXPECT_EQ(moved.find(viewed(texts[i]), last), Int(i));
        EXPECT_EQ(last, Int(i));
    }
    EXPECT_EQ(moved.find("none", last), -1);
    EXPECT_EQ(last, Int(texts.size() - 1));
    for(std::size_t i = texts.size(); i-- != 0;) EXPECT_EQ(moved.find(viewed(texts[i]), last), Int(i));
}

}
