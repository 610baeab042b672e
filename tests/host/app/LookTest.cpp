#include "app/Look.h"

#include <imgui.h>

#include "EditorFrameTest.h"
#include "app/Settings.h"
#include "app/Theme.h"
#include "host/localization/TestFolder.h"

namespace QuorvaneEngine {
namespace {

using Theme::Scheme;

/** The editor with settings in a folder of their own, on a display of scale 2. */
class LookTest: public Test::EditorFrameTest {
protected:
    LookTest() {
        EditorFrame::Desktop desktop;
        desktop.look = &look;
        frame.setDesktop(desktop);
    }
    ~LookTest() override { Theme::apply(1.0f); }

    static float scale() { return ImGui::GetStyle().FontScaleDpi; }

    const TestFolder folder;
    Settings settings{folder.path.c_str()};
    Look look{settings, 2.0f, settings.scheme()};
};

TEST_F(LookTest, TheMenuChangesTheThemeAndTheSettingsKeepIt) {
    ASSERT_TRUE(open("first"));
    EXPECT_TRUE(play("the menu changes the theme", [&](ImGuiTestContext& user) {
        choose(user, "View/Theme/Light");
        user.Yield(2);
        IM_CHECK(Theme::scheme() == Scheme::Light);
        const ImVec4& surface = Theme::color(Theme::Color::Surface, Scheme::Light);
        IM_CHECK_EQ(ImGui::GetStyle().Colors[ImGuiCol_WindowBg].x, surface.x);
        IM_CHECK_EQ(scale(), 2.0f);
        IM_CHECK(Settings{folder.path.c_str()}.scheme() == Scheme::Light);
        choose(user, "View/Theme/Dark");
        user.Yield(2);
        IM_CHECK(Theme::scheme() == Scheme::Dark);
        IM_CHECK(Settings{folder.path.c_str()}.scheme() == Scheme::Dark);
    }));
}

TEST_F(LookTest, KeysChangeTheScaleOnTopOfTheDisplays) {
    EXPECT_TRUE(play("keys change the scale", [&](ImGuiTestContext& user) {
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Equal);
        user.Yield(2);
        IM_CHECK_FLOAT_EQ(scale(), 2.2f);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Equal);
        user.Yield(2);
        IM_CHECK_FLOAT_EQ(scale(), 2.5f);
        IM_CHECK_EQ(Settings{folder.path.c_str()}.scale(), 125);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Minus, 3);
        user.Yield(2);
        IM_CHECK_FLOAT_EQ(scale(), 1.8f);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_0);
        user.Yield(2);
        IM_CHECK_FLOAT_EQ(scale(), 2.0f);
        IM_CHECK_EQ(Settings{folder.path.c_str()}.scale(), 100);
    }));
    EXPECT_EQ(messages("Scale 125 %"), 1);
}

TEST_F(LookTest, TheScaleEndsAt75And300Percent) {
    EXPECT_TRUE(play("the scale ends", [&](ImGuiTestContext& user) {
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Equal, 30);
        user.Yield(2);
        IM_CHECK_FLOAT_EQ(scale(), 6.0f);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Minus, 30);
        user.Yield(2);
        IM_CHECK_FLOAT_EQ(scale(), 1.5f);
    }));
}

TEST_F(LookTest, AnotherDisplayHasItsOwnScaleUnderTheUsers) {
    settings.setScale(150);
    look.setDisplayScale(1.0f);
    EXPECT_FLOAT_EQ(scale(), 1.5f);
    look.setDisplayScale(2.0f);
    EXPECT_FLOAT_EQ(scale(), 3.0f);
}

TEST_F(LookTest, AThemeForOneRunIsNotKept) {
    Look forced{settings, 1.0f, Scheme::Light};
    EXPECT_EQ(Theme::scheme(), Scheme::Light);
    forced.execute(Command::LargerScale, log);
    EXPECT_EQ(Theme::scheme(), Scheme::Light);
    EXPECT_EQ(Settings{folder.path.c_str()}.scheme(), Scheme::Dark);
}

TEST_F(LookTest, WithoutALookTheKeysDoNothing) {
    frame.setDesktop({});
    EXPECT_TRUE(play("the keys do nothing", [&](ImGuiTestContext& user) {
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Equal);
        user.Yield(2);
        IM_CHECK_EQ(scale(), 2.0f);
    }));
}

}
}
