#include "Change.h"

#include <string>
#include <type_traits>
#include <utility>

#include <Corrade/Utility/Debug.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "support/CapturedOutput.h"

namespace QuorvaneEngine {
namespace {

using Test::CapturedOutput;

static_assert(!std::is_copy_constructible_v<Change> && !std::is_copy_assignable_v<Change>);
static_assert(std::is_nothrow_move_constructible_v<Change> && std::is_nothrow_move_assignable_v<Change>);

Containers::Pointer<rapidjson::Value> number(int value) {
    return Containers::Pointer<rapidjson::Value>{new rapidjson::Value{value}};
}

Change change(const char* path, int before, int after, Int group) {
    Change change;
    change.path = path;
    change.oldValue = number(before);
    change.newValue = number(after);
    change.group = group;
    return change;
}

std::string printed(const Change& change) {
    const CapturedOutput output;
    Corrade::Utility::Debug{} << change;
    return output.debug();
}

TEST(Change, ADefaultOneIsEmptyAndInNoGroup) {
    const Change change;
    EXPECT_TRUE(change.path.isEmpty());
    EXPECT_FALSE(change.oldValue);
    EXPECT_FALSE(change.newValue);
    EXPECT_EQ(change.group, -1);
}

TEST(Change, MoveConstructionTakesTheValuesOver) {
    Change source = change("/a/b", 1, 2, 3);
    const Change target{std::move(source)};
    EXPECT_TRUE(target.path == "/a/b");
    EXPECT_EQ(target.oldValue->GetInt(), 1);
    EXPECT_EQ(target.newValue->GetInt(), 2);
    EXPECT_EQ(target.group, 3);
    // What is left in the source is part of what moving promises.
    EXPECT_FALSE(source.oldValue); // NOLINT(bugprone-use-after-move)
    EXPECT_FALSE(source.newValue);
    EXPECT_EQ(source.group, 3);
}

TEST(Change, MoveAssignmentSwapsTheValues) {
    Change source = change("/a", 1, 2, 3);
    Change target = change("/b", 4, 5, 6);
    target = std::move(source);
    EXPECT_TRUE(target.path == "/a");
    EXPECT_EQ(target.oldValue->GetInt(), 1);
    EXPECT_EQ(target.newValue->GetInt(), 2);
    EXPECT_EQ(target.group, 3);
    EXPECT_EQ(source.oldValue->GetInt(), 4); // NOLINT(bugprone-use-after-move)
    EXPECT_EQ(source.newValue->GetInt(), 5);
    EXPECT_EQ(source.group, 3);
}

TEST(Change, SwappingExchangesAllFourFields) {
    Change a = change("/a", 1, 2, 3);
    Change b = change("/b", 4, 5, 6);
    std::swap(a, b);
    EXPECT_TRUE(a.path == "/b");
    EXPECT_EQ(a.oldValue->GetInt(), 4);
    EXPECT_EQ(a.newValue->GetInt(), 5);
    EXPECT_EQ(a.group, 6);
    EXPECT_TRUE(b.path == "/a");
    EXPECT_EQ(b.oldValue->GetInt(), 1);
    EXPECT_EQ(b.newValue->GetInt(), 2);
    EXPECT_EQ(b.group, 3);
}

TEST(Change, ASetIsPrinted) { EXPECT_EQ(printed(change("/a/b", 1, 2, -1)), "Change /a/b: 1 -> 2\n"); }

TEST(Change, ACreationIsPrinted) {
    Change creation = change("/a/b", 1, 2, -1);
    creation.oldValue = nullptr;
    EXPECT_EQ(printed(creation), "Create /a/b: () -> 2\n");
}

TEST(Change, ARemovalIsPrinted) {
    Change removal = change("/a/b", 2, 3, -1);
    removal.newValue = nullptr;
    EXPECT_EQ(printed(removal), "Remove /a/b: 2 -> ()\n");
}

TEST(Change, WithoutAnyValueItIsPrintedAsACreationOfNothing) {
    Change change;
    change.path = "/a";
    EXPECT_EQ(printed(change), "Create /a: () -> ()\n");
}

TEST(Change, GoesOnInALine) {
    const CapturedOutput output;
    Corrade::Utility::Debug{} << "last:" << change("/a", 1, 2, -1) << "done";
    EXPECT_EQ(output.debug(), "last: Change /a: 1 -> 2 done\n");
}

}
}
