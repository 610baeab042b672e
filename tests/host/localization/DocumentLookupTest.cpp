#include "DocumentLookup.h"

#include "TestProject.h"

namespace QuorvaneEngine {

TEST(DocumentLookup, FindsValuesByPointer) {
    std::string json = R"({"a": {"b~/": [1, {"c": "x"}]}, "large": {)";
    for(int i = 0; i != 1000; ++i) json += (i ? "," : "") + ('"' + std::to_string(i) + "\":" + std::to_string(2 * i));
    TestProject project{json + "}}"};
    DocumentLookup lookup{project.project().document()};
    EXPECT_STREQ(lookup.find("/a/b~0~1/1/c")->GetString(), "x");
    EXPECT_EQ(lookup.find("/large/777")->GetInt(), 1554);
    EXPECT_EQ(lookup.find(""), &project.project().document());
    for(const char* const path: {"/a/b", "/large/1000", "/a/b~0~1/2", "a", "/a/~", "/large/7/x"})
        EXPECT_EQ(lookup.find(path), nullptr) << path;
}

TEST(DocumentLookup, MembersAreThoseOfAnObjectAlone) {
    TestProject project{R"({"a": {"b": 1}, "list": [1]})"};
    const rapidjson::Value& root = project.project().document();
    EXPECT_EQ(memberOf(memberOf(&root, "a"), "b")->GetInt(), 1);
    EXPECT_EQ(memberOf(memberOf(&root, "list"), "0"), nullptr);
    EXPECT_EQ(memberOf(memberOf(memberOf(&root, "x"), "y"), "z"), nullptr);
    EXPECT_EQ(memberOf(nullptr, "x"), nullptr);
}

}
