#include "QuorvaneEditor/RapidJsonUtils.h"

#include <sstream>

#include <gtest/gtest.h>

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Utility/Debug.h>

#include "TestDocument.h"

namespace QuorvaneEngine {

using Corrade::Utility::Debug;

TEST(RapidJsonUtils, TextBecomesItsIndexAmongTheValues) {
    const Containers::StringView values[]{"point", "directional", "spot"};
    EXPECT_EQ(RapidJsonUtils::enumStringToValue("point", Containers::arrayView(values)), 0);
    EXPECT_EQ(RapidJsonUtils::enumStringToValue("spot", Containers::arrayView(values)), 2);
}

TEST(RapidJsonUtils, OtherTextIsMinusOne) {
    const Containers::StringView values[]{"point", "spot"};
    for(const char* text: {"", "Point", "poin", "pointy"})
        EXPECT_EQ(RapidJsonUtils::enumStringToValue(text, Containers::arrayView(values)), -1);
    EXPECT_EQ(RapidJsonUtils::enumStringToValue("point", {}), -1);
}

TEST(RapidJsonUtils, SameValueTwiceGivesTheFirst) {
    EXPECT_EQ(RapidJsonUtils::enumStringToValue("a", {"b", "a", "a"}), 1);
}

TEST(RapidJsonUtils, ValueIsPrintedAsOneItem) {
    const rapidjson::Document document = parsed(R"({"a":[1,2.0,"x\n"]})");
    const rapidjson::Value& value = document;
    std::ostringstream stream;
    {
        Debug out{&stream};
        out << "before" << value << "after";
    }
    EXPECT_EQ(stream.str(), "before {\"a\":[1,2.0,\"x\\n\"]} after\n");
}

}
