#include "app/ViewLetters.h"

#include <iterator>

#include <imgui.h>

#include "app/Theme.h"

namespace QuorvaneEngine {

namespace {

using Theme::Color;

constexpr Color ViewColors[]{Color::ViewWhite, Color::ViewYellow, Color::ViewRed};

constexpr ImU32 OpaqueColors = ~IM_COL32_A_MASK;

struct Replacement {
    ImU32 from;
    ImU32 to;
};

/** Shapes take their colour from places of the fonts' texture that hold no letter. */
class ShapeArea {
public:
    explicit ShapeArea(const ImFontAtlas& atlas)
        : _white{atlas.TexUvWhitePixel},
          _first{atlas.TexUvLines[0]},
          _last{atlas.TexUvLines[IM_DRAWLIST_TEX_LINES_WIDTH_MAX]} {}

    bool has(const ImVec2& place) const {
        if(place.x == _white.x && place.y == _white.y) return true;
        return place.y >= _first.y && place.y <= _last.y && place.x >= _last.x && place.x <= _last.z;
    }

private:
    ImVec2 _white;
    ImVec4 _first;
    /** The widest. */
    ImVec4 _last;
};

}

void fitViewLetters(ImDrawData& drawData) {
    if(Theme::scheme() == Theme::Scheme::Dark) return;
    Replacement replacements[std::size(ViewColors)];
    for(std::size_t i = 0; i != std::size(ViewColors); ++i)
        replacements[i] = {
            ImGui::ColorConvertFloat4ToU32(Theme::color(ViewColors[i], Theme::Scheme::Dark)) & OpaqueColors,
            ImGui::ColorConvertFloat4ToU32(Theme::color(ViewColors[i])) & OpaqueColors};
    const ShapeArea shapes{*ImGui::GetIO().Fonts};
    for(ImDrawList* const list: drawData.CmdLists)
        for(const ImDrawCmd& command: list->CmdBuffer) {
            // A picture that a view has drawn.
            if(!command.TexRef._TexData) continue;
            const ImDrawIdx* const indices = list->IdxBuffer.Data + command.IdxOffset;
            for(unsigned int i = 0; i != command.ElemCount; ++i) {
                ImDrawVert& vertex = list->VtxBuffer[int(command.VtxOffset + indices[i])];
                for(const Replacement& replacement: replacements)
                    if((vertex.col & OpaqueColors) == replacement.from && !shapes.has(vertex.uv)) {
                        vertex.col = replacement.to | (vertex.col & IM_COL32_A_MASK);
                        break;
                    }
            }
        }
}

}
