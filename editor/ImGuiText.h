#pragma once

#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "QuorvaneEditor/Host.h"

/** @file
    The one place that knows how texts are handed to Dear ImGui: as NUL-terminated strings to the released branches, as pairs of
    pointers to the branch with string views (IMGUI_HAS_IMSTR). */

namespace QuorvaneEngine {

/** A text as an argument of a Dear ImGui function. To be made in the call itself: `ImGui::Button(ImGuiText{label})`.

    A view passes through where the library takes views, and where it is NUL-terminated. Any other is copied into the object, which
    allocates only above 255 bytes. A null view is an empty text. */
class ImGuiText {
public:
    /** @param text     must outlive the object */
    explicit ImGuiText(Containers::StringView text) {
        if(passes(text)) pass(text);
        else copy(text, {});
    }

    /** Two texts joined, such as "##" and a name. */
    explicit ImGuiText(Containers::StringView first, Containers::StringView second) { copy(first, second); }

    ImGuiText(const ImGuiText&) = delete;
    ImGuiText& operator=(const ImGuiText&) = delete;

#ifdef IMGUI_HAS_IMSTR
    operator ImStrv() const { return ImStrv{_begin, _end}; }
#else
    operator const char*() const { return _begin; }
#endif

private:
#ifdef IMGUI_HAS_IMSTR
    static bool passes(Containers::StringView) { return true; }
#else
    static bool passes(Containers::StringView text) {
        return text.isEmpty() || (text.flags() & Containers::StringViewFlag::NullTerminated);
    }
#endif

    void pass(Containers::StringView text);
    void copy(Containers::StringView first, Containers::StringView second);

    const char* _begin;
    const char* _end;
    char _buffer[256];
    Containers::String _long;
};

/** @{ @name Functions that take a text as two pointers in the released branches, so that nothing is copied */

inline void textUnformatted(Containers::StringView text) {
#ifdef IMGUI_HAS_IMSTR
    ImGui::TextUnformatted(ImStrv{text.begin(), text.end()});
#else
    ImGui::TextUnformatted(text.begin(), text.end());
#endif
}

/** @param hideAfterHash    whether what follows "##" does not count
    @param wrapWidth        in pixels; none when negative */
inline ImVec2 calcTextSize(Containers::StringView text, bool hideAfterHash = false, float wrapWidth = -1.0f) {
    const Containers::StringView view = text.isEmpty() ? Containers::StringView{"", 0} : text;
#ifdef IMGUI_HAS_IMSTR
    return ImGui::CalcTextSize(ImStrv{view.begin(), view.end()}, hideAfterHash, wrapWidth);
#else
    return ImGui::CalcTextSize(view.begin(), view.end(), hideAfterHash, wrapWidth);
#endif
}

/** The size in bytes of the first line of a text that is wrapped, without the blanks or the line break at its end.
    @param wrapWidth    in pixels */
inline std::size_t calcLineEnd(Containers::StringView text, float wrapWidth) {
    ImFont& font = *ImGui::GetFont();
#ifdef IMGUI_HAS_IMSTR
    const ImStrv view{text.begin(), text.end()};
    return std::size_t(font.CalcWordWrapPosition(ImGui::GetFontSize(), view, wrapWidth) - text.begin());
#else
    return std::size_t(
        font.CalcWordWrapPosition(ImGui::GetFontSize(), text.begin(), text.end(), wrapWidth) - text.begin());
#endif
}

/** Draws a text in the current window and the current colour; shows what follows "##". */
void renderText(const ImVec2& position, Containers::StringView text);

/** Hides what follows "##".
    @param textSize         as @ref calcTextSize() gives it, in pixels
    @param align            0 is left or top, 1 is right or bottom */
void renderTextClipped(
    const ImVec2& min, const ImVec2& max, Containers::StringView text, const ImVec2& textSize, const ImVec2& align);

/** Whether a label shows a text whole and on one line: it is no long one and has no "##", line break or zero byte. */
bool isLineLabel(Containers::StringView text);

/** Draws the first line of a text in the current window and the current colour, in the middle of a rectangle's height and cut off
    at its edges; shows what follows "##". Of a long line only the beginning is looked at, which reaches over any screen. */
void renderLine(const ImVec2& min, const ImVec2& max, Containers::StringView text);

ImGuiID getId(Containers::StringView text);

void pushId(Containers::StringView text);

void setTooltip(Containers::StringView text);

/** @} */

}
