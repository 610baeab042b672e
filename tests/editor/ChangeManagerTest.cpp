#include "ChangeManager.h"

#include <string>
#include <utility>

#include <Magnum/Math/Matrix4.h>
#include <Magnum/Math/Quaternion.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "ChangeManagerLog.h"

namespace QuorvaneEngine {
namespace {

using rapidjson::Value;
using Test::ChangeManagerLog;
using Test::load;
using Test::toText;

TEST_F(ChangeManagerLog, AFreshOneIsEmpty) {
    EXPECT_EQ(changes.lastChangeIndex(), -1);
    EXPECT_FALSE(changes.hasUnsavedChanges());
    EXPECT_FALSE(changes.isGroupOpen());
    EXPECT_FALSE(changes.canUndo());
    EXPECT_FALSE(changes.canRedo());
    EXPECT_TRUE(changes.changes().isEmpty());
}

TEST_F(ChangeManagerLog, OneWithoutAProjectCanBeReset) {
    ChangeManager later;
    later.reset(project);
    later.pushChange("/a", Value{1}, false);
    EXPECT_EQ(project.getValue("/a", false)->GetInt(), 1);
}

TEST_F(ChangeManagerLog, APushIsRecordedAndAppliedAtOnce) {
    push("/a", 1);
    EXPECT_EQ(log(), (Log{"/a 0 -> 1, -1"}));
    EXPECT_EQ(changes.lastChangeIndex(), 0);
    EXPECT_EQ(project.getValue("/a", false)->GetInt(), 1);
}

TEST_F(ChangeManagerLog, APushOfAMissingPathRecordsACreation) {
    push("/new", 1);
    EXPECT_EQ(log(), (Log{"/new () -> 1, -1"}));
}

TEST_F(ChangeManagerLog, ARemovalOfAMissingPathIsRecordedWithoutError) {
    const std::string before = toText(project);
    changes.pushRemoval("/missing/too");
    EXPECT_EQ(log(), (Log{"/missing/too () -> (), -1"}));
    EXPECT_EQ(toText(project), before);
}

TEST_F(ChangeManagerLog, TheValuesAreCopies) {
    std::string text = "a text that is longer than a few bytes";
    changes.pushChange("/a", Value{rapidjson::StringRef(text.data(), text.size())}, false);
    text.assign(text.size(), 'x');
    EXPECT_EQ(toText(*project.getValue("/a", false)), "\"a text that is longer than a few bytes\"");
    EXPECT_EQ(entry(0), "/a 0 -> \"a text that is longer than a few bytes\", -1");
}

TEST_F(ChangeManagerLog, AValueOfTheDocumentCanBePushed) {
    changes.pushChange("/a", project.document(), false);
    EXPECT_EQ(toText(*project.getValue("/a/list", false)), "[1,2]");
    EXPECT_EQ(toText(*project.getValue("/a/a", false)), "0");
}

TEST_F(ChangeManagerLog, AValueOfTheLogCanBePushed) {
    push("/a", 1);
    push("/a", 2);
    changes.undoLast();
    // The entry belongs to the redo history, which the push discards.
    changes.pushChange("/b", *changes.changes()[1].newValue, false);
    EXPECT_EQ(log(), (Log{"/a 0 -> 1, -1", "/b 0 -> 2, -1"}));
}

TEST_F(ChangeManagerLog, AValueCanBeTakenOver) {
    const Containers::StringView text = "a text that is longer than a few bytes";
    Value value{rapidjson::kArrayType};
    value.PushBack(Value{text.data(), rapidjson::SizeType(text.size()), changes.allocator()}, changes.allocator());
    const char* const characters = value[0].GetString();
    const std::string before = toText(project);
    changes.pushChange(Containers::String{"/a"}, std::move(value));
    EXPECT_EQ(log(), (Log{"/a 0 -> [\"a text that is longer than a few bytes\"], -1"}));
    EXPECT_EQ((*project.getValue("/a", false))[0].GetString(), characters);

    // What the log has is its own.
    (*project.getValue("/a", false))[0].SetInt(1);
    EXPECT_EQ(entry(0), "/a 0 -> [\"a text that is longer than a few bytes\"], -1");
    changes.undoLast();
    EXPECT_EQ(toText(project), before);
    changes.redoLastUndo();
    EXPECT_EQ(toText(*project.getValue("/a", false)), "[\"a text that is longer than a few bytes\"]");
}

TEST_F(ChangeManagerLog, AValueThatIsTakenOverNeverMerges) {
    push("/a", 1);
    push("/a", 2);
    changes.pushChange(Containers::String{"/a"}, Value{3});
    EXPECT_EQ(log(), (Log{"/a 0 -> 1, -1", "/a 1 -> 2, -1", "/a 2 -> 3, -1"}));
}

TEST_F(ChangeManagerLog, WhatASetReplacesStaysInTheLogAsItWas) {
    push("/list", 1);
    changes.undoLast();
    EXPECT_EQ(toText(*project.getValue("/list", false)), "[1,2]");
    // The document has a copy again.
    (*project.getValue("/list", false))[0].SetInt(5);
    EXPECT_EQ(entry(0), "/list [1,2] -> 1, -1");
}

TEST_F(ChangeManagerLog, StringsArePushedAsJsonStrings) {
    changes.pushChange("/text", Containers::StringView{"hello"}, false);
    changes.pushChange("/text", "world", false);
    changes.pushChange("/text", Containers::StringView{}, false);
    EXPECT_EQ(log(),
        (Log{"/text \"t\" -> \"hello\", -1", "/text \"hello\" -> \"world\", -1", "/text \"world\" -> \"\", -1"}));
}

TEST_F(ChangeManagerLog, VectorsArePushedAsArraysOfDoubles) {
    changes.pushChange("/a", Magnum::Vector3{0.5f, 0.1f, -2.0f}, false);
    EXPECT_EQ(entry(0), "/a 0 -> [0.5,0.10000000149011612,-2.0], -1");
}

TEST_F(ChangeManagerLog, QuaternionsArePushedWithTheScalarLast) {
    changes.pushChange("/a", Magnum::Quaternion{{1.0f, 2.0f, 3.0f}, 4.0f}, false);
    EXPECT_EQ(entry(0), "/a 0 -> [1.0,2.0,3.0,4.0], -1");
}

TEST_F(ChangeManagerLog, ATransformationIsThreeChanges) {
    load(project, R"({"o":{"translation":0,"rotation":0,"scaling":0}})");
    Magnum::Matrix4 transform;
    transform[0][0] = 2.0f;
    transform[3][1] = 5.0f;
    changes.pushTransformChange("/o", transform, false);
    EXPECT_EQ(log(),
        (Log{"/o/translation 0 -> [0.0,5.0,0.0], -1", "/o/rotation 0 -> [0.0,0.0,0.0,1.0], -1",
            "/o/scaling 0 -> [2.0,1.0,1.0], -1"}));
}

TEST_F(ChangeManagerLog, EachPartOfATransformationMergesByItself) {
    load(project, R"({"a":0,"o":{"translation":0,"rotation":0,"scaling":0}})");
    push("/a", 1);
    Magnum::Matrix4 transform;
    changes.pushTransformChange("/o", transform, true);
    transform[0][0] = 2.0f;
    changes.pushTransformChange("/o", transform, true);
    // Each merge swaps its entry with the last one.
    EXPECT_EQ(log(),
        (Log{"/a 0 -> 1, -1", "/o/rotation 0 -> [0.0,0.0,0.0,1.0], -1", "/o/translation 0 -> [0.0,0.0,0.0], -1",
            "/o/scaling 0 -> [2.0,1.0,1.0], -1"}));
}

TEST_F(ChangeManagerLog, AnAppendedStringIsAnewArray) {
    changes.pushAppend("/list", "three");
    EXPECT_EQ(log(), (Log{R"(/list [1,2] -> [1,2,"three"], -1)"}));
}

TEST_F(ChangeManagerLog, WhatIsNoArrayCountsAsAnEmptyOne) {
    changes.pushAppend("/text", "one");
    EXPECT_EQ(log(), (Log{R"(/text "t" -> ["one"], -1)"}));
}

TEST_F(ChangeManagerLog, RemovalsAndAppendedStringsNeverMerge) {
    push("/a", 1);
    changes.pushAppend("/text", "one");
    changes.pushAppend("/text", "two");
    changes.pushRemoval("/text");
    changes.pushRemoval("/text");
    EXPECT_EQ(log(),
        (Log{"/a 0 -> 1, -1", R"(/text "t" -> ["one"], -1)", R"(/text ["one"] -> ["one","two"], -1)",
            R"(/text ["one","two"] -> (), -1)", "/text () -> (), -1"}));
}

// Merging

TEST_F(ChangeManagerLog, TheFirstEntryNeverMerges) {
    push("/a", 1, true);
    push("/a", 2, true);
    EXPECT_EQ(log(), (Log{"/a 0 -> 1, -1", "/a 1 -> 2, -1"}));
    push("/a", 3, true);
    EXPECT_EQ(log(), (Log{"/a 0 -> 1, -1", "/a 1 -> 3, -1"}));
}

TEST_F(ChangeManagerLog, AMergeMovesItsEntryToTheEnd) {
    push("/a", 1);
    push("/x", 1, true);
    push("/y", 1, true);
    push("/x", 2, true);
    EXPECT_EQ(log(), (Log{"/a 0 -> 1, -1", "/y 0 -> 1, -1", "/x 0 -> 2, -1"}));
    EXPECT_EQ(changes.lastChangeIndex(), 2);
}

TEST_F(ChangeManagerLog, WithoutTheFlagNothingMerges) {
    push("/a", 1);
    push("/x", 1, true);
    push("/x", 2, false);
    EXPECT_EQ(log(), (Log{"/a 0 -> 1, -1", "/x 0 -> 1, -1", "/x 1 -> 2, -1"}));
}

TEST_F(ChangeManagerLog, APushMergesWithAnEarlierOneThatDidNotWantTo) {
    push("/a", 1);
    push("/x", 1, false);
    push("/x", 2, true);
    EXPECT_EQ(log(), (Log{"/a 0 -> 1, -1", "/x 0 -> 2, -1"}));
}

TEST_F(ChangeManagerLog, PathsAreComparedByteByByte) {
    push("/a", 1);
    push("/x", 1, true);
    push("/x/", 2, true);
    EXPECT_EQ(changes.changes().size(), 3u);
}

TEST_F(ChangeManagerLog, MergingReachesBackToTheBeginningOfTheRun) {
    push("/a", 1);
    push("/x", 1);
    changes.openGroup();
    push("/y", 1);
    changes.commit();
    push("/b", 1);
    push("/x", 2, true);
    // The group lies between them.
    EXPECT_EQ(log(), (Log{"/a 0 -> 1, -1", "/x 0 -> 1, -1", "/y 0 -> 1, 1", "/b 0 -> 1, -1", "/x 1 -> 2, -1"}));
}

TEST_F(ChangeManagerLog, MergingStaysInsideTheGroup) {
    push("/a", 1);
    push("/x", 1);
    changes.openGroup();
    push("/x", 2, true);
    push("/y", 1, true);
    push("/x", 3, true);
    changes.commit();
    push("/x", 4, true);
    EXPECT_EQ(log(), (Log{"/a 0 -> 1, -1", "/x 0 -> 1, -1", "/y 0 -> 1, 1", "/x 1 -> 3, 1", "/x 3 -> 4, -1"}));
}

TEST_F(ChangeManagerLog, AMergeKeepsTheRedoHistory) {
    push("/a", 1);
    push("/x", 1);
    push("/y", 1);
    changes.undoLast();
    push("/x", 2, true);
    EXPECT_EQ(log(), (Log{"/a 0 -> 1, -1", "/x 0 -> 2, -1", "/y 0 -> 1, -1"}));
    EXPECT_TRUE(changes.canRedo());
}

TEST_F(ChangeManagerLog, AMergeWithASavedEntryLeavesTheMark) {
    push("/a", 1);
    push("/x", 1);
    changes.markSave();
    push("/x", 2, true);
    EXPECT_FALSE(changes.hasUnsavedChanges());
}

/** The price of the swap: of two edits of one value that did not merge, the later one can come first, and wins no more when the
    log is redone. */
TEST_F(ChangeManagerLog, AMergeCanTurnTheOrderOfTwoOtherEditsAround) {
    push("/a", 1);
    push("/x", 1, true);
    push("/y", 1, false);
    push("/y", 2, false);
    push("/x", 2, true);
    EXPECT_EQ(log(), (Log{"/a 0 -> 1, -1", "/y 1 -> 2, -1", "/y 0 -> 1, -1", "/x 0 -> 2, -1"}));
    EXPECT_EQ(project.getValue("/y", false)->GetInt(), 2);
    while(changes.canUndo()) changes.undoLast();
    while(changes.canRedo()) changes.redoLastUndo();
    EXPECT_EQ(project.getValue("/y", false)->GetInt(), 1);
}

TEST_F(ChangeManagerLog, AMergedRunIsOneStep) {
    const std::string before = toText(project);
    push("/a", 0);
    for(int i = 1; i != 50; ++i) push("/x", i, true);
    changes.undoLast();
    EXPECT_EQ(toText(project), before);
    changes.redoLastUndo();
    EXPECT_EQ(project.getValue("/x", false)->GetInt(), 49);
}

}
}
