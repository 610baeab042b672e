#include "JsonWriter.h"

#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <random>
#include <string>

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "JsonReader.h"

namespace QuorvaneEngine {
namespace {

std::string text(Containers::StringView view) { return {view.data(), view.size()}; }

rapidjson::Document document(const std::string& json) {
    rapidjson::Document read;
    JsonError error;
    EXPECT_TRUE(JsonReader::read({json.data(), json.size()}, read, error)) << json << ": " << error.reason.data();
    return read;
}

/** What is written, or the error. */
std::string written(const rapidjson::Value& value, const JsonWriter::Layout& layout = {0, false, {}}) {
    Containers::String out, error;
    return text(JsonWriter::write(value, layout, out, error) ? out : error);
}

std::string rewritten(const std::string& json, UnsignedInt levels = 0) {
    return written(document(json), {levels, false, {}});
}

TEST(JsonWriter, ContainersNearTheRootHaveOneMemberALineAndOthersOneLine) {
    const std::string json = R"({"a":{"b":{"c":[1,{"d":2}]}},"e":[3,[4,5]]})";
    EXPECT_EQ(rewritten(json, 0), "{\"a\": {\"b\": {\"c\": [1, {\"d\": 2}]}}, \"e\": [3, [4, 5]]}\n");
    EXPECT_EQ(rewritten(json, 1), "{\n  \"a\": {\"b\": {\"c\": [1, {\"d\": 2}]}},\n  \"e\": [3, [4, 5]]\n}\n");
    EXPECT_EQ(rewritten(json, 2),
        "{\n  \"a\": {\n    \"b\": {\"c\": [1, {\"d\": 2}]}\n  },\n  \"e\": [\n    3,\n    [4, 5]\n  ]\n}\n");
}

TEST(JsonWriter, EmptyContainersAreNeverBroken) {
    EXPECT_EQ(rewritten("{}", 3), "{}\n");
    EXPECT_EQ(rewritten(R"([[],{}])", 3), "[\n  [],\n  {}\n]\n");
}

TEST(JsonWriter, AlwaysEndsWithOneLineFeed) {
    for(const char* const json: {"{}", "[1]", "null", "\"x\""}) {
        const std::string out = rewritten(json, 1);
        EXPECT_EQ(out.back(), '\n');
        EXPECT_NE(out[out.size() - 2], '\n');
    }
}

TEST(JsonWriter, EscapesQuotesBackslashesAndControlCharactersAlone) {
    using namespace std::string_literals;
    const std::string all = "\" \\ / \b\f\n\r\t \x01\x1f\x7f \xe2\x80\xa8 \xc3\xa4 \xf0\x9f\x98\x80 \0."s;
    rapidjson::Value value;
    value.SetString(all.data(), rapidjson::SizeType(all.size()));
    EXPECT_EQ(written(value),
        "\"\\\" \\\\ / \\b\\f\\n\\r\\t \\u0001\\u001F\x7f \xe2\x80\xa8 \xc3\xa4 \xf0\x9f\x98\x80 \\u0000.\"\n");
}

TEST(JsonWriter, IntegersHaveNoPointAndDoublesHaveOne) {
    EXPECT_EQ(rewritten("[0, -1, 18446744073709551615, -9223372036854775808]"),
        "[0, -1, 18446744073709551615, -9223372036854775808]\n");
    EXPECT_EQ(rewritten("[1.0, -9.81, 0.0, -0.0, 0.1, 100.0, 1e15, 123456789.125, 0.0001]"),
        "[1.0, -9.81, 0.0, -0.0, 0.1, 100.0, 1000000000000000.0, 123456789.125, 0.0001]\n");
    EXPECT_EQ(rewritten("[1e16, 1.5e300, 1e-5, 5e-324]"), "[1.0e+16, 1.5e+300, 1.0e-05, 5.0e-324]\n");
}

TEST(JsonWriter, DoublesAreReadBackToTheBit) {
    std::mt19937_64 random{3};
    for(int i = 0; i != 20000; ++i) {
        const std::uint64_t bits = random();
        double number;
        std::memcpy(&number, &bits, sizeof(number));
        if(i % 2) number = double(std::int64_t(bits >> 12)) / 1000.0;
        if(!std::isfinite(number)) continue;
        rapidjson::Value value{number};
        const rapidjson::Document read = document(written(value));
        ASSERT_TRUE(read.IsDouble());
        ASSERT_EQ(read.GetDouble(), number);
    }
}

TEST(JsonWriter, SortsTheRootByBytesWhenAskedTo) {
    EXPECT_EQ(written(document(R"({"b":{"z":1,"y":2},"\u00e4":3,"B":4,"a":5,"":6,"a.":7})"), {1, true, {}}),
        "{\n  \"\": 6,\n  \"B\": 4,\n  \"a\": 5,\n  \"a.\": 7,\n  \"b\": {\"z\": 1, \"y\": 2},\n  \"\xc3\xa4\": "
        "3\n}\n");
}

TEST(JsonWriter, LeavesMembersOutAsIfTheyWereNotThere) {
    const rapidjson::Document read = document(R"({"a":{"b":1},"c":{"d":2},"e":3})");
    const rapidjson::Value* const omitted[]{&read["a"]["b"], &read["c"]};
    EXPECT_EQ(written(read, {2, false, omitted}), "{\n  \"a\": {},\n  \"e\": 3\n}\n");
}

TEST(JsonWriter, RefusesWhatNoFileCanHoldAndNamesItsPlace) {
    rapidjson::Document read = document(R"({"a":[{},{"b~/":0}]})");
    rapidjson::Value& place = read["a"][1]["b~/"];
    for(const double number: {std::numeric_limits<double>::infinity(), std::nan("")}) {
        place.SetDouble(number);
        EXPECT_EQ(written(read), "/a/1/b~0~1: a number is not finite");
    }
    place.SetString("\xff");
    EXPECT_EQ(written(read), "/a/1/b~0~1: a text is not valid UTF-8");
    EXPECT_EQ(written(place), "the root: a text is not valid UTF-8");

    rapidjson::Value deep{rapidjson::kArrayType};
    for(int i = 0; i != 256; ++i) {
        rapidjson::Value outer{rapidjson::kArrayType};
        outer.PushBack(deep, read.GetAllocator());
        deep = outer;
    }
    EXPECT_NE(written(deep).find("/0: containers are nested more than 256 levels deep"), std::string::npos);
    EXPECT_NE(written(deep[0]).find("[]"), std::string::npos);
}

TEST(JsonWriter, PrintsEveryFileOfTheSampleAsItStands) {
    std::size_t count = 0;
    for(const auto& entry: std::filesystem::recursive_directory_iterator{QUORVANE_SOURCE_DIR "/samples/lighthouse"}) {
        // An export lies beside the project's own files.
        if(entry.path().extension() != ".json" || entry.path().string().find("/i18n/") != std::string::npos) continue;
        std::ifstream file{entry.path(), std::ios::binary};
        const std::string bytes{std::istreambuf_iterator<char>{file}, std::istreambuf_iterator<char>{}};
        const bool isProject = entry.path().filename() == "project.json";
        EXPECT_TRUE(written(document(bytes), {isProject ? 3u : 1u, !isProject, {}}) == bytes) << entry.path();
        ++count;
    }
    EXPECT_EQ(count, 7);
}

}
}
