#include "support/GuiTest.h"

#include <string>

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

namespace QuorvaneEngine::Test {
namespace {

TEST(GuiTest, TheScriptClicksAndTypes) {
    int clicks = 0;
    char text[32] = "";
    const auto gui = [&] {
        ImGui::Begin("Window");
        if(ImGui::Button("Press")) ++clicks;
        ImGui::InputText("Text", text, sizeof(text));
        ImGui::End();
    };
    EXPECT_TRUE(runGui("click and type", gui, [](ImGuiTestContext& user) {
        user.SetRef("Window");
        user.ItemClick("Press");
        user.ItemInput("Text");
        user.KeyCharsReplaceEnter("hello");
    }));
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(std::string{text}, "hello");
}

TEST(GuiTest, AFailedCheckFailsTheTestWithTheLog) {
    EXPECT_NONFATAL_FAILURE(runGui(
                                "fails", [] {}, [](ImGuiTestContext&) { IM_CHECK(1 == 2); }),
        "1 == 2");
}

TEST(GuiTest, AMissingItemFailsTheTest) {
    EXPECT_NONFATAL_FAILURE(runGui(
                                "misses", [] {}, [](ImGuiTestContext& user) { user.ItemClick("//Nowhere/Nothing"); }),
        "Nowhere");
}

TEST(GuiTest, ScriptsRunOneAfterAnotherOnOneGui) {
    GuiTest test;
    bool ticked = false;
    const auto gui = [&] {
        ImGui::Begin("Window");
        ImGui::Checkbox("Tick", &ticked);
        ImGui::End();
    };
    EXPECT_TRUE(test.run("first", gui, [](ImGuiTestContext& user) { user.ItemClick("//Window/Tick"); }));
    EXPECT_TRUE(ticked);
    EXPECT_TRUE(test.run("second", gui, [](ImGuiTestContext& user) { user.ItemClick("//Window/Tick"); }));
    EXPECT_FALSE(ticked);
}

TEST(GuiTest, TimeGoesByInSixtieths) {
    GuiTest test;
    double begin = 0.0;
    test.frames([&] { begin = ImGui::GetTime(); });
    double end = 0.0;
    test.frames([&] { end = ImGui::GetTime(); }, 60);
    EXPECT_NEAR(end - begin, 1.0, 1.0e-4);
    EXPECT_EQ(test.frameCount(), 61);
}

TEST(GuiTest, EveryFrameIsPreparedBeforeItBegins) {
    GuiTest test;
    int prepared = 0;
    test.prepareFrames([&] {
        EXPECT_FALSE(ImGui::GetCurrentContext()->WithinFrameScope);
        EXPECT_EQ(++prepared, test.frameCount());
    });
    const auto gui = [&] { EXPECT_EQ(prepared, test.frameCount()); };
    test.frames(gui, 3);
    EXPECT_EQ(prepared, 3);
    EXPECT_TRUE(test.run("waits", gui, [](ImGuiTestContext& user) { user.Yield(5); }));
    EXPECT_GE(prepared, 8);
}

TEST(GuiTest, WindowsCanBeDocked) {
    GuiTest test;
    bool docked = false;
    const auto gui = [&] {
        ImGui::DockSpaceOverViewport(1);
        ImGui::SetNextWindowDockID(1, ImGuiCond_Appearing);
        ImGui::Begin("Docked");
        docked = ImGui::IsWindowDocked();
        ImGui::End();
    };
    test.frames(gui, 3);
    EXPECT_TRUE(docked);
}

}
}
