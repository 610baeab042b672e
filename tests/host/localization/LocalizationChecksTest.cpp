#include "LocalizationChecks.h"

#include "Exchange.h"
#include "Findings.h"
#include "Progress.h"

namespace QuorvaneEngine {

TEST(LocalizationChecks, HaveNamesThatAreNotForAnybodyToChange) {
    std::string names;
    for(const LocalizationCheck& check: localizationChecks())
        names += copied(findingSeverityName(check.severity)) + ' ' + copied(check.name) + '\n';
    EXPECT_EQ(names,
        "error placeholder-differs\nwarning format-differs\nerror nesting-differs\nerror nesting-unknown\n"
        "warning plural-missing\nhint plural-extra\nerror leaf-and-branch\nwarning reserved-key\nhint same-as-source\n"
        "warning outer-blanks\nerror only-blanks\nhint stale\nerror source-gone\nwarning same-source\n"
        "hint translatable-missing\nwarning term-unknown\nwarning value-unknown\nwarning state-unknown\n"
        "warning wrong-type\n"
        "error language-unknown\nwarning language-unlisted\nwarning default-twice\nwarning silenced-without-reason\n"
        "warning unknown-check\n");
    for(const LocalizationCheck& check: localizationChecks()) EXPECT_FALSE(check.description.isEmpty());
}

TEST(LocalizationChecks, TellOfTermsFirstAndThenOfEachLanguage) {
    const LocalizationFindings findings = findingsOf(R"({"localization": {
        "strings": {"a": "A ", "constructor": "{{x}}"},
        "terms": {"a": {"sourceText": "/localization/strings/a", "translatable": true},
            "constructor": {"sourceText": "/localization/strings/constructor", "translatable": true}},
        "translations": {"fr": {"constructor": )" +
        translation("{{y}}", "{{x}}") + R"(, "a": )" + translation("B", "A ") + R"(}, "de": {"a": )" +
        translation("C", "A ") + R"(}, "en": {"a": {"text": "D"}}}}})");
    std::string lines;
    for(const LocalizationFinding& finding: findings.findings())
        lines += copied(finding.check) + ' ' + copied(finding.language) + ' ' + copied(finding.term) + '\n';
    EXPECT_EQ(
        lines, "reserved-key  constructor\nouter-blanks fr a\nplaceholder-differs fr constructor\nouter-blanks de a\n");
}

TEST(LocalizationChecks, LookAtTheLanguagesThatAreAskedFor) {
    TestProject project{R"({"localization": {"strings": {"a": "A "}, "terms": {
        "a": {"sourceText": "/localization/strings/a", "translatable": true}},
        "translations": {"de": {"a": {"text": "B"}}, "fr": {"a": )" +
        translation("C", "A ") + R"(}, "en": {"a": {"text": "D"}}}}})"};
    const Containers::Array<UnsignedInt> languages = languagesOf({"fr", "en", "ja"});
    LocalizationCheckOptions options;
    options.defaultLanguage = FallbackLanguage;
    options.languages = languages;
    const LocalizationFindings findings = checkLocalization(project.project().document(), options);
    ASSERT_EQ(findings.findings().size(), 1u);
    EXPECT_EQ(findings.findings()[0].language, "fr");
}

TEST(LocalizationChecks, CountTheirProgressAndEndWhenTheyShould) {
    TestProject project{translated({{"a", "A "}}, {{"a", "B"}})};
    Progress progress;
    LocalizationCheckOptions options;
    options.defaultLanguage = FallbackLanguage;
    options.progress = &progress;
    EXPECT_EQ(checkLocalization(project.project().document(), options).findings().size(), 1u);
    EXPECT_EQ(progress.done, progress.total);
    EXPECT_EQ(progress.total, 2u);
    progress.isCancelled = true;
    EXPECT_EQ(checkLocalization(project.project().document(), options).findings().size(), 0u);
}

TEST(LocalizationChecks, ChangeNothing) {
    TestProject project{
        translated({{"a", "A {{x}}"}, {"b_one", "$t(c)"}, {"b_other", "C"}}, {{"a", " B"}, {"b_few", "C"}})};
    const std::string before = project.text();
    LocalizationCheckOptions options;
    options.defaultLanguage = FallbackLanguage;
    EXPECT_TRUE(checkLocalization(project.project().document(), options).hasProblems());
    EXPECT_EQ(project.text(), before);
}

TEST(LocalizationChecks, TakeAnyDocument) {
    for(const char* const json: {"{}", "[]", "1", R"({"localization": 1})", R"({"localization": []})",
            R"({"localization": {"terms": [], "translations": [], "checks": [], "values": 1, "namespaces": "x"}})",
            R"({"localization": {"translations": {"de": 1, "fr": [], "": {"a": 1}, "no code": {"a": {"text": 1}}}}})",
            R"({"localization": {"values": {"en": []}, "checks": 1}})"}) {
        rapidjson::Document document;
        document.Parse(json);
        LocalizationCheckOptions options;
        for(const UnsignedInt language: {FallbackLanguage, ~UnsignedInt{}}) {
            options.defaultLanguage = language;
            const LocalizationFindings findings = checkLocalization(document, options);
            for(const LocalizationFinding& finding: findings.findings()) EXPECT_EQ(finding.check, "wrong-type") << json;
        }
    }
    EXPECT_EQ(found(R"({"localization": {"terms": {"a": 1, "b": [], "c": {"sourceText": 1, "translatable": "yes",
        "silenced": []}, "": {"silenced": "x"}}, "translations": {"de": {"a": {"text": "A"}, "c": "C", "": {"text": []}}}}})"),
        "wrong-type: project.json: /localization/terms/a: is a number, but must be an object\n"
        "wrong-type: project.json: /localization/terms/b: is an array, but must be an object\n"
        "wrong-type: project.json: /localization/terms/c/sourceText: /sourceText is a number, but must be a string\n"
        "wrong-type: project.json: /localization/terms/c/translatable: /translatable is a string, but must be true or "
        "false\n"
        "wrong-type: project.json: /localization/terms/c/silenced: /silenced is an array, but must be an object\n"
        "wrong-type: project.json: /localization/terms//silenced: /silenced is a string, but must be an object\n"
        "source-gone: project.json: /localization/terms/a: names no source text\n"
        "source-gone: project.json: /localization/terms/b: names no source text\n"
        "source-gone: project.json: /localization/terms/c: names no source text\n"
        "source-gone: project.json: /localization/terms/: names no source text\n"
        "wrong-type: localization/de.json: /c: is a string, but must be an object\n"
        "wrong-type: localization/de.json: //text: /text is an array, but must be a string\n");
}

}
