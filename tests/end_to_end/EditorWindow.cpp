#include "EditorWindow.h"

#include <chrono>
#include <csignal>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include "Program.h"

namespace QuorvaneEngine::Test {

namespace {

Display* displayOf(void* const display) { return static_cast<Display*>(display); }

void useTools(const std::vector<std::string>& arguments) {
    std::vector<std::string> command{"/usr/bin/env", "xdotool"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    runProgram(command, "/");
}

std::string titleOf(Display* const display, const Window window) {
    Atom type = 0;
    int format = 0;
    unsigned long count = 0;
    unsigned long rest = 0;
    unsigned char* text = nullptr;
    if(XGetWindowProperty(display, window, XInternAtom(display, "_NET_WM_NAME", False), 0, 1024, False, AnyPropertyType,
           &type, &format, &count, &rest, &text) != Success ||
        !text)
        return {};
    std::string title(reinterpret_cast<const char*>(text), format == 8 ? count : 0);
    XFree(text);
    return title;
}

bool isShown(Display* const display, const Window window) {
    XWindowAttributes attributes{};
    return XGetWindowAttributes(display, window, &attributes) && attributes.map_state == IsViewable;
}

/** A window may go while it is asked for something, which otherwise ends the process that asks. */
int passOver(Display*, XErrorEvent*) { return 0; }

}

EditorWindow::EditorWindow(
    std::vector<std::string> arguments, const std::string& folder, const std::vector<std::string>& environment)
    : _display{XOpenDisplay(nullptr)} {
    arguments.insert(arguments.begin(), QUORVANE_EDITOR);
    _process = fork();
    if(_process == 0) {
        const int printed = open((folder + "/printed").c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
        dup2(printed, STDOUT_FILENO);
        dup2(printed, STDERR_FILENO);
        becomeProgram(arguments, folder, environment);
    }
    if(!_display) return;
    XSetErrorHandler(passOver);
    waitUntil([this] {
        findWindow();
        return _window || !isRunning();
    });
    if(!_window) return;
    XSetInputFocus(displayOf(_display), _window, RevertToParent, CurrentTime);
    XSync(displayOf(_display), False);
}

EditorWindow::~EditorWindow() {
    if(isRunning()) {
        kill(_process, SIGKILL);
        waitpid(_process, nullptr, 0);
    }
    if(_display) XCloseDisplay(displayOf(_display));
}

void EditorWindow::findWindow() {
    Display* const display = displayOf(_display);
    Window root = 0;
    Window parent = 0;
    Window* windows = nullptr;
    unsigned count = 0;
    if(!XQueryTree(display, DefaultRootWindow(display), &root, &parent, &windows, &count)) return;
    for(unsigned i = 0; i != count; ++i)
        if(isShown(display, windows[i]) && !titleOf(display, windows[i]).empty()) _window = windows[i];
    if(windows) XFree(windows);
}

std::string EditorWindow::title() const { return titleOf(displayOf(_display), _window); }

Picture EditorWindow::picture() const {
    Display* const display = displayOf(_display);
    XWindowAttributes attributes{};
    if(!XGetWindowAttributes(display, _window, &attributes)) return {0, 0, {}};
    const auto width = unsigned(attributes.width);
    const auto height = unsigned(attributes.height);
    XImage* const image = XGetImage(display, _window, 0, 0, width, height, AllPlanes, ZPixmap);
    if(!image) return {0, 0, {}};
    std::vector<unsigned> pixels;
    pixels.reserve(std::size_t(width) * height);
    for(unsigned y = 0; y != height; ++y)
        for(unsigned x = 0; x != width; ++x) pixels.push_back(unsigned(XGetPixel(image, int(x), int(y))) & 0xffffff);
    XDestroyImage(image);
    return {width, height, std::move(pixels)};
}

void EditorWindow::click(const Area& area) {
    // The key, which means nothing, keeps the click out of the frame in which the mouse arrives: what is on top of something else
    // is known to the GUI one frame later.
    useTools({"mousemove", std::to_string((area.left + area.right) / 2), std::to_string((area.top + area.bottom) / 2),
        "key", "Shift_L", "click", "1", "mousemove", "0", "0"});
}

void EditorWindow::press(const std::string& keys) { useTools({"key", keys}); }

void EditorWindow::type(const std::string& text) { useTools({"type", text}); }

void EditorWindow::close() {
    Display* const display = displayOf(_display);
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = _window;
    event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = long(XInternAtom(display, "WM_DELETE_WINDOW", False));
    XSendEvent(display, _window, False, NoEventMask, &event);
    XSync(display, False);
}

bool EditorWindow::waitUntil(const std::function<bool()>& condition) const {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds{Patience};
    while(!condition()) {
        if(std::chrono::steady_clock::now() > end) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds{20});
    }
    return true;
}

bool EditorWindow::waitForTitle(const std::string& title) const {
    return waitUntil([&] { return this->title() == title; });
}

bool EditorWindow::isRunning() {
    if(!_hasEnded) _hasEnded = waitpid(_process, &_status, WNOHANG) == _process;
    return !_hasEnded;
}

int EditorWindow::waitForEnd() {
    if(!waitUntil([this] { return !isRunning(); })) return -2;
    return WIFEXITED(_status) ? WEXITSTATUS(_status) : -1;
}

}
