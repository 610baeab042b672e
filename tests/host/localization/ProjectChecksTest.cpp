#include "ProjectChecks.h"

#include "Findings.h"

namespace QuorvaneEngine {

TEST(ProjectChecks, FindCodesThatNoLanguageHas) {
    EXPECT_EQ(found(R"({"languages": {"en": {"isDefault": true}, "zh_CN": {}, "xx-yy": {}, "de": {}}})"),
        "language-unknown: project.json: /languages/zh_CN: no language has the code zh_CN; did you mean zh-CN?\n"
        "language-unknown: project.json: /languages/xx-yy: no language has the code xx-yy\n");
    const LocalizationFindings findings = findingsOf(R"({"languages": {"en": {"isDefault": true}, "zh_CN": {}}})");
    ASSERT_EQ(findings.findings().size(), 1u);
    EXPECT_EQ(findings.findings()[0].language, "zh_CN");
    EXPECT_EQ(findings.findings()[0].severity, FindingSeverity::Error);
}

TEST(ProjectChecks, FindLanguagesThatAreMarkedAsDefaultBesideAnother) {
    EXPECT_EQ(found(R"({"languages": {"zz": {"isDefault": true}, "de": {"isDefault": false}, "en": {"isDefault": true},
        "fr": {"isDefault": true}, "ja": {"isDefault": true}}})"),
        "language-unknown: project.json: /languages/zz: no language has the code zz\n"
        "default-twice: project.json: /languages/fr/isDefault: French is marked as default after English, which is the "
        "one that counts\n"
        "default-twice: project.json: /languages/ja/isDefault: Japanese is marked as default after English, which is "
        "the one that counts\n");
}

TEST(ProjectChecks, FindTranslationsIntoLanguagesThatTheProjectDoesNotHave) {
    EXPECT_EQ(found(R"({"languages": {"en": {"isDefault": true}, "de": {}}, "localization": {"translations": {
        "de": {}, "fr": {}, "iw": {}, "no code": {}}}})"),
        "language-unlisted: localization/fr.json: : French has texts, but is not among /languages of project.json\n"
        "language-unlisted: localization/iw.json: : no language has the code iw; did you mean he?\n"
        "language-unlisted: project.json: /localization/translations/no code: no language has the code no code\n");
    // No languages are said yet.
    EXPECT_EQ(found(R"({"localization": {"translations": {"fr": {}}}})"), "");
    EXPECT_EQ(found(R"({"languages": {}, "localization": {"translations": {"fr": {}}}})"), "");
}

TEST(ProjectChecks, FindValuesOfAWrongType) {
    EXPECT_EQ(found(R"({"languages": {"en": {"isDefault": "yes"}}, "title": "T", "localization": {"checks": ["x"],
        "terms": {"a": {"sourceText": "/title", "translatable": "yes", "silenced": ["placeholder-differs"]},
            "b": {"silenced": "x", "translatable": true, "sourceText": "/localization/strings/b"}},
        "strings": {"b": "B"}}})"),
        "wrong-type: project.json: /languages/en/isDefault: /languages/en/isDefault is a string, but must be true or "
        "false\n"
        "wrong-type: project.json: /localization/terms/a/translatable: /translatable is a string, but must be true or "
        "false\n"
        "wrong-type: project.json: /localization/terms/a/silenced: /silenced is an array, but must be an object\n"
        "wrong-type: project.json: /localization/terms/b/silenced: /silenced is a string, but must be an object\n"
        "wrong-type: project.json: /localization/checks: /localization/checks is an array, but must be an object\n");
}

TEST(ProjectChecks, AreSilencedWithTheTermOrTheCheck) {
    EXPECT_EQ(found(R"({"languages": {"en": {}, "xx": {}}, "title": "T", "localization": {
        "checks": {"language-unknown": "to come"}, "terms": {
        "a": {"sourceText": "title", "translatable": true, "note": 1, "silenced": {"wrong-type": "a number"}}}}})"),
        "language-unknown: project.json: /languages/xx: no language has the code xx [to come]\n"
        "wrong-type: project.json: /localization/terms/a/note: /note is a number, but must be a string [a number]\n");
}

TEST(ProjectChecks, FindValuesThatAreInNoFile) {
    EXPECT_EQ(found(translated({{"t", "T"}, {"k", "K"}, {"a.[0]", "A"}}, {}, "de",
                  R"(, "values": {"en": {"n": 1, "k.c": 2, "t": 3, "n.m": 4, "a.b": 5, "gone": null},
                      "de": {"n": "N", "t": 1, "m": "M", "gone": null, "ui:x": 1}})")),
        "leaf-and-branch: project.json: /localization/values/en/k.c: cannot stand beside k: one is a text, and the "
        "other lies below it\n"
        "leaf-and-branch: project.json: /localization/values/en/n.m: cannot stand beside n: one is a text, and the "
        "other lies below it\n"
        "leaf-and-branch: project.json: /localization/values/en/a.b: cannot stand beside a.[0]: one is an element, and "
        "the other has a name\n"
        "value-unknown: project.json: /localization/values/de/m: the default language has neither a text nor a value "
        "here\n"
        "value-unknown: project.json: /localization/values/de/ui:x: the default language has neither a text nor a "
        "value here\n");
}

}
