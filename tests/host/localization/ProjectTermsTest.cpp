#include "ProjectTerms.h"

#include "TermKey.h"
#include "TestProject.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

TEST(ProjectTerms, AreInTheProjectsOrderWithTheirTexts) {
    TestProject project{R"({"objects": {"door": {"text": "Open"}}, "name": "Game", "localization": {"terms": {
        "b": {"sourceText": "/objects/door/text", "translatable": true},
        "a": {"sourceText": "/objects/gone/text", "translatable": false},
        "c": {"sourceText": "name", "translatable": true}}}})"};
    const ProjectTerms terms{project.project()};
    ASSERT_EQ(terms.terms().size(), 3u);
    EXPECT_EQ(terms.terms()[0].key, "b");
    EXPECT_EQ(terms.terms()[0].source, "Open");
    EXPECT_TRUE(terms.terms()[0].isTranslatable);
    EXPECT_EQ(terms.terms()[1].sourceText, "/objects/gone/text");
    EXPECT_EQ(terms.terms()[1].source.data(), nullptr);
    EXPECT_FALSE(terms.terms()[1].isTranslatable);
    EXPECT_EQ(terms.terms()[2].source, "Game");
    EXPECT_EQ(terms.find(0, "a"), 1);
    EXPECT_EQ(terms.find(0, "d"), -1);
    Int last = -1;
    EXPECT_EQ(terms.findKey("c", last), 2);
    EXPECT_EQ(terms.findKey("d", last), -1);
}

TEST(ProjectTerms, AreFoundByTheKeyThatFilesHave) {
    TestProject project{R"({"localization": {"terms": {"100%": {}, "a: b": {}, "plain": {}}}})"};
    const ProjectTerms terms{project.project()};
    EXPECT_EQ(terms.terms()[0].fileKey, "100%25");
    EXPECT_EQ(terms.terms()[2].fileKey, "plain");
    EXPECT_EQ(terms.find(0, "100%25"), 0);
    EXPECT_EQ(terms.find(0, "a%3A b"), 1);
    EXPECT_EQ(terms.find(0, "100%"), -1);
}

TEST(ProjectTerms, OfTwoForOnePlaceATranslatableOneIsFound) {
    TestProject project{
        R"({"localization": {"terms": {"a: ": {}, "a%3A ": {"translatable": true}, "a%3a ": {"translatable": true}}}})"};
    const ProjectTerms terms{project.project()};
    EXPECT_EQ(terms.find(0, "a%3A "), 1);
}

TEST(ProjectTerms, NamespacesAreThoseOfTermsOfNotesAndOfValues) {
    TestProject project{R"({"localization": {
        "terms": {"menu:file.open": {}, "plain": {}, "two%20words:x": {}, "translation:y": {}, "menu:quit": {}},
        "namespaces": {"empty": {}, "menu": {"order": {"de": []}}, ".hidden": {}, "flat": {"flat": true}, "odd": 1},
        "values": {"en": {"numbers:n": 1, "menu:n": 2}, "de": 1}}})"};
    const ProjectTerms terms{project.project()};
    std::string names;
    for(const TermNamespace& one: terms.namespaces())
        names += copied(one.name) + (one.isFlat ? " flat" : "") + (one.isNoted ? " noted" : "") +
            (one.order ? " ordered" : "") + ", ";
    EXPECT_EQ(names, "translation, menu noted ordered, two words, empty noted, flat flat noted, odd noted, numbers, ");

    EXPECT_EQ(terms.terms()[0].nameSpace, 1u);
    EXPECT_EQ(terms.terms()[0].fileKey, "file.open");
    EXPECT_EQ(terms.terms()[1].nameSpace, 0u);
    EXPECT_EQ(terms.terms()[2].nameSpace, 2u);
    EXPECT_EQ(terms.terms()[3].nameSpace, 0u);
    EXPECT_EQ(terms.terms()[3].fileKey, "y");
    EXPECT_EQ(terms.find(1, "quit"), 4);
    EXPECT_EQ(terms.find(0, "quit"), -1);
    EXPECT_EQ(terms.findNamespace("two words"), 2);
    EXPECT_EQ(terms.findNamespace("two%20words"), -1);
}

TEST(ProjectTerms, KeysOfAFlatNamespaceAreNotSplit) {
    TestProject project{R"({"localization": {
        "terms": {"ui:menu.file": {}, "ui:Status%3A Loading...": {}, "menu.file": {}},
        "namespaces": {"ui": {"flat": true}}}})"};
    const ProjectTerms terms{project.project()};
    EXPECT_EQ(terms.terms()[0].fileKey, "menu%2Efile");
    EXPECT_EQ(terms.terms()[1].fileKey, "Status%3A Loading%2E%2E%2E");
    EXPECT_EQ(terms.terms()[2].fileKey, "menu.file");
}

TEST(ProjectTerms, KeyOfAPlaceLeadsBackToIt) {
    TestProject project{R"({"localization": {"namespaces": {"ui": {"flat": true}, "a b": {}, "menu": {}}}})"};
    const ProjectTerms terms{project.project()};
    TextArena memory;
    for(std::size_t i = 0; i != terms.namespaces().size(); ++i)
        for(const Containers::StringView name:
            {"a"_s, "menu.file"_s, "Status: Loading..."_s, " x"_s, ""_s, "a:b"_s, "[0]"_s}) {
            const Containers::String fileKey = TermKey::memberSegment(name);
            const Containers::StringView key = terms.projectKey(UnsignedInt(i), fileKey, memory);
            const TermPlace place = terms.place(key, memory);
            EXPECT_EQ(place.nameSpace, Int(i)) << copied(key);
            EXPECT_EQ(place.fileKey, fileKey) << copied(key);
        }
    EXPECT_EQ(terms.place("unknown:a", memory).nameSpace, -1);
}

TEST(ProjectTerms, TermsAndNamespacesCanBeAdded) {
    TestProject project{R"({"localization": {"terms": {"a": {"translatable": true}}}})"};
    ProjectTerms terms{project.project()};
    EXPECT_EQ(terms.addNamespace("translation", true), 0u);
    EXPECT_FALSE(terms.namespaces()[0].isFlat);
    const UnsignedInt flat = terms.addNamespace("ui", true);
    EXPECT_EQ(terms.addNamespace("ui", false), flat);
    EXPECT_EQ(terms.addTerm(flat, "menu%2Efile", "File"), 1u);
    EXPECT_EQ(terms.terms()[1].key, "ui:menu.file");
    EXPECT_EQ(terms.terms()[1].source, "File");
    EXPECT_TRUE(terms.terms()[1].isTranslatable);
    EXPECT_EQ(terms.find(flat, "menu%2Efile"), 1);
    Int last = -1;
    EXPECT_EQ(terms.findKey("ui:menu.file", last), 1);
}

TEST(ProjectTerms, AnyProjectHasTerms) {
    for(const char* const json:
        {"{}", R"({"localization": 1})", R"({"localization": {"terms": []}})", R"({"localization": [{"terms": {}}]})",
            R"({"localization": {"terms": "x", "namespaces": 1, "values": []}})"}) {
        TestProject project{json};
        const ProjectTerms terms{project.project()};
        EXPECT_EQ(terms.terms().size(), 0u) << json;
        EXPECT_EQ(terms.namespaces().size(), 1u) << json;
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

}
