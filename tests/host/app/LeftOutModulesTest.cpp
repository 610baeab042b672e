#include "app/LeftOutModules.h"

#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "host/localization/TestFolder.h"
#include "modules/ModuleLoader.h"
#include "support/CapturedOutput.h"

namespace QuorvaneEngine {
namespace {

using Status = ModuleLoader::Status;
using Test::CapturedOutput;

constexpr const char* File = "data/left-out-modules.json";

/** A folder with two modules, of which nothing is ever loaded. */
class LeftOutModulesTest: public testing::Test {
protected:
    LeftOutModulesTest() {
        for(const char* const name: {"A", "B"}) {
            folder.write(std::string{"modules/"} + name + ".so", name);
            folder.write(std::string{"modules/"} + name + ".conf", "");
        }
    }

    /** What an editor finds when it starts. */
    struct Start {
        explicit Start(const TestFolder& folder)
            : modules{(folder / "modules").c_str()}, leftOut{(folder / "data").c_str(), modules} {}

        Status status(const int module) const { return modules.modules()[std::size_t(module)].status; }

        CapturedOutput output;
        ModuleLoader modules;
        LeftOutModules leftOut;
    };

    /** An editor that died with a module. */
    void die(const char* const library) const {
        const LoadNote::Library left = LoadNote::Library::of((folder / library).c_str());
        std::string text{"quorvane-loading 1\n"};
        text.append(std::to_string(left.size)).append("\n").append(std::to_string(left.changed)).append("\n");
        folder.write(std::string{"data/loading-"} + library[8], text.append(folder / library).append("\n"));
    }

    std::string warning(const char* const library) const {
        return "LeftOutModules::LeftOutModules(): " + (folder / library) +
            ": the editor died while it was loading this module\n";
    }

    const TestFolder folder;
};

TEST_F(LeftOutModulesTest, NothingIsLeftOutAtFirstAndNothingIsWritten) {
    const Start start{folder};
    EXPECT_EQ(start.leftOut.suspect(), "");
    EXPECT_EQ(start.status(0), Status::NotLoaded);
    EXPECT_EQ(start.output.warning(), "");
    EXPECT_EQ(folder.files().count("data/"), 0u);
}

TEST_F(LeftOutModulesTest, WhoAnEditorDiedWithIsAskedAboutUntilThereIsAnAnswer) {
    die("modules/B.so");
    for(int i = 0; i != 2; ++i) {
        const Start start{folder};
        EXPECT_EQ(start.output.warning(), warning("modules/B.so"));
        EXPECT_EQ(start.leftOut.suspect(), "B");
        EXPECT_EQ(start.leftOut.fileOf("B"), (folder / "modules/B.so").c_str());
        EXPECT_EQ(start.status(0), Status::NotLoaded);
        EXPECT_EQ(start.status(1), Status::LeftOut);
        EXPECT_EQ(start.modules.modules()[1].reason, "the editor died while it was loading this module");
    }
}

TEST_F(LeftOutModulesTest, WhatTheUserLeavesOutStaysOutWithoutAQuestion) {
    die("modules/B.so");
    Start{folder}.leftOut.leaveOut("B");
    for(int i = 0; i != 2; ++i) {
        const Start start{folder};
        EXPECT_EQ(start.leftOut.suspect(), "");
        EXPECT_EQ(start.status(1), Status::LeftOut);
        EXPECT_EQ(start.output.warning(), "");
    }
    Start{folder}.leftOut.forget("B");
    EXPECT_EQ(Start{folder}.status(1), Status::NotLoaded);
    EXPECT_EQ(folder.read(File), "{\n  \"version\": 1,\n  \"modules\": []\n}\n");
}

TEST_F(LeftOutModulesTest, AnotherFileOfTheNameIsLoaded) {
    die("modules/A.so");
    die("modules/B.so");
    folder.write("modules/A.so", "mended before the start");
    {
        Start start{folder};
        EXPECT_EQ(start.status(0), Status::NotLoaded);
        EXPECT_EQ(start.leftOut.suspect(), "B");
        start.leftOut.leaveOut("B");
        EXPECT_EQ(start.leftOut.suspect(), "");
    }
    folder.write("modules/B.so", "mended after the answer");
    EXPECT_EQ(Start{folder}.status(1), Status::NotLoaded);
}

TEST_F(LeftOutModulesTest, OneAfterTheOtherIsAskedAbout) {
    die("modules/A.so");
    die("modules/B.so");
    Start start{folder};
    EXPECT_EQ(start.leftOut.suspect(), "A");
    start.leftOut.forget(start.leftOut.suspect());
    EXPECT_EQ(start.leftOut.suspect(), "B");
    start.leftOut.leaveOut(start.leftOut.suspect());
    EXPECT_EQ(start.leftOut.suspect(), "");
    const Start next{folder};
    EXPECT_EQ(next.status(0), Status::NotLoaded);
    EXPECT_EQ(next.status(1), Status::LeftOut);
}

TEST_F(LeftOutModulesTest, WhatAnotherEditorLeftOutMeanwhileIsKept) {
    Start one{folder};
    Start other{folder};
    one.leftOut.leaveOut("A");
    other.leftOut.leaveOut("B");
    const Start next{folder};
    EXPECT_EQ(next.status(0), Status::LeftOut);
    EXPECT_EQ(next.status(1), Status::LeftOut);
}

TEST_F(LeftOutModulesTest, WhatIsNoListIsOneWarningAndHoldsNone) {
    const std::pair<const char*, const char*> files[]{
        {"", ":1:1: "},
        {"garbage", ":1:1: "},
        {"[]", ":1:1: there is no list of modules\n"},
        {R"({"version": 1})", ":1:1: there is no list of modules\n"},
        {R"({"version": 1, "modules": {}})", ":1:1: there is no list of modules\n"},
        {R"({"version": 2, "modules": []})", ":1:1: the list of modules is of another version\n"},
    };
    for(const auto& [text, warning]: files) {
        folder.write(File, text);
        const Start start{folder};
        EXPECT_EQ(start.output.warning().find("LeftOutModules::read(): " + (folder / File) + warning), 0u)
            << text << "\n"
            << start.output.warning();
        EXPECT_EQ(start.leftOut.suspect(), "");
        EXPECT_EQ(folder.read(File), text);
    }
    for(const char* const entry:
        {"7", "{}", R"({"file": "/a.so"})", R"({"file": "/a.so", "size": -1, "changed": "x"})"}) {
        folder.write(File, std::string{R"({"version": 1, "modules": [)"} + entry + "]}");
        const Start start{folder};
        EXPECT_EQ(start.output.warning(), "") << entry;
        EXPECT_EQ(start.status(0), Status::NotLoaded);
    }
}

TEST_F(LeftOutModulesTest, TheListOfAnotherVersionIsNotWritten) {
    const std::string text = R"({"version": 2, "modules": []})";
    folder.write(File, text);
    Start{folder}.leftOut.leaveOut("A");
    EXPECT_EQ(folder.read(File), text);
}

TEST_F(LeftOutModulesTest, WithoutAFolderNothingIsLeftOut) {
    ModuleLoader modules{(folder / "modules").c_str()};
    LeftOutModules leftOut{"", modules};
    leftOut.leaveOut("A");
    EXPECT_EQ(leftOut.suspect(), "");
    EXPECT_EQ(modules.modules()[0].status, Status::NotLoaded);
}

}
}
