#include "app/StatusLayout.h"

#include <algorithm>

namespace QuorvaneEngine {

namespace {

/** An item that gives way, down to its icon and a part of the space. */
struct Step {
    StatusItem item;
    float part;
};

constexpr Step Steps[]{{StatusItem::Message, 0.4f}, {StatusItem::Fonts, 0.0f}, {StatusItem::Folder, 0.0f},
    {StatusItem::Obstacle, 0.0f}, {StatusItem::State, 0.0f}, {StatusItem::Message, 0.0f}};

}

std::array<float, StatusItemCount> fitStatusItems(
    const std::array<StatusWidth, StatusItemCount>& widths, const float space) {
    std::array<float, StatusItemCount> fitting{};
    float excess = -space;
    for(std::size_t i = 0; i != StatusItemCount; ++i) excess += fitting[i] = widths[i].natural;
    for(const Step& step: Steps) {
        if(excess <= 0.0f) break;
        float& width = fitting[std::size_t(step.item)];
        const float least = std::max(widths[std::size_t(step.item)].least, step.part * space);
        const float given = std::clamp(width - least, 0.0f, excess);
        width -= given;
        excess -= given;
    }
    float& message = fitting[std::size_t(StatusItem::Message)];
    for(std::size_t i = 0; i != StatusItemCount; ++i) {
        if(fitting[i] >= std::min(widths[i].shortest, widths[i].natural) || &fitting[i] == &message) continue;
        message += fitting[i] - widths[i].least;
        fitting[i] = widths[i].least;
    }
    message = std::min(message, widths[std::size_t(StatusItem::Message)].natural);
    return fitting;
}

}
