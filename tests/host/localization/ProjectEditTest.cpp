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
    EXPECT_EQ(project.changeCount(), 1u);
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

}
