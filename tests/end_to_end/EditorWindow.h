#pragma once

#include <functional>
#include <string>
#include <vector>

#include <sys/types.h>

#include "Picture.h"

namespace QuorvaneEngine::Test {

/** The desktop editor as a process of its own, and the window that it has on the test's display, used by mouse and keys.

    Nothing here knows when the editor has done what was asked for: whoever uses it waits until that shows. There is no window
    manager, so the keyboard is given to the window, and its close button is what a window manager sends. */
class EditorWindow {
public:
    /** Seconds until what is waited for counts as never happening. */
    static constexpr int Patience = 50;

    /** Starts the editor, and waits for its window.
        @param arguments    of the program
        @param folder       where it is started, and where it leaves what it prints, in the file `printed`
        @param environment  as for @ref runProgram() */
    EditorWindow(
        std::vector<std::string> arguments, const std::string& folder, const std::vector<std::string>& environment);

    /** Ends the editor where it still runs. */
    ~EditorWindow();

    EditorWindow(const EditorWindow&) = delete;
    EditorWindow& operator=(const EditorWindow&) = delete;

    /** Whether there is a window. */
    bool isOpen() const { return _window; }

    std::string title() const;

    /** What the window shows. */
    Picture picture() const;

    /** Clicks into the middle of an area, and takes the mouse away from it: what is under it has other colours. */
    void click(const Area& area);

    /** @param keys     as xdotool calls them, such as "ctrl+shift+z" */
    void press(const std::string& keys);

    void type(const std::string& text);

    /** Asks the window to close, as its frame would. */
    void close();

    /** @return whether the condition came true */
    bool waitUntil(const std::function<bool()>& condition) const;
    bool waitForTitle(const std::string& title) const;

    /** Waits until the editor ends by itself.
        @return its exit code, -1 when a signal ended it, -2 when it went on */
    int waitForEnd();

    bool isRunning();

private:
    void findWindow();

    pid_t _process;
    int _status = 0;
    bool _hasEnded = false;
    /** The library's connection; void keeps its macros out of here. */
    void* _display;
    unsigned long _window = 0;
};

}
