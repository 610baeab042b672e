#include "app/ModulePanel.h"

#include <filesystem>
#include <string>

#include "EditorFrameTest.h"
#include "support/FrameAllocations.h"

namespace QuorvaneEngine::Test {
namespace {

class ModulePanelTest: public EditorFrameTest {
protected:
    ModulePanelTest() {
        EXPECT_TRUE(open("first"));
        draw(3);
        isOpen("Plug-ins") = true;
        draw(3);
    }

    static void reload(ImGuiTestContext& user, const char* module) {
        user.ItemClick((std::string{"//Plug-ins/**/"} + module + "/###Reload").c_str());
        user.Yield(3);
    }
};

TEST_F(ModulePanelTest, ListsAModuleWithItsFileAndState) {
    EXPECT_TRUE(playSeen("list", [this](ImGuiTestContext& user) {
        user.Yield(2);
        for(const char* const text: {"Counter", "Loaded", ModuleFile}) IM_CHECK(isSeen(text));
        IM_CHECK(!isSeen("Failed"));
    }));
}

TEST_F(ModulePanelTest, AReloadedViewHasTheSameIdWindowPlaceAndOpenFlagAndStartsAfresh) {
    const UnsignedInt id = viewId("Counter");
    const UnsignedInt count = session.state().viewCount();
    EXPECT_TRUE(play("reload", [&](ImGuiTestContext& user) {
        user.DockInto("//Counter", "//Plug-ins", ImGuiDir_Left);
        user.Yield(2);
        const ImGuiWindow* const window = ImGui::FindWindowByName("Counter");
        const ImGuiID node = window->DockId;
        const ImVec2 position = window->Pos;
        user.ItemClick("//Counter/Count");
        user.ItemInputValue("//Counter/Field", "kept by the view");
        const int draws = moduleCounter(0);
        reload(user, "Counter");
        IM_CHECK(moduleCounter(0) < draws);
        IM_CHECK_EQ(moduleCounter(1), 1);
        IM_CHECK_EQ(ImGui::FindWindowByName("Counter"), window);
        IM_CHECK_EQ(window->DockId, node);
        IM_CHECK_EQ(window->Pos.x, position.x);
        IM_CHECK_EQ(window->Pos.y, position.y);
        user.ItemClick("//Counter/Field");
        IM_CHECK_STR_EQ(ImGui::GetInputTextState(ImGui::GetActiveID())->TextA.Data, "");
        user.KeyPress(ImGuiKey_Escape);
        user.ItemClick("//Counter/Count");
        IM_CHECK_EQ(counted(), 2);
    }));
    EXPECT_EQ(viewId("Counter"), id);
    EXPECT_EQ(session.state().viewCount(), count);
    EXPECT_TRUE(isOpen("Counter"));
    EXPECT_EQ(messages("Loaded Counter anew"), 1);
}

TEST_F(ModulePanelTest, AClosedViewStaysClosedWhenItIsReloaded) {
    isOpen("Counter") = false;
    EXPECT_TRUE(play("reload", [](ImGuiTestContext& user) { reload(user, "Counter"); }));
    draw(3);
    EXPECT_FALSE(isOpen("Counter"));
    EXPECT_EQ(moduleCounter(0), 0);
    EXPECT_EQ(moduleCounter(1), 1);
}

TEST_F(ModulePanelTest, AnIdleFrameAsksForNoMemory) {
    draw(5);
    EXPECT_EQ(frameAllocations(gui, 10, [this] { frame.draw(); }), 0u);
}

/** A module that cannot be loaded, and one that takes its place. */
TEST(ModulePanel, TellsWhyAModuleFailedAndLoadsItWhenItsFileIsMended) {
    namespace fs = std::filesystem;
    const fs::path folder = fs::temp_directory_path() / ("quorvane-panel-" + std::to_string(getpid()));
    fs::create_directories(folder);
    fs::copy_file(QUORVANE_FIXTURES "/good/Counter.conf", folder / "Counter.conf");
    std::ofstream{folder / "Counter.so"} << "no library";
    std::ofstream{folder / "project.json"} << "{}";
    {
        GuiTest gui;
        JobSystem jobs{0};
        EditorSession session{&jobs};
        ModuleLoader modules{folder.c_str()};
        MessageLog log;
        EditorFrame frame{session, jobs, modules, log, {}, nullptr, nullptr};
        gui.prepareFrames([&] { frame.prepare(); });
        ASSERT_TRUE(frame.open(folder.c_str()));
        session.state().isViewOpen(session.state().registerView("Plug-ins")) = true;
        std::string seen;
        const auto draw = [&] {
            const ShownText text;
            frame.draw();
            seen = text.text();
        };
        EXPECT_TRUE(gui.run("mend", draw, [&](ImGuiTestContext& user) {
            user.Yield(2);
            IM_CHECK(seen.find("Failed") != std::string::npos);
            IM_CHECK(seen.find("PluginManager::Manager::load(): cannot load plugin Counter from") != std::string::npos);
            fs::copy_file(
                QUORVANE_FIXTURES "/good/Counter.so", folder / "Counter.so", fs::copy_options::overwrite_existing);
            user.ItemClick("//Plug-ins/**/Counter/###Reload");
            user.Yield(3);
            IM_CHECK(seen.find("Failed") == std::string::npos);
            user.ItemClick("//Counter/Count");
        }));
        EXPECT_TRUE(session.changes().canUndo());
    }
    fs::remove_all(folder);
}

}
}
