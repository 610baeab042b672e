#include "app/CommandLine.h"

#include <initializer_list>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace QuorvaneEngine {
namespace {

struct Parsed {
    Containers::Optional<CommandLine> line;
    int exitCode = 77;
    std::string out;
    std::string error;
};

Parsed parse(std::initializer_list<const char*> arguments) {
    std::vector<const char*> all{"quorvane-editor"};
    all.insert(all.end(), arguments);
    Parsed parsed;
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    parsed.line = parseCommandLine(int(all.size()), all.data(), parsed.exitCode);
    parsed.out = testing::internal::GetCapturedStdout();
    parsed.error = testing::internal::GetCapturedStderr();
    return parsed;
}

TEST(CommandLine, WithoutArgumentsOpensAWindowOf1600By1000WithoutAProject) {
    const Parsed parsed = parse({});
    ASSERT_TRUE(parsed.line);
    EXPECT_EQ(parsed.line->project, "");
    EXPECT_EQ(parsed.line->screenshot, "");
    EXPECT_EQ(parsed.line->modules, "");
    EXPECT_FALSE(parsed.line->hasSize);
    EXPECT_EQ(parsed.line->width, 1600);
    EXPECT_EQ(parsed.line->height, 1000);
    EXPECT_EQ(parsed.line->scale, 0.0f);
}

TEST(CommandLine, AFolderAloneIsTheProject) {
    const Parsed parsed = parse({"games/lighthouse"});
    ASSERT_TRUE(parsed.line);
    EXPECT_EQ(parsed.line->project, "games/lighthouse");
}

TEST(CommandLine, EveryOptionIsRead) {
    const Parsed parsed = parse({"--project", "games/lighthouse", "--screenshot", "out.png", "--size", "800x600",
        "--frames", "3", "--modules", "mods", "--scale", "1.5", "--theme", "light", "--view", "My notes"});
    ASSERT_TRUE(parsed.line) << parsed.error;
    EXPECT_EQ(parsed.line->project, "games/lighthouse");
    EXPECT_EQ(parsed.line->screenshot, "out.png");
    EXPECT_TRUE(parsed.line->hasSize);
    EXPECT_EQ(parsed.line->width, 800);
    EXPECT_EQ(parsed.line->height, 600);
    EXPECT_EQ(parsed.line->frames, 3);
    EXPECT_EQ(parsed.line->modules, "mods");
    EXPECT_EQ(parsed.line->view, "My notes");
    EXPECT_EQ(parsed.line->scale, 1.5f);
    EXPECT_EQ(parsed.line->theme, "light");
}

TEST(CommandLine, FurtherFoldersOfModulesAreReadInTheirOrderAndLeaveTheProjectAlone) {
    const Parsed parsed = parse({"--more-modules", "mine", "--more-modules", "yours", "games/lighthouse"});
    ASSERT_TRUE(parsed.line) << parsed.error;
    ASSERT_EQ(parsed.line->moreModules.size(), 2u);
    EXPECT_EQ(parsed.line->moreModules[0], "mine");
    EXPECT_EQ(parsed.line->moreModules[1], "yours");
    EXPECT_EQ(parsed.line->modules, "");
    EXPECT_EQ(parsed.line->project, "games/lighthouse");
}

TEST(CommandLine, ANewViewHasANameAndAFolder) {
    const Parsed parsed = parse({"--new-view", "Notes", "plug-ins/notes"});
    ASSERT_TRUE(parsed.line) << parsed.error;
    EXPECT_EQ(parsed.line->newView, "Notes");
    EXPECT_EQ(parsed.line->newViewFolder, "plug-ins/notes");
}

TEST(CommandLine, HelpGoesToStandardOutputAndEndsWithZero) {
    const Parsed parsed = parse({"--help"});
    EXPECT_FALSE(parsed.line);
    EXPECT_EQ(parsed.exitCode, 0);
    EXPECT_NE(parsed.out.find("--screenshot"), std::string::npos);
    EXPECT_EQ(parsed.error, "");
}

struct Wrong {
    std::vector<const char*> arguments;
    const char* message;
};

TEST(CommandLine, WhatIsWrongIsSaidAndEndsWithAnotherCode) {
    const Wrong cases[]{
        {{"--size", "big"}, "\"big\" is not a size in pixels such as 1600x1000"},
        {{"--size", "800x600x2"}, "\"800x600x2\" is not a size in pixels such as 1600x1000"},
        {{"--size", "0x600"}, "\"0x600\" is not a size in pixels such as 1600x1000"},
        {{"--size", "-800x600"}, "\"-800x600\" is not a size in pixels such as 1600x1000"},
        {{"--size", "99999x600"}, "\"99999x600\" is not a size in pixels such as 1600x1000"},
        {{"--frames", "3"}, "--frames requires --screenshot"},
        {{"--view", "Notes"}, "--view requires --screenshot"},
        {{"--screenshot", "x.png", "--frames", "0"}, "--frames"},
        {{"--scale", "100"}, "--scale"},
        {{"--unknown"}, "--unknown"},
        {{"one", "two"}, "two"},
        {{"--new-view", "Notes"}, "--new-view"},
        {{"--new-view", "Notes", "notes", "--project", "game"}, "--new-view"},
        {{"--new-view", "Notes", "notes", "--screenshot", "x.png"}, "--new-view"},
        {{"--more-modules"}, "--more-modules"},
    };
    for(const Wrong& wrong: cases) {
        std::vector<const char*> all{"quorvane-editor"};
        all.insert(all.end(), wrong.arguments.begin(), wrong.arguments.end());
        int exitCode = 0;
        testing::internal::CaptureStderr();
        EXPECT_FALSE(parseCommandLine(int(all.size()), all.data(), exitCode));
        EXPECT_NE(testing::internal::GetCapturedStderr().find(wrong.message), std::string::npos) << wrong.message;
        EXPECT_NE(exitCode, 0) << wrong.message;
    }
}

}
}
