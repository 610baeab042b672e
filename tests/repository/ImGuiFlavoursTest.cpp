#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "ImGuiLayout.h"

#ifndef IMGUI_ENABLE_TEST_ENGINE
#error this program has to be compiled like every test program
#endif

/* Modules are compiled against the plain flavour of Dear ImGui and are loaded into test programs with the other. */

TEST(ImGuiFlavours, PassTheLibrarysOwnCheckInTheOtherOne) { EXPECT_TRUE(plainFlavourPassesVersionCheck()); }

TEST(ImGuiFlavours, HaveTheSameLayouts) {
    ImGuiLayout plain[ImGuiLayoutCapacity];
    ImGuiLayout test[ImGuiLayoutCapacity];
    const int count = plainFlavourLayouts(plain);
    ASSERT_EQ(imGuiLayouts(test), count);
    ASSERT_GT(count, 10);
    for(int i = 0; i != count; ++i) EXPECT_EQ(plain[i].value, test[i].value) << plain[i].name;
}
