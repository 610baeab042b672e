#include "ShownRows.h"

#include <algorithm>

#include <imgui.h>
#include <imgui_internal.h>

namespace QuorvaneEngine {

ShownRows::ShownRows(const TermRows& rows) {
    const std::size_t count = rows.size();
    if(!count) return;
    const ImGuiContext& context = *ImGui::GetCurrentContext();
    if(context.LogEnabled) {
        add({0, count});
        return;
    }

    ImGuiWindow& window = *ImGui::GetCurrentWindow();
    const float origin = ImGui::GetCurrentTable()->RowPosY2;
    const auto addRect = [&](const ImRect& rect) {
        /* One row more at both ends: the arrow keys go to rows that exist, shown or not */
        const TermRows::Range shown = rows.rowsBetween(rect.Min.y - origin, rect.Max.y - origin);
        add({shown.begin ? shown.begin - 1 : 0, std::min(shown.end + 1, count)});
    };
    addRect(window.ClipRect);
    if(context.NavId && window.NavLastIds[0] == context.NavId)
        addRect(ImGui::WindowRectRelToAbs(&window, window.NavRectRel[0]));
    if(context.NavMoveScoringItems && context.NavWindow &&
        context.NavWindow->RootWindowForNav == window.RootWindowForNav) {
        addRect(context.NavScoringRect);
        if(!context.NavScoringNoClipRect.IsInverted()) addRect(context.NavScoringNoClipRect);
        if((context.NavMoveFlags & ImGuiNavMoveFlags_IsTabbing) && context.NavTabbingDir == -1) add({count - 1, count});
    }
    sortAndJoin();
}

void ShownRows::add(const TermRows::Range range) { _ranges[_count++] = range; }

void ShownRows::sortAndJoin() {
    std::sort(_ranges, _ranges + _count,
        [](const TermRows::Range& a, const TermRows::Range& b) { return a.begin < b.begin; });
    std::size_t last = 0;
    for(std::size_t i = 1; i < _count; ++i) {
        if(_ranges[i].begin <= _ranges[last].end) _ranges[last].end = std::max(_ranges[last].end, _ranges[i].end);
        else _ranges[++last] = _ranges[i];
    }
    _count = last + 1;
}

}
