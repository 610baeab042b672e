#include "app/UserFile.h"

#include <filesystem>

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "document/JsonReader.h"
#include "host/localization/TestFolder.h"
#include "support/CapturedOutput.h"

namespace QuorvaneEngine {
namespace {

using Test::CapturedOutput;
using Found = UserFile::Found;

class UserFileTest: public testing::Test {
protected:
    const TestFolder folder;
    const UserFile file{(folder / "of/mine").c_str(), "choices.json"};
    rapidjson::Document document;
    JsonError error;
};

TEST_F(UserFileTest, NothingIsThereBeforeItIsWritten) {
    EXPECT_EQ(file.read(document, error), Found::Nothing);
    EXPECT_TRUE(document.IsNull());
}

TEST_F(UserFileTest, WhatIsWrittenIsReadAndNothingLiesBesideIt) {
    document.SetArray().PushBack(7, document.GetAllocator());
    file.write("UserFileTest", document);
    EXPECT_EQ(folder.read("of/mine/choices.json"), "[\n  7\n]\n");
    rapidjson::Document read;
    EXPECT_EQ(file.read(read, error), Found::Document);
    EXPECT_EQ(read, document);
    EXPECT_FALSE(std::filesystem::exists(folder / "of/mine/choices.json.new"));
}

TEST_F(UserFileTest, AnErrorHasItsPlace) {
    folder.write("of/mine/choices.json", "[\n  oh\n]");
    EXPECT_EQ(file.read(document, error), Found::Error);
    EXPECT_EQ(error.line, 2u);
    EXPECT_EQ(error.column, 3u);
    const CapturedOutput output;
    file.warn("Somebody::read", {2, 3, "no value"});
    EXPECT_EQ(output.warning(), "Somebody::read(): " + (folder / "of/mine/choices.json") + ":2:3: no value\n");
}

TEST_F(UserFileTest, WhatCannotBeWrittenIsAWarning) {
    folder.write("of", "a file");
    const CapturedOutput output;
    document.SetArray();
    file.write("Somebody::write", document);
    EXPECT_NE(output.warning().find("Somebody::write(): cannot write " + (folder / "of/mine/choices.json") + "\n"),
        std::string::npos)
        << output.warning();
}

TEST_F(UserFileTest, WithoutAFolderNothingIsReadOrWritten) {
    const UserFile none{"", "choices.json"};
    EXPECT_FALSE(none.isKept());
    const CapturedOutput output;
    none.write("Somebody::write", document);
    EXPECT_EQ(none.read(document, error), Found::Nothing);
    EXPECT_EQ(output.warning(), "");
}

}
}
