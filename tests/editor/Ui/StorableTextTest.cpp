#include "Ui/StorableText.h"

#include <string>

#include <gtest/gtest.h>

namespace QuorvaneEngine {
namespace {

bool isStorable(const std::string& text) {
    return QuorvaneEngine::isStorable(Containers::StringView{text.data(), text.size()});
}

TEST(StorableText, WhatIsUtf8CanBeStored) {
    for(const std::string& text: {std::string{}, std::string{"plain"}, std::string{"a\0b", 3}, std::string{"\n\x7f"},
            std::string{"\xc2\x80"}, std::string{"\xdf\xbf"}, std::string{"\xe0\xa0\x80"}, std::string{"\xed\x9f\xbf"},
            std::string{"\xee\x80\x80"}, std::string{"\xef\xbf\xbf"}, std::string{"\xf0\x90\x80\x80"},
            std::string{"\xf4\x8f\xbf\xbf"}})
        EXPECT_TRUE(isStorable(text)) << text;
    EXPECT_TRUE(QuorvaneEngine::isStorable({}));
}

TEST(StorableText, OtherBytesCannotBe) {
    for(const char* text: {"caf\xe9", "\xe9t\xe9", "\x80", "\xff", "\xc0\xaf", "\xc1\xbf", "\xe0\x9f\xbf",
            "\xf0\x8f\xbf\xbf", "\xf4\x90\x80\x80", "\xf5\x80\x80\x80", "\xed\xa0\x80", "\xed\xbf\xbf", "\xc3",
            "\xe2\x82", "\xf0\x9f\x98", "\xc3(", "ok\xc3"})
        EXPECT_FALSE(isStorable(std::string{text})) << text;
    EXPECT_FALSE(isStorable(std::string{"a\0\xe9", 3}));
}

}
}
