#include "app/KeyOrder.h"

namespace QuorvaneEngine {

namespace {

bool isModifier(const ImGuiInputEvent& event) {
    return event.Type == ImGuiInputEventType_Key &&
        (ImGui::IsLRModKey(event.Key.Key) || (event.Key.Key & ImGuiMod_Mask_));
}

bool isPress(const ImGuiInputEvent& event) {
    return event.Type == ImGuiInputEventType_Key && event.Key.Down && !isModifier(event);
}

}

KeyOrder::KeyOrder() {
    ImVector<ImGuiInputEvent>& queue = ImGui::GetCurrentContext()->InputEventsQueue;
    bool isPressed = false;
    int kept = 0;
    for(; kept != queue.Size && !(isPressed && isModifier(queue[kept])); ++kept)
        isPressed = isPressed || isPress(queue[kept]);
    for(int i = kept; i != queue.Size; ++i) _later.push_back(queue[i]);
    queue.resize(kept);
}

KeyOrder::~KeyOrder() {
    ImVector<ImGuiInputEvent>& queue = ImGui::GetCurrentContext()->InputEventsQueue;
    for(const ImGuiInputEvent& event: _later) queue.push_back(event);
}

}
