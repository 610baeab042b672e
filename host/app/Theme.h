#pragma once

#include <cstdint>

#include <imgui.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine::Theme {

enum class Scheme : std::uint8_t { Dark, Light };

/** What the editor is coloured with. Each has one value in every scheme. */
enum class Color : std::uint8_t {
    /* What things lie on, from the back to the front. */
    Ground,
    Surface,
    Raised,
    Field,
    FieldHovered,
    Button,
    Line,
    StrongLine,

    /* What is chosen, under the mouse, pressed; and what marks it. The blue of the check boxes. Rows of lists and menus are calmer,
       because all colours are written on them and not the first alone. */
    Chosen,
    Hovered,
    Pressed,
    RowHovered,
    RowPressed,
    Mark,

    /* What is written on any of the above; on what is hovered and pressed, but for rows, the first alone. */
    Letters,
    PaleLetters,
    Link,
    Good,
    Caution,
    Bad,

    /* The button that stands out. */
    Primary,
    PrimaryHovered,
    PrimaryPressed,
    PrimaryLetters,

    /* Written by views in colours of their own, which are made for a dark ground. */
    ViewWhite,
    ViewYellow,
    ViewRed,

    Check,
    OddRow,
    Selection,
    Shade,
    None
};

constexpr std::size_t ColorCount = std::size_t(Color::None) + 1;

/** Gives the current GUI context the editor's colours, paddings and roundings.
    @param scale    pixels per pixel at scale 1; fonts follow through the style's font scale */
QUORVANE_API void apply(float scale, Scheme scheme = Scheme::Dark);

/** The scheme that was applied last; dark before. */
QUORVANE_API Scheme scheme();

/** A colour in a scheme. */
QUORVANE_API const ImVec4& color(Color color, Scheme scheme);

/** A colour in the scheme that was applied last. */
QUORVANE_API const ImVec4& color(Color color);

}
