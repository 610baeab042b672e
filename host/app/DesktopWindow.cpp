#include "app/DesktopWindow.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>

#include <dlfcn.h>

#define GLFW_INCLUDE_NONE
#include <GLFW/glfw3.h>

#include <Corrade/Utility/Debug.h>

namespace QuorvaneEngine {

namespace {

/** The reason of the last failure, or an empty text. */
const char* lastReason() {
    const char* description = nullptr;
    glfwGetError(&description);
    return description ? description : "";
}

/* The part of Xlib's interface that is needed, so that its headers are not. */
using LossHandler = int (*)(void* display);
using SetLossHandler = LossHandler (*)(LossHandler handler);

void (*lossHandler)(void*) = nullptr;
void* lossContext = nullptr;

[[noreturn]] int endWithoutDisplay(void*) {
    Corrade::Utility::Error{} << "DesktopWindow::endWithoutDisplay(): the display is gone, so the editor ends";
    if(lossHandler) lossHandler(lossContext);
    std::cout.flush();
    // Nothing can be closed in order: whatever is on the display, OpenGL among it, is gone, too.
    std::_Exit(DesktopWindow::NoDisplay);
}

/** Without this the library of the X Window System ends the process with a code and words of its own. */
void watchDisplay() {
    void* const library = dlopen("libX11.so.6", RTLD_LAZY | RTLD_NOLOAD);
    if(!library) return;
    if(void* const function = dlsym(library, "XSetIOErrorHandler"))
        reinterpret_cast<SetLossHandler>(function)(endWithoutDisplay);
    dlclose(library);
}

}

void DesktopWindow::setLossHandler(void (*const handler)(void*), void* const context) {
    lossHandler = handler;
    lossContext = context;
}

DesktopWindow::~DesktopWindow() {
    if(_window) glfwDestroyWindow(_window);
    if(_initialized) glfwTerminate();
}

bool DesktopWindow::open(const char* title, const Options& options) {
    _initialized = glfwInit();
    if(!_initialized) {
        Corrade::Utility::Error{} << "DesktopWindow::open(): the editor needs a display and found none:"
                                  << lastReason();
        return false;
    }
    watchDisplay();
    glfwWindowHint(GLFW_CONTEXT_VERSION_MAJOR, 3);
    glfwWindowHint(GLFW_CONTEXT_VERSION_MINOR, 3);
    glfwWindowHint(GLFW_OPENGL_PROFILE, GLFW_OPENGL_CORE_PROFILE);
    glfwWindowHint(GLFW_OPENGL_FORWARD_COMPAT, GLFW_TRUE);
    glfwWindowHint(GLFW_VISIBLE, options.visible);
    glfwWindowHint(GLFW_FOCUS_ON_SHOW, options.visible);
    _window = glfwCreateWindow(options.width, options.height, title, nullptr, nullptr);
    if(!_window) {
        Corrade::Utility::Error{}
            << "DesktopWindow::open(): the editor needs OpenGL 3.3, which this display does not offer:" << lastReason();
        return false;
    }
    glfwSetWindowUserPointer(_window, this);
    glfwSetDropCallback(_window, noteDropped);
    glfwSetWindowRefreshCallback(_window, noteDamage);
    watchPlace();
    glfwMakeContextCurrent(_window);
    // An invisible window has nobody to wait for.
    glfwSwapInterval(options.visible);
    return true;
}

void DesktopWindow::setTitle(const char* title) { glfwSetWindowTitle(_window, title); }

float DesktopWindow::contentScale() const {
    float x = 1.0f;
    float y = 1.0f;
    glfwGetWindowContentScale(_window, &x, &y);
    return x > y ? x : y;
}

void DesktopWindow::pollEvents(double seconds) {
    if(seconds > 0.0) glfwWaitEventsTimeout(seconds);
    else glfwPollEvents();
}

void DesktopWindow::wakeUp() { glfwPostEmptyEvent(); }

bool DesktopWindow::takeCloseRequest() {
    const bool requested = glfwWindowShouldClose(_window);
    glfwSetWindowShouldClose(_window, GLFW_FALSE);
    return requested;
}

void DesktopWindow::noteDamage(GLFWwindow* const window) {
    static_cast<DesktopWindow*>(glfwGetWindowUserPointer(window))->_isDamaged = true;
}

void DesktopWindow::noteDropped(GLFWwindow* const window, const int count, const char** const paths) {
    auto& self = *static_cast<DesktopWindow*>(glfwGetWindowUserPointer(window));
    self._dropped = Containers::Array<Containers::String>{Corrade::ValueInit, std::size_t(count)};
    std::copy(paths, paths + count, self._dropped.begin());
}

void DesktopWindow::watchPlace() {
    glfwSetWindowPosCallback(_window, notePosition);
    glfwSetWindowSizeCallback(_window, noteSize);
    glfwSetWindowMaximizeCallback(_window, noteMaximized);
    glfwGetWindowPos(_window, &_place.area.x, &_place.area.y);
    glfwGetWindowSize(_window, &_place.area.width, &_place.area.height);
    _place.isMaximized = glfwGetWindowAttrib(_window, GLFW_MAXIMIZED);
}

void DesktopWindow::notePosition(GLFWwindow* const window, const int x, const int y) {
    ScreenArea& area = static_cast<DesktopWindow*>(glfwGetWindowUserPointer(window))->_place.area;
    area.x = x;
    area.y = y;
}

void DesktopWindow::noteSize(GLFWwindow* const window, const int width, const int height) {
    ScreenArea& area = static_cast<DesktopWindow*>(glfwGetWindowUserPointer(window))->_place.area;
    area.width = width;
    area.height = height;
}

void DesktopWindow::noteMaximized(GLFWwindow* const window, const int isMaximized) {
    static_cast<DesktopWindow*>(glfwGetWindowUserPointer(window))->_place.isMaximized = isMaximized;
}

void DesktopWindow::setPlace(const WindowPlace& place) {
    if(glfwGetWindowAttrib(_window, GLFW_MAXIMIZED)) glfwRestoreWindow(_window);
    glfwSetWindowPos(_window, place.area.x, place.area.y);
    glfwSetWindowSize(_window, place.area.width, place.area.height);
    if(place.isMaximized) glfwMaximizeWindow(_window);
}

Containers::Array<ScreenArea> DesktopWindow::screens() {
    int count = 0;
    GLFWmonitor** const monitors = glfwGetMonitors(&count);
    Containers::Array<ScreenArea> screens{Corrade::ValueInit, std::size_t(count)};
    for(int i = 0; i != count; ++i)
        glfwGetMonitorWorkarea(monitors[i], &screens[i].x, &screens[i].y, &screens[i].width, &screens[i].height);
    return screens;
}

void DesktopWindow::present() { glfwSwapBuffers(_window); }

}
