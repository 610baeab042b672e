#include "KeptValues.h"

#include "TestProject.h"

namespace QuorvaneEngine {

TEST(KeptValues, AreThoseOfALanguageInTheProjectsOrder) {
    TestProject project{R"({"localization": {"namespaces": {"menu": {}}, "values": {
        "en": {"n": 5, "menu:list": [], "nothing": null, "flag": true}, "de": {"n": "fünf"}, "fr": 1}}})"};
    const ProjectTerms terms{project.project()};
    const KeptValues english{project.project().document(), terms, "en"};
    ASSERT_EQ(english.entries().size(), 3u);
    EXPECT_EQ(english.entries()[0].key, "n");
    EXPECT_EQ(english.entries()[0].value->GetInt(), 5);
    EXPECT_EQ(english.entries()[1].place.nameSpace, 1);
    EXPECT_EQ(english.entries()[1].place.fileKey, "list");
    EXPECT_EQ(english.entries()[2].position, 3);
    EXPECT_EQ(english.find("flag"), 2);
    EXPECT_EQ(english.find("nothing"), -1);
    EXPECT_EQ(english.position("nothing"), 2);
    EXPECT_EQ(english.position("flag"), 3);
    EXPECT_EQ(english.position("other"), -1);
    EXPECT_STREQ((KeptValues{project.project().document(), terms, "de"}.entries()[0].value->GetString()), "fünf");
    for(const char* const code: {"fr", "ja"})
        EXPECT_EQ((KeptValues{project.project().document(), terms, code}.entries().size()), 0u);
}

TEST(KeptValues, ANumberMayBeKeptByItsSpelling) {
    const auto spelling = [](const char* const json) {
        rapidjson::Document value;
        value.Parse(json);
        return copied(spellingOf(value));
    };
    for(const char* const number: {"1.50", "-0", "1e3", "12345678901234567890123"})
        EXPECT_EQ(spelling((R"({"number": ")" + std::string{number} + "\"}").c_str()), number);
    for(const char* const other: {"1.5", "{}", "[]", "\"1.50\"", R"({"number": 1.5})", R"({"number": ""})",
            R"({"number": "one"})", R"({"number": " 1"})", R"({"number": "1 "})", R"({"number": "01"})",
            R"({"number": "1,2"})", R"({"number": "{}"})", R"({"number": "1", "b": 2})", R"({"other": "1"})"})
        EXPECT_EQ(spelling(other), "") << other;
}

TEST(KeptValues, AreTheSameWhereAFileWouldSaySo) {
    const char* const different[]{"1", "2", "1.0", "true", "false", "{}", "[]", "\"1\"", "\"\"", "-1",
        "18446744073709551615", "0", "0.0", "-0.0"};
    for(const char* const a: different)
        for(const char* const b: different) {
            rapidjson::Document first, second;
            first.Parse(a);
            second.Parse(b);
            EXPECT_EQ(isSameValue(first, second), a == b) << a << ' ' << b;
        }
}

}
