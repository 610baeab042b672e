#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** What stands in the status bar, from left to right. */
enum class StatusItem : std::uint8_t { Folder, State, Obstacle, Fonts, Message };

constexpr std::size_t StatusItemCount = 5;

/** In pixels. What is not there has none. */
struct StatusWidth {
    float natural;
    /** Of the icon alone. */
    float least;
    /** Where there is less room than this, the icon stands alone. */
    float shortest;
};

/** How wide the items of the status bar are, in pixels. Where not all have room, some are cut: the message as long as it has two fifths
    of the space, then what is known from elsewhere before what is not, and then the message. None gets less than its icon.
    @param widths   by @ref StatusItem
    @param space    for all of them, without the gaps between them */
QUORVANE_API std::array<float, StatusItemCount> fitStatusItems(
    const std::array<StatusWidth, StatusItemCount>& widths, float space);

}
