#include "app/WindowMemory.h"

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "host/localization/TestFolder.h"
#include "support/CapturedOutput.h"

namespace QuorvaneEngine {
namespace {

using Test::CapturedOutput;

constexpr const char* File = "game/.editor/window.json";
constexpr ScreenArea Screens[]{{0, 0, 1920, 1080}, {1920, 0, 1280, 1024}};
constexpr WindowPlace Other{{2000, 30, 800, 600}, true};

class WindowMemoryTest: public testing::Test {
protected:
    Containers::String game() const { return (folder / "game").c_str(); }

    /** What is printed for a file, which gives no place. */
    std::string refused(const std::string& text) const {
        folder.write(File, text);
        const CapturedOutput output;
        WindowPlace place = Other;
        EXPECT_NE(WindowMemory::load(game(), Screens, place), WindowMemory::Found::Place);
        EXPECT_TRUE(place == Other);
        const std::string prefix = "WindowMemory::load(): " + folder / File + ":";
        const std::string warning = output.warning();
        return warning.find(prefix) == 0 ? warning.substr(prefix.size()) : warning;
    }

    static std::string place(const std::string& area, const std::string& maximized = "false") {
        return R"({"version": 1, )" + area + R"(, "maximized": )" + maximized + "}\n";
    }

    const TestFolder folder;
};

TEST_F(WindowMemoryTest, AWindowReturnsWhereItWas) {
    folder.write("game/project.json", "{}");
    WindowMemory first{true};
    WindowPlace place{{10, 20, 700, 500}, false};
    EXPECT_FALSE(first.isOf(game()));
    EXPECT_FALSE(first.enter(game(), Screens, place));
    EXPECT_TRUE(first.isOf(game()));
    EXPECT_FALSE(first.notice(place, 1.0));
    place.area = {-40, 50, 900, 650};
    EXPECT_FALSE(first.notice(place, 2.0));
    EXPECT_TRUE(first.isPending());
    EXPECT_FALSE(first.notice(place, 2.4));
    ASSERT_TRUE(first.notice(place, 2.5));
    first.write();
    EXPECT_FALSE(first.notice(place, 9.0));
    EXPECT_EQ(folder.read(File),
        "{\n  \"version\": 1,\n  \"x\": -40,\n  \"y\": 50,\n  \"width\": 900,\n  \"height\": 650,\n"
        "  \"maximized\": false\n}\n");

    WindowMemory second{true};
    WindowPlace found = Other;
    EXPECT_TRUE(second.enter(game(), Screens, found));
    EXPECT_TRUE(found == place);
    EXPECT_FALSE(second.enter(game(), Screens, found)) << "once is enough";
    EXPECT_FALSE(second.notice(found, 9.0));
}

TEST_F(WindowMemoryTest, AMaximizedWindowKeepsWhatItReturnsTo) {
    folder.write("game/project.json", "{}");
    WindowMemory memory{true};
    WindowPlace place{{10, 20, 700, 500}, false};
    memory.enter(game(), Screens, place);
    memory.notice({{0, 0, 1920, 1080}, true}, 1.0);
    ASSERT_TRUE(memory.notice({{0, 0, 1920, 1080}, true}, 2.0));
    memory.write();
    ASSERT_EQ(WindowMemory::load(game(), Screens, place), WindowMemory::Found::Place);
    EXPECT_TRUE((place == WindowPlace{{10, 20, 700, 500}, true}));
}

TEST_F(WindowMemoryTest, OnlyWhereAWindowStaysCounts) {
    folder.write("game/project.json", "{}");
    WindowMemory memory{true};
    WindowPlace place{{10, 20, 700, 500}, false};
    memory.enter(game(), Screens, place);
    // As it is maximized, its size comes before its state.
    EXPECT_FALSE(memory.notice({{0, 0, 1920, 1080}, false}, 1.0));
    EXPECT_FALSE(memory.notice({{0, 0, 1920, 1080}, true}, 1.05));
    ASSERT_TRUE(memory.notice({{0, 0, 1920, 1080}, true}, 2.0));
    memory.write();
    ASSERT_EQ(WindowMemory::load(game(), Screens, place), WindowMemory::Found::Place);
    EXPECT_TRUE((place == WindowPlace{{10, 20, 700, 500}, true}));
    EXPECT_FALSE(memory.notice({{0, 0, 800, 600}, true}, 3.0));
    EXPECT_FALSE(memory.notice({{0, 0, 1920, 1080}, true}, 3.1));
    EXPECT_FALSE(memory.isPending()) << "it is as it was";
}

TEST_F(WindowMemoryTest, WhatIsOfAnotherVersionOrCannotBeReadIsLeftAlone) {
    for(const char* const text: {R"({"version": 2, "screen": "left"})", "{\"version\""}) {
        folder.write(File, text);
        for(const bool restores: {true, false}) {
            const CapturedOutput output;
            WindowMemory memory{restores};
            WindowPlace place{{10, 20, 700, 500}, false};
            EXPECT_FALSE(memory.enter(game(), Screens, place));
            memory.notice({{30, 20, 700, 500}, false}, 1.0);
            ASSERT_TRUE(memory.notice({{30, 20, 700, 500}, false}, 2.0));
            memory.write();
            EXPECT_FALSE(memory.isPending());
        }
        EXPECT_EQ(folder.read(File), text);
    }
}

TEST_F(WindowMemoryTest, APlaceIsWrittenBeforeAnotherProjectIsEntered) {
    for(const bool isOurs: {false, true}) {
        WindowMemory memory{true};
        WindowPlace place{{10, 20, 700, 500}, false};
        memory.enter(game(), Screens, place);
        memory.setOurs(isOurs);
        memory.notice({{30, 40, 700, 500}, false}, 1.0);
        WindowPlace other{{30, 40, 700, 500}, false};
        memory.enter((folder / "other").c_str(), Screens, other);
        WindowPlace found;
        EXPECT_EQ(WindowMemory::load(game(), Screens, found) == WindowMemory::Found::Place, isOurs);
        EXPECT_EQ(found.area.x == 30, isOurs);
    }
}

TEST_F(WindowMemoryTest, ALinkInTheProjectIsNotWrittenThrough) {
    folder.write("game/project.json", "{}");
    std::filesystem::create_directories(folder / "game/.editor");
    std::filesystem::create_symlink("../project.json", folder / File);
    const CapturedOutput output;
    WindowMemory memory{true};
    WindowPlace place{{10, 20, 700, 500}, false};
    memory.enter(game(), Screens, place);
    memory.write();
    EXPECT_EQ(folder.read("game/project.json"), "{}");
}

TEST_F(WindowMemoryTest, WhereAnotherSizeIsAskedForItIsOnlyKept) {
    folder.write(File, place(R"("x": 5, "y": 5, "width": 500, "height": 400)"));
    WindowMemory memory{false};
    WindowPlace place = Other;
    EXPECT_FALSE(memory.enter(game(), Screens, place));
    EXPECT_TRUE(place == Other);
}

TEST_F(WindowMemoryTest, WhatIsOnNoScreenIsNotReturnedToAndThatIsNoWarning) {
    for(const char* const area:
        {R"("x": 3200, "y": 0, "width": 500, "height": 400)", R"("x": -450, "y": 0, "width": 500, "height": 400)",
            R"("x": 0, "y": -30, "width": 500, "height": 400)", R"("x": 0, "y": 1070, "width": 500, "height": 400)",
            R"("x": 1000000, "y": -1000000, "width": 500, "height": 400)"})
        EXPECT_EQ(refused(place(area)), "") << area;
    WindowPlace found = Other;
    EXPECT_EQ(WindowMemory::load((folder / "nowhere").c_str(), Screens, found), WindowMemory::Found::Nothing);
}

TEST_F(WindowMemoryTest, AFileThatHoldsNoPlaceIsAWarning) {
    EXPECT_EQ(refused("{"), "1:2: the text ends too early\n");
    EXPECT_EQ(refused("[]"), "1:1: the window's place is no object\n");
    EXPECT_EQ(refused("{}"), "1:1: the window's place is of another version\n");
    EXPECT_EQ(refused(R"({"version": 2})"), "1:1: the window's place is of another version\n");
    for(const char* const area: {R"("x": 0, "y": 0, "width": 0, "height": 400)",
            R"("x": 0, "y": 0, "width": -500, "height": 400)", R"("x": 0, "y": 0, "width": 500, "height": 16385)",
            R"("x": 0.5, "y": 0, "width": 500, "height": 400)", R"("x": "0", "y": 0, "width": 500, "height": 400)",
            R"("x": 99999999999, "y": 0, "width": 500, "height": 400)", R"("x": 0, "y": 0, "width": 500)"})
        EXPECT_EQ(refused(place(area)), "1:1: the window's place is none\n") << area;
    EXPECT_EQ(
        refused(place(R"("x": 0, "y": 0, "width": 500, "height": 400)", "1")), "1:1: the window's place is none\n");
}

TEST_F(WindowMemoryTest, WithoutAProjectAndOfAHiddenWindowNothingIsKept) {
    WindowMemory memory{true};
    WindowPlace place = Other;
    EXPECT_FALSE(memory.enter("", Screens, place));
    EXPECT_FALSE(memory.notice({{0, 0, 500, 500}, false}, 9.0));
    EXPECT_FALSE(memory.isPending());
    memory.enter(game(), Screens, place);
    EXPECT_FALSE(memory.notice({{0, 0, 1, 1}, false}, 9.0));
    EXPECT_FALSE(memory.isPending());
}

}
}
