#include "JsonScanner.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "JsonReader.h"

namespace QuorvaneEngine {
namespace {

/** All tokens, with what they hold. */
std::string tokens(const std::string& text) {
    // Its end is the end of the memory, so that a sanitizer sees a read behind it.
    const std::vector<char> exact{text.begin(), text.end()};
    JsonScanner scanner{{exact.data(), exact.size()}};
    std::string all;
    for(;;) {
        const JsonToken token = scanner.next();
        const std::string held{scanner.text().data(), scanner.text().size()};
        if(!all.empty()) all += ' ';
        switch(token) {
        case JsonToken::ObjectBegin: all += '{'; break;
        case JsonToken::ObjectEnd: all += '}' + std::to_string(scanner.count()); break;
        case JsonToken::ArrayBegin: all += '['; break;
        case JsonToken::ArrayEnd: all += ']' + std::to_string(scanner.count()); break;
        case JsonToken::Name: all += held + ':'; break;
        case JsonToken::Text: all += (scanner.isInPlace() ? "" : "decoded ") + held; break;
        case JsonToken::Number: all += std::to_string(scanner.number().GetDouble()); break;
        case JsonToken::True: all += "true"; break;
        case JsonToken::False: all += "false"; break;
        case JsonToken::Null: all += "null"; break;
        case JsonToken::End: return all + "end";
        case JsonToken::Wrong: return all + "wrong";
        }
    }
}

bool isTaken(const std::string& text) { return tokens(text).ends_with("end"); }

/** Both have to say the same of any text. */
bool isTakenByBoth(const std::string& text) {
    const std::vector<char> exact{text.begin(), text.end()};
    JsonError error;
    const bool isTakenByReader = !JsonReader::findError({exact.data(), exact.size()}, error);
    EXPECT_EQ(isTaken(text), isTakenByReader) << text;
    return isTakenByReader;
}

TEST(JsonScanner, TellsWhatATextHolds) {
    EXPECT_EQ(tokens("\xef\xbb\xbf {\"a\": [1, -2.5, true, false, null, \"x\", {}, []], \"b\": {\"c\": \"\"}}\n"),
        "{ a: [ 1.000000 -2.500000 true false null x { }0 [ ]0 ]8 b: { c:  }1 }2 end");
    EXPECT_EQ(tokens("\"text\""), "text end");
    EXPECT_EQ(tokens("7"), "7.000000 end");
}

TEST(JsonScanner, DecodesEscapes) {
    EXPECT_EQ(tokens(R"(["\"\\\/\b\f\n\r\t", "a\u0041\u00e4\u20AC\ud83d\ude00z", "plain"])"),
        "[ decoded \"\\/\b\f\n\r\t decoded aA\xc3\xa4\xe2\x82\xac\xf0\x9f\x98\x80z plain ]3 end");
    EXPECT_EQ(tokens(R"({"\u0061\n": "\u0000"})"), std::string("{ a\n: decoded \0 }1 end", 22));
}

TEST(JsonScanner, WhatItHandedOutStaysWhereItIs) {
    const std::string text = R"(["first \n text", "second \n text", "in place", "third \n text"])";
    JsonScanner scanner{{text.data(), text.size()}};
    std::vector<Containers::StringView> texts;
    for(JsonToken token = scanner.next(); token != JsonToken::End; token = scanner.next()) {
        ASSERT_NE(token, JsonToken::Wrong);
        if(token == JsonToken::Text) texts.push_back(scanner.text());
    }
    ASSERT_EQ(texts.size(), 4);
    EXPECT_EQ(texts[0], "first \n text");
    EXPECT_EQ(texts[1], "second \n text");
    EXPECT_EQ(texts[2].data(), text.data() + text.find("in place"));
    EXPECT_EQ(texts[3], "third \n text");
}

TEST(JsonScanner, TellsWhereWhatStandsHereEnds) {
    const std::string text = " {\"a\" : 1.50 , \"b\": []}";
    JsonScanner scanner{{text.data(), text.size()}};
    std::vector<std::size_t> ends;
    while(scanner.next() != JsonToken::End) {
        ends.push_back(scanner.offset());
        EXPECT_EQ(scanner.text() == "1.50", ends.size() == 3);
    }
    EXPECT_EQ(ends, (std::vector<std::size_t>{2, 7, 12, 19, 21, 22, 23}));
}

TEST(JsonScanner, GivesNumbersTheTypesOfTheJsonLibrary) {
    for(const std::string number: {"0", "-0", "7", "-7", "2147483647", "2147483648", "-2147483648", "-2147483649",
            "4294967295", "4294967296", "123456789012345678", "-12345678901234567", "-123456789012345678",
            "9223372036854775807", "9223372036854775808", "18446744073709551615", "18446744073709551616",
            "-9223372036854775808", "-9223372036854775809", "0.1", "1e3", "-2.5E-3", "1e-999",
            "2.2250738585072011e-308", "179769313486231570e291"}) {
        JsonScanner scanner{{number.data(), number.size()}};
        ASSERT_EQ(scanner.next(), JsonToken::Number) << number;
        rapidjson::Document expected;
        expected.Parse<rapidjson::kParseFullPrecisionFlag>(number.data(), number.size());
        const rapidjson::Value& found = scanner.number();
        EXPECT_EQ(found.IsInt(), expected.IsInt()) << number;
        EXPECT_EQ(found.IsUint(), expected.IsUint()) << number;
        EXPECT_EQ(found.IsInt64(), expected.IsInt64()) << number;
        EXPECT_EQ(found.IsUint64(), expected.IsUint64()) << number;
        EXPECT_EQ(found.IsDouble(), expected.IsDouble()) << number;
        EXPECT_EQ(found.GetDouble(), expected.GetDouble()) << number;
        EXPECT_EQ(scanner.next(), JsonToken::End) << number;
    }
}

TEST(JsonScanner, StopsAtWhatIsWrong) {
    EXPECT_EQ(tokens("{\"a\": [1, x"), "{ a: [ 1.000000 wrong");
    EXPECT_EQ(tokens("{\"a\": 1, \"b\": {\"a\": 2}, \"a\": 3}"), "{ a: 1.000000 b: { a: 2.000000 }1 a: 3.000000 wrong");
    EXPECT_EQ(tokens("{} {}"), "{ }0 wrong");
    EXPECT_EQ(tokens(""), "wrong");
}

TEST(JsonScanner, FindsANameThatIsTwiceAmongAnyNumber) {
    for(const std::size_t count: {2, 20, 21, 22, 1000})
        for(const bool isSorted: {true, false}) {
            std::string text;
            for(std::size_t i = 0; i != count; ++i)
                text += "\"" + std::to_string(100000 + (isSorted ? i : i * 7919 % count)) + "\":0,";
            EXPECT_TRUE(isTaken("{" + text + "\"x\":0}")) << count;
            EXPECT_FALSE(isTaken("{" + text + "\"100000\":0}")) << count;
            EXPECT_FALSE(isTaken("{" + text + "\"\\u003100000\":0}")) << count;
        }
}

TEST(JsonScanner, SaysOfCutTextsWhatTheReaderSays) {
    const std::string text =
        "{\"a\": {\"b\\u00e4\": [1, -2.5e+10, true, null], \"\xc3\xa4\": \"\\ud83d\\ude00\"}, \"c\": {}}";
    EXPECT_TRUE(isTakenByBoth(text));
    for(std::size_t size = 0; size != text.size(); ++size) EXPECT_FALSE(isTakenByBoth(text.substr(0, size))) << size;
}

TEST(JsonScanner, SaysOfEveryUtf8SequenceWhatTheReaderSays) {
    std::size_t taken = 0;
    for(unsigned first = 0x80; first != 0x100; ++first)
        for(const unsigned char second: {0x22, 0x7f, 0x80, 0x8f, 0x90, 0x9f, 0xa0, 0xbf, 0xc0})
            for(const std::string tail: {"", "\x80", "\xbf", "\x80\x80", "\xbf\xbf", "\x80\x20", "\x80\x80\x80"})
                taken += isTakenByBoth("\"" + std::string{char(first), char(second)} + tail + "\"");
    EXPECT_GT(taken, 200);
}

TEST(JsonScanner, SaysOfChangedSamplesWhatTheReaderSays) {
    static constexpr std::string_view Bytes{"\"\\{}[]:,0123456789eE+-.tfnu \n\t\0\x7f\x80\xc3\xe2\xed\xf0\xff", 38};
    std::mt19937 random{7};
    std::size_t refused = 0, taken = 0;
    for(const auto& entry: std::filesystem::recursive_directory_iterator{QUORVANE_SOURCE_DIR "/samples/lighthouse"}) {
        if(entry.path().extension() != ".json") continue;
        std::ifstream file{entry.path(), std::ios::binary};
        const std::string text{std::istreambuf_iterator<char>{file}, std::istreambuf_iterator<char>{}};
        for(int i = 0; i != 600; ++i) {
            // Most of them small, so that many can be tried.
            std::string changed = i % 8 ? text.substr(0, 2000) : text;
            for(unsigned flips = random() % 6; flips; --flips)
                changed[random() % changed.size()] = random() % 2 ? Bytes[random() % Bytes.size()] : char(random());
            (isTakenByBoth(changed) ? taken : refused)++;
        }
    }
    EXPECT_GT(refused, 1000);
    EXPECT_GT(taken, 10);
}

TEST(JsonScanner, SaysOfRandomTokensWhatTheReaderSays) {
    static const char* const parts[]{"{", "}", "[", "]", ":", ",", "\"a\"", "\"b\"", "1", "-0", "01", "1.5e3", "-",
        "1e400", "1e9999", "true", "null", "tru", "\"\\u0041\"", "\"\\ud800\"", " ", "\n", "\x01", "\xff",
        "{\"a\":", "{}", "[]"};
    std::mt19937 random{11};
    std::size_t taken = 0;
    for(int i = 0; i != 100000; ++i) {
        std::string text;
        for(unsigned count = 1 + random() % 8; count; --count) text += parts[random() % std::size(parts)];
        taken += isTakenByBoth(text);
    }
    EXPECT_GT(taken, 500);
}

}
}
