#include "JsonReader.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace QuorvaneEngine {
namespace {

std::string said(const JsonError& error) {
    return std::to_string(error.line) + ":" + std::to_string(error.column) + ": " + error.reason.data();
}

/** The document as compact text, or "line:column: reason". */
std::string result(const std::string& text) {
    // Its end is the end of the memory, so that a sanitizer sees a read behind it.
    const std::vector<char> exact{text.begin(), text.end()};
    rapidjson::Document document;
    JsonError error;
    if(!JsonReader::read({exact.data(), exact.size()}, document, error)) return said(error);
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer{buffer};
    document.Accept(writer);
    return buffer.GetString();
}

bool isTaken(const std::string& text) {
    const std::vector<char> exact{text.begin(), text.end()};
    rapidjson::Document document;
    JsonError error;
    const bool taken = JsonReader::read({exact.data(), exact.size()}, document, error);
    EXPECT_NE(taken, error.line && error.column && !error.reason.isEmpty()) << text;
    return taken;
}

std::string nested(std::size_t depth) { return std::string(depth, '[') + std::string(depth, ']'); }

struct Case {
    const char* name;
    std::string text;
    std::string result;
};

void PrintTo(const Case& item, std::ostream* out) { *out << item.name; }

std::string nameOf(const testing::TestParamInfo<Case>& info) { return info.param.name; }

class JsonReaderTakes: public testing::TestWithParam<Case> {};
class JsonReaderRefuses: public testing::TestWithParam<Case> {};

TEST_P(JsonReaderTakes, AndReads) { EXPECT_EQ(result(GetParam().text), GetParam().result); }
TEST_P(JsonReaderRefuses, WithPlaceAndReason) { EXPECT_EQ(result(GetParam().text), GetParam().result); }

INSTANTIATE_TEST_SUITE_P(Texts, JsonReaderTakes,
    testing::Values(Case{"EveryType", " {\"a\" : [1, -2, 1.5, true, false, null, \"x\"]}\r\n\t",
                        R"({"a":[1,-2,1.5,true,false,null,"x"]})"},
        Case{"AByteOrderMark", "\xef\xbb\xbf{}", "{}"}, Case{"TheDeepestNesting", nested(256), nested(256)},
        Case{"TheLongestNumber", std::string(100, '1'), "1.111111111111111e99"},
        Case{"TheLongestExponent", "[1e-999]", "[0.0]"},
        Case{"ADoubleToTheLastBit", "[0.1, 2.2250738585072011e-308, 179769313486231570e291]",
            "[0.1,2.225073858507201e-308,1.7976931348623157e308]"},
        Case{"ZerosWithExponents", "[0e-40, -0e5, 0.0e0, 0E+99]", "[0.0,-0.0,0.0,0.0]"},
        Case{"LargeExponentsThatFit", "[9e307, 0.0009e+311, 1e-400, -9e-323]", "[9e307,9e307,0.0,-9e-323]"},
        Case{"TheLargestIntegers", "[18446744073709551615, -9223372036854775808]",
            "[18446744073709551615,-9223372036854775808]"},
        Case{"APairOfSurrogates", "\"\\ud83d\\uDE00\"", "\"\xf0\x9f\x98\x80\""},
        Case{"TheEdgesOfUtf8",
            "\"\x7f\xc2\x80\xdf\xbf\xe0\xa0\x80\xed\x9f\xbf\xee\x80\x80\xef\xbf\xbf\xf0\x90\x80\x80\xf4\x8f\xbf\xbf\"",
            "\"\x7f\xc2\x80\xdf\xbf\xe0\xa0\x80\xed\x9f\xbf\xee\x80\x80\xef\xbf\xbf\xf0\x90\x80\x80\xf4\x8f\xbf\xbf\""},
        Case{"BracketsAndDigitsInTexts", "\"" + std::string(300, '[') + "1e9999 \\\" \\\\\"",
            "\"" + std::string(300, '[') + "1e9999 \\\" \\\\\""},
        Case{"OneNameInTwoObjects", R"({"a":{"a":1},"b":{"a":2}})", R"({"a":{"a":1},"b":{"a":2}})"},
        Case{"EmptyNamesAndTexts", R"({"":""})", R"({"":""})"},
        Case{"AnEscapedNul", "{\"\\u0000\":1}", "{\"\\u0000\":1}"}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(Texts, JsonReaderRefuses,
    testing::Values(Case{"Nothing", "", "1:1: a value is missing"},
        Case{"BlanksAlone", " \n ", "2:2: a value is missing"},
        Case{"AByteOrderMarkAlone", "\xef\xbb\xbf", "1:1: a value is missing"},
        Case{"AnObjectThatIsCut", "{\"a\": [1,\n", "2:1: the text ends too early"},
        Case{"ATextThatIsCut", "[\"a", "1:4: a string does not end"},
        Case{"TwoValues", "{}\n{}", "2:1: something follows the value"},
        Case{"ANulBehindTheValue", std::string{"{}\0x", 4}, "1:3: control character U+0000"},
        Case{"ANulInAText", std::string{"\"\0\"", 3}, "1:2: control character U+0000"},
        Case{"ALineFeedInAText", "\"a\nb\"", "1:3: control character U+000A"},
        Case{"AWord", "[nul]", "1:5: this is no value"}, Case{"NotANumber", "[NaN]", "1:2: this is no value"},
        Case{"Infinity", "[-Infinity]", "1:3: this is no value"}, Case{"AComment", "// x\n{}", "1:1: this is no value"},
        Case{"ATrailingComma", "[1,]", "1:3: a comma stands behind the last element"},
        Case{"ATrailingCommaInAnObject", "{\"a\":1,}", "1:7: a comma stands behind the last member"},
        Case{"ATrailingCommaLinesAbove", "{\n\"a\":1,\n\n}", "2:6: a comma stands behind the last member"},
        Case{"ACommaAlone", "{,}", "1:2: the name of a member is missing"},
        Case{"AnotherBracketBehindAComma", "{\"a\":1,]", "1:8: the name of a member is missing"},
        Case{"AMissingColon", "{\"a\" 1}", "1:6: a colon is missing behind the name of a member"},
        Case{"AMissingComma", "{\"a\":1\n \"b\":2}", "2:2: a comma or a closing brace is missing"},
        Case{"AMissingCommaInAnArray", "[1 2]", "1:4: a comma or a closing bracket is missing"},
        Case{"AnUnknownEscape", "\"\\x\"", "1:2: this is no escape"},
        Case{"AShortEscape", "\"\\u12\"", "1:2: an escape lacks four hexadecimal digits"},
        Case{"AHighSurrogateAlone", "\"\\ud800x\"", "1:2: a surrogate without its other half"},
        Case{"ALowSurrogateAlone", "\"\\udc00\"", "1:2: a surrogate without its other half"},
        Case{"TwoHighSurrogates", "\"\\ud800\\ud800\"", "1:2: a surrogate without its other half"},
        Case{"ANumberTooLarge", "[1e400]", "1:2: a number is too large"},
        Case{"ANumberALittleTooLarge", "[1.8e308]", "1:2: a number is too large"},
        Case{"ManyDigitsBeforeALargeExponent", "[-99999e305]", "1:2: a number is too large"},
        Case{"ALongExponent", "[1, -2.5e-0001]", "1:5: a number's exponent has more than 3 digits"},
        Case{"ACraftedExponent", "0.1e-2147483648", "1:1: a number's exponent has more than 3 digits"},
        Case{"ALongNumber", "[" + std::string(101, '1') + "]", "1:2: a number has more than 100 characters"},
        Case{"AMissingFraction", "[1.]", "1:4: a number lacks digits behind its point"},
        Case{"AMissingExponent", "[1e]", "1:4: a number lacks the digits of its exponent"},
        Case{"OneLevelTooMany", nested(257), "1:257: containers are nested more than 256 levels deep"},
        Case{"AHundredThousandLevels", std::string(100000, '['),
            "1:257: containers are nested more than 256 levels deep"},
        Case{"MixedLevels",
            "\n" +
                [] {
                    std::string t;
                    for(int i = 0; i != 200000; ++i) t += "{\"a\":[";
                    return t;
                }(),
            "2:769: containers are nested more than 256 levels deep"},
        Case{"Latin1", "{\"a\": \"\xe9t\xe9\"}", "1:8: not valid UTF-8"},
        Case{"AContinuationAlone", "\"\x80\"", "1:2: not valid UTF-8"},
        Case{"AnOverlongSlash", "\"\xc0\xaf\"", "1:2: not valid UTF-8"},
        Case{"AnOverlongThreeByteForm", "\"\xe0\x9f\xbf\"", "1:2: not valid UTF-8"},
        Case{"AnEncodedSurrogate", "\"\xed\xa0\x80\"", "1:2: not valid UTF-8"},
        Case{"ACharacterBehindTheLast", "\"\xf4\x90\x80\x80\"", "1:2: not valid UTF-8"},
        Case{"ASequenceCutByTheEnd", "\"\xe2\x82", "1:2: not valid UTF-8"},
        Case{"Utf16", std::string{"\xff\xfe{\0}\0", 6}, "1:1: this is UTF-16, not UTF-8"},
        Case{"Utf16OfTheOtherOrder", std::string{"\xfe\xff\0{\0}", 6}, "1:1: this is UTF-16, not UTF-8"},
        Case{"Utf32", std::string{"\xff\xfe\0\0{\0\0\0", 8}, "1:1: this is UTF-32, not UTF-8"},
        Case{"Utf32OfTheOtherOrder", std::string{"\0\0\xfe\xff\0\0\0{", 8}, "1:1: this is UTF-32, not UTF-8"},
        Case{"ADuplicateName", R"({"a":1,"b":2,"a":3})", "1:14: the name \"a\" stands twice in one object"},
        Case{"ADuplicateNameByEscape", "{\"x\": [{\"a\": {\"k\": 1},\n  \"k\": \"\\\"\", \"\\u0061\": 3}]}",
            "2:14: the name \"a\" stands twice in one object"}),
    nameOf);

TEST(JsonReader, ALongNameThatStandsTwiceIsNamedByItsBeginning) {
    const auto named = [](const std::string& name) { return result("{\"" + name + "\":1,\"" + name + "\":2}"); };
    const std::string end = "\" stands twice in one object", whole(100, 'n');
    EXPECT_NE(named(whole).find(": the name \"" + whole + end), std::string::npos);
    EXPECT_NE(named(whole + 'n').find(": the name \"" + whole + "..." + end), std::string::npos);
    const std::string almost(99, 'n');
    EXPECT_NE(named(almost + "\u00e4n").find(": the name \"" + almost + "..." + end), std::string::npos);
}

TEST(JsonReader, ADuplicateAmongManyNamesIsFoundWhereItStands) {
    for(const std::size_t count: {12, 13, 1000}) {
        std::string text{"{"};
        for(std::size_t i = 0; i != count; ++i) text += "\n\"" + std::to_string(i * 7919 % 1000) + "\": {\"x\": 0},";
        EXPECT_EQ(result(text + "\n\"z\": 0}").find("1:"), std::string::npos);
        EXPECT_EQ(result(text + "\n\"0\": 0, \"z\": 0, \"z\": 0}"),
            std::to_string(count + 2) + ":1: the name \"0\" stands twice in one object");
    }
}

TEST(JsonReader, ColumnsCountCharactersAndLinesEndWithLineFeeds) {
    EXPECT_EQ(result("\xef\xbb\xbf[\"\xc3\xa4\xe2\x82\xac\xf0\x9f\x98\x80\", x]"), "1:9: this is no value");
    EXPECT_EQ(result("[\r\n\"\xc3\xa4\"\n,\nx]"), "4:1: this is no value");
}

TEST(JsonReader, ARefusedTextLeavesTheDocumentAsItWas) {
    rapidjson::Document document;
    document.Parse("{\"kept\": [1]}");
    JsonError error;
    for(const char* const text: {"{\"a\": [1, ", "[\"\xff\"]", "{\"a\":1,\"a\":1}", "[1]"}) {
        EXPECT_FALSE(JsonReader::readObject(text, document, error));
        ASSERT_TRUE(document.IsObject());
        EXPECT_EQ(document["kept"][0].GetInt(), 1);
    }
}

TEST(JsonReader, AnyOtherValueInPlaceOfAnObjectIsRefused) {
    rapidjson::Document document;
    JsonError error;
    for(const char* const text: {"\n []", "\n \"{}\"", "\n 1", "\n null", "\xef\xbb\xbf\n true"}) {
        EXPECT_FALSE(JsonReader::readObject(text, document, error));
        EXPECT_EQ(error.line, 2);
        EXPECT_EQ(error.column, 2);
        EXPECT_EQ(error.reason, "an object is expected here");
    }
    EXPECT_TRUE(JsonReader::readObject("{}", document, error));
}

std::vector<std::string> sampleTexts() {
    std::vector<std::string> texts;
    for(const auto& entry: std::filesystem::recursive_directory_iterator{QUORVANE_SOURCE_DIR "/samples/lighthouse"}) {
        if(entry.path().extension() != ".json") continue;
        std::ifstream file{entry.path(), std::ios::binary};
        texts.emplace_back(std::istreambuf_iterator<char>{file}, std::istreambuf_iterator<char>{});
    }
    return texts;
}

TEST(JsonReader, ATextCutAtAnyByteIsRefused) {
    const std::string text =
        "{\"a\": {\"b\\u00e4\": [1, -2.5e+10, true, null], \"\xc3\xa4\": \"\\ud83d\\ude00\"}, \"c\": {}}";
    EXPECT_TRUE(isTaken(text));
    for(std::size_t size = 0; size != text.size(); ++size) EXPECT_FALSE(isTaken(text.substr(0, size))) << size;
}

TEST(JsonReader, SamplesCutAnywhereAreRefused) {
    std::mt19937 random{20};
    const std::vector<std::string> texts = sampleTexts();
    ASSERT_FALSE(texts.empty());
    for(const std::string& text: texts) {
        EXPECT_TRUE(isTaken(text));
        for(int i = 0; i != 200; ++i) EXPECT_FALSE(isTaken(text.substr(0, random() % (text.size() - 1))));
    }
}

TEST(JsonReader, OtherReadersCanRefuseTheSame) {
    JsonError error;
    EXPECT_EQ(JsonReader::withoutMark("\xef\xbb\xbf{}"), "{}");
    EXPECT_EQ(JsonReader::withoutMark("{}"), "{}");
    EXPECT_TRUE(JsonReader::check("{\"a\": nothing of the grammar", error));
    EXPECT_FALSE(JsonReader::check("\n [1e999]", error));
    EXPECT_EQ(said(error), "2:3: a number is too large");
    EXPECT_EQ(said(JsonReader::errorAt("\xc3\xa4\n\xc3\xa4x", 5, "reason")), "2:2: reason");
    EXPECT_EQ(said(JsonReader::errorOf("[\nx", rapidjson::ParseResult{rapidjson::kParseErrorValueInvalid, 2})),
        "2:1: this is no value");
    EXPECT_EQ(said(JsonReader::errorOf("[\nx", rapidjson::ParseResult{rapidjson::kParseErrorValueInvalid, 3})),
        "2:2: the text ends too early");
}

TEST(JsonReader, SamplesWithAnyBytesChangedAreReadOrRefusedButNeverWorse) {
    static constexpr std::string_view Bytes{"\"\\{}[]:,0123456789eE+-.tfn \n\t\0\x7f\x80\xc3\xe2\xed\xf0\xff", 37};
    std::mt19937 random{7};
    std::size_t refused = 0, taken = 0;
    for(const std::string& text: sampleTexts())
        for(int i = 0; i != 600; ++i) {
            // Most of them small, so that many can be tried.
            std::string changed = i % 8 ? text.substr(0, 2000) : text;
            for(unsigned flips = 1 + random() % 6; flips; --flips)
                changed[random() % changed.size()] = random() % 2 ? Bytes[random() % Bytes.size()] : char(random());
            (isTaken(changed) ? taken : refused)++;
        }
    EXPECT_GT(refused, 1000);
    EXPECT_GT(taken, 10);
}

TEST(JsonReader, RandomTokensAreReadOrRefusedButNeverWorse) {
    static const char* const tokens[]{
        "{", "}", "[", "]", ":", ",", "\"a\"", "\"b\"", "1", "-0", "1.5e3", "true", "null", "\"\\u0041\"", " "};
    std::mt19937 random{11};
    std::size_t taken = 0;
    for(int i = 0; i != 50000; ++i) {
        std::string text;
        for(unsigned count = 1 + random() % 8; count; --count) text += tokens[random() % std::size(tokens)];
        taken += isTaken(text);
    }
    EXPECT_GT(taken, 500);
    EXPECT_LT(taken, 25000);
}

}
}
