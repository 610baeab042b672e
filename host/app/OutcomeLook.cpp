#include "app/OutcomeLook.h"

#include <Corrade/Containers/ArrayView.h>

#include <icons_font_awesome_6.h>

namespace QuorvaneEngine {

namespace {

using Counts = LocalizationReport::Counts;

constexpr ImVec4 Green{0.45f, 0.72f, 0.52f, 1.0f};
constexpr ImVec4 Blue{0.42f, 0.66f, 0.92f, 1.0f};
constexpr ImVec4 Yellow{0.95f, 0.76f, 0.36f, 1.0f};
constexpr ImVec4 Grey{0.55f, 0.57f, 0.61f, 1.0f};

constexpr OutcomeLook Looks[]{
    {TermOutcome::Added, ICON_FA_CIRCLE_PLUS, Green, "Added", &Counts::added},
    {TermOutcome::Changed, ICON_FA_PEN, Blue, "Changed", &Counts::changed},
    {TermOutcome::Unchanged, ICON_FA_CHECK, Grey, "Unchanged", &Counts::unchanged},
    {TermOutcome::Empty, ICON_FA_CIRCLE, Grey, "No text", &Counts::empty},
    {TermOutcome::Skipped, ICON_FA_TRIANGLE_EXCLAMATION, Yellow, "Skipped", &Counts::skipped},
    {TermOutcome::Notice, ICON_FA_CIRCLE_INFO, Blue, "Notices", &Counts::notices},
};

}

Containers::ArrayView<const OutcomeLook> outcomeLooks() { return Looks; }

const OutcomeLook& outcomeLook(const TermOutcome outcome) { return Looks[std::size_t(outcome)]; }

}
