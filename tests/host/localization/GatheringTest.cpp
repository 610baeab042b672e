#include "Gathering.h"

#include "QuorvaneEditor/LocalizationTools.h"
#include "TestProject.h"
#include "support/CapturedOutput.h"

namespace QuorvaneEngine {

using Test::CapturedOutput;

static std::size_t gather(TestProject& project) {
    LocalizationRun run{LocalizationRun::Kind::Gathering, {}, {}, {}};
    return gatherTerms(project.editor(), run);
}

static std::string keys(TestProject& project) {
    std::string keys;
    const rapidjson::Value* const terms = project.project().getValue("/localization/terms", false);
    if(!terms || !terms->IsObject()) return "nothing";
    for(const auto& term: terms->GetObject()) keys += (keys.empty() ? "" : " ") + std::string{term.name.GetString()};
    return keys;
}

TEST(Gathering, MakesATermForEveryTextOfAnObject) {
    TestProject project{
        R"({"objects": {"door": {"name": "Door", "text": "Open", "title": "T", "label": "L", "description": "D",
        "hint": "H", "lockedText": "Locked", "Text": "X", "context": "no", "textual": "no", "subtitle": "no"}}})"};
    expectOneUndoStep(project, [&] { EXPECT_EQ(gather(project), 7u); });
    EXPECT_EQ(keys(project), "door_text door_title door_label door_description door_hint door_locked_text door_text_2");
    EXPECT_EQ(
        project.at("/localization/terms/door_text"), R"({"sourceText":"/objects/door/text","translatable":true})");
}

TEST(Gathering, GoesToAnyDepth) {
    TestProject project{R"({"objects": {"npc": {"lines": [{"text": "Hi"}, "no", {"answers": {"yes": {"text": "Yes"}}}],
        "text": {"text": "inner"}}}})"};
    gather(project);
    EXPECT_EQ(keys(project), "npc_lines_0_text npc_lines_2_answers_yes_text npc_text_text");
    EXPECT_EQ(project.at("/localization/terms/npc_lines_2_answers_yes_text/sourceText"),
        R"("/objects/npc/lines/2/answers/yes/text")");
}

TEST(Gathering, LeavesOutWhatIsEmptyOrNoText) {
    TestProject project{
        R"({"objects": {"a": {"text": "", "title": 1, "label": null, "hint": ["x"], "description": true},
        "b": "text", "c": ["x"]}})"};
    EXPECT_EQ(gather(project), 0u);
    EXPECT_EQ(project.changeCount(), 0u);
}

TEST(Gathering, SecondRunChangesNothing) {
    TestProject project{R"({"objects": {"a": {"text": "A"}, "b": {"text": "B"}}})"};
    EXPECT_EQ(gather(project), 2u);
    const std::size_t changes = project.changeCount();
    EXPECT_EQ(gather(project), 0u);
    EXPECT_EQ(project.changeCount(), changes);
}

TEST(Gathering, ExistingTermsStayAsTheyAre) {
    TestProject project{R"({"objects": {"a": {"text": "A", "title": "T"}}, "label": "root", "localization": {"terms": {
        "my.own.key": {"sourceText": "/objects/a/text", "translatable": false, "note": "n"}, "a_title": {"sourceText": "label"}}}})"};
    expectOneUndoStep(project, [&] { EXPECT_EQ(gather(project), 1u); });
    EXPECT_EQ(keys(project), "my.own.key a_title a_title_2");
    EXPECT_EQ(project.at("/localization/terms/my.own.key"),
        R"({"sourceText":"/objects/a/text","translatable":false,"note":"n"})");
    EXPECT_EQ(project.at("/localization/terms/a_title"), R"({"sourceText":"label"})");
}

TEST(Gathering, KeysAreOfSmallLettersDigitsAndUnderscoresAlone) {
    TestProject project{
        R"({"objects": {"The Old-Door #1": {"openText": "A"}, "日本": {"text": "B"}, "123": {"456": {"text": "C"}},
        "": {"text": "D"}, "a/b~c": {"text": "E"}, "HUDPanel": {"text": "F"}, "日": {"x": {"日Text": "G"}}}})"};
    gather(project);
    EXPECT_EQ(keys(project), "the_old_door_1_open_text text 123_456_text text_2 a_b_c_text hudpanel_text x_text");
    EXPECT_EQ(project.at("/localization/terms/a_b_c_text/sourceText"), R"("/objects/a~1b~0c/text")");
}

TEST(Gathering, KeyDoesNotBecomeTheBranchOfAnother) {
    TestProject project{R"({"objects": {"a": {"text": "A"}}, "localization": {"terms": {"a_text.long": {}}}})"};
    gather(project);
    EXPECT_EQ(keys(project), "a_text.long a_text_2");
}

TEST(Gathering, KeyStaysWhenTheTextChanges) {
    TestProject project{R"({"objects": {"a": {"text": "A"}}})"};
    gather(project);
    project.session.changes().pushChange("/objects/a/text", Containers::StringView{"other"}, false);
    EXPECT_EQ(gather(project), 0u);
    EXPECT_EQ(keys(project), "a_text");
}

TEST(Gathering, EmptyContainersAreFilledInOneStep) {
    for(const char* const json: {R"({"objects": {"1": {"text": "A"}}, "localization": {}})",
            R"({"objects": {"1": {"text": "A"}}, "localization": {"terms": {}}})",
            R"({"objects": {"1": {"text": "A"}}, "localization": {"translations": {}}})",
            R"({"localization": {"terms": {"x": 1}}, "objects": {"1": {"text": "A"}}})"}) {
        TestProject project{json};
        expectOneUndoStep(project, [&] { EXPECT_EQ(gather(project), 1u); });
        EXPECT_EQ(project.at("/localization/terms/1_text/translatable"), "true");
    }
}

TEST(Gathering, AnyProjectIsGathered) {
    for(const char* const json:
        {"{}", R"({"objects": 1})", R"({"objects": []})", R"({"objects": {"a": {"text": {}}}})"}) {
        TestProject project{json};
        EXPECT_EQ(gather(project), 0u) << json;
        EXPECT_EQ(project.changeCount(), 0u);
    }
}

TEST(Gathering, WrongContainersAreWarnedOfAndLeftAlone) {
    for(const char* const localization: {"[]", "1", R"({"terms": []})", R"({"terms": "x"})"}) {
        TestProject project{R"({"objects": {"a": {"text": "A"}}, "localization": )" + std::string{localization} + '}'};
        const std::string before = project.text();
        const CapturedOutput output;
        LocalizationTools::gatherStrings(project.editor());
        EXPECT_EQ(
            output.warning(), "LocalizationTools::gatherStrings(): project.json: /localization/terms: is no object\n");
        EXPECT_EQ(project.text(), before);
        EXPECT_EQ(project.changeCount(), 0u);
        EXPECT_EQ(lastRun(project.editor())->report.lines().size(), 0u);
    }
}

TEST(Gathering, RunTellsWhatWasMade) {
    TestProject project{R"({"objects": {"door": {"text": "Open", "hint": "Knock"}}})"};
    LocalizationRun preview{LocalizationRun::Kind::Gathering, {}, {}, {}};
    EXPECT_EQ(gatherTerms(project.editor(), preview, true), 2u);
    EXPECT_EQ(project.changeCount(), 0u);
    EXPECT_EQ(preview.group, -1);
    LocalizationRun run{LocalizationRun::Kind::Gathering, {}, {}, {}};
    EXPECT_EQ(gatherTerms(project.editor(), run), 2u);
    EXPECT_TRUE(canUndo(project.editor(), run));
    for(const LocalizationRun* const one: {&preview, &run}) {
        EXPECT_EQ(one->report.counts(LocalizationReport::NoLanguage).added, 2u);
        ASSERT_EQ(one->report.lines().size(), 2u);
        EXPECT_EQ(copied(one->report.lines()[1].term), "door_hint");
    }
    LocalizationRun again{LocalizationRun::Kind::Gathering, {}, {}, {}};
    EXPECT_EQ(gatherTerms(project.editor(), again), 0u);
    EXPECT_EQ(again.group, -1);
}

}
