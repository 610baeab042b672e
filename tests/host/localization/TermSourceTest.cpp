#include "TermSource.h"

#include "TestProject.h"

namespace QuorvaneEngine {

static std::string textOf(TestProject& project, const char* const source) {
    const rapidjson::Value* const value = TermSource::value(project.project(), source);
    return value ? std::string{value->GetString(), value->GetStringLength()} : "gone";
}

TEST(TermSource, IsAPathOrAMemberOfTheRoot) {
    TestProject project{R"({"greeting": "Hello", "objects": {"door": {"text": "Open"}}, "a/b": "slash"})"};
    EXPECT_EQ(textOf(project, "/objects/door/text"), "Open");
    EXPECT_EQ(textOf(project, "greeting"), "Hello");
    EXPECT_EQ(textOf(project, "a/b"), "slash");
    EXPECT_EQ(textOf(project, "/a~1b"), "slash");
}

TEST(TermSource, IsGoneWhereThereIsNoText) {
    TestProject project{R"({"number": 1, "objects": {"door": {"text": {"x": 1}}}})"};
    for(const char* const source:
        {"", "/", "number", "/objects/door/text", "/objects/window/text", "/objects/door/~2", "nothing"})
        EXPECT_EQ(textOf(project, source), "gone") << source;
}

TEST(TermSource, EmptyTextIsThere) {
    TestProject project{R"({"empty": ""})"};
    EXPECT_EQ(textOf(project, "empty"), "");
}

TEST(TermSource, PathOfAMemberIsEscaped) {
    EXPECT_EQ(TermSource::path("/objects/door/text"), "/objects/door/text");
    EXPECT_EQ(TermSource::path("a/b~"), "/a~1b~0");
    EXPECT_EQ(TermSource::stringsPath("a/b~.c"), "/localization/strings/a~1b~0.c");
    EXPECT_EQ(TermSource::stringsPath(""), "/localization/strings/");
}

TEST(TermSource, SaysWhyItIsNoTextAsItIsWritten) {
    const rapidjson::Value number{1};
    EXPECT_EQ(TermSource::fault("/objects/door", &number), "leads to /objects/door, which is no text");
    EXPECT_EQ(TermSource::fault("level", &number), "leads to level, which is no text");
    EXPECT_EQ(TermSource::fault("/a\nb", nullptr), "leads to /a\\nb, which is not there");
    EXPECT_EQ(TermSource::fault("Hello", nullptr),
        "names Hello as its source, which is no member of the project's root and no path, as it has no \"/\" in front");
}

}
