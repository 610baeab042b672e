#include "JsonPath.h"

#include <gtest/gtest.h>
#include <rapidjson/pointer.h>

namespace QuorvaneEngine {

using namespace Containers::Literals;

TEST(JsonPath, JoinsNamesWithASlashBeforeEach) {
    EXPECT_EQ(jsonPath({}), "");
    EXPECT_EQ(jsonPath({"languages"_s, "de"_s}), "/languages/de");
    EXPECT_EQ(jsonPath({""_s}), "/");
    EXPECT_EQ(jsonPath({""_s, ""_s}), "//");
}

TEST(JsonPath, EscapesTildesAndSlashes) {
    EXPECT_EQ(jsonPath({"a/b~c"_s}), "/a~1b~0c");
    EXPECT_EQ(jsonPath({"~1"_s}), "/~01");
}

TEST(JsonPath, LeadsBackToTheSameNames) {
    for(const Containers::StringView name: {"a/b"_s, "~"_s, "~~//"_s, "##"_s, "100%"_s, "0"_s, "-"_s, ""_s, "ä\n"_s}) {
        const Containers::String path = jsonPath({"x"_s, name});
        const rapidjson::Pointer pointer{path.data(), path.size()};
        ASSERT_TRUE(pointer.IsValid());
        ASSERT_EQ(pointer.GetTokenCount(), 2u);
        EXPECT_EQ((Containers::StringView{pointer.GetTokens()[1].name, pointer.GetTokens()[1].length}), name);
    }
}

}
