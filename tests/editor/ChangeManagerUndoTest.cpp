#include <string>

#include <Magnum/Math/Matrix4.h>
#include <Magnum/Math/Quaternion.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "ChangeManagerLog.h"
#include "support/Abort.h"

namespace QuorvaneEngine {
namespace {

using rapidjson::Value;
using Test::ChangeManagerLog;
using Test::load;
using Test::toText;

constexpr char RangeMessage[] =
    "Assertion _lastChange >= 0 && _lastChange < int(_changes.size()) failed at ChangeManager:369";

// Undo and redo

TEST_F(ChangeManagerLog, UndoAndRedoOfNothingDoNothing) {
    const std::string before = toText(project);
    changes.undoLast();
    changes.redoLastUndo();
    EXPECT_EQ(toText(project), before);
    EXPECT_EQ(changes.lastChangeIndex(), -1);
    push("/a", 1);
    changes.redoLastUndo();
    EXPECT_EQ(changes.lastChangeIndex(), 0);
    EXPECT_EQ(project.getValue("/a", false)->GetInt(), 1);
}

TEST_F(ChangeManagerLog, UndoKeepsTheEntryForRedo) {
    push("/a", 1);
    push("/a", 2);
    changes.undoLast();
    EXPECT_EQ(project.getValue("/a", false)->GetInt(), 1);
    EXPECT_EQ(log(), (Log{"/a 0 -> 1, -1", "/a 1 -> 2, -1"}));
    EXPECT_EQ(changes.lastChangeIndex(), 0);
    changes.redoLastUndo();
    EXPECT_EQ(project.getValue("/a", false)->GetInt(), 2);
    EXPECT_EQ(changes.lastChangeIndex(), 1);
}

TEST_F(ChangeManagerLog, APushDiscardsTheRedoHistory) {
    push("/a", 1);
    push("/b", 1);
    push("/c", 1);
    changes.undoLast();
    changes.undoLast();
    push("/x", 1);
    EXPECT_EQ(log(), (Log{"/a 0 -> 1, -1", "/x 0 -> 1, -1"}));
    EXPECT_FALSE(changes.canRedo());
}

TEST_F(ChangeManagerLog, ChangesOutsideAGroupAreUndoneOneByOne) {
    push("/a", 1);
    push("/b", 1);
    changes.undoLast();
    EXPECT_EQ(project.getValue("/a", false)->GetInt(), 1);
    EXPECT_EQ(project.getValue("/b", false)->GetInt(), 0);
}

TEST_F(ChangeManagerLog, NeighbouringGroupsAreTwoSteps) {
    const std::string before = toText(project);
    changes.openGroup();
    push("/a", 1);
    push("/b", 1);
    changes.commit();
    const std::string between = toText(project);
    changes.openGroup();
    push("/a", 2);
    push("/b", 2);
    changes.commit();
    const std::string after = toText(project);
    changes.undoLast();
    EXPECT_EQ(toText(project), between);
    changes.undoLast();
    EXPECT_EQ(toText(project), before);
    changes.redoLastUndo();
    EXPECT_EQ(toText(project), between);
    changes.redoLastUndo();
    EXPECT_EQ(toText(project), after);
}

TEST_F(ChangeManagerLog, GroupIdsStartAtOneAndNeverRepeat) {
    EXPECT_EQ(changes.openGroup(), 1);
    changes.commit();
    EXPECT_EQ(changes.openGroup(), 2);
    changes.commit();
    changes.reset(project);
    EXPECT_EQ(changes.openGroup(), 3);
}

/** A group with id 0 cannot be opened, but the steps of undo and redo know it: its entries go with an ungrouped one. */
TEST_F(ChangeManagerLog, AnUngroupedChangeTakesNeighboursOfGroupZeroAlong) {
    push("/a", 1);
    push("/b", 1);
    changes.lastChange().group = 0;
    push("/c", 1);
    changes.undoLast();
    EXPECT_EQ(changes.lastChangeIndex(), 0);
    EXPECT_EQ(project.getValue("/b", false)->GetInt(), 0);
    changes.undoLast();
    // Redo goes on with group 0 behind an ungrouped change, too, and stops before the next ungrouped one.
    changes.redoLastUndo();
    EXPECT_EQ(changes.lastChangeIndex(), 1);
    EXPECT_EQ(project.getValue("/c", false)->GetInt(), 0);
}

TEST_F(ChangeManagerLog, UndoOfAGivenChangeAppliesItsReverse) {
    push("/a", 1);
    push("/a", 2);
    changes.undo(changes.changes()[1]);
    EXPECT_EQ(changes.lastChangeIndex(), 0);
    EXPECT_EQ(project.getValue("/a", false)->GetInt(), 1);
}

TEST_F(ChangeManagerLog, TheReverseOfAChangeSwapsItsValuesAndIsInNoGroup) {
    changes.openGroup();
    push("/a", 1);
    changes.commit();
    const Change reverse = changes.reverse(changes.lastChange());
    EXPECT_TRUE(reverse.path == "/a");
    EXPECT_EQ(reverse.oldValue->GetInt(), 1);
    EXPECT_EQ(reverse.newValue->GetInt(), 0);
    EXPECT_EQ(reverse.group, -1);
    EXPECT_NE(reverse.oldValue.get(), changes.lastChange().newValue.get());
    push("/new", 1);
    EXPECT_FALSE(changes.reverse(changes.lastChange()).newValue);
}

// The saved mark

TEST_F(ChangeManagerLog, TheMarkSurvivesUndoAndRedo) {
    push("/a", 1);
    changes.markSave();
    push("/b", 1);
    EXPECT_TRUE(changes.hasUnsavedChanges());
    changes.undoLast();
    EXPECT_FALSE(changes.hasUnsavedChanges());
    changes.undoLast();
    EXPECT_TRUE(changes.hasUnsavedChanges());
    changes.redoLastUndo();
    EXPECT_FALSE(changes.hasUnsavedChanges());
}

TEST_F(ChangeManagerLog, APushBelowTheMarkKeepsItUntilItIsReached) {
    for(int i = 0; i != 6; ++i) push("/a", i + 1);
    changes.markSave();
    changes.undoLast();
    changes.undoLast();
    push("/b", 1);
    EXPECT_EQ(changes.lastChangeIndex(), 4);
    EXPECT_EQ(changes.changes().size(), 5u);
    // The mark stays at index 5, which nothing stands at: unsaved wherever the log goes, the empty one included.
    EXPECT_TRUE(changes.hasUnsavedChanges());
    while(changes.canUndo()) {
        changes.undoLast();
        EXPECT_TRUE(changes.hasUnsavedChanges()) << changes.lastChangeIndex();
    }
    while(changes.canRedo()) changes.redoLastUndo();
    EXPECT_EQ(changes.lastChangeIndex(), 4);
    EXPECT_TRUE(changes.hasUnsavedChanges());
    push("/c", 1);
    EXPECT_EQ(changes.lastChangeIndex(), 5);
    EXPECT_TRUE(changes.hasUnsavedChanges());
    // The mark is gone: it is the empty log's now.
    while(changes.canUndo()) changes.undoLast();
    EXPECT_FALSE(changes.hasUnsavedChanges());
}

TEST_F(ChangeManagerLog, APushOntoTheMarkClearsItAtOnce) {
    for(int i = 0; i != 6; ++i) push("/a", i + 1);
    changes.markSave();
    changes.undoLast();
    push("/b", 1);
    EXPECT_EQ(changes.lastChangeIndex(), 5);
    EXPECT_TRUE(changes.hasUnsavedChanges());
}

TEST_F(ChangeManagerLog, ResetForgetsTheLogButNotTheMark) {
    push("/a", 1);
    changes.markSave();
    changes.reset(project);
    EXPECT_EQ(changes.lastChangeIndex(), -1);
    EXPECT_TRUE(changes.changes().isEmpty());
    EXPECT_TRUE(changes.hasUnsavedChanges());
    changes.markSave();
    EXPECT_FALSE(changes.hasUnsavedChanges());
}

TEST_F(ChangeManagerLog, ResetWithoutAMarkHasNothingUnsaved) {
    push("/a", 1);
    changes.reset(project);
    EXPECT_FALSE(changes.hasUnsavedChanges());
}

TEST_F(ChangeManagerLog, ResetLeavesAGroupOpen) {
    changes.openGroup();
    changes.reset(project);
    EXPECT_TRUE(changes.isGroupOpen());
    changes.commit();
    EXPECT_FALSE(changes.isGroupOpen());
}

TEST_F(ChangeManagerLog, ResetTurnsToAnotherProject) {
    ProjectFile other;
    load(other, R"({"a":5})");
    const std::string before = toText(project);
    changes.reset(other);
    push("/a", 6);
    EXPECT_EQ(toText(other), R"({"a":6})");
    EXPECT_EQ(toText(project), before);
    EXPECT_EQ(&changes.allocator(), &other.allocator());
}

TEST_F(ChangeManagerLog, EachAppliedChangeIsARevision) {
    const Int before = project.revision();
    push("/a", 1);
    EXPECT_EQ(project.revision(), before + 1);
    changes.openGroup();
    push("/a", 2);
    push("/b", 2);
    EXPECT_EQ(project.revision(), before + 3);
    changes.commit();
    EXPECT_EQ(project.revision(), before + 3);
    changes.undoLast();
    EXPECT_EQ(project.revision(), before + 5);
    changes.redoLastUndo();
    EXPECT_EQ(project.revision(), before + 7);
}

TEST_F(ChangeManagerLog, TheLogGrowsFarBeyondItsReserve) {
    for(int i = 0; i != 1000; ++i) push("/a", i);
    EXPECT_EQ(changes.lastChangeIndex(), 999);
    while(changes.canUndo()) changes.undoLast();
    EXPECT_EQ(project.getValue("/a", false)->GetInt(), 0);
}

// Broken preconditions

using ChangeManagerLogDeathTest = ChangeManagerLog;

TEST_F(ChangeManagerLogDeathTest, UndoInAnOpenGroupAborts) {
    changes.openGroup();
    push("/a", 1);
    QUORVANE_EXPECT_ABORT(
        changes.undoLast(), "ChangeManager::undoLast(): Can't undo/redo changes in group. Forgot commit()?");
}

TEST_F(ChangeManagerLogDeathTest, RedoInAnOpenGroupAborts) {
    changes.openGroup();
    QUORVANE_EXPECT_ABORT(
        changes.redoLastUndo(), "ChangeManager::redoLastUndo(): Can't undo/redo changes in group. Forgot commit()?");
}

TEST_F(ChangeManagerLogDeathTest, TheLastChangeOfAnEmptyLogAborts) {
    QUORVANE_EXPECT_ABORT(changes.lastChange(), RangeMessage);
}

TEST_F(ChangeManagerLogDeathTest, UndoBelowTheLogAborts) {
    push("/a", 1);
    const Change& change = changes.changes()[0];
    changes.undo(change);
    QUORVANE_EXPECT_ABORT(changes.undo(change), RangeMessage);
}

TEST_F(ChangeManagerLogDeathTest, UndoOfWhatIsNoPointerAborts) {
    push("/a", 1);
    Change change;
    QUORVANE_EXPECT_ABORT(changes.undo(change), "ChangeManager::undo(): \"\" is no JSON Pointer");
    change.path = "/a~2";
    QUORVANE_EXPECT_ABORT(changes.undo(change), "ChangeManager::undo(): \"/a~2\" is no JSON Pointer");
}

TEST(ChangeManagerDeathTest, WithoutAProjectNothingCanBePushed) {
    constexpr char message[] = "ChangeManager::project(): there is none. Forgot reset()?";
    ChangeManager changes;
    QUORVANE_EXPECT_ABORT(changes.pushChange("/a", Value{1}, false), message);
    QUORVANE_EXPECT_ABORT(changes.pushChange("/a", "text", false), message);
    QUORVANE_EXPECT_ABORT(changes.pushChange("/a", Magnum::Vector3{}, false), message);
    QUORVANE_EXPECT_ABORT(changes.pushChange("/a", Magnum::Quaternion{}, false), message);
    QUORVANE_EXPECT_ABORT(changes.pushTransformChange("/a", Magnum::Matrix4{}, false), message);
    QUORVANE_EXPECT_ABORT(changes.pushRemoval("/a"), message);
    QUORVANE_EXPECT_ABORT(changes.pushAppend("/a", "text"), message);
    QUORVANE_EXPECT_ABORT(changes.allocator(), message);
}

TEST(ChangeManager, WithoutAProjectThereIsNothingToUndoRedoOrCommit) {
    ChangeManager changes;
    changes.undoLast();
    changes.redoLastUndo();
    changes.openGroup();
    changes.commit();
    EXPECT_EQ(changes.lastChangeIndex(), -1);
    EXPECT_FALSE(changes.hasUnsavedChanges());
}

TEST_F(ChangeManagerLogDeathTest, WhatIsNoPointerAborts) {
    for(const char* path: {"", "a", "#/a", "/a~", "/a~2b", "/~/b"})
        QUORVANE_EXPECT_ABORT(
            push(path, 1), std::string{"ChangeManager::pushChange(): \""} + path + "\" is no JSON Pointer");
    QUORVANE_EXPECT_ABORT(changes.pushRemoval(""), "ChangeManager::pushChange(): \"\" is no JSON Pointer");
    QUORVANE_EXPECT_ABORT(
        changes.pushChange(Containers::String{"a"}, Value{1}), "ChangeManager::pushChange(): \"a\" is no JSON Pointer");
}

TEST_F(ChangeManagerLogDeathTest, AppendingToNothingAborts) {
    QUORVANE_EXPECT_ABORT(changes.pushAppend("/missing", "a"), "ChangeManager::pushAppend(): nothing at \"/missing\"");
}

}
}
