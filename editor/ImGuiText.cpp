#include "ImGuiText.h"

#include <algorithm>

#include "ImGuiGuards.h"

namespace QuorvaneEngine {

namespace {

/** Bytes of a line that are looked at. */
constexpr std::size_t LineLimit = 4096;

/** An address for the empty view, too: the library takes equal pointers for an unknown length in places. */
Containers::StringView total(const Containers::StringView text) {
    return text.isEmpty() ? Containers::StringView{"", 0} : text;
}

}

void ImGuiText::pass(const Containers::StringView text) {
    const Containers::StringView view = total(text);
    _begin = view.begin();
    _end = view.end();
}

void ImGuiText::copy(const Containers::StringView first, const Containers::StringView second) {
    const std::size_t size = first.size() + second.size();
    char* out = _buffer;
    if(size >= sizeof(_buffer)) {
        _long = Containers::String{Corrade::NoInit, size};
        out = _long.data();
    }
    _begin = out;
    _end = out + size;
    out = std::copy(first.begin(), first.end(), out);
    out = std::copy(second.begin(), second.end(), out);
    *out = '\0';
}

void renderText(const ImVec2& position, const Containers::StringView text) {
    const Containers::StringView view = total(text);
    ImGui::RenderText(position, view.begin(), view.end(), false);
}

void renderTextClipped(const ImVec2& min, const ImVec2& max, const Containers::StringView text, const ImVec2& textSize,
    const ImVec2& align) {
    const Containers::StringView view = total(text);
    ImGui::RenderTextClipped(min, max, view.begin(), view.end(), &textSize, align);
}

bool isLineLabel(const Containers::StringView text) {
    return text.size() <= LineLimit && !text.contains("##") && !text.contains('\n') && !text.contains('\0');
}

void renderLine(const ImVec2& min, const ImVec2& max, const Containers::StringView text) {
    const char* const limit = text.begin() + std::min(text.size(), LineLimit);
    const Containers::StringView line = text.prefix(std::find(text.begin(), limit, '\n'));
    const ClipRectGuard clip{min, max};
    renderText({min.x, min.y + ImTrunc((max.y - min.y - ImGui::GetTextLineHeight()) * 0.5f)}, line);
}

ImGuiID getId(const Containers::StringView text) {
    const Containers::StringView view = total(text);
    return ImGui::GetCurrentWindow()->GetID(view.begin(), view.end());
}

void pushId(const Containers::StringView text) { ImGui::PushOverrideID(getId(text)); }

void setTooltip(const Containers::StringView text) { ImGui::SetTooltip("%.*s", int(text.size()), total(text).data()); }

}
