#include "DocumentWriter.h"

#include <string>

#include <Corrade/Containers/String.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "QuorvaneEditor/ProjectFile.h"
#include "support/Abort.h"
#include "support/Json.h"

/* Beside ChangeManagerApplyTest, which has every case: what a caller of its own may rely on. */

namespace QuorvaneEngine {
namespace {

using Test::load;
using Test::parsed;
using Test::toText;

class DocumentWriting: public testing::Test {
protected:
    rapidjson::Value text(const char* const json) { return rapidjson::Value{parsed(json), project.allocator()}; }

    ProjectFile project;
    DocumentWriter writer{project};
};

TEST_F(DocumentWriting, ASetReplacesInPlaceAndCreatesWhatIsMissing) {
    load(project, R"({"a":1,"b":2})");
    rapidjson::Value one = text("[5]"), other = text("true");
    writer.set("/a", one);
    writer.set("/c/d", other);
    EXPECT_EQ(toText(project), R"({"a":[5],"b":2,"c":{"d":true}})");
}

TEST_F(DocumentWriting, ValuesAreMovedAndNotCopied) {
    load(project, R"({"a":1,"list":[]})");
    rapidjson::Value set = text("[1,2,3]"), added = text("[4]");
    const rapidjson::Value* const first = &set[0];
    const rapidjson::Value* const fourth = &added[0];
    writer.set("/a", set);
    writer.add("/b", added);
    EXPECT_TRUE(set.IsNull());
    EXPECT_TRUE(added.IsNull());
    EXPECT_EQ(&project.document()["a"][0], first);
    EXPECT_EQ(&project.document()["b"][0], fourth);
}

TEST_F(DocumentWriting, AnElementIsAddedBeforeTheOthersOfTheArrayAtItsPlace) {
    load(project, R"({"list":[["x"]]})");
    rapidjson::Value value = text("1");
    writer.add("/list/0", value);
    EXPECT_EQ(toText(project), R"({"list":[[1,"x"]]})");
    value = text("2");
    writer.set("/list/0", value);
    EXPECT_EQ(toText(project), R"({"list":[2]})");
}

TEST_F(DocumentWriting, ARemovalTakesEmptiedContainersAlong) {
    load(project, R"({"a":{"b":{"c":1}},"d":2})");
    writer.remove("/a/b/c");
    writer.remove("/missing/too");
    EXPECT_EQ(toText(project), R"({"a":{},"d":2})");
}

TEST_F(DocumentWriting, NobodyIsToldOfIt) {
    load(project, R"({"a":1})");
    const Int before = project.revision();
    rapidjson::Value value = text("5");
    writer.set("/a", value);
    writer.remove("/a");
    EXPECT_EQ(project.revision(), before);
}

TEST_F(DocumentWriting, WhatCannotBeAnIndexIsABrokenPrecondition) {
    load(project, R"({"list":[[1]],"plain":["x"]})");
    rapidjson::Value value{5};
    QUORVANE_EXPECT_ABORT(
        writer.add("/list/-1", value), "ChangeManager::applyChange(): negative index in \"/list/-1\"");
    QUORVANE_EXPECT_ABORT(writer.add("/plain/0", value), "Assertion value.IsArray() failed at ChangeManager:281");
    QUORVANE_EXPECT_ABORT(writer.set("/new/2000000", value),
        "ChangeManager::applyChange(): index 2000000 in \"/new/2000000\" is too far behind the end of its array");
}

}
}
