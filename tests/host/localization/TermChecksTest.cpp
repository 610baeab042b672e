#include "TermChecks.h"

#include "Findings.h"

namespace QuorvaneEngine {

TEST(TermChecks, FindKeysThatHaveNoPlaceBesideOthers) {
    EXPECT_EQ(found(translated({{"menu", "Menu"}, {"menu.file", "File"}}, {})),
        "leaf-and-branch: project.json: /localization/terms/menu.file: cannot stand beside menu: one is a text, and "
        "the "
        "other lies below it\n");
    EXPECT_EQ(found(translated({{"menu.file", "File"}, {"menu", "Menu"}}, {})),
        "leaf-and-branch: project.json: /localization/terms/menu: cannot stand beside menu.file: one is a text, and "
        "the "
        "other lies below it\n");
    EXPECT_EQ(found(translated({{"a.b", "A"}, {"a.[0]", "B"}}, {})),
        "leaf-and-branch: project.json: /localization/terms/a.[0]: cannot stand beside a.b: one is an element, and the "
        "other has a name\n");
    EXPECT_EQ(found(translated({{"a%2Eb", "A"}, {"a%2eb", "B"}}, {})),
        "leaf-and-branch: project.json: /localization/terms/a%2eb: has the same place in a file as a%2Eb\n");
    EXPECT_EQ(found(translated({{"[0]", "A"}}, {})),
        "leaf-and-branch: project.json: /localization/terms/[0]: is an element, and a file holds no array\n");
    EXPECT_EQ(found(translated({{"menu", "Menu"}, {"menus.file", "File"}, {"common:menu.file", "File"}}, {})), "");
}

TEST(TermChecks, KeysInAFlatNamespaceAreNoBranches) {
    EXPECT_EQ(found(translated({{"menu", "Menu"}, {"menu.file", "File"}}, {}, "de",
                  R"(, "namespaces": {"translation": {"flat": true}})")),
        "");
}

TEST(TermChecks, TermsThatAreNotExportedAreInNobodysWay) {
    EXPECT_EQ(found(R"({"localization": {"strings": {"a": "A", "b": "B"}, "terms": {
        "a": {"sourceText": "/localization/strings/a", "translatable": true},
        "a.b": {"sourceText": "/localization/strings/b", "translatable": false}}}})"),
        "");
}

TEST(TermChecks, FindKeysThatProgramsLose) {
    EXPECT_EQ(found(translated({{"a.__proto__.b", "A"}}, {})),
        "reserved-key: project.json: /localization/terms/a.__proto__.b: the member __proto__ is lost where the i18next "
        "library merges a file into another one\n");
    EXPECT_EQ(found(translated({{"constructor", "A"}, {"common:prototype", "B"}}, {})),
        "reserved-key: project.json: /localization/terms/constructor: the member constructor is lost where the i18next "
        "library merges a file into another one\n"
        "reserved-key: project.json: /localization/terms/common:prototype: the member prototype is lost in many "
        "programs "
        "that merge files, though not in the i18next library\n");
    EXPECT_EQ(found(translated({{"prototypes", "A"}, {"a%2E__proto__", "B"}, {"Constructor", "C"}}, {})), "");
}

TEST(TermChecks, FindANamespaceThatTheLibraryDoesNotSee) {
    EXPECT_EQ(found(translated({{"__proto__:a", "A"}, {"constructor:a", "B"}, {"prototype:a", "C"}}, {})),
        "reserved-key: project.json: /localization/terms/__proto__:a: __proto__ is a namespace that the i18next "
        "library "
        "finds, but does not hold for loaded, so that it loads it again and again\n");
}

TEST(TermChecks, FindTermsWithoutASource) {
    EXPECT_EQ(found(R"({"objects": {"door": {"text": 1, "title": ""}}, "name": "N", "localization": {"terms": {
        "a": {"sourceText": "/objects/gone/text", "translatable": true}, "b": {"sourceText": "/objects/door/text"},
        "c": {}, "d": {"sourceText": "gone"}, "e": {"sourceText": "name", "translatable": false}, "f": {"sourceText": "/objects/door/title"}}}})"),
        "source-gone: project.json: /localization/terms/a: leads to /objects/gone/text, which is not there\n"
        "source-gone: project.json: /localization/terms/b: leads to /objects/door/text, which is no text\n"
        "source-gone: project.json: /localization/terms/c: names no source text\n"
        "source-gone: project.json: /localization/terms/d: names gone as its source, which is no member of the "
        "project's root and no path, as it has no \"/\" in front\n");
}

TEST(TermChecks, FindTermsThatShareTheirSource) {
    EXPECT_EQ(found(R"({"name": "N", "other": "N", "localization": {"terms": {
        "a": {"sourceText": "/name", "translatable": true}, "b": {"sourceText": "name", "translatable": false},
        "c": {"sourceText": "/name", "translatable": false}, "d": {"sourceText": "/other", "translatable": true}}}})"),
        "same-source: project.json: /localization/terms/b: has the same source text as a: name\n"
        "same-source: project.json: /localization/terms/c: has the same source text as a: /name\n");
}

TEST(TermChecks, FindTermsThatDoNotSayWhetherTheyAreTranslatable) {
    EXPECT_EQ(found(R"({"name": "N", "title": "T", "localization": {"terms": {"a": {"sourceText": "name"},
        "b": {"sourceText": "title", "translatable": false}}}})"),
        "translatable-missing: project.json: /localization/terms/a: does not say whether it is translatable, so it is "
        "not\n");
    EXPECT_FALSE(
        findingsOf(R"({"name": "N", "localization": {"terms": {"a": {"sourceText": "name"}}}})").hasProblems());
}

TEST(TermChecks, FindNestingsThatLeadNowhere) {
    EXPECT_EQ(found(translated({{"a", "$t(gone), $t(b) and $t()"}, {"b", "B"}}, {{"a", "$t(b), $t(gone), $t()"}})),
        "nesting-unknown: project.json: /localization/terms/a: has $t() and $t(gone), and no exported term has this "
        "key\n");
    EXPECT_EQ(found(translated({{"a", "$t(b , {\"x\": 1})"}, {"b", "B"}}, {})),
        "nesting-unknown: project.json: /localization/terms/a: has $t(b , {\"x\": 1}), and no exported term has this "
        "key\n");
    EXPECT_EQ(found(R"({"localization": {"strings": {"a": "$t(b)!", "b": "B"}, "terms": {
        "a": {"sourceText": "/localization/strings/a", "translatable": true},
        "b": {"sourceText": "/localization/strings/b", "translatable": false}}}})"),
        "nesting-unknown: project.json: /localization/terms/a: has $t(b), and no exported term has this key\n");
}

TEST(TermChecks, NestingsThatTheLibraryResolvesAreWell) {
    for(const char* const nesting: {"$t(b.c)", "$t(translation:b.c)", "$t(common:x.y)", "$t(common:x:y)", "$t(list.0)",
            "$t(apples)", "$t(apples_one)", "$t(apples, {\"count\": {{n}} })", "$t(friend)", "$t(dotted.name)",
            "$t(dotted:name)", "$t(key_{{x}})", "$t(number)", "plain"})
        EXPECT_EQ(found(translated({{"a", nesting}, {"b.c", "B"}, {"common:x.y", "C"}, {"list.[0]", "D"},
                                       {"apples_one", "{{count}} apple"}, {"apples_other", "{{count}} apples"},
                                       {"friend_male_one", "E"}, {"friend_male_other", "F"}, {"dotted%2Ename", "G"},
                                       {"dotted%3Aname", "H"}},
                      {}, "de", R"(, "values": {"en": {"number": 1}})")),
            "")
            << nesting;
    for(const char* const nesting: {"$t(b)", "$t(x.y)", "$t(b.c.d)", "$t(apple)", "$t(apples_few)", "$t(other:x.y)"})
        EXPECT_NE(found(translated({{"a", nesting}, {"b.c", "B"}, {"common:x.y", "C"},
                                       {"apples_one", "{{count}} apple"}, {"apples_other", "{{count}} apples"}},
                      {})),
            "")
            << nesting;
}

TEST(TermChecks, ANamespaceNestsItsOwnTerms) {
    EXPECT_EQ(found(translated({{"common:a", "$t(b) $t(c)"}, {"common:b", "B"}, {"c", "C"}}, {})), "");
    EXPECT_NE(found(translated({{"common:a", "$t(b)"}, {"more:b", "B"}}, {})), "");
}

TEST(TermChecks, FindFormsThatThePluralsOfTheSourceLack) {
    EXPECT_EQ(found(translated({{"a_zero", "No door"}, {"a_other", "{{count}} doors"}}, {})),
        "plural-missing: project.json: /localization/terms/a_other: lacks the form one, which English has numbers "
        "for\n");
    EXPECT_EQ(found(translated({{"a_one", "A"}, {"a_few", "B"}, {"a_other", "C"}}, {}), "pl"),
        "plural-missing: project.json: /localization/terms/a_other: lacks the form many, which Polish has numbers "
        "for\n");
    EXPECT_EQ(found(translated({{"a_one", "A"}, {"a_other", "C"}, {"file_other", "D"}}, {})), "");
}

TEST(TermChecks, FindSilencingsThatSilenceNothing) {
    EXPECT_EQ(found(R"({"name": "N", "localization": {"checks": {"same-source": "", "no\nsuch": "why"}, "terms": {
        "a": {"sourceText": "name", "translatable": true},
        "b/": {"sourceText": "name", "translatable": true, "silenced": {"same-source": " \n", "source-gone": 1, "same-sorce": "why"}}}}})"),
        "silenced-without-reason: project.json: /localization/checks/same-source: silences nothing, as same-source is "
        "given no reason\n"
        "unknown-check: project.json: /localization/checks/no\nsuch: silences nothing, as there is no check "
        "no\\nsuch\n"
        "silenced-without-reason: project.json: /localization/terms/b~1/silenced/same-source: silences nothing, as "
        "same-source is given no reason\n"
        "silenced-without-reason: project.json: /localization/terms/b~1/silenced/source-gone: silences nothing, as "
        "source-gone is given no reason\n"
        "unknown-check: project.json: /localization/terms/b~1/silenced/same-sorce: silences nothing, as there is no "
        "check same-sorce; did you mean same-source?\n"
        "same-source: project.json: /localization/terms/b~1: has the same source text as a: name\n");
}

TEST(TermChecks, AreSilencedWithTheTermOrTheCheck) {
    EXPECT_EQ(found(R"({"name": "N", "localization": {"checks": {"source-gone": "later"}, "terms": {
        "a": {"sourceText": "/gone"}, "b": {"sourceText": "name", "translatable": true},
        "c": {"sourceText": "name", "translatable": true, "silenced": {"same-source": "the same by law"}},
        "d": {"sourceText": "/gone", "silenced": {"source-gone": "never"}}}}})"),
        "source-gone: project.json: /localization/terms/a: leads to /gone, which is not there [later]\n"
        "same-source: project.json: /localization/terms/c: has the same source text as b: name [the same by law]\n"
        "source-gone: project.json: /localization/terms/d: leads to /gone, which is not there [never]\n"
        "same-source: project.json: /localization/terms/d: has the same source text as a: /gone\n");
}

TEST(TermChecks, ShowWhatStandsInTheProjectOnOneLine) {
    EXPECT_EQ(
        found(R"({"localization": {"terms": {"a\nb": {"sourceText": "/x\ny"}, "c\nd": {"sourceText": "/x\ny"}}}})"),
        "source-gone: project.json: /localization/terms/a\nb: leads to /x\\ny, which is not there\n"
        "source-gone: project.json: /localization/terms/c\nd: leads to /x\\ny, which is not there\n"
        "same-source: project.json: /localization/terms/c\nd: has the same source text as a\\nb: /x\\ny\n");
}
}
