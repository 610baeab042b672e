#pragma once

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** A part of the desktop, in its own coordinates. */
struct ScreenArea {
    Int x, y, width, height;

    bool operator==(const ScreenArea&) const = default;
};

/** Where a window is on the desktop. */
struct WindowPlace {
    /** Without its frame; while it is maximized, what it returns to. */
    ScreenArea area{};

    bool isMaximized = false;

    bool operator==(const WindowPlace&) const = default;
};

}
