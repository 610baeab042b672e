#include "MendedText.h"

#include <utility>

#include <gtest/gtest.h>

namespace QuorvaneEngine {
namespace {

TEST(MendedText, WhatIsWellFormedStays) {
    for(const std::string text: {"", "Hallo", "\xc3\xbc \xe2\x82\xac \xf0\x9f\x99\x82", "\xef\xbf\xbd"})
        EXPECT_EQ(mendedText(text), text);
    const std::string zero{"a\0b", 3};
    EXPECT_EQ(mendedText(zero), zero);
}

TEST(MendedText, EachSequenceThatIsNoneIsOneReplacement) {
    const std::pair<const char*, const char*> texts[]{
        {"a\xff z", "a\xef\xbf\xbd z"},
        {"\xff\xfe", "\xef\xbf\xbd\xef\xbf\xbd"},
        {"cut \xe2\x82", "cut \xef\xbf\xbd"},
        {"\xe2\x82\"", "\xef\xbf\xbd\""},
        {"\xc0\xaf", "\xef\xbf\xbd\xef\xbf\xbd"},
    };
    for(const auto& [text, mended]: texts) EXPECT_EQ(mendedText(text), mended) << text;
}

}
}
