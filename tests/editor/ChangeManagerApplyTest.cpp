#include "ChangeManager.h"

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "QuorvaneEditor/ProjectFile.h"
#include "support/Abort.h"
#include "support/CpuTime.h"
#include "support/Json.h"

/* What a change does to the project document. */

namespace QuorvaneEngine {
namespace {

using Test::load;
using Test::parsed;
using Test::toText;

struct Case {
    const char* what;
    const char* before;
    const char* path;

    /** Null removes. */
    const char* value;
    const char* after;
};

void PrintTo(const Case& given, std::ostream* stream) { *stream << given.what << ": " << given.path; }

/** The case in words, as a name of letters and underscores. */
std::string nameOf(const testing::TestParamInfo<Case>& info) {
    std::string name = info.param.what;
    std::erase(name, ',');
    std::replace(name.begin(), name.end(), ' ', '_');
    return name;
}

void apply(ChangeManager& changes, const Case& given) {
    if(given.value) changes.pushChange(given.path, parsed(given.value), false);
    else changes.pushRemoval(given.path);
}

class ChangeManagerApply: public testing::TestWithParam<Case> {};

TEST_P(ChangeManagerApply, TheDocumentIsThen) {
    ProjectFile project;
    load(project, GetParam().before);
    ChangeManager changes{project};
    apply(changes, GetParam());
    EXPECT_EQ(toText(project), GetParam().after) << GetParam().what;
}

constexpr Case Sets[]{
    {"a member", R"({"a":1,"b":2})", "/a", "3", R"({"a":3,"b":2})"},
    {"an element", R"({"l":[1,2]})", "/l/1", "3", R"({"l":[1,3]})"},
    {"another type", R"({"a":1})", "/a", R"({"b":[]})", R"({"a":{"b":[]}})"},
    {"an escaped key", R"({"a/b":1,"a~b":2})", "/a~1b", "3", R"({"a/b":3,"a~b":2})"},
    {"another escaped key", R"({"a/b":1,"a~b":2})", "/a~0b", "3", R"({"a/b":1,"a~b":3})"},
    {"the empty key", R"({"":1})", "/", "3", R"({"":3})"},
    {"the first of two members with one key", R"({"a":1,"a":2})", "/a", "3", R"({"a":3,"a":2})"},
    {"a numeric key of an object", R"({"5":1})", "/5", "3", R"({"5":3})"},
};

constexpr Case Creations[]{
    {"a member", R"({"a":1})", "/b", "2", R"({"a":1,"b":2})"},
    {"a member of a nested object", R"({"a":{}})", "/a/b", "2", R"({"a":{"b":2}})"},
    {"objects on the way", R"({})", "/a/b/c", "2", R"({"a":{"b":{"c":2}}})"},
    {"an escaped key", R"({"a":{}})", "/a/b~1c~0d", "2", R"({"a":{"b/c~d":2}})"},
    {"a numeric key of an object", R"({"obj":{"a":1}})", "/obj/5", "2", R"({"obj":{"a":1,"5":2}})"},
    {"the element behind the last", R"({"list":[0,1]})", "/list/2", "2", R"({"list":[0,1,2]})"},
    {"an element far behind the last", R"({"list":[0]})", "/list/3", "2", R"({"list":[0,null,null,2]})"},
    {"a container behind the last element", R"({"list":[0]})", "/list/1", R"({"a":[1]})", R"({"list":[0,{"a":[1]}]})"},
    {"an array for a numeric key on a missing container", R"({})", "/list/1", "2", R"({"list":[null,2]})"},
    {"an object for a name on a missing container", R"({})", "/list/a", "2", R"({"list":{"a":2}})"},
    {"the next element by a dash", R"({"list":[0]})", "/list/-", "2", R"({"list":[0,2]})"},
    {"an element in a number, which becomes an array", R"({"a":5})", "/a/0", "2", R"({"a":[2]})"},
    {"a member in a number, which becomes an object", R"({"a":5})", "/a/b", "2", R"({"a":{"b":2}})"},
    {"a key with a leading zero, which is no array index", R"({"list":{}})", "/list/007", "2", R"({"list":{"007":2}})"},
    {"an array for every number on missing containers", R"({})", "/a/1/b/0", "2", R"({"a":[null,{"b":[2]}]})"},
    {"an object for a number with a leading zero", R"({"list":[5]})", "/list/007", "2", R"({"list":{"007":2}})"},
    {"an object for minus zero", R"({"list":[5]})", "/list/-0", "2", R"({"list":{"-0":2}})"},
    {"an object for minus zero on a missing container", R"({})", "/list/-0", "2", R"({"list":{"-0":2}})"},
    {"an object for the first number that is no index", R"({"list":[5]})", "/list/4294967295", "2",
        R"({"list":{"4294967295":2}})"},
    {"an object for a number beyond 64 bits", R"({"list":[5]})", "/list/99999999999999999999", "2",
        R"({"list":{"99999999999999999999":2}})"},
    {"an object for a number beyond 64 bits on a missing container", R"({})", "/list/99999999999999999999", "2",
        R"({"list":{"99999999999999999999":2}})"},
};

constexpr Case Removals[]{
    {"a member", R"({"a":1,"b":2})", "/a", nullptr, R"({"b":2})"},
    {"an element", R"({"l":[1,2,3]})", "/l/1", nullptr, R"({"l":[1,3]})"},
    {"what is missing", R"({"a":1})", "/b/c", nullptr, R"({"a":1})"},
    {"the only member and its container", R"({"a":{"b":{"c":1}}})", "/a/b/c", nullptr, R"({"a":{}})"},
    {"containers up to one that is filled", R"({"a":{"x":1,"b":{"c":{"d":1}}}})", "/a/b/c/d", nullptr,
        R"({"a":{"x":1}})"},
    {"never a member of the root", R"({"a":{"b":1}})", "/a/b", nullptr, R"({"a":{}})"},
    {"never an array of the root", R"({"objects":[1]})", "/objects/0", nullptr, R"({"objects":[]})"},
    {"emptied arrays, too", R"({"a":{"b":[[1]]}})", "/a/b/0/0", nullptr, R"({"a":{}})"},
    {"what is missing, and a container that is empty already", R"({"a":{"b":{},"c":1}})", "/a/b/c", nullptr,
        R"({"a":{"c":1}})"},
    {"nothing around what is no container", R"({"a":{"b":""}})", "/a/b/c", nullptr, R"({"a":{"b":""}})"},
    {"members in order", R"({"a":{"b":1,"c":2,"d":3}})", "/a/b", nullptr, R"({"a":{"c":2,"d":3}})"},
    {"the first of two members with one key", R"({"a":1,"a":2})", "/a", nullptr, R"({"a":2})"},
};

INSTANTIATE_TEST_SUITE_P(Sets, ChangeManagerApply, testing::ValuesIn(Sets), nameOf);
INSTANTIATE_TEST_SUITE_P(Creations, ChangeManagerApply, testing::ValuesIn(Creations), nameOf);
INSTANTIATE_TEST_SUITE_P(Removals, ChangeManagerApply, testing::ValuesIn(Removals), nameOf);

class ChangeManagerDocument: public testing::Test {
protected:
    ProjectFile project;
    ChangeManager changes{project};
};

TEST_F(ChangeManagerDocument, UndoingASetRestoresTheValueInPlace) {
    load(project, R"({"a":1,"b":2,"c":3})");
    changes.pushChange("/b", rapidjson::Value{5}, false);
    changes.undoLast();
    EXPECT_EQ(toText(project), R"({"a":1,"b":2,"c":3})");
}

TEST_F(ChangeManagerDocument, UndoingACreationPrunesEmptiedParents) {
    load(project, R"({"a":{"x":1}})");
    changes.pushChange("/a/b/c", rapidjson::Value{5}, false);
    changes.undoLast();
    EXPECT_EQ(toText(project), R"({"a":{"x":1}})");
}

TEST_F(ChangeManagerDocument, UndoingACreationPrunesAContainerThatWasEmptyBefore) {
    load(project, R"({"a":{"x":1,"b":{}}})");
    changes.pushChange("/a/b/c", rapidjson::Value{5}, false);
    changes.undoLast();
    EXPECT_EQ(toText(project), R"({"a":{"x":1}})");
}

TEST_F(ChangeManagerDocument, UndoingACreationLeavesAnEmptiedMemberOfTheRoot) {
    load(project, R"({})");
    changes.pushChange("/a/b", rapidjson::Value{5}, false);
    changes.undoLast();
    EXPECT_EQ(toText(project), R"({"a":{}})");
}

TEST_F(ChangeManagerDocument, AnUndoneRemovalComesBackAsTheLastMember) {
    load(project, R"({"a":1,"b":2,"c":3})");
    changes.pushRemoval("/a");
    changes.undoLast();
    EXPECT_EQ(toText(project), R"({"b":2,"c":3,"a":1})");
}

TEST_F(ChangeManagerDocument, AnUndoneRemovalOfAContainerBringsAllOfIt) {
    load(project, R"({"a":{"b":{"c":[1,{"d":2}]}}})");
    changes.pushRemoval("/a/b");
    EXPECT_EQ(toText(project), R"({"a":{}})");
    changes.undoLast();
    EXPECT_EQ(toText(project), R"({"a":{"b":{"c":[1,{"d":2}]}}})");
}

TEST_F(ChangeManagerDocument, AnInsertionMovesLaterElementsUp) {
    // The container of an insertion is the value at the whole path, here the neighbour that moved down.
    load(project, R"({"list":["out",["x","y"]]})");
    changes.pushRemoval("/list/0");
    EXPECT_EQ(toText(project), R"({"list":[["x","y"]]})");
    changes.undoLast();
    EXPECT_EQ(toText(project), R"({"list":[["out","x","y"]]})");
}

TEST_F(ChangeManagerDocument, AnInsertionBehindTheLastElementOfTheInnerArrayReplacesIt) {
    load(project, R"({"list":[0,"out",["x"]]})");
    changes.pushRemoval("/list/1");
    changes.undoLast();
    EXPECT_EQ(toText(project), R"({"list":[0,"out"]})");
}

TEST_F(ChangeManagerDocument, ANumericKeyWithAPlainDefaultMakesAnObject) {
    load(project, R"({})");
    ASSERT_TRUE(project.getValue("/localization/strings/5", true));
    changes.pushChange("/localization/strings/5", "text", false);
    EXPECT_EQ(toText(project), R"({"localization":{"strings":{"5":"text"}}})");
}

TEST_F(ChangeManagerDocument, DefaultsAreNeverWrittenTo) {
    load(project, R"({})");
    const rapidjson::Value* const preset = project.getValue("/localization/terms/a/translatable", true);
    const std::string before = preset ? toText(*preset) : "";
    changes.pushChange("/localization/terms/a/translatable", rapidjson::Value{5}, false);
    changes.undoLast();
    const rapidjson::Value* const after = project.getValue("/localization/terms/a/translatable", true);
    EXPECT_EQ(after ? toText(*after) : "", before);
}

TEST_F(ChangeManagerDocument, RedoAppliesTheSameValuesAgain) {
    load(project, R"({"a":{"x":1}})");
    changes.pushChange("/a/b", parsed(R"({"c":[1,2]})"), false);
    const std::string after = toText(project);
    changes.pushChange("/a/b/c/0", rapidjson::Value{7}, false);
    for(int i = 0; i != 3; ++i) {
        while(changes.canUndo()) changes.undoLast();
        EXPECT_EQ(toText(project), R"({"a":{"x":1}})");
        changes.redoLastUndo();
        EXPECT_EQ(toText(project), after);
        changes.redoLastUndo();
    }
}

TEST_F(ChangeManagerDocument, ARootThatIsNoObjectIsReplacedByACreation) {
    load(project, "null");
    changes.pushChange("/a", rapidjson::Value{1}, false);
    EXPECT_EQ(toText(project), R"({"a":1})");
}

TEST_F(ChangeManagerDocument, ZeroBytesInKeysAreKept) {
    load(project, R"({"a\u0000b":1})");
    const Containers::StringView path{"/a\0b", 4};
    changes.pushChange(path, rapidjson::Value{2}, false);
    EXPECT_EQ(toText(project), R"({"a\u0000b":2})");
    changes.pushRemoval(path);
    EXPECT_EQ(toText(project), R"({})");
}

TEST_F(ChangeManagerDocument, ANumberEndsAtAZeroByte) {
    load(project, R"({"list":[0,["x","y"]]})");
    // Behind an array's element stands a number, so the creation is an insertion, into the value at the path up to that byte.
    changes.pushChange({"/list/1\0z", 9}, rapidjson::Value{2}, false);
    EXPECT_EQ(toText(project), R"({"list":[0,["x",2,"y"]]})");
    // There is nothing at the whole path, and undo leaves it so.
    changes.undoLast();
    EXPECT_EQ(toText(project), R"({"list":[0,["x",2,"y"]]})");
}

TEST_F(ChangeManagerDocument, ADashAppendsAndItsUndoRemovesNothing) {
    load(project, R"({"list":[0]})");
    changes.pushChange("/list/-", rapidjson::Value{2}, false);
    changes.undoLast();
    EXPECT_EQ(toText(project), R"({"list":[0,2]})");
    changes.redoLastUndo();
    EXPECT_EQ(toText(project), R"({"list":[0,2,2]})");
}

constexpr char LargestPadding[] = "1048576";

TEST_F(ChangeManagerDocument, AnArrayIsFilledUpToAMillionNulls) {
    load(project, R"({"list":[0]})");
    changes.pushChange(("/terms/" + std::string{LargestPadding} + "/en").c_str(), rapidjson::Value{2}, false);
    EXPECT_EQ(project.getValue("/terms", false)->Size(), 1048577u);
    // One stands there already.
    changes.pushChange("/list/1048577", rapidjson::Value{2}, false);
    EXPECT_EQ(project.getValue("/list", false)->Size(), 1048578u);
    // Numbers are keys of an object.
    changes.pushChange("/o", parsed("{}"), false);
    changes.pushChange("/o/1000000000", rapidjson::Value{2}, false);
    EXPECT_EQ(toText(*project.getValue("/o", false)), R"({"1000000000":2})");
}

/** A path that goes down @p depth levels below "a". */
std::string deepPath(int depth) {
    std::string path = "/a";
    for(int i = 0; i != depth; ++i) path += "/b";
    return path;
}

TEST(ChangeManagerSpeed, AVeryDeepPathIsCreatedAndUndoneInOneWalk) {
    ProjectFile project;
    load(project, R"({"a":{"x":1}})");
    ChangeManager changes{project};
    const std::string path = deepPath(200000);
    const double begin = cpuTime();
    changes.pushChange(path.c_str(), rapidjson::Value{5}, false);
    ASSERT_TRUE(project.getValue(path.c_str(), false));
    changes.undoLast();
    const double seconds = cpuTime() - begin;
    EXPECT_EQ(toText(project), R"({"a":{"x":1}})");
    // Each level by a walk of its own took minutes.
    EXPECT_LT(seconds, 12.0);
}

/** Edits of one value, in the middle of an object with many members, in microseconds. */
double editTime(int members) {
    std::string json = R"({"terms":{)";
    for(int i = 0; i != members; ++i)
        json += (i ? "," : "") + std::string{"\"term"} + std::to_string(i) + "\":{\"text\":\"a text\"}";
    json += "}}";
    ProjectFile project;
    load(project, json);
    ChangeManager changes{project};
    const std::string path = "/terms/term" + std::to_string(members / 2) + "/text";
    std::vector<double> times;
    for(int round = 0; round != 20; ++round) {
        const double begin = cpuTime();
        for(int i = 0; i != 20; ++i) changes.pushChange(path.c_str(), rapidjson::Value{i}, false);
        times.push_back((cpuTime() - begin) * 1.0e6 / 20.0);
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

TEST(ChangeManagerSpeed, AnEditCostsAboutTheSameInALargeObject) {
    const double small = editTime(100);
    const double large = editTime(100000);
    // By scanning it would be some hundred times.
    EXPECT_LT(large / small, 20.0) << small << " us and " << large << " us";
}

TEST(ChangeManagerSpeed, ManyCreationsAndTheirUndoAreNotQuadratic) {
    ProjectFile project;
    load(project, R"({"terms":{"first":1}})");
    ChangeManager changes{project};
    const std::string before = toText(project);
    changes.openGroup();
    constexpr int count = 50000;
    const double begin = cpuTime();
    for(int i = 0; i != count; ++i)
        changes.pushChange(("/terms/term" + std::to_string(i)).c_str(), rapidjson::Value{i}, false);
    changes.commit();
    EXPECT_EQ(project.getValue("/terms", false)->MemberCount(), rapidjson::SizeType(count) + 1);
    changes.undoLast();
    const double seconds = cpuTime() - begin;
    EXPECT_EQ(toText(project), before);
    // Scanning took 0.5 ms for each creation of the second half: 25 s and more.
    EXPECT_LT(seconds, 12.0);
}

using ChangeManagerApplyDeathTest = ChangeManagerDocument;

TEST_F(ChangeManagerApplyDeathTest, ACreationBeforeAPlainElementAborts) {
    load(project, R"({"list":[1,2]})");
    changes.pushRemoval("/list/0");
    QUORVANE_EXPECT_ABORT(changes.undoLast(), "Assertion value.IsArray() failed at ChangeManager:281");
}

TEST_F(ChangeManagerApplyDeathTest, AMergedCreationOfAnElementAborts) {
    load(project, R"({"a":0,"list":[1]})");
    changes.pushChange("/a", rapidjson::Value{1}, false);
    changes.pushChange("/list/1", rapidjson::Value{1}, true);
    QUORVANE_EXPECT_ABORT(changes.pushChange("/list/1", rapidjson::Value{2}, true),
        "Assertion value.IsArray() failed at ChangeManager:281");
}

TEST_F(ChangeManagerApplyDeathTest, ANegativeIndexAborts) {
    load(project, R"({"list":[1]})");
    QUORVANE_EXPECT_ABORT(changes.pushChange("/list/-3", rapidjson::Value{1}, false),
        "ChangeManager::applyChange(): negative index in \"/list/-3\"");
    QUORVANE_EXPECT_ABORT(changes.pushChange("/missing/-3", rapidjson::Value{1}, false),
        "ChangeManager::applyChange(): negative index in \"/missing/-3\"");
}

TEST_F(ChangeManagerApplyDeathTest, AnIndexFarBehindTheEndOfItsArrayAborts) {
    load(project, R"({"list":[0],"text":""})");
    const auto expectAbort = [this](const std::string& path, const char* index) {
        QUORVANE_EXPECT_ABORT(changes.pushChange(path.c_str(), rapidjson::Value{1}, false),
            std::string{"ChangeManager::applyChange(): index "} + index + " in \"" + path +
                "\" is too far behind the end of its array");
    };
    expectAbort("/missing/1000000000", "1000000000");
    expectAbort("/list/1000000000", "1000000000");
    expectAbort("/text/1000000000", "1000000000");
    expectAbort("/terms/1000000000/en", "1000000000");
    expectAbort("/list/0/1000000000", "1000000000");
    expectAbort("/list/4294967294/en", "4294967294");
    expectAbort("/missing/1048577", "1048577");
    expectAbort("/list/1048578", "1048578");
    // All arrays of the path count.
    expectAbort("/missing/600000/600001", "600001");
}

TEST_F(ChangeManagerDocument, ANegativeNumberIsAKeyOfAnObject) {
    load(project, R"({"terms":{}})");
    changes.pushChange("/terms/-3", rapidjson::Value{1}, false);
    EXPECT_EQ(toText(project), R"({"terms":{"-3":1}})");
}

}
}
