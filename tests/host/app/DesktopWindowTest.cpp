#include "app/DesktopWindow.h"

#include <cstdlib>
#include <sstream>
#include <thread>

#include <Corrade/Utility/Debug.h>
#include <gtest/gtest.h>

#define GLFW_INCLUDE_NONE
#include <GLFW/glfw3.h>

namespace QuorvaneEngine {
namespace {

TEST(DesktopWindow, HasTheSizeAndACurrentContextOfOpenGL33) {
    DesktopWindow window;
    DesktopWindow::Options options;
    options.width = 321;
    options.height = 123;
    ASSERT_TRUE(window.open("Test", options));
    int width = 0;
    int height = 0;
    glfwGetWindowSize(window.handle(), &width, &height);
    EXPECT_EQ(width, 321);
    EXPECT_EQ(height, 123);
    EXPECT_EQ(glfwGetCurrentContext(), window.handle());
    EXPECT_GE(glfwGetWindowAttrib(window.handle(), GLFW_CONTEXT_VERSION_MAJOR), 3);
    EXPECT_EQ(window.contentScale(), 1.0f);
}

TEST(DesktopWindow, ACloseRequestIsTakenOnce) {
    DesktopWindow window;
    ASSERT_TRUE(window.open("Test", {}));
    EXPECT_FALSE(window.takeCloseRequest());
    glfwSetWindowShouldClose(window.handle(), GLFW_TRUE);
    EXPECT_TRUE(window.takeCloseRequest());
    EXPECT_FALSE(window.takeCloseRequest());
}

TEST(DesktopWindow, WhatIsDroppedIsTakenOnce) {
    DesktopWindow window;
    ASSERT_TRUE(window.open("Test", {}));
    EXPECT_TRUE(window.takeDropped().isEmpty());
    const GLFWdropfun drop = glfwSetDropCallback(window.handle(), nullptr);
    ASSERT_TRUE(drop);
    const char* paths[]{"/games/one", "/games/two words"};
    drop(window.handle(), 2, paths);
    const Containers::Array<Containers::String> dropped = window.takeDropped();
    ASSERT_EQ(dropped.size(), 2u);
    EXPECT_EQ(dropped[0], "/games/one");
    EXPECT_EQ(dropped[1], "/games/two words");
    EXPECT_TRUE(window.takeDropped().isEmpty());
}

TEST(DesktopWindow, DamageIsTakenOnce) {
    DesktopWindow window;
    ASSERT_TRUE(window.open("Test", {}));
    for(int i = 0; i != 5; ++i) window.pollEvents(0.05);
    window.takeDamage();
    EXPECT_FALSE(window.takeDamage());
    const GLFWwindowrefreshfun refresh = glfwSetWindowRefreshCallback(window.handle(), nullptr);
    ASSERT_TRUE(refresh);
    refresh(window.handle());
    EXPECT_TRUE(window.takeDamage());
    EXPECT_FALSE(window.takeDamage());
}

TEST(DesktopWindow, ItGoesWhereItIsPut) {
    DesktopWindow window;
    ASSERT_TRUE(window.open("Test", {}));
    const Containers::Array<ScreenArea> screens = DesktopWindow::screens();
    ASSERT_EQ(screens.size(), 1u);
    EXPECT_TRUE((screens[0] == ScreenArea{0, 0, 1600, 1000}));
    const WindowPlace place{{40, 30, 640, 480}, false};
    window.setPlace(place);
    for(int i = 0; i != 100 && window.place() != place; ++i) window.pollEvents(0.05);
    EXPECT_TRUE(window.place() == place);
}

TEST(DesktopWindow, ItKnowsWhereItIsFromWhatTheDesktopHasTold) {
    DesktopWindow window;
    ASSERT_TRUE(window.open("Test", {}));
    const GLFWwindowposfun position = glfwSetWindowPosCallback(window.handle(), nullptr);
    const GLFWwindowsizefun size = glfwSetWindowSizeCallback(window.handle(), nullptr);
    const GLFWwindowmaximizefun maximized = glfwSetWindowMaximizeCallback(window.handle(), nullptr);
    ASSERT_TRUE(position && size && maximized);
    position(window.handle(), 11, 12);
    size(window.handle(), 613, 414);
    maximized(window.handle(), GLFW_TRUE);
    EXPECT_TRUE((window.place() == WindowPlace{{11, 12, 613, 414}, true}));
}

TEST(DesktopWindow, AnotherThreadWakesUpWhoWaitsForTheUser) {
    DesktopWindow window;
    ASSERT_TRUE(window.open("Test", {}));
    // What the window's appearance brings is taken first.
    for(int i = 0; i != 5; ++i) window.pollEvents(0.1);
    const double before = glfwGetTime();
    std::thread worker{DesktopWindow::wakeUp};
    window.pollEvents(60.0);
    worker.join();
    EXPECT_LT(glfwGetTime() - before, 30.0);
}

TEST(DesktopWindow, WithoutADisplayASentenceSaysSo) {
    unsetenv("DISPLAY");
    unsetenv("WAYLAND_DISPLAY");
    std::ostringstream out;
    Corrade::Utility::Error redirect{&out};
    DesktopWindow window;
    EXPECT_FALSE(window.open("Test", {}));
    EXPECT_EQ(out.str().find("DesktopWindow::open(): the editor needs a display and found none: "), 0u) << out.str();
}

}
}
