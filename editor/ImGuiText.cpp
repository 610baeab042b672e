#include "ImGuiText.h"

#include <algorithm>

namespace QuorvaneEngine {

namespace {

/** An address for the empty view, too: the library takes equal pointers for an unknown length in places. */
Containers::StringView total(const Containers::StringView text) {
    return text.isEmpty() ? Containers::StringView{"", 0} : text;
}

}

ImGuiText::ImGuiText(const Containers::StringView text) {
#ifdef IMGUI_HAS_IMSTR
    const bool passes = true;
#else
    const bool passes = text.isEmpty() || (text.flags() & Containers::StringViewFlag::NullTerminated);
#endif
    if(passes) {
        const Containers::StringView view = total(text);
        _begin = view.data();
        _end = view.data() + view.size();
    } else copy(text, {});
}

ImGuiText::ImGuiText(const Containers::StringView first, const Containers::StringView second) { copy(first, second); }

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

void textUnformatted(const Containers::StringView text) {
    const Containers::StringView view = total(text);
#ifdef IMGUI_HAS_IMSTR
    ImGui::TextUnformatted(ImStrv{view.begin(), view.end()});
#else
    ImGui::TextUnformatted(view.begin(), view.end());
#endif
}

ImVec2 calcTextSize(const Containers::StringView text, const bool hideAfterHash, const float wrapWidth) {
    const Containers::StringView view = total(text);
#ifdef IMGUI_HAS_IMSTR
    return ImGui::CalcTextSize(ImStrv{view.begin(), view.end()}, hideAfterHash, wrapWidth);
#else
    return ImGui::CalcTextSize(view.begin(), view.end(), hideAfterHash, wrapWidth);
#endif
}

std::size_t calcLineEnd(const Containers::StringView text, const float wrapWidth) {
    const Containers::StringView view = total(text);
    ImFont& font = *ImGui::GetFont();
#ifdef IMGUI_HAS_IMSTR
    const char* const end =
        font.CalcWordWrapPosition(ImGui::GetFontSize(), ImStrv{view.begin(), view.end()}, wrapWidth);
#else
    const char* const end = font.CalcWordWrapPosition(ImGui::GetFontSize(), view.begin(), view.end(), wrapWidth);
#endif
    return std::size_t(end - view.begin());
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

ImGuiID getId(const Containers::StringView text) {
    const Containers::StringView view = total(text);
    return ImGui::GetCurrentWindow()->GetID(view.begin(), view.end());
}

void pushId(const Containers::StringView text) { ImGui::PushOverrideID(getId(text)); }

void setTooltip(const Containers::StringView text) { ImGui::SetTooltip("%.*s", int(text.size()), total(text).data()); }

}
