#pragma once

#include <utility>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"
#include "app/WindowPlace.h"

struct GLFWwindow;

namespace QuorvaneEngine {

/** A desktop window with an OpenGL 3.3 core context that is current on the calling thread. One at a time, on the GUI thread. */
class QUORVANE_API DesktopWindow {
public:
    struct Options {
        /** In pixels of the screen. */
        Int width = 1600;
        Int height = 1000;

        /** An invisible window is drawn to all the same. */
        bool visible = true;
    };

    /** The code that the process ends with when the display goes while the window is open, after a sentence that says so. */
    static constexpr int NoDisplay = 3;

    /** What is done before that, with nothing that is on the display; null for nothing. It may come in any call that has to do with the display.
        @param context  handed to it */
    void setLossHandler(void (*handler)(void* context), void* context);

    DesktopWindow() = default;

    /** Closes the window. */
    ~DesktopWindow();

    DesktopWindow(const DesktopWindow&) = delete;
    DesktopWindow& operator=(const DesktopWindow&) = delete;

    /** Opens the window. On failure prints an error, a sentence that says what is missing.
        @param title    NUL-terminated */
    bool open(const char* title, const Options& options);

    GLFWwindow* handle() const { return _window; }

    /** @param title    NUL-terminated */
    void setTitle(const char* title);

    /** Pixels on the screen per pixel at scale 1, as the desktop wants it. */
    float contentScale() const;

    /** Takes what the user did; blocks for up to @p seconds until there is something to take. */
    void pollEvents(double seconds);

    /** Ends the blocking of @ref pollEvents() , or of its next call. On any thread, while a window is open. */
    static void wakeUp();

    /** Whether the user has asked to close the window since the last call. */
    bool takeCloseRequest();

    /** Whether a part of the window has to be drawn again since the last call, because another window was in front of it for instance. */
    bool takeDamage() { return std::exchange(_isDamaged, false); }

    /** Absolute paths of what the user has dropped onto the window at once, since the last call; empty for nothing. */
    Containers::Array<Containers::String> takeDropped() { return std::exchange(_dropped, {}); }

    /** Where the window is, as the desktop has told with the events that were taken last; costs nothing. A desktop may not tell, or not do as it is
        asked. */
    const WindowPlace& place() const { return _place; }
    void setPlace(const WindowPlace& place);

    /** What there is of the desktop to put windows on. Asks the display several times and waits for its answers. */
    static Containers::Array<ScreenArea> screens();

    /** Shows what was drawn. */
    void present();

private:
    static void noteDamage(GLFWwindow* window);
    static void noteDropped(GLFWwindow* window, int count, const char** paths);
    static void notePosition(GLFWwindow* window, int x, int y);
    static void noteSize(GLFWwindow* window, int width, int height);
    static void noteMaximized(GLFWwindow* window, int isMaximized);

    void watchPlace();

    GLFWwindow* _window = nullptr;
    Containers::Array<Containers::String> _dropped;
    WindowPlace _place;
    bool _isDamaged = false;
    bool _initialized = false;
};

}
