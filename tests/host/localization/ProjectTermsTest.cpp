#include "ProjectTerms.h"

#include "TestProject.h"

namespace QuorvaneEngine {

TEST(ProjectTerms, AreInTheProjectsOrderWithTheirTexts) {
    TestProject project{R"({"objects": {"door": {"text": "Open"}}, "localization": {"terms": {
        "b": {"sourceText": "/objects/door/text", "translatable": true},
        "a": {"sourceText": "/objects/gone/text", "translatable": false}}}})"};
    const ProjectTerms terms{project.project()};
    ASSERT_EQ(terms.terms().size(), 2u);
    EXPECT_EQ(terms.terms()[0].key, "b");
    EXPECT_EQ(terms.terms()[0].source, "Open");
    EXPECT_TRUE(terms.terms()[0].isTranslatable);
    EXPECT_EQ(terms.terms()[1].sourceText, "/objects/gone/text");
    EXPECT_EQ(terms.terms()[1].source.data(), nullptr);
    EXPECT_FALSE(terms.terms()[1].isTranslatable);
    EXPECT_EQ(terms.find("a"), 1);
    EXPECT_EQ(terms.find("c"), -1);
}

TEST(ProjectTerms, AreFoundByTheKeyThatFilesHave) {
    TestProject project{R"({"localization": {"terms": {"100%": {}, "a:b": {}, "plain": {}}}})"};
    const ProjectTerms terms{project.project()};
    EXPECT_EQ(terms.canonicalKey(0), "100%25");
    EXPECT_EQ(terms.canonicalKey(2), "plain");
    EXPECT_EQ(terms.find("100%25"), 0);
    EXPECT_EQ(terms.find("a%3Ab"), 1);
    EXPECT_EQ(terms.find("100%"), -1);
}

TEST(ProjectTerms, OfTwoForOnePlaceATranslatableOneIsFound) {
    TestProject project{
        R"({"localization": {"terms": {"a:": {}, "a%3A": {"translatable": true}, "a%3a": {"translatable": true}}}})"};
    const ProjectTerms terms{project.project()};
    EXPECT_EQ(terms.find("a%3A"), 1);
}

TEST(ProjectTerms, AnyProjectHasTerms) {
    for(const char* const json: {"{}", R"({"localization": 1})", R"({"localization": {"terms": []}})",
            R"({"localization": [{"terms": {}}]})", R"({"localization": {"terms": "x"}})"}) {
        TestProject project{json};
        EXPECT_EQ(ProjectTerms{project.project()}.terms().size(), 0u) << json;
    }
    TestProject project{
        R"({"localization": {"terms": {"a": 1, "b": {"sourceText": 2, "translatable": "yes"}, "c": [], "": null}}})"};
    const ProjectTerms terms{project.project()};
    ASSERT_EQ(terms.terms().size(), 4u);
    for(const ProjectTerm& term: terms.terms()) {
        EXPECT_EQ(term.source.data(), nullptr);
        EXPECT_FALSE(term.isTranslatable);
    }
}

TEST(ProjectTerms, TranslationIsEmptyWhateverStandsThere) {
    TestProject project{R"({"localization": {"translations": {"de": {
        "a": {"text": "A"}, "b": {"text": 1}, "c": "C", "d": {}}, "fr": []}}})"};
    rapidjson::Value* const german = translationsOf(project.project(), "de");
    EXPECT_EQ(translatedText(project.project(), german, "a"), "A");
    for(const char* const key: {"b", "c", "d", "e", ""}) EXPECT_EQ(translatedText(project.project(), german, key), "");
    EXPECT_EQ(translatedText(project.project(), translationsOf(project.project(), "fr"), "a"), "");
    EXPECT_EQ(translatedText(project.project(), translationsOf(project.project(), "ja"), "a"), "");
}

}
