#include "app/UserFile.h"

#include <filesystem>
#include <string>

#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <sys/wait.h>
#include <unistd.h>

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
    EXPECT_EQ(folder.files().size(), 3u);
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
    EXPECT_EQ(output.warning(),
        "Somebody::write(): " + (folder / "of/mine/choices.json") + ": cannot be written: Not a directory\n");
    EXPECT_EQ(output.error(), "");
}

TEST_F(UserFileTest, WhatIsNoTextIsAWarningAndTheFileStays) {
    folder.write("of/mine/choices.json", "[1]");
    const CapturedOutput output;
    document.SetString("\xff");
    file.write("Somebody::write", document);
    EXPECT_EQ(output.warning(),
        "Somebody::write(): " + (folder / "of/mine/choices.json") +
            ": cannot be written: the root: a text is not valid UTF-8\n");
    EXPECT_EQ(folder.read("of/mine/choices.json"), "[1]");
}

TEST_F(UserFileTest, ALinkStaysAndWhatItLeadsToIsReplaced) {
    folder.write("dots/mine.json", "[1]");
    std::filesystem::create_directories(folder / "of/mine");
    document.SetArray();
    // As users have them, and one to a file that is not there yet.
    for(const char* const target: {"../../dots/mine.json", "../../dots/none.json"}) {
        std::filesystem::remove(folder / "of/mine/choices.json");
        std::filesystem::create_symlink(target, folder / "of/mine/choices.json");
        file.write("UserFileTest", document);
        EXPECT_TRUE(std::filesystem::is_symlink(folder / "of/mine/choices.json")) << target;
        EXPECT_EQ(folder.read("of/mine/choices.json"), "[]\n");
    }
    EXPECT_EQ(folder.files().size(), 5u) << "two files, by whatever name, and three folders";
}

TEST_F(UserFileTest, WhereLinksAreRefusedWhatTheyLeadToStays) {
    folder.write("dots/mine.json", "[1]");
    std::filesystem::create_directories(folder / "of/mine");
    document.SetArray();
    const UserFile strict{(folder / "of/mine").c_str(), "choices.json", UserFile::Links::Refuse};
    for(const char* const target: {"../../dots/mine.json", "../../dots/none.json"}) {
        std::filesystem::remove(folder / "of/mine/choices.json");
        std::filesystem::create_symlink(target, folder / "of/mine/choices.json");
        const CapturedOutput output;
        strict.write("Somebody::write", document);
        EXPECT_EQ(output.warning(),
            "Somebody::write(): " + (folder / "of/mine/choices.json") +
                ": is a link, and nothing is written to where it leads\n");
        EXPECT_TRUE(std::filesystem::is_symlink(folder / "of/mine/choices.json")) << target;
    }
    EXPECT_EQ(folder.read("dots/mine.json"), "[1]");
    EXPECT_EQ(folder.files().size(), 5u) << "two files, one of them the link, and three folders";
    std::filesystem::remove(folder / "of/mine/choices.json");
    strict.write("UserFileTest", document);
    EXPECT_EQ(folder.read("of/mine/choices.json"), "[]\n");
}

TEST_F(UserFileTest, TwoProgramsThatWriteAtOnceLeaveOneOfBothWhole) {
    for(const char letter: {'a', 'b'}) {
        if(fork()) continue;
        const std::string text(100000, letter);
        document.SetArray().PushBack(rapidjson::StringRef(text.c_str()), document.GetAllocator());
        for(int i = 0; i != 20; ++i) file.write("UserFileTest", document);
        _exit(0);
    }
    int count = 0;
    for(; waitpid(-1, nullptr, 0) > 0; ++count) {
    }
    ASSERT_EQ(count, 2);
    ASSERT_EQ(file.read(document, error), Found::Document);
    const std::string text = document[0].GetString();
    EXPECT_EQ(text.find_first_not_of(text[0]), std::string::npos);
    EXPECT_EQ(text.size(), 100000u);
    EXPECT_EQ(folder.files().size(), 3u) << "nothing lies beside it";
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
