#include "LocalizationConditions.h"

#include "TestProject.h"

namespace QuorvaneEngine {

struct ConditionCase {
    const char* project;
    /** Reasons, with "|" between. */
    const char* reasons;
    const char* repaired;
};

static std::string reasons(TestProject& project) {
    std::string all;
    for(const LocalizationCondition& failure: checkLocalizationConditions(project.project()))
        all += (all.empty() ? "" : "|") + copied(failure.reason);
    return all;
}

class LocalizationConditionsThatHold: public testing::TestWithParam<const char*> {};

TEST_P(LocalizationConditionsThatHold, NeedNoRepair) {
    TestProject project{GetParam()};
    EXPECT_EQ(reasons(project), "");
    repairLocalizationConditions(project.editor());
    EXPECT_EQ(project.changeCount(), 0u);
}

INSTANTIATE_TEST_SUITE_P(Projects, LocalizationConditionsThatHold,
    testing::Values("{}", R"({"languages": {}})", R"({"languages": {"de": {"isDefault": true}, "en": {}}})",
        R"({"languages": {"xx-unknown": {"isDefault": true}, "en": {"isDefault": true}}})",
        R"({"languages": {"de": {"isDefault": true}, "fr": {"isDefault": true}}})", R"({"localization": {}})",
        R"({"localization": {"terms": {}}})",
        R"({"localization": {"terms": {"a": {}, "": {"sourceText": 1}}, "strings": []}})"));

class LocalizationConditionsThatFail: public testing::TestWithParam<ConditionCase> {};

TEST_P(LocalizationConditionsThatFail, AreRepairedInOneStepAndFailAgainAfterItsUndo) {
    TestProject project{GetParam().project};
    EXPECT_EQ(reasons(project), GetParam().reasons);
    const Int revision = project.project().revision();
    expectOneUndoStep(project, [&] {
        repairLocalizationConditions(project.editor());
        EXPECT_NE(project.project().revision(), revision);
        EXPECT_EQ(reasons(project), "");
        EXPECT_EQ(project.text(), GetParam().repaired);
        const Int repairedRevision = project.project().revision();
        project.session.undo();
        EXPECT_NE(project.project().revision(), repairedRevision);
        EXPECT_EQ(reasons(project), GetParam().reasons);
        project.session.redo();
    });
}

constexpr const char* NoDefault = "/languages marks no language that the editor knows as default.";

INSTANTIATE_TEST_SUITE_P(Projects, LocalizationConditionsThatFail,
    testing::Values(ConditionCase{R"({"languages":{"xx":{"a":1},"de":{"b":2},"fr":{}}})", NoDefault,
                        R"({"languages":{"xx":{"a":1},"de":{"b":2,"isDefault":true},"fr":{}}})"},
        ConditionCase{R"({"languages":{"de":{}}})", NoDefault, R"({"languages":{"de":{"isDefault":true}}})"},
        ConditionCase{
            R"({"languages":{"de":{"isDefault":"yes"}}})", NoDefault, R"({"languages":{"de":{"isDefault":true}}})"},
        ConditionCase{R"({"languages":{"xx":{"isDefault":true}}})", NoDefault,
            R"({"languages":{"xx":{"isDefault":true},"en":{"isDefault":true}}})"},
        ConditionCase{R"({"languages":{"de":true}})",
            "/languages/de is no object.|/languages marks no language that the editor knows as default.",
            R"({"languages":{"de":{"isDefault":true}}})"},
        ConditionCase{R"({"languages":{"de":{"isDefault":true},"fr":1,"a/b":[]}})",
            "/languages/fr is no object, and 1 more are none.",
            R"({"languages":{"de":{"isDefault":true},"fr":{},"a/b":{}}})"},
        ConditionCase{R"({"languages":["de"]})", "/languages is no object.", R"({"languages":{}})"},
        ConditionCase{R"({"languages":null})", "/languages is no object.", R"({"languages":{}})"},
        ConditionCase{R"({"localization":"x","a":1})", "/localization is no object.", R"({"localization":{},"a":1})"},
        ConditionCase{R"({"localization":{"terms":[1],"strings":{"a":"b"}}})", "/localization/terms is no object.",
            R"({"localization":{"terms":{},"strings":{"a":"b"}}})"},
        ConditionCase{R"({"localization":{"terms":{"a":{"sourceText":"x"},"b":"text","":1,"~/":null}}})",
            "/localization/terms/b is no object, and 2 more are none.",
            R"({"localization":{"terms":{"a":{"sourceText":"x"},"b":{},"":{},"~/":{}}}})"},
        ConditionCase{R"({"localization":{"terms":7},"languages":{"ja":{},"de":2}})",
            "/languages/de is no object, and 1 more are none.|/languages marks no language that the editor knows as "
            "default.",
            R"({"localization":{"terms":{}},"languages":{"ja":{"isDefault":true},"de":{}}})"}));

}
