#pragma once

#include <imgui.h>
#include <imgui_internal.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Around the begin of a GUI frame: lets a key keep the modifiers that it was pressed with.

    The GUI library takes all events of a frame at once and looks at the modifiers afterwards, so where Ctrl is released in the
    slow frame in which S was pressed, it would see S alone. (It keeps mouse buttons and keys apart by itself.) While this object
    lives, what comes from a change of modifiers after a press on is out of the current context's queue; then it comes next. */
class QUORVANE_API KeyOrder {
public:
    KeyOrder();
    ~KeyOrder();
    KeyOrder(const KeyOrder&) = delete;
    KeyOrder& operator=(const KeyOrder&) = delete;

private:
    ImVector<ImGuiInputEvent> _later;
};

}
