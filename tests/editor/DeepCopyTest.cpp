#include "DeepCopy.h"

#include <string>

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "support/Json.h"

namespace QuorvaneEngine {
namespace {

using Test::parsed;
using Test::toText;

TEST(DeepCopy, CopiesEveryKindOfValue) {
    const std::string json =
        R"({"a":null,"b":[true,false,1,-2,3.5,"text"],"c":{"d":{},"e":[]},"":"a text that is longer than a few bytes"})";
    const rapidjson::Document source = parsed(json);
    rapidjson::Document target;
    deepCopy(target, source, target.GetAllocator());
    EXPECT_EQ(toText(target), json);
}

TEST(DeepCopy, KeepsMembersWithOneKey) {
    const rapidjson::Document source = parsed(R"({"a":1,"a":2})");
    rapidjson::Document target;
    deepCopy(target, source, target.GetAllocator());
    EXPECT_EQ(toText(target), R"({"a":1,"a":2})");
}

TEST(DeepCopy, SharesNoTextWithItsSource) {
    std::string text = "a text that is longer than a few bytes";
    std::string key = "a key that is longer than a few bytes";
    rapidjson::Document target;
    rapidjson::Value source{rapidjson::kObjectType};
    rapidjson::Value array{rapidjson::kArrayType};
    // References to somebody else's text, which the JSON library copies as such.
    array.PushBack(rapidjson::StringRef(text.data(), text.size()), target.GetAllocator());
    source.AddMember(rapidjson::StringRef(key.data(), key.size()), array, target.GetAllocator());
    deepCopy(target, source, target.GetAllocator());
    text.assign(text.size(), 'x');
    key.assign(key.size(), 'y');
    EXPECT_EQ(
        toText(target), R"({"a key that is longer than a few bytes":["a text that is longer than a few bytes"]})");
}

TEST(DeepCopy, KeepsZeroBytes) {
    const rapidjson::Document source = parsed(R"(["a\u0000b"])");
    rapidjson::Document target;
    deepCopy(target, source, target.GetAllocator());
    EXPECT_EQ(toText(target), R"(["a\u0000b"])");
}

TEST(SharingCopy, CopiesEveryKindOfValue) {
    for(const std::string json:
        {"null", "true", "-2", "3.5", R"("text")", R"("a text that is longer than a few bytes")",
            R"({"a":null,"b":[true,false,1,-2,3.5,4294967296,-4294967296,"text"],"c":{"d":{},"e":[]},"":"a text that is longer"})"}) {
        rapidjson::Document source = parsed(json);
        rapidjson::Value target;
        sharingCopy(target, source, source.GetAllocator());
        EXPECT_EQ(toText(target), json);
    }
}

TEST(SharingCopy, SharesLongTextsButNothingThatChanges) {
    rapidjson::Document source =
        parsed(R"({"a name that is longer than a few bytes":["a text that is longer than a few bytes","ab"]})");
    rapidjson::Value target;
    sharingCopy(target, source, source.GetAllocator());
    EXPECT_EQ(target.MemberBegin()->name.GetString(), source.MemberBegin()->name.GetString());
    EXPECT_EQ(target.MemberBegin()->value[0].GetString(), source.MemberBegin()->value[0].GetString());

    source.MemberBegin()->value[1].SetString("cd");
    source.MemberBegin()->value[0].SetInt(1);
    source.RemoveMember(source.MemberBegin());
    EXPECT_EQ(toText(target),
        R"({"a name that is longer than a few bytes":["a text that is longer than a few bytes","ab"]})");
}

TEST(PutCopy, SharesLongTextsWhereItMay) {
    const std::string shortest(MinSharedText, 'x');
    const std::string longest(MinSharedText - 1, 'y');
    rapidjson::Document source =
        parsed("{\"" + shortest + "\":[1.5,true,\"" + longest + "\"],\"" + longest + "\":null}");
    for(const bool isSharing: {true, false}) {
        rapidjson::Document target{&source.GetAllocator()};
        auto put = [&](rapidjson::Document& out) { return putCopy(out, source, isSharing); };
        target.Populate(put);
        EXPECT_EQ(toText(target), toText(source));
        const auto member = target.MemberBegin();
        EXPECT_EQ(member->name.GetString() == source.MemberBegin()->name.GetString(), isSharing);
        EXPECT_NE(member->value[2].GetString(), source.MemberBegin()->value[2].GetString());
    }
}

}
}
