#include "ProjectTranslations.h"

#include "TestProject.h"

namespace QuorvaneEngine {

namespace {

constexpr const char* Apples = R"({"localization": {"terms": {"apples_one": {}, "apples_other": {}, "menu:quit": {}},
    "translations": {"pl": {"menu:quit": {"text": "Koniec"}, "apples_few": {"text": "kilka"}, "apples_one": {"text": "jedno"},
    "gone:x": {"text": "x"}, "menu:x_few": {"text": "y"}}}}})";

}

TEST(ProjectTranslations, AreFoundByTheNumbersOfTheirTerms) {
    TestProject project{Apples};
    const ProjectTerms terms{project.project()};
    const ProjectTranslations polish{project.project().document(), terms, "pl"};
    EXPECT_EQ(polish[0].text(), "jedno");
    EXPECT_EQ(polish[0].position, 2);
    EXPECT_EQ(polish[1].value, nullptr);
    EXPECT_EQ(polish[1].position, -1);
    EXPECT_EQ(polish[1].text(), "");
    EXPECT_EQ(polish[2].text(), "Koniec");
    EXPECT_EQ(polish[3].value, nullptr);
}

TEST(ProjectTranslations, OnesWithoutATermAreBeside) {
    TestProject project{Apples};
    const ProjectTerms terms{project.project()};
    const ProjectTranslations polish{project.project().document(), terms, "pl"};
    ASSERT_EQ(polish.others().size(), 2u);
    EXPECT_EQ(polish.others()[0].key, "apples_few");
    EXPECT_EQ(polish.others()[0].translation.text(), "kilka");
    EXPECT_EQ(polish.others()[0].translation.position, 1);
    EXPECT_EQ(polish.others()[1].place.nameSpace, 1);
    EXPECT_EQ(polish.others()[1].place.fileKey, "x_few");
    EXPECT_EQ(polish.findOther("menu:x_few"), 1);
    EXPECT_EQ(polish.findOther("menu:quit"), -1);
    EXPECT_EQ(polish.findOther("gone:x"), -1);
}

TEST(ProjectTranslations, PartsAreFoundInAnyOrder) {
    TestProject project{R"({"localization": {"terms": {"a": {}, "b": {}, "c": {}, "d": {}}, "translations": {"de": {
        "a": {"text": "A", "source": "1"}, "b": {"texts": "x", "source": "2", "sources": "y", "tex": "z", "text": "B"},
        "c": {"text": "C", "source": 3}, "d": "D"}}}})"};
    const ProjectTerms terms{project.project()};
    const ProjectTranslations german{project.project().document(), terms, "de"};
    const auto parts = [&german](const std::size_t term) {
        const ProjectTranslation::Parts parts = german[term].parts();
        return copied(parts.text) + '|' + copied(parts.source);
    };
    EXPECT_EQ(parts(0), "A|1");
    EXPECT_EQ(parts(1), "B|2");
    EXPECT_EQ(parts(2), "C|");
    EXPECT_EQ(parts(3), "|");
}

TEST(ProjectTranslations, TextIsEmptyWhateverStandsThere) {
    TestProject project{R"({"localization": {"terms": {"a": {}, "b": {}, "c": {}, "d": {}, "e": {}}, "translations": {
        "de": {"a": {"text": "A"}, "b": {"text": 1}, "c": "C", "d": {}, "e": null}, "fr": []}}})"};
    const ProjectTerms terms{project.project()};
    const ProjectTranslations german{project.project().document(), terms, "de"};
    EXPECT_EQ(german[0].text(), "A");
    for(std::size_t i = 1; i != 5; ++i) EXPECT_EQ(german[i].text(), "");
    for(const char* const code: {"fr", "ja"})
        EXPECT_EQ((ProjectTranslations{project.project().document(), terms, code}[0].text()), "");
    TestProject odd{R"({"localization": {"translations": 1}})"};
    EXPECT_EQ((ProjectTranslations{odd.project().document(), terms, "de"}.others().size()), 0u);
}

}
