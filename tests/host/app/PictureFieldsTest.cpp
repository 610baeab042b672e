#include "app/PictureFields.h"

#include <gtest/gtest.h>

#include "PictureProbe.h"

namespace QuorvaneEngine {
namespace {

using Magnum::Vector2;
using Magnum::Vector4;
using Test::described;

TEST(PictureFields, AFieldIsAMemberOfAnObjectAlone) {
    const rapidjson::Document object = described(R"({"a": 1})");
    EXPECT_EQ(fieldOf(object, "a"), &object["a"]);
    EXPECT_EQ(fieldOf(object, "b"), nullptr);
    for(const char* json: {"null", "[]", "\"a\"", "1"}) EXPECT_EQ(fieldOf(described(json), "a"), nullptr) << json;
}

TEST(PictureFields, NumbersAreClampedAndOtherTypesAreNotThere) {
    const rapidjson::Document object =
        described(R"({"low": -5, "within": 2.5, "high": 1e300, "text": "7", "list": [7], "half": 2.4})");
    EXPECT_EQ(numberField(object, "low", 9.0f, 1.0f, 10.0f), 1.0f);
    EXPECT_EQ(numberField(object, "within", 9.0f, 1.0f, 10.0f), 2.5f);
    EXPECT_EQ(numberField(object, "high", 9.0f, 1.0f, 10.0f), 10.0f);
    for(const char* name: {"text", "list", "missing"})
        EXPECT_EQ(numberField(object, name, 9.0f, 1.0f, 10.0f), 9.0f) << name;
    EXPECT_EQ(integerField(object, "half", 9, 1, 10), 2);
    EXPECT_EQ(integerField(object, "high", 9, 1, 10), 10);
    EXPECT_EQ(integerField(object, "text", 9, 1, 10), 9);
}

TEST(PictureFields, AListOfNumbersHasNoOtherTypesInIt) {
    const rapidjson::Document object = described(R"({"numbers": [1, 2.5, -1e300], "mixed": [1, "2"], "empty": []})");
    EXPECT_EQ(numbersField(object, "numbers", 8), (std::vector<float>{1.0f, 2.5f, -LargestNumber}));
    EXPECT_EQ(numbersField(object, "numbers", 2), (std::vector<float>{1.0f, 2.5f}));
    for(const char* name: {"mixed", "empty", "missing"}) EXPECT_TRUE(numbersField(object, name, 8).empty()) << name;
}

TEST(PictureFields, PointsArePairs) {
    const rapidjson::Document object = described(
        R"({"points": [[1, 2], [3, 4]], "triples": [[1, 2], [1, 2, 3]], "texts": [[1, "2"]], "numbers": [1, 2]})");
    EXPECT_EQ(pointsField(object, "points", 8), (std::vector<Vector2>{{1.0f, 2.0f}, {3.0f, 4.0f}}));
    EXPECT_EQ(pointsField(object, "points", 1), (std::vector<Vector2>{{1.0f, 2.0f}}));
    for(const char* name: {"triples", "texts", "numbers", "missing"})
        EXPECT_TRUE(pointsField(object, name, 8).empty()) << name;
}

TEST(PictureFields, AColorHasThreeOrFourChannelsWithinItsScale) {
    EXPECT_EQ(*colorOf(described("[255, 0, 51]"), 255.0f), (Vector4{1.0f, 0.0f, 0.2f, 1.0f}));
    EXPECT_EQ(*colorOf(described("[0.5, 2, -1, 0.25]"), 1.0f), (Vector4{0.5f, 1.0f, 0.0f, 0.25f}));
    for(const char* json: {"[]", "[1, 2]", "[1, 2, 3, 4, 5]", "[1, 2, \"3\"]", "7", "null", "{}"})
        EXPECT_FALSE(colorOf(described(json), 1.0f)) << json;
}

}
}
