#include "ProjectEdit.h"

#include "TestProject.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

TEST(ProjectEdit, NothingWantedIsNoChange) {
    TestProject project{"{}"};
    ProjectEdit edit{project.editor()};
    EXPECT_TRUE(edit.isEmpty());
    edit.push();
    EXPECT_EQ(project.changeCount(), 0u);
    EXPECT_FALSE(project.session.changes().isGroupOpen());
}

TEST(ProjectEdit, MissingContainersAreOneChangeOfTheTopmost) {
    TestProject project{R"({"a": 1})"};
    expectOneUndoStep(project, [&] {
        ProjectEdit edit{project.editor()};
        EXPECT_TRUE(edit.setText({"localization"_s, "strings"_s, "x"_s}, "X"));
        EXPECT_TRUE(edit.setText({"localization"_s, "strings"_s, "y"_s}, "Y"));
        EXPECT_TRUE(edit.setText({"localization"_s, "other"_s}, "Z"));
        edit.push();
    });
    EXPECT_EQ(project.text(), R"({"a":1,"localization":{"strings":{"x":"X","y":"Y"},"other":"Z"}})");
    EXPECT_EQ(project.changeCount(), 2u);
    EXPECT_EQ(project.session.changes().changes()[0].path, "/localization");
}

TEST(ProjectEdit, EmptyContainerIsSetAsAWhole) {
    TestProject project{R"({"localization": {"translations": {"de": {}}}})"};
    expectOneUndoStep(project, [&] {
        ProjectEdit edit{project.editor()};
        edit.setText({"localization"_s, "translations"_s, "de"_s, "x"_s, "text"_s}, "X");
        edit.push();
    });
    EXPECT_EQ(project.at("/localization/translations"), R"({"de":{"x":{"text":"X"}}})");
    EXPECT_EQ(project.session.changes().changes()[0].path, "/localization/translations/de");
}

TEST(ProjectEdit, NumericNamesMakeNoArrays) {
    TestProject project{R"({"localization": {"terms": {"a": {}}}})"};
    expectOneUndoStep(project, [&] {
        ProjectEdit edit{project.editor()};
        edit.setText({"localization"_s, "terms"_s, "123"_s}, "one");
        edit.setText({"localization"_s, "strings"_s, "0"_s}, "two");
        edit.setText({"7"_s, "8"_s}, "three");
        edit.push();
    });
    EXPECT_EQ(
        project.text(), R"({"localization":{"terms":{"a":{},"123":"one"},"strings":{"0":"two"}},"7":{"8":"three"}})");
}

TEST(ProjectEdit, NamesMayHoldAnything) {
    TestProject project{R"({"x": {"y": 1}})"};
    expectOneUndoStep(project, [&] {
        ProjectEdit edit{project.editor()};
        for(const Containers::StringView name: {""_s, "a/b"_s, "~"_s, "~1"_s, "##"_s, "-"_s, "%41"_s, "\n\0"_s})
            EXPECT_TRUE(edit.setText({"x"_s, name}, "v"));
        edit.push();
    });
    EXPECT_EQ(
        project.at("/x"), R"({"y":1,"":"v","a/b":"v","~":"v","~1":"v","##":"v","-":"v","%41":"v","\n\u0000":"v"})");
}

TEST(ProjectEdit, WhatIsNoObjectIsNotEnteredNorReplaced) {
    TestProject project{R"({"list": [1], "number": 1})"};
    ProjectEdit edit{project.editor()};
    EXPECT_FALSE(edit.setText({"list"_s, "x"_s}, "X"));
    EXPECT_FALSE(edit.setText({"number"_s, "x"_s, "y"_s}, "X"));
    EXPECT_TRUE(edit.isEmpty());
}

TEST(ProjectEdit, ReplacesAValueThatIsThere) {
    TestProject project{R"({"objects": {"door": {"text": "Open"}}})"};
    expectOneUndoStep(project, [&] {
        ProjectEdit edit{project.editor()};
        edit.replace("/objects/door/text", edit.text("Close"));
        edit.push();
        EXPECT_TRUE(edit.isEmpty());
    });
    EXPECT_EQ(project.at("/objects/door/text"), R"("Close")");
}

namespace {

/** Members "k0" to "k<count - 1>" with their numbers as texts, of which the first @p known are there already. */
ProjectEdit::Members numbered(const std::vector<std::string>& names, const std::size_t known) {
    return {names.size(), [&](const std::size_t i) { return viewed(names[i]); },
        [known](const std::size_t i) { return i < known ? Int(i) : -1; },
        [&](const std::size_t i, rapidjson::Document& out) {
            out.StartObject();
            out.Key("text", 4, true);
            out.String(names[i].data(), rapidjson::SizeType(names[i].size()), true);
            out.EndObject(1);
        }};
}

std::vector<std::string> keys(const std::size_t count) {
    std::vector<std::string> names;
    for(std::size_t i = 0; i != count; ++i) names.push_back("k" + std::to_string(i));
    return names;
}

std::string members(const std::size_t from, const std::size_t to, const std::string& value = {}) {
    std::string json;
    for(std::size_t i = from; i != to; ++i) {
        const std::string key = "k" + std::to_string(i);
        json += (json.empty() ? "" : ",") + ('"' + key + "\":{\"text\":\"" + (value.empty() ? key : value) + "\"}");
    }
    return json;
}

}

TEST(ProjectEdit, MembersOfAMissingObjectAreOneChange) {
    for(const char* const json: {"{}", R"({"localization":{}})", R"({"localization":{"translations":{}}})"}) {
        TestProject project{json};
        const std::vector<std::string> names = keys(100);
        expectOneUndoStep(project, [&] {
            ProjectEdit edit{project.editor()};
            EXPECT_TRUE(edit.setMembers({"localization"_s, "translations"_s, "de"_s}, numbered(names, 0)));
            edit.push();
        });
        EXPECT_EQ(project.at("/localization/translations/de"), '{' + members(0, 100) + '}');
        EXPECT_EQ(project.changeCount(), 1u);
    }
}

TEST(ProjectEdit, ManyMembersOfAnObjectAreOneChangeAndKeepTheOthers) {
    TestProject project{R"({"x":{)" + members(0, 90, "old") +
        R"(,"other":[1,-1.5,true,null,{"a":"b"}],"long":"a text that is long"}})"};
    const std::vector<std::string> names = keys(100);
    expectOneUndoStep(project, [&] {
        ProjectEdit edit{project.editor()};
        EXPECT_TRUE(edit.setMembers({"x"_s}, numbered(names, 90)));
        EXPECT_TRUE(edit.setText({"x"_s, "long"_s}, "another"));
        EXPECT_TRUE(edit.setText({"x"_s, "new"_s}, "one"));
        edit.push();
    });
    EXPECT_EQ(project.at("/x"),
        '{' + members(0, 90) + R"(,"other":[1,-1.5,true,null,{"a":"b"}],"long":"another",)" + members(90, 100) +
            R"(,"new":"one"})");
    EXPECT_EQ(project.changeCount(), 1u);
}

TEST(ProjectEdit, FewMembersOfALargeObjectAreAChangeEach) {
    TestProject project{R"({"x":{)" + members(0, 1000, "old") + "}}"};
    const std::vector<std::string> names = keys(100);
    expectOneUndoStep(project, [&] {
        ProjectEdit edit{project.editor()};
        EXPECT_TRUE(edit.setMembers({"x"_s}, numbered(names, 100)));
        edit.push();
    });
    EXPECT_EQ(project.at("/x"), '{' + members(0, 100) + ',' + members(100, 1000, "old") + '}');
    EXPECT_EQ(project.changeCount(), 100u);
}

TEST(ProjectEdit, NamesThatAreKeptAreInTheProjectOnce) {
    TestProject project{R"({"localization":{"translations":{}}})"};
    std::string name = "a name that is longer than a few bytes";
    std::string finished;
    expectOneUndoStep(project, [&] {
        ProjectEdit edit{project.editor()};
        const Containers::StringView kept = edit.keep(viewed(name));
        EXPECT_EQ(kept, viewed(name));
        name.assign(name.size(), 'x');
        for(const Containers::StringView code: {"de"_s, "fr"_s})
            EXPECT_TRUE(edit.setMembers({"localization"_s, "translations"_s, code},
                {1, [kept](std::size_t) { return kept; }, [](std::size_t) { return -1; },
                    [](std::size_t, rapidjson::Document& out) { out.Bool(true); },
                    [&finished, &project, code] {
                        finished += copied(code) + ' ' + project.at("/localization/translations/" + copied(code)) + ' ';
                    }}));
        EXPECT_EQ(finished, "");
        edit.push();
    });
    EXPECT_EQ(finished,
        R"(de {"a name that is longer than a few bytes":true} fr {"a name that is longer than a few bytes":true} )");
    EXPECT_EQ(project.at("/localization/translations"),
        R"({"de":{"a name that is longer than a few bytes":true},"fr":{"a name that is longer than a few bytes":true}})");

    ProjectEdit edit{project.editor()};
    const Containers::StringView brief = "brief"_s;
    EXPECT_FALSE(ProjectEdit::isShared(brief));
    EXPECT_EQ(edit.keep(brief).data(), brief.data());
}

TEST(ProjectEdit, NoMembersAreNoChange) {
    TestProject project{R"({"list": [1]})"};
    ProjectEdit edit{project.editor()};
    EXPECT_TRUE(edit.setMembers({"x"_s}, numbered({}, 0)));
    EXPECT_TRUE(edit.isEmpty());
    const std::vector<std::string> names = keys(1);
    EXPECT_FALSE(edit.setMembers({"list"_s}, numbered(names, 0)));
    EXPECT_TRUE(edit.isEmpty());
    EXPECT_EQ(edit.push(), -1);
}

}
